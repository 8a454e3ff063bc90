#include <gtest/gtest.h>

#include "core/AppError.h"
#include "core/ListText.h"
#include "settings/IniStore.h"
#include "settings/IniValueCodec.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;

namespace {
const std::string NB = "\xC2\xA0\xC2\xA0";

class IniStoreTest : public ::testing::Test {
protected:
    IniStoreTest() : ini(service, &host) {
        ini.setDataDir(dir.str());
        ini.setRoleFile(IniRole::Main, ini.qualify("Tavelo.ini"));
        ini.missingDefault = kMissingNotFound;
        ini.missingMode = kMissingNotFound;
    }
    std::string raw(const std::string& name = "Tavelo.ini") { return dir.read(name); }
    std::string roundTrip(const std::string& value) {
        ini.put("S", "E", value, file);
        return ini.get("S", "E", file);
    }

    tavtest::TempDir dir;
    ProfileService service;
    tavtest::ScriptedHost host;
    IniStore ini;
    std::string file = "Tavelo.ini";
};
}  // namespace

TEST_F(IniStoreTest, EdgeQuotesBlanksAndCrLfSurviveTheProfileRules) {
    EXPECT_EQ(roundTrip("\"abc\""), "\"abc\"");
    EXPECT_NE(raw().find("E=" + NB + "quote.abc" + NB + "quote."), std::string::npos);
    EXPECT_EQ(roundTrip("\""), "\"");
    EXPECT_EQ(roundTrip("trail "), "trail ");
    EXPECT_EQ(roundTrip("x\" "), "x\" ");  // only the blank is protected: the quote stays plain
    EXPECT_NE(raw().find("E=x\" " + NB + "<< less two."), std::string::npos);
    EXPECT_EQ(roundTrip("line1\r\nline2\r\n"), "line1\r\nline2\r\n");
    EXPECT_EQ(roundTrip("  lead"), "  lead");
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(IniStoreTest, ControlCharactersBecomeBlanksWithAWarning) {
    EXPECT_EQ(roundTrip("a\tb\nc"), "a b c");
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].message.rfind("Warning. Value to be written to ini file contains special", 0), 0u);
}

TEST_F(IniStoreTest, ValuesHoldingMarkersWarnButAreWritten) {
    ini.put("S", "E", "a" + kMarkerCrlf + "b", file);
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].message,
              "Warning. Data contains two consecutive characters with ansi code 160,160 followed by" + kMarkerCrlf +
                  " which will be converted to CR_LF when read again from ini file.");
    EXPECT_EQ(ini.get("S", "E", file), "a\r\nb");
}

TEST_F(IniStoreTest, NamesMatchCaseInsensitivelyAndSurroundingQuotesAreLost) {
    dir.write("Tavelo.ini", "[Main]\nSome Entry = \"quoted\"  \n");
    EXPECT_EQ(ini.get("MAIN", "some entry", file), "quoted");
}

TEST_F(IniStoreTest, MissingEntryModes) {
    dir.write("Tavelo.ini", "[S]\nStored=*** not found *** really\n");
    EXPECT_EQ(ini.mode(kMissingNotFound).get("S", "Nope", file), "*** not found ***");
    EXPECT_EQ(ini.mode(kMissingNotFound).getInt("S", "Nope"), 31313);
    EXPECT_EQ(ini.mode(kMissingEmpty).getInt("S", "Nope"), 0);
    EXPECT_EQ(ini.mode(kMissingEmpty).get("S", "Nope", file), "");
    EXPECT_EQ(ini.mode(kMissingZero).get("S", "Nope", file), "0");
    EXPECT_EQ(ini.mode(kMissingNotFound).get("S", "Stored", file), "*** not found ***");  // reads as missing
    try {
        ini.mode(kMissingRaise).get("S", "Nope", file);
        FAIL() << "no error raised";
    } catch (const AppError& e) {
        EXPECT_EQ(e.number(), 1001);
    }
    // The mode lasts for one read only.
    ini.missingMode = kMissingEmpty;
    ini.get("S", "Nope", file);
    EXPECT_EQ(ini.missingMode, kMissingNotFound);
}

TEST_F(IniStoreTest, MissingEntryPromptCancelStops) {
    host.answer(1);
    EXPECT_EQ(ini.mode(kMissingPrompt).get("S", "Nope", file), "");
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].buttons, "1");
    EXPECT_NE(host.asked()[0].message.find("Entry or section of ini file missing.\rIni file: "), std::string::npos);
    host.answer(2);
    try {
        ini.mode(kMissingPrompt).get("S", "Nope", file);
        FAIL() << "Cancel did not stop";
    } catch (const AppError& e) {
        EXPECT_TRUE(e.isUserStop());
    }
}

TEST_F(IniStoreTest, NumbersAndFlags) {
    dir.write("Tavelo.ini", "[S]\nA=-1\nB=1\nC=True\nD=12abc\nE=2.5e1x\nF=abc\n");
    EXPECT_TRUE(ini.getBool("S", "A", file));
    EXPECT_FALSE(ini.getBool("S", "B", file));
    EXPECT_TRUE(ini.getBool("S", "C", file));
    EXPECT_EQ(ini.getBit("S", "A", file), "1");
    EXPECT_EQ(ini.getInt("S", "D", file), 12);
    EXPECT_DOUBLE_EQ(ini.getNum("S", "E", file), 25.0);
    EXPECT_EQ(ini.getInt("S", "F", file), 0);
    ini.putNumber("S", "G", 1.5, file);
    ini.putNumber("S", "H", 3, file);
    EXPECT_EQ(ini.get("S", "G", file), "1.5");
    EXPECT_EQ(ini.get("S", "H", file), "3");
}

