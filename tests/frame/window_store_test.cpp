#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "frame/WindowStore.h"
#include "settings/IniStore.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

const std::string kFactoryWindows = std::string(TAVELO_FACTORY_DATA) + "/param/sucurrwin.ini";

// A data directory with the factory windows file, opened the way the start
// opens it. `reopen` is the next start of the program on the same files.
class WindowStoreTest : public ::testing::Test {
protected:
    WindowStoreTest() {
        dir.write("TavCurrWin.ini", tavtest::readFile(kFactoryWindows));
        dir.write("Tavelo.ini", "[Main]\nPAFN CurrwinIni=TavCurrWin.ini\n");
        reopen();
    }
    void reopen() {
        store.reset();
        ini.reset();
        service = std::make_unique<ProfileService>();
        ini = std::make_unique<IniStore>(*service, &host);
        ini->setDataDir(dir.str());
        ini->setRoleFile(IniRole::Main, ini->qualify("Tavelo.ini"));
        ini->setRoleFile(IniRole::Currwin, ini->qualify("TavCurrWin.ini"));
        store = std::make_unique<WindowStore>(*ini);
    }
    std::string raw() const { return dir.read("TavCurrWin.ini"); }
    bool onDisk(const std::string& section) const { return raw().find("[" + section + "]") != std::string::npos; }

    tavtest::TempDir dir;
    tavtest::ScriptedHost host;
    std::unique_ptr<ProfileService> service;
    std::unique_ptr<IniStore> ini;
    std::unique_ptr<WindowStore> store;
};

}  // namespace

