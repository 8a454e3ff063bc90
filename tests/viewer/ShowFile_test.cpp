#include "viewer/ShowFile.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>

#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "viewer/HexDump.h"
#include "viewer/ShowInfo.h"
#include "ViewerTestFiles.h"

namespace {

using tav::ShownText;
using tav::TextKind;

class ShowFileTest : public ::testing::Test {
protected:
    tavtest::TempDir dir;
    tav::TextBlockCache cache;
    tavtest::ScriptedHost host;
    tav::FixedWidthMeasure measure{60, 10};
    tav::TextView view{cache, measure, host};
};

TEST_F(ShowFileTest, EmptyFileShowsTheNotice) {
    const std::string path = dir.write("empty.txt", "").string();
    for (TextKind kind : {TextKind::Raw, TextKind::Plain}) {
        auto r = tav::showFile(view, {path, kind, ""}, 1, host);
        ASSERT_TRUE(r.shown);
        ASSERT_EQ(view.screen().size(), 1u);
        EXPECT_EQ(view.screen()[0].text, "<empty file>");
        EXPECT_EQ(view.fileLength(), 0);
        EXPECT_EQ(view.scrollBarValue(), 0);
        view.pageDown();
        view.scrollBarMoved(10000);
        EXPECT_EQ(view.scrollBarValue(), 0);
        EXPECT_EQ(view.screen()[0].text, "<empty file>");
    }
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(ShowFileTest, EmptyFileAfterASelectionShowsNoSelection) {
    const std::string full = dir.write("full.txt", viewertest::numberedLines(50)).string();
    const std::string empty = dir.write("empty.txt", "").string();
    for (TextKind kind : {TextKind::Raw, TextKind::Plain}) {
        ASSERT_TRUE(tav::showFile(view, {full, kind, ""}, 1, host).shown);
        view.setSelection(3, 40);
        ASSERT_FALSE(view.selection().empty());
        ASSERT_TRUE(tav::showFile(view, {empty, kind, ""}, 1, host).shown);
        EXPECT_TRUE(view.selection().empty());
        EXPECT_EQ(view.selection().caret, 0);
        const auto [from, to] = view.selectedPart(view.screen()[0]);
        EXPECT_EQ(from, to);
    }
}

TEST_F(ShowFileTest, RawShowsTheBytesAndStatusTexts) {
    const std::string path = dir.write("a.txt", "first line\nsecond\n").string();
    auto r = tav::showFile(view, {path, TextKind::Raw, "My Title"}, 1, host);
    ASSERT_TRUE(r.shown);
    EXPECT_EQ(r.busyStatus, "Show Raw text. <<>>" + path);
    EXPECT_EQ(r.status, "Raw text from My Title");
    ASSERT_EQ(view.screen().size(), 2u);
    EXPECT_EQ(view.screen()[1].text, "second");
    EXPECT_TRUE(view.wholeFileShown());
}

TEST_F(ShowFileTest, StatusTitleIsCutToTheLimit) {
    const std::string path = dir.write("a.txt", "x").string();
    tav::ShowFileOptions options;
    options.maxTitleInStatus = 5;
    auto r = tav::showFile(view, {path, TextKind::Plain, "\xC3\xA9t\xC3\xA9 long title"}, 1, host, options);
    EXPECT_EQ(r.status, "Plain text from \xC3\xA9t\xC3\xA9 l");
}

TEST_F(ShowFileTest, PlainShowsTextWithoutMarkupAndPagesThroughIt) {
    std::string html = "<html><body>";
    for (int i = 0; i < 500; ++i) html += "<p>para " + std::to_string(i) + "</p>\n";
    html += "</body></html>";
    const std::string path = dir.write("p.html", html).string();
    ASSERT_TRUE(tav::showFile(view, {path, TextKind::Plain, ""}, 1, host).shown);
    EXPECT_EQ(view.screen()[0].text, "para 0");
    view.toEnd();
    EXPECT_EQ(view.screen().back().text, "para 499");
}

TEST_F(ShowFileTest, PlainOfABigFileIsMadeFromItsFirstPart) {
    const std::string path = dir.write("big.txt", viewertest::numberedLines(1000)).string();
    tav::ShowFileOptions options;
    options.plainSourceLimit = 3100;
    auto r = tav::showFile(view, {path, TextKind::Plain, ""}, 1, host, options);
    EXPECT_TRUE(r.plainCut);
    view.toEnd();
    EXPECT_EQ(view.screen().back().text.substr(0, 7), "L000100");
}

TEST_F(ShowFileTest, PlainMadeAheadShowsAndAStoppedOneShowsNothing) {
    const std::string path = dir.write("p.html", "<p>first</p>\n<p>second</p>\n").string();
    const tav::PlainSource made = tav::makePlainSource(path);
    ASSERT_TRUE(made.source);
    EXPECT_FALSE(made.stopped);
    std::filesystem::remove(path);  // made before the file went: it still shows
    auto r = tav::showFile(view, {path, TextKind::Plain, ""}, 1, host, {}, &made);
    ASSERT_TRUE(r.shown);
    EXPECT_EQ(view.screen()[0].text, "first");
    EXPECT_EQ(r.status, "Plain text from " + path);

    const std::string other = dir.write("q.html", "<p>other</p>").string();
    const std::atomic<bool> stop{true};
    const tav::PlainSource stopped = tav::makePlainSource(other, tav::kPlainSourceLimit, &stop);
    EXPECT_TRUE(stopped.stopped);
    EXPECT_FALSE(stopped.source);
    r = tav::showFile(view, {other, TextKind::Plain, ""}, 1, host, {}, &stopped);
    EXPECT_FALSE(r.shown);
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(ShowFileTest, BusyStatusNamesKindAndFile) {
    EXPECT_EQ(tav::busyStatusOf(TextKind::Plain, "/d/a.htm"), "Show Plain text. <<>>/d/a.htm");
    EXPECT_EQ(tav::busyStatusOf(TextKind::Raw, "/d/a.htm"), "Show Raw text. <<>>/d/a.htm");
}

TEST_F(ShowFileTest, DirectoryAndUnreadableFileGiveMessages) {
    auto r = tav::showFile(view, {dir.str(), TextKind::Raw, ""}, 1, host);
    EXPECT_FALSE(r.shown);
    ASSERT_EQ(host.messages().size(), 1u);
    EXPECT_EQ(host.messages()[0],
              "File for current line in file list is a directory. Show not done. File Name >>" + dir.str() + "<<");
    host.clear();
    const std::string missing = (dir / "gone.txt").string();
    r = tav::showFile(view, {missing, TextKind::Raw, ""}, 1, host);
    EXPECT_FALSE(r.shown);
    EXPECT_TRUE(r.status.empty());
    ASSERT_EQ(host.messages().size(), 2u);
    EXPECT_EQ(host.messages()[0], "Error opening file >>" + missing + "<<.");
    EXPECT_EQ(host.messages()[1], "Error from Windows. Cannot read title\rRaw text from " + missing);
    view.pageDown();  // an empty view still takes keys
    EXPECT_TRUE(view.screen().empty());
}

TEST_F(ShowFileTest, StartPastTheEndIsReported) {
    const std::string path = dir.write("a.txt", "0123456789").string();
    auto r = tav::showFile(view, {path, TextKind::Raw, ""}, 50, host);
    // The start is taken into the file: its last line shows.
    EXPECT_TRUE(r.shown);
    EXPECT_EQ(view.screen()[0].text, "0123456789");
}

TEST_F(ShowFileTest, ShowInfoTellsWhatShowsAndSelection) {
    const std::string content = viewertest::numberedLines(100);
    const std::string path = dir.write("i.txt", content).string();
    const ShownText shown{path, TextKind::Raw, ""};
    ASSERT_TRUE(tav::showFile(view, shown, 1, host).shown);
    auto req = tav::showInfoRequest(view, shown, true, false);
    EXPECT_EQ(req.title, "- Show Info for text");
    EXPECT_EQ(req.buttons, "&OK|&Clip FileName|Show &Hex Dump|< &Bytes");
    EXPECT_EQ(req.message, "Text Shown is Raw text from:\r" + path +
                               "\rTitle:        Not Found"
                               "\rTotal Length:  3100. "
                               "\rBytes Shown: 1 to 310. "
                               "\rBytes Selected: ** none **");
    view.setSelection(32, 62);
    EXPECT_NE(tav::showInfoRequest(view, shown, true, false).message.find("\rBytes Selected: (30) 32 to 61. "),
              std::string::npos);
    view.setSelection(1, 3101);
    EXPECT_NE(tav::showInfoRequest(view, shown, true, false).message.find("** ALL **"), std::string::npos);
    req = tav::showInfoRequest(view, {path, TextKind::Plain, "T"}, false, true);
    EXPECT_EQ(req.message, "Text Shown is Plain text from:\r" + path + "\rTitle:        T\r(Copied to Clipboard)");
    EXPECT_EQ(req.buttons, "&OK|&Clip FileName|Show &Hex Dump|> &Bytes");
}

TEST_F(ShowFileTest, ShowInfoButtonsCopyToggleAndAskForTheDump) {
    const std::string path = dir.write("i.txt", "abc").string();
    const ShownText shown{path, TextKind::Raw, ""};
    tav::showFile(view, shown, 1, host);
    host.clear();
    host.answer(2);  // clip
    host.answer(4);  // bytes on
    host.answer(3);  // hex dump
    std::string clip;
    auto out = tav::showBytesInfo(view, shown, false, host, [&](const std::string& s) { clip = s; });
    EXPECT_EQ(clip, path);
    EXPECT_TRUE(out.hexDumpWanted);
    EXPECT_TRUE(out.showBytes);
    ASSERT_EQ(host.asked().size(), 3u);
    EXPECT_NE(host.asked()[1].message.find("(Copied to Clipboard)"), std::string::npos);
    EXPECT_NE(host.asked()[2].message.find("Total Length:  3. "), std::string::npos);
}

TEST(ShowAction, OnlyTheThreeNamesAsWritten) {
    EXPECT_EQ(tav::showActionNamed("Show plain text"), tav::ShowAction::PlainText);
    EXPECT_EQ(tav::showActionNamed("Show raw text"), tav::ShowAction::RawText);
    EXPECT_EQ(tav::showActionNamed("Show hex dump"), tav::ShowAction::HexDump);
    EXPECT_EQ(tav::showActionNamed("Show Plain Text"), tav::ShowAction::None);
    EXPECT_EQ(tav::showActionNamed("Copy"), tav::ShowAction::None);
}

TEST(HexDump, LinesHoldByteNumberHexAndCharacters) {
    const std::string bytes = std::string("Hello\tWorld\r\n\0\xFF", 15) + "ABCDEFGH";
    const auto lines = tav::hexDumpLines(bytes, 1);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "         1: 48 65 6C 6C 6F 09 57 6F  72 6C 64 0D 0A 00 FF 41  Hello.World....A");
    EXPECT_EQ(lines[1], "        17: 42 43 44 45 46 47 48                              BCDEFGH");
    const auto far = tav::hexDumpLines("x", int64_t{5} << 30);
    EXPECT_EQ(far[0].substr(0, 12), "5368709120: ");
}

TEST(HexDump, FileDumpIsCappedAndReportsReadErrors) {
    tavtest::TempDir dir;
    const std::string path = dir.write("h.bin", std::string(100, 'z')).string();
    tav::MessageRequest req;
    std::string error;
    ASSERT_TRUE(tav::hexDumpOfFile(path, 91, 0, req, error));
    EXPECT_EQ(req.message, path + "\rBytes 91 to 100");
    ASSERT_EQ(req.values.size(), 3u);
    EXPECT_EQ(req.values[1], std::string(10, 'z'));
    EXPECT_FALSE(tav::hexDumpOfFile(path, 200, 0, req, error));
    EXPECT_EQ(error, "Start at byte specified is after end of file. File length: 100. Start at Byte: 200");
}

}  // namespace

namespace {

TEST(HexDumpForView, DumpsTheSelectedFileBytesNotTheConvertedText) {
    tavtest::TempDir dir;
    const std::string path = dir.write("t.txt", std::string("ab\tc\0def", 8)).string();
    tav::TextBlockCache cache;
    tavtest::ScriptedHost host;
    tav::FixedWidthMeasure measure(40, 5);
    tav::TextView view(cache, measure, host);
    ASSERT_TRUE(tav::showFile(view, {path, tav::TextKind::Raw, ""}, 1, host).shown);
    view.setSelection(6, 3);
    tav::MessageRequest req;
    std::string error;
    ASSERT_TRUE(tav::hexDumpForView(view, req, error));
    EXPECT_EQ(req.message, path + "\rBytes 3 to 5");
    EXPECT_EQ(req.values[2].substr(0, 24), "         3: 09 63 00    ");
    view.clearSelection();
    ASSERT_TRUE(tav::hexDumpForView(view, req, error));
    EXPECT_EQ(req.message, path + "\rBytes 1 to 8");
}

TEST(HexDumpForView, PlainViewDumpsThePlainText) {
    tavtest::TempDir dir;
    const std::string path = dir.write("p.html", "<b>Hi</b>").string();
    tav::TextBlockCache cache;
    tavtest::ScriptedHost host;
    tav::FixedWidthMeasure measure(40, 5);
    tav::TextView view(cache, measure, host);
    const tav::PlainSource plain = tav::makePlainSource(path);
    ASSERT_TRUE(plain.source);
    ASSERT_TRUE(tav::showFile(view, {path, tav::TextKind::Plain, ""}, 1, host, {}, &plain).shown);
    tav::MessageRequest req;
    std::string error;
    ASSERT_TRUE(tav::hexDumpForView(view, req, error));
    EXPECT_EQ(req.values[2].substr(0, 18), "         1: 48 69 ");
}

}  // namespace

namespace {

TEST(ShowFileAgain, AFileChangedSinceItWasShownIsReadAfresh) {
    tavtest::TempDir dir;
    const std::string path = dir.write("a.txt", "old text\n").string();
    tav::TextBlockCache cache;
    tavtest::ScriptedHost host;
    tav::FixedWidthMeasure measure(40, 5);
    tav::TextView view(cache, measure, host);
    ASSERT_TRUE(tav::showFile(view, {path, tav::TextKind::Raw, ""}, 1, host).shown);
    dir.write("a.txt", "new text, longer\n");
    ASSERT_TRUE(tav::showFile(view, {path, tav::TextKind::Raw, ""}, 1, host).shown);
    EXPECT_EQ(view.screen()[0].text, "new text, longer");
    // The same for the plain text, which is made anew at each show.
    ASSERT_TRUE(tav::showFile(view, {path, tav::TextKind::Plain, ""}, 1, host).shown);
    dir.write("a.txt", "newer text\n");
    ASSERT_TRUE(tav::showFile(view, {path, tav::TextKind::Plain, ""}, 1, host).shown);
    EXPECT_EQ(view.screen()[0].text, "newer text");
}

}  // namespace