TEST_F(IniStoreTest, ReservedNamesRaiseTheirErrors) {
    auto number = [&](auto&& f) {
        try {
            f();
        } catch (const AppError& e) {
            return e.number();
        }
        return 0;
    };
    EXPECT_EQ(number([&] { ini.put("AltNo.S", "E", "v", file); }), 8011);
    EXPECT_EQ(number([&] { ini.put("S", "altno.E", "v", file); }), 8012);
    EXPECT_EQ(number([&] { ini.put("S", "SplitEntry.E", "v", file); }), 8013);
    EXPECT_EQ(number([&] { ini.eraseEntry("S", "SplitEntry.E", file); }), 8013);
    ini.reservedOk = true;
    EXPECT_EQ(number([&] { ini.put("S", "SplitEntry.E", "v", file); }), 0);
    EXPECT_FALSE(ini.reservedOk);  // the check consumes it
}

TEST_F(IniStoreTest, SplitValuesAreStoredWholeAndShrinkCleanly) {
    std::string exact(9998, 'x');
    EXPECT_EQ(roundTrip(exact), exact);
    EXPECT_EQ(raw().find("SplitEntry."), std::string::npos);

    std::string big;
    for (int i = 0; i < 30000; ++i) big += static_cast<char>('a' + i % 26);
    EXPECT_EQ(roundTrip(big), big);  // the last character too
    EXPECT_NE(raw().find("SplitEntry.E=3"), std::string::npos);
    EXPECT_EQ(raw().find("\nE="), std::string::npos);

    std::string shorter = big.substr(0, 12000);
    EXPECT_EQ(roundTrip(shorter), shorter);
    EXPECT_NE(raw().find("SplitEntry.E=1"), std::string::npos);
    EXPECT_EQ(raw().find("SplitEntry.2.E"), std::string::npos);  // no stale pieces left
    EXPECT_EQ(raw().find("SplitEntry.3.E"), std::string::npos);

    EXPECT_EQ(roundTrip("small"), "small");
    EXPECT_EQ(raw().find("SplitEntry."), std::string::npos);
}

TEST_F(IniStoreTest, SplitKeepsCrLfPairsAndEncodesEachPiece) {
    std::string value(9499, 'a');
    value += "\r\n\"quoted end\" ";
    value += std::string(9600, 'b');
    value += '"';
    EXPECT_EQ(roundTrip(value), value);
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(IniStoreTest, EraseEntryTakesSplitPiecesWithIt) {
    ini.put("S", "E", std::string(20000, 'q'), file);
    ini.put("S", "Other", "keep", file);
    ini.eraseEntry("S", "E", file);
    EXPECT_EQ(raw().find("SplitEntry"), std::string::npos);
    EXPECT_EQ(ini.get("S", "E", file), "*** not found ***");
    EXPECT_EQ(ini.get("S", "Other", file), "keep");
    ini.eraseSection("S", file);
    EXPECT_EQ(raw().find("[S]"), std::string::npos);
}

TEST_F(IniStoreTest, AutomaticFileRoutesBySectionInBothDirections) {
    ini.setRoleFile(IniRole::Currwin, ini.qualify("currwin.ini"));
    ini.setRoleFile(IniRole::Cols, ini.qualify("cols.ini"));
    ini.put("--Win1", "Caption", "one");
    ini.put("Column Specs", "Choose From Cols", "x|y");
    ini.put("Windows sections", "List", "--Win1");
    ini.put("Anything", "E", "main");
    EXPECT_NE(raw("currwin.ini").find("[--Win1]"), std::string::npos);
    EXPECT_NE(raw("currwin.ini").find("[Windows sections]"), std::string::npos);
    EXPECT_NE(raw("cols.ini").find("Choose From Cols=x|y"), std::string::npos);
    EXPECT_NE(raw().find("[Anything]"), std::string::npos);
    EXPECT_EQ(ini.get("--Win1", "Caption"), "one");
}

TEST_F(IniStoreTest, NoWriteSuppressesPuts) {
    ini.noWrite = true;
    ini.put("S", "E", "v", file);
    ini.noWrite = false;
    EXPECT_EQ(ini.get("S", "E", file), "*** not found ***");
}

TEST_F(IniStoreTest, UnwritableFileIsReportedOnceAndNotRelocated) {
    std::string path = "/proc/tavelo-cannot-write.ini";
    ini.put("S", "E", "v", path);
    EXPECT_TRUE(ini.writeFailed);
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].message.rfind("Return code zero indicating error from attempt to write to ini file: ", 0),
              0u);
    EXPECT_TRUE(ini.altLists().size() == 1);
    ini.quietOnce = true;
    ini.put("S", "E", "v", path);
    EXPECT_EQ(host.asked().size(), 1u);
    EXPECT_FALSE(ini.quietOnce);
}

TEST_F(IniStoreTest, InvalidUtf8FileReadsAsWindows1252) {
    dir.write("Tavelo.ini", "[S]\nE=caf\xE9\n");
    EXPECT_EQ(ini.get("S", "E", file), "caf\xC3\xA9");
    ini.put("S", "F", "x", file);
    EXPECT_NE(raw().find("E=caf\xC3\xA9"), std::string::npos);  // written back as UTF-8
}

TEST_F(IniStoreTest, RewriteKeepsCommentsAndOtherLines) {
    dir.write("Tavelo.ini", "; a comment\n[S]\nodd line\nA=1\n\n[T]\nB=2\n");
    ini.put("S", "C", "3", file);
    std::string text = raw();
    EXPECT_NE(text.find("; a comment"), std::string::npos);
    EXPECT_NE(text.find("odd line"), std::string::npos);
    EXPECT_LT(text.find("C=3"), text.find("[T]"));
}
