#include <gtest/gtest.h>

#include <set>

#include "core/AppError.h"
#include "frame/WindowState.h"

using namespace tav;

TEST(WindowEntries, NamesAndKeysAreUniqueAndKeysBelongToTheExchange) {
    std::set<std::string, CaseLess> names;
    std::set<std::string> keys;
    const std::set<std::string_view> exchange(windowKeys().begin(), windowKeys().end());
    for (const WindowEntry& e : windowEntries()) {
        EXPECT_TRUE(names.insert(std::string(e.name)).second) << e.name;
        if (e.key.empty()) continue;
        EXPECT_TRUE(keys.insert(std::string(e.key)).second) << e.key;
        if (e.key != "SO") {  // the sort column is read by the grid
            EXPECT_TRUE(exchange.count(e.key)) << e.key;
        }
        // A menu flag's key takes a digit; a value key is read whole.
        EXPECT_EQ(e.menuFlag, e.key.front() != '.' && e.key != "SO") << e.key;
    }
}

TEST(WindowEntries, OddSpellingsAndLookupByNameOrKey) {
    for (const char* name : {"Dbl Clcik refresh", "List Seperator", "Seperate copy menus"})
        EXPECT_NE(findWindowEntry(name), nullptr) << name;
    EXPECT_EQ(findWindowEntry("dbl clcik REFRESH")->key, "OC");
    EXPECT_EQ(findWindowEntry("LM")->name, "Multi Dirs");
    EXPECT_EQ(findWindowEntry(".9")->part, WindowPart::Selections);
    EXPECT_EQ(findWindowEntry("Vw"), nullptr);  // a Top List kind, no entry of its own
    EXPECT_EQ(findWindowEntry("lm"), nullptr);  // keys are exact
    EXPECT_EQ(findWindowEntry("Double Click refresh"), nullptr);
}

TEST(WindowSectionNames, TimerTextWithABlankInFront) {
    struct Row {
        double seconds;
        const char* window;
    } rows[] = {
        {43200, "--W 43200"},
        {45296.25, "--W 45296.25"},
        {86399.99, "--W 86399.99"},  // single precision keeps seven digits
        {12345.678, "--W 12345.68"},
        {0.5, "--W .5"},
    };
    for (const Row& r : rows) {
        const WindowSections s = newWindowSections(r.seconds);
        EXPECT_EQ(s.window, r.window);
        EXPECT_EQ(s.cols.substr(3), s.window.substr(3));
        EXPECT_EQ(s.cols.substr(0, 3), "--C");
        EXPECT_EQ(s.selections.substr(0, 3), "--S");
        EXPECT_EQ(s.formats.substr(0, 3), "--F");
        EXPECT_EQ(&s.of(WindowPart::Formats), &s.formats);
    }
}

TEST(WindowStateValues, TableValuesFallBackToTheFactoryAndUnknownToEmpty) {
    WindowState w;
    EXPECT_EQ(w.value("Last Dir"), "{~/}");
    EXPECT_FALSE(w.has("Last Dir"));
    EXPECT_EQ(w.value("No Such Entry"), "");
    w.set("last dir", "");
    EXPECT_TRUE(w.has("Last Dir"));
    EXPECT_EQ(w.value("Last Dir"), "");  // a value that is there, even empty, wins
    EXPECT_EQ(w.values().begin()->first, "Last Dir");  // stored under the table's spelling
}

TEST(WindowStateValues, TheNamingEntriesAreTheSections) {
    WindowState w;
    w.sections = newWindowSections(5);
    EXPECT_EQ(w.value("Last Cols section"), "--C 5");
    w.set("last formats SECTION", "--F other");
    EXPECT_EQ(w.sections.formats, "--F other");
    EXPECT_TRUE(w.values().empty());
}