TEST_F(WindowStoreTest, FactoryWindowLoadsWithItsFourSections) {
    WindowState w;
    ASSERT_TRUE(store->load("--W 43200", w));
    EXPECT_EQ(w.sections.cols, "--C 43200");
    EXPECT_EQ(w.sections.selections, "--S 43200");
    EXPECT_EQ(w.sections.formats, "--F 43200");
    EXPECT_EQ(w.get(".4"), "F");
    EXPECT_EQ(w.get(".9"), "{~/}");
    EXPECT_EQ(w.get("VT1"), "-1");
    EXPECT_EQ(w.value("Column Widths"), "600|3000|800|1300|1300|1100|4500");
    EXPECT_EQ(w.value("Showdataform.Text Fontname"), "Monospace");
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(WindowStoreTest, TableFactoryValuesAreThoseOfTheFactoryWindow) {
    WindowState loaded;
    ASSERT_TRUE(store->load("--W 43200", loaded));
    const WindowState fresh;
    for (const WindowEntry& e : windowEntries())
        EXPECT_EQ(fresh.value(e.name), loaded.value(e.name)) << e.name;
}

TEST_F(WindowStoreTest, UnusableSectionsFailWithoutWritingOrAsking) {
    dir.write("TavCurrWin.ini", raw() + "\n[--W 5]\nWTYPE=L\n");
    const std::string before = raw();
    WindowState w;
    EXPECT_FALSE(store->load("--W 99", w));  // does not exist
    EXPECT_FALSE(store->load("--W 5", w));   // names no other sections
    EXPECT_FALSE(store->load("", w));
    EXPECT_TRUE(w.sections.empty());
    EXPECT_EQ(raw(), before);
    EXPECT_TRUE(host.asked().empty());
    EXPECT_FALSE(ini->noWrite);
}

TEST_F(WindowStoreTest, MissingEntriesReadEmptyAndLoadWritesNothing) {
    dir.write("TavCurrWin.ini",
              "[--W 7]\nLast Cols section=--C 7\nLast Selections section=--S 7\nLast Formats section=--F 7\n"
              "WTYPE=L\nKC116=<EE;[1];[0]>\n[--C 7]\nGrid Misc=1\n[--F 7]\nGrid Gridlines=2\n");
    const std::string before = raw();
    WindowState w;
    ASSERT_TRUE(store->load("--W 7", w));
    EXPECT_EQ(w.value("WTYPE"), "L");
    EXPECT_EQ(w.value("Status Bar_ONOFF"), "");
    EXPECT_FALSE(w.flag("Status Bar_ONOFF"));
    EXPECT_EQ(w.value("KC116"), "<EE;[1];[0]>");
    EXPECT_EQ(w.partOf("KC116"), WindowPart::Window);
    EXPECT_EQ(w.partOf("Grid Gridlines"), WindowPart::Formats);
    EXPECT_FALSE(w.has("Last Cols section"));
    EXPECT_EQ(raw(), before);
}

TEST_F(WindowStoreTest, LiveSavingSurvivesARestart) {
    WindowState w;
    ASSERT_TRUE(store->load("--W 43200", w));
    store->put(w, "Text Frame height", "3333");
    store->put(w, "Row heights", "300|400");
    store->putKey(w, "LM1", "-1");
    store->putKey(w, ".9", "{/tmp}|{/var}");
    store->putKey(w, "Vy1", "-1");  // the Top List shows selections
    store->putKey(w, "VN1", "-1");  // no entry: lives for the run only
    EXPECT_EQ(w.value("Multi Dirs"), "-1");

    reopen();
    WindowState again;
    ASSERT_TRUE(store->load("--W 43200", again));
    EXPECT_EQ(again.number("Text Frame height"), 3333);
    EXPECT_EQ(again.value("Row heights"), "300|400");
    EXPECT_EQ(again.get("LM1"), "-1");
    EXPECT_EQ(again.get(".9"), "{/tmp}|{/var}");
    EXPECT_EQ(again.value("Top List ID showing"), "l");
    EXPECT_EQ(again.get("Vy1"), "-1");
    EXPECT_EQ(again.get("VI1"), "0");
    EXPECT_EQ(again.get("VN1"), "0");
    EXPECT_NE(raw().find("[--S 43200]"), std::string::npos);
}

TEST_F(WindowStoreTest, SaveAllThenLoadGivesTheSameWindow) {
    WindowState w;
    ASSERT_TRUE(store->load("--W 43200", w));
    w.set("Last Col List", "1|3");
    w.setIn(WindowPart::Window, "KC65", "<AA;[2];[0]>");
    w.setIn(WindowPart::Formats, "Grid Gridlines", "2");
    w.sections = newWindowSections(100.5);
    store->saveAll(w);

    reopen();
    WindowState back;
    ASSERT_TRUE(store->load("--W 100.5", back));
    EXPECT_EQ(back.sections.cols, "--C 100.5");
    EXPECT_EQ(back.values(), w.values());
    EXPECT_EQ(back.partOf("Grid Gridlines"), WindowPart::Formats);
}

TEST_F(WindowStoreTest, IndexListsKeepTheirElementsUnique) {
    store->addCurrent("--W 1");
    store->addCurrent("--w 1");
    store->addCurrent("--W 2");
    EXPECT_EQ(store->currentWindows(), (std::vector<std::string>{"--W 43200", "--W 1", "--W 2"}));
    store->removeCurrent("--W 43200");
    EXPECT_EQ(store->currentWindows(), (std::vector<std::string>{"--W 1", "--W 2"}));
    store->addOnFile("--W 43200");
    store->addOnFile("--W 2");
    EXPECT_EQ(store->sectionsOnFile(), (std::vector<std::string>{"--W 43200", "--W 2"}));
    store->setLastUnloaded("--W 9");
    EXPECT_EQ(store->lastUnloaded(), "--W 9");
}

TEST_F(WindowStoreTest, LeftoversGoButCurrentAndLastUnloadedStay) {
    auto a = store->makeNewWindow("--W 43200", 10);
    auto b = store->makeNewWindow("--W 43200", 20);
    auto c = store->makeNewWindow("--W 43200", 30);
    // Closed alone, one after the other: each stays on file, but only the
    // last one survives the next start.
    store->windowClosed(a.sections.window, true);
    store->windowClosed(b.sections.window, true);
    store->windowClosed(c.sections.window, true);
    EXPECT_EQ(store->lastUnloaded(), "--W 30");

    reopen();
    EXPECT_EQ(store->removeLeftovers(), 2);
    for (const char* gone : {"--W 10", "--C 10", "--S 10", "--F 10", "--W 20", "--F 20"})
        EXPECT_FALSE(onDisk(gone)) << gone;
    for (const char* kept : {"--W 43200", "--C 43200", "--W 30", "--S 30"}) EXPECT_TRUE(onDisk(kept)) << kept;
    EXPECT_EQ(store->sectionsOnFile(), (std::vector<std::string>{"--W 43200", "--W 30"}));
    EXPECT_EQ(store->removeLeftovers(), 0);
}

TEST_F(WindowStoreTest, AWindowClosedWithTheMainWindowComesBack) {
    auto a = store->makeNewWindow("--W 43200", 10);
    store->windowClosed("--W 43200", false);
    store->windowClosed(a.sections.window, false);
    reopen();
    EXPECT_EQ(store->removeLeftovers(), 0);
    EXPECT_EQ(store->currentWindows(), (std::vector<std::string>{"--W 43200", "--W 10"}));
    EXPECT_EQ(store->lastUnloaded(), "--W 10");
}

TEST_F(WindowStoreTest, ALeftoverWithoutItsWindowSectionStillLosesItsFellows) {
    dir.write("TavCurrWin.ini", raw() + "\n[--C 5]\nFixed Cols=1\n[--F 5]\nGrid Size=9\n");
    store->addOnFile("--W 5");
    EXPECT_EQ(store->removeLeftovers(), 1);
    EXPECT_FALSE(onDisk("--C 5"));
    EXPECT_FALSE(onDisk("--F 5"));
    EXPECT_TRUE(onDisk("--C 43200"));
}

TEST_F(WindowStoreTest, NewWindowClonesTheSourceUnderNewNames) {
    WindowState src;
    ASSERT_TRUE(store->load("--W 43200", src));
    store->put(src, "Row heights", "250|260");
    store->put(src, "Fixed Rows", "2");
    store->put(src, "WTYPE", "L");
    store->put(src, "KC113", "<FN;[2];[0]>");

    bool fromDefaults = true;
    WindowState w = store->makeNewWindow("--W 43200", 45296.25, &fromDefaults);
    EXPECT_FALSE(fromDefaults);
    EXPECT_EQ(w.sections.window, "--W 45296.25");
    EXPECT_EQ(w.sections.formats, "--F 45296.25");

    reopen();
    WindowState back;
    ASSERT_TRUE(store->load("--W 45296.25", back));
    EXPECT_EQ(back.value("Row heights"), "250|260");
    EXPECT_EQ(back.value("Fixed Rows"), "2");
    EXPECT_EQ(back.get(".4"), "L");
    EXPECT_EQ(back.value("KC113"), "<FN;[2];[0]>");
    EXPECT_EQ(store->currentWindows(), (std::vector<std::string>{"--W 43200", "--W 45296.25"}));
    EXPECT_EQ(store->sectionsOnFile(), (std::vector<std::string>{"--W 43200", "--W 45296.25"}));
}

TEST_F(WindowStoreTest, NewWindowFromNothingTakesTheBuiltInValues) {
    dir.write("TavCurrWin.ini", "[Windows sections]\n");
    bool fromDefaults = false;
    WindowState w = store->makeNewWindow("", 60, &fromDefaults);
    EXPECT_TRUE(fromDefaults);
    WindowState back;
    ASSERT_TRUE(store->load("--W 60", back));
    EXPECT_EQ(back.value("Last Dir"), "{~/}");
    EXPECT_EQ(back.value("Status Bar_DDSTATUS"), "-1");
    EXPECT_EQ(store->currentWindows(), std::vector<std::string>{"--W 60"});
}

// ---- the start ---------------------------------------------------------------

namespace {
struct Made {
    std::vector<std::pair<std::string, bool>> calls;  // section, first
};
}  // namespace

class WindowLoadTest : public WindowStoreTest {
protected:
    WindowLoadResult run(const std::string& factory = kFactoryWindows) {
        return LoadFileListWindows(*store, factory, [this](const std::string& section, bool first) {
            made.calls.emplace_back(section, first);
            WindowState w;
            return store->load(section, w);
        });
    }
    Made made;
};

TEST_F(WindowLoadTest, CurrentWindowsComeBackAndOnlyTheFirstFillsItsList) {
    store->makeNewWindow("--W 43200", 50);
    store->addCurrent("--W 404");  // damaged: skipped
    WindowLoadResult r = run();
    EXPECT_EQ(r.loaded, 2);
    EXPECT_FALSE(r.recovered);
    EXPECT_FALSE(r.failed);
    ASSERT_EQ(made.calls.size(), 3u);
    EXPECT_EQ(made.calls[0], std::make_pair(std::string("--W 43200"), true));
    EXPECT_EQ(made.calls[1], std::make_pair(std::string("--W 50"), false));
}

TEST_F(WindowLoadTest, EmptyCurrentListStartsWithTheLastUnloadedWindow) {
    store->removeCurrent("--W 43200");
    WindowLoadResult r = run();
    EXPECT_EQ(r.loaded, 1);
    EXPECT_FALSE(r.recovered);
    EXPECT_EQ(made.calls, (std::vector<std::pair<std::string, bool>>{{"--W 43200", true}}));
}

TEST_F(WindowLoadTest, DamagedFileIsReplacedByTheFactoryCopy) {
    dir.write("TavCurrWin.ini", "[Windows sections]\nList of sections for current windows=--W 1\n");
    WindowLoadResult r = run();
    EXPECT_TRUE(r.recovered);
    EXPECT_EQ(r.loaded, 1);
    EXPECT_FALSE(r.failed);
    EXPECT_EQ(raw(), tavtest::readFile(kFactoryWindows));
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(WindowLoadTest, NoFactoryCopyMeansFailure) {
    dir.write("TavCurrWin.ini", "");
    WindowLoadResult r = run((dir / "param/sucurrwin.ini").string());
    EXPECT_TRUE(r.failed);
    EXPECT_FALSE(r.recovered);
    EXPECT_EQ(r.loaded, 0);
    EXPECT_EQ(raw(), "");
}

TEST(WindowLoadMessage, NamesTheProgramAndBreaksLinesWithCrAlone) {
    const std::string m = windowLoadFailureMessage("Tavelo");
    EXPECT_EQ(m.rfind("*** Error loading File List windows. Automatic recovery failed. ***\r\r", 0), 0u);
    EXPECT_NE(m.find("\r\r1. Restart windows and try to start Tavelo again.\r2. If that doesn't work re-install "
                     "Tavelo\r3. If you still have problems, please contact technical support."),
              std::string::npos);
    EXPECT_EQ(m.find('\n'), std::string::npos);
}