TEST(WindowStateValues, FlagsAndNumbers) {
    struct Row {
        const char* text;
        bool flag;
        long long number;
    } rows[] = {
        {"", false, 7}, {"0", false, 0}, {"False", false, 7}, {"-1", true, -1},
        {"True", true, 7}, {" 2500 ", true, 2500}, {"2500.6", true, 2501}, {"x", true, 7},
    };
    for (const Row& r : rows) {
        WindowState w;
        w.set("Text Frame height", r.text);
        EXPECT_EQ(w.flag("Text Frame height"), r.flag) << r.text;
        EXPECT_EQ(w.number("Text Frame height", 7), r.number) << r.text;
    }
}

TEST(WindowStateKeys, MenuKeysWithEntriesFollowTheirEntry) {
    WindowState w;
    EXPECT_EQ(w.get("LM1"), "0");
    w.put("LM1", "True");
    EXPECT_EQ(w.value("Multi Dirs"), "-1");
    w.set("Multi Dirs", "0");
    EXPECT_FALSE(w.menu("LM").checked);
    w.put("LM2", "0");
    EXPECT_EQ(w.get("LM2"), "0");
    EXPECT_EQ(w.get("LM1"), "0");
    EXPECT_EQ(w.value("Multi Dirs"), "0");
}

TEST(WindowStateKeys, MenuKeysWithoutEntriesKeepTheirRecord) {
    WindowState w;
    EXPECT_EQ(w.get("VN1"), "0");
    EXPECT_EQ(w.get("VN2"), "-1");
    EXPECT_EQ(w.get("VN3"), "-1");
    w.put("VN4", "&Numbers");
    w.put("VN3", "0");
    const MnuState s = w.menu("VN");
    EXPECT_EQ(s.text, "&Numbers");
    EXPECT_FALSE(s.allowed);
    EXPECT_TRUE(s.enabled);
    EXPECT_TRUE(w.values().empty());
}

TEST(WindowStateKeys, TopListKindsShareOneEntry) {
    WindowState w;
    EXPECT_EQ(w.get("VI1"), "-1");  // factory: files
    w.put("Vz1", "-1");
    EXPECT_EQ(w.value("Top List ID showing"), "r");
    EXPECT_EQ(w.get("VI1"), "0");
    EXPECT_EQ(w.get("Vz1"), "-1");
    w.put("Vz1", "0");  // a kind is left only by choosing another
    EXPECT_EQ(w.value("Top List ID showing"), "r");
}

TEST(WindowStateKeys, ValueKeysAreReadWhole) {
    WindowState w;
    EXPECT_EQ(w.get(".4"), "F");
    w.put(".9", "{/a|b}|{/c}");
    EXPECT_EQ(w.value("Last Dir"), "{/a|b}|{/c}");
    EXPECT_EQ(w.get("SO"), "0|1");
    w.put(".t", "free");  // no entry: lives in memory only
    EXPECT_EQ(w.get(".t"), "free");
    EXPECT_EQ(w.keyValues().at(".t"), "free");
    EXPECT_EQ(w.get(".6"), "");
}

TEST(WindowStateKeys, AMenuKeyWithoutItsDigitRaises9710) {
    WindowState w;
    for (const char* bad : {"LM", "LM0", "LM5", "LMx", "VN12", "L", ""}) {
        try {
            (void)w.get(bad);
            ADD_FAILURE() << "no error for " << bad;
        } catch (const AppError& e) {
            EXPECT_EQ(e.number(), 9710) << bad;
        }
        EXPECT_THROW(w.put(bad, "1"), AppError) << bad;
    }
}

TEST(WindowStateKeys, EntryOfAKey) {
    EXPECT_EQ(WindowState::entryOfKey("wB1")->name, "Status Bar_ONOFF");
    EXPECT_EQ(WindowState::entryOfKey(".l")->name, "List Seperator");
    EXPECT_EQ(WindowState::entryOfKey("VN1"), nullptr);
    EXPECT_EQ(WindowState::entryOfKey(".t"), nullptr);
}
