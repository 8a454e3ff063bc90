// The menu catalogue and the command dispatch by menu code.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "frame/MenuDispatch.h"
#include "dialogs/MessageText.h"
#include "frame/MenuTree.h"
#include "support/ScriptedHost.h"

using namespace tav;

namespace {

std::vector<std::string> split(const std::string& record) {
    std::vector<std::string> out(1);
    for (char c : record) {
        if (c == '|') out.emplace_back();
        else out.back() += c;
    }
    return out;
}

// The active window's menu states, as a test sets them.
class FakeWindow : public MenuStateProvider {
public:
    bool window = true;
    bool off = false;
    std::map<std::string, MenuItemState> states;
    MenuItemState itemState(const MenuItem& item, MenuItemState own) const override {
        auto it = states.find(item.code);
        return it == states.end() ? own : it->second;
    }
    bool hasFileListWindow() const override { return window; }
    bool eventsOff() const override { return off; }
};

struct Dispatch : ::testing::Test {
    MenuTree tree = MenuTree::standard();
    tavtest::ScriptedHost host{2};
    MenuDispatch dispatch{tree, host};
    FakeWindow window;
    std::vector<MenuCall> calls;

    Dispatch() { dispatch.setProvider(&window); }
    void handle(std::string_view code) {
        dispatch.setHandler(code, [this](const MenuCall& c) { calls.push_back(c); });
    }
    std::vector<std::string> ran() const {
        std::vector<std::string> out;
        for (const auto& c : calls) out.push_back(c.code);
        return out;
    }
};

}  // namespace

// --- The catalogue -------------------------------------------------------

TEST(MenuCatalogue, TopMenusInOrder) {
    MenuTree tree = MenuTree::standard();
    std::vector<std::string> codes, captions;
    for (const MenuItem* m : tree.topMenus()) {
        codes.push_back(m->code);
        captions.push_back(m->caption);
    }
    EXPECT_EQ(codes, (std::vector<std::string>{"F", "E", "O", "S", "A", "V", "L", "W", "H", "1", "2", "3"}));
    EXPECT_EQ(captions, (std::vector<std::string>{"&File", "&Edit", "&Show", "&DartShift", "&Action", "&View",
                                                  "Se&lect", "&Window", "&Help", "", "", ""}));
}

TEST(MenuCatalogue, CodesAreUpperCaseAndUnique) {
    MenuTree tree = MenuTree::standard();
    std::set<std::string> seen;
    for (const MenuItem& m : tree.items()) {
        if (m.code.empty()) {
            EXPECT_TRUE(m.separator);
            continue;
        }
        EXPECT_EQ(m.code, upperCode(m.code));
        EXPECT_TRUE(seen.insert(m.code).second) << m.code;
        if (!m.parent.empty()) {
            EXPECT_NE(tree.find(m.parent), nullptr) << m.code;
        }
    }
    EXPECT_EQ(tree.find("F_SAVE")->name, "F_Save");
    EXPECT_EQ(tree.find("vsort(0)")->name, "VSort");
    EXPECT_EQ(tree.find("Ea")->code, "EA");
}

TEST(MenuCatalogue, ArrayBounds) {
    MenuTree tree = MenuTree::standard();
    struct Case {
        const char* array;
        std::vector<int> indexes;
    };
    auto range = [](int lo, int hi) {
        std::vector<int> v;
        for (int i = lo; i <= hi; ++i) v.push_back(i);
        return v;
    };
    std::vector<int> azz = {0};
    for (int i = 4; i <= 12; ++i) azz.push_back(i);
    const Case cases[] = {{"09", range(0, 10)},  {"SC09", range(0, 10)}, {"SZ", range(0, 10)},
                          {"AZZ", azz},          {"ALZ", range(0, 12)},  {"ASZ", range(0, 12)},
                          {"AHZ", range(0, 12)}, {"VSORT", range(0, 3)}, {"VYSORT", range(0, 5)},
                          {"LCZ", {0}},          {"1Z", {0}},            {"2Z", {0}},
                          {"3Z", {0}}};
    for (const Case& c : cases) {
        std::vector<int> got;
        for (const MenuItem* m : tree.members(c.array)) got.push_back(m->index);
        EXPECT_EQ(got, c.indexes) << c.array;
    }
    EXPECT_EQ(tree.find("09(10)")->caption, "&10");
    EXPECT_TRUE(tree.find("VYSORT(5)")->separator);
    EXPECT_EQ(tree.find("AZZ(4)")->caption, "Not Defined");
}

TEST(MenuCatalogue, OnlyTheRunTimeArraysGrow) {
    MenuTree tree = MenuTree::standard();
    EXPECT_EQ(tree.addMember("AZZ", 13), nullptr);
    const MenuItem* m = tree.addMember("lcz", 3);
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->code, "LCZ(3)");
    EXPECT_EQ(m->parent, "LC");
    EXPECT_EQ(tree.members("LCZ").size(), 4u);
    // The new members follow the last one, inside their menu.
    auto kids = tree.children("LC");
    ASSERT_EQ(kids.size(), 5u);
    EXPECT_EQ(kids.back()->code, "LCZ(3)");
    tree.removeMembersFrom("LCZ", 0);  // member 0 stays
    EXPECT_EQ(tree.members("LCZ").size(), 1u);
}

TEST(MenuCatalogue, OddItems) {
    MenuTree tree = MenuTree::standard();
    auto eq = tree.children("EQ");
    ASSERT_GE(eq.size(), 2u);
    EXPECT_EQ(eq[0]->code, "DEBUGNOTDEBUGISBUGFIX1");
    EXPECT_EQ(eq[0]->caption, "- do not delete. click EQM 1st in no wor");
    EXPECT_FALSE(eq[0]->separator);
    EXPECT_EQ(eq[1]->code, "EQM");
    EXPECT_EQ(tree.find("VO")->caption, "DEBUG: set all timers &off");
    EXPECT_EQ(tree.find("Debug1")->caption, "DEBUG no err hndlg");
    EXPECT_EQ(tree.find("VN")->caption, "&No Sort ");
}

TEST(MenuCatalogue, AccessKeysDifferWithinAMenu) {
    // No clash anywhere: where letters run out an item goes without a mark.
    MenuTree tree = MenuTree::standard();
    std::set<std::string> parents;
    for (const MenuItem& m : tree.items())
        if (!m.parent.empty()) parents.insert(m.parent);
    parents.insert("");  // the menu bar
    std::set<std::string> clashes;
    for (const std::string& p : parents) {
        std::set<char> keys;
        for (const MenuItem* m : p.empty() ? tree.topMenus() : tree.children(p)) {
            const char k = acceleratorOf(m->caption);
            if (k && !keys.insert(k).second) clashes.insert(p + ":" + std::string(1, k) + " " + m->code);
        }
    }
    EXPECT_EQ(clashes, (std::set<std::string>{}));
}

TEST(MenuCatalogue, CommandsThatNeedAFileListWindow) {
    MenuTree tree = MenuTree::standard();
    for (const char* free : {"WW", "FX", "EO", "FG", "HC", "HL", "HK", "HM", "HT", "HA", "H"})
        EXPECT_FALSE(tree.find(free)->needsFileList) << free;
    for (const char* needs : {"FM", "EE", "AZZ(5)", "VSORT(0)", "09(0)", "LCE", "EQM"})
        EXPECT_TRUE(tree.find(needs)->needsFileList) << needs;
}

TEST(MenuCatalogue, FixedListOrder) {
    MenuTree tree = MenuTree::standard();
    auto list = tree.fixedList();
    ASSERT_GT(list.size(), 300u);
    EXPECT_EQ(list[0], "09(0)");
    EXPECT_EQ(list[1], "09(1)");
    EXPECT_EQ(list[11], "SC09(0)");
    std::set<std::string> seen;
    for (const auto& c : list) EXPECT_TRUE(seen.insert(upperCode(c)).second) << "twice: " << c;
    for (const char* absent : {"1", "2", "3", "1Z(0)", "-"}) EXPECT_FALSE(seen.count(absent)) << absent;
    // The menu items keep the menu order: F before its items, items in order.
    auto at = [&](const std::string& c) { return std::find(list.begin(), list.end(), c) - list.begin(); };
    EXPECT_LT(at("F"), at("FM"));
    EXPECT_LT(at("FM"), at("FC"));
    EXPECT_LT(at("FX"), at("E"));
    EXPECT_LT(at("HA"), at("Font_Hilite"));
    // The second list: the dummy, then the key function codes.
    const auto dummy = at(std::string(kDummySplitCode));
    ASSERT_LT(dummy, static_cast<long>(list.size()));
    EXPECT_EQ(list[dummy + 1], "84");
    EXPECT_EQ(list.back(), "80");
    EXPECT_LT(at("LF"), at("Font_Hilite"));  // the menu item, not the fixed code
}

// --- Captions --------------------------------------------------------------

TEST_F(Dispatch, ActionArrayCaptionAndGroup) {
    tree.setCaption("AZZ(5)", "&Notepad - txt");
    EXPECT_EQ(dispatch.GetCaptionMnu("AZZ(5)", 5, 1), "&Notepad - txt|5|1|-1|-1|&Action|Action");
    EXPECT_EQ(dispatch.DoMnuKeys("azz(5)", MnuMode::GetCaptionMnu), "&Notepad - txt|-1|-1|-1|-1|&Action|Action");
}

TEST_F(Dispatch, RecordsOfItems) {
    struct Case {
        const char* code;
        const char* record;
    };
    const Case cases[] = {
        {"FM", "&Move|-1|-1|-1|-1|&File|File"},
        {"FLH", "Show &Free Space|-1|-1|-1|-1|System T&ools|File + System Tools"},
        {"EI", "Add D&irectory && Refresh|-1|-1|-1|-1|&Edit|Edit"},
        {"F", "&File|-1|-1|-1|-1||File"},
        {"09(3)", "|-1|-1|0|-1|&Window|Window"},  // no caption yet: not shown
        {"AZZ(2)", "Not defined at present|0|0|0|0||Action"},
        {"09(11)", "Not defined at present|0|0|0|0||Window"},
        {"Font_Hilite", "Change Font (Current Section)|-1|-1|-1|-1||Format - Font / Size"},
        {"clip first pafn", "Clip Path and File Name of First Selected File|-1|-1|-1|-1||Edit - Clip"},
        {"LF", "&Font (all parts)|-1|-1|-1|-1|Se&lect|Select"},
        {"NOSUCHCODE", ""},
        {"Dummy add split at end list", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(dispatch.GetCaptionMnu(c.code), c.record) << c.code;
}

TEST_F(Dispatch, HiddenOrDisabledParentCarriesOver) {
    window.states["EQ"] = {false, true, false};
    auto eqm = split(dispatch.GetCaptionMnu("EQM"));
    EXPECT_EQ(eqm[3], "0");  // its own flag is true
    EXPECT_EQ(eqm[4], "-1");
    window.states["EQ"] = {true, false, false};
    eqm = split(dispatch.GetCaptionMnu("EQM"));
    EXPECT_EQ(eqm[3], "-1");
    EXPECT_EQ(eqm[4], "0");
    handle("EQM");
    dispatch.DoMnuKeys("EQM", MnuMode::DoMnuKeys);
    EXPECT_TRUE(calls.empty());
    dispatch.DoMnuKeys("EQM", MnuMode::DoMnuKeys, -1, true);  // forced
    EXPECT_EQ(ran(), std::vector<std::string>{"EQM"});
}

// --- Window Type menus -------------------------------------------------------

TEST_F(Dispatch, WindowTypeMenusByCaption) {
    EXPECT_EQ(dispatch.GetCaptionMnu("2"), "|-1|-1|0|-1||");  // no caption: hidden
    tree.setCaption("2", "&Viewer");
    tree.setCaption("2Z(0)", "&Pictures");
    tree.addMember("2Z", 1);
    tree.setCaption("2Z(1)", "Slide &Show");
    handle("2Z");

    EXPECT_EQ(dispatch.GetCaptionMnu("&Viewer::Slide &Show"), "Slide &Show|-1|-1|-1|-1|&Viewer|Viewer");
    EXPECT_EQ(dispatch.GetCaptionMnu("&viewer::&pictures"), "&Pictures|-1|-1|-1|-1|&Viewer|Viewer");
    EXPECT_EQ(dispatch.GetCaptionMnu("&Browser::&Pictures"), kOtherWindowTypeRecord);
    EXPECT_EQ(dispatch.GetCaptionMnu("&Viewer::Nothing"), kOtherWindowTypeRecord);

    dispatch.DoMnuKeys("&Viewer::Slide &Show", MnuMode::DoMnuKeys);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].code, "2Z(1)");
    EXPECT_EQ(calls[0].arrayIndex, 1);
    dispatch.DoMnuKeys("&Browser::&Pictures", MnuMode::DoMnuKeys);
    EXPECT_EQ(calls.size(), 1u);

    const std::string all = dispatch.AllMnuKeys();
    EXPECT_EQ(all.substr(0, 13), "|09(0)|09(1)|");
    const std::string tail = "|&Viewer::|&Viewer::&Pictures|&Viewer::Slide &Show|";
    ASSERT_GE(all.size(), tail.size());
    EXPECT_EQ(all.substr(all.size() - tail.size()), tail);
    EXPECT_NE(all.find("|Dummy add split at end list|84|"), std::string::npos);
}

TEST_F(Dispatch, AllMnuKeysWithoutWindowTypeMenus) {
    const std::string all = dispatch.AllMnuKeys();
    EXPECT_EQ(all.front(), '|');
    EXPECT_EQ(all.substr(all.size() - 4), "|80|");
    EXPECT_EQ(all.find("::"), std::string::npos);
}

// --- Running commands -------------------------------------------------------

TEST_F(Dispatch, CodesCompareInUpperCase) {
    for (const char* c : {"F_Save", "LA_Fmt", "VSort", "Ea", "EN"}) handle(c);
    for (const char* c : {"F_SAVE", "la_fmt", "VSORT(0)", "EA", "en"}) dispatch.DoMnuKeys(c, MnuMode::DoMnuKeys);
    EXPECT_EQ(ran(), (std::vector<std::string>{"F_SAVE", "LA_FMT", "VSORT(0)", "EA", "EN"}));
    EXPECT_EQ(calls[2].arrayIndex, 0);
}

TEST_F(Dispatch, ArrayHandlerAndItsMembers) {
    handle("AZZ");
    dispatch.DoMnuKeys("AZZ(7)", MnuMode::DoMnuKeys, 3);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].code, "AZZ(7)");
    EXPECT_EQ(calls[0].arrayIndex, 7);
    EXPECT_EQ(calls[0].argument, 3);
    dispatch.DoMnuKeys("AZZ(2)", MnuMode::DoMnuKeys);  // no such member
    handle("09");
    dispatch.DoMnuKeys("09(3)", MnuMode::DoMnuKeys);  // no caption: hidden
    dispatch.DoMnuKeys("09(10)", MnuMode::DoMnuKeys);
    EXPECT_EQ(ran(), (std::vector<std::string>{"AZZ(7)", "09(10)"}));
}

TEST_F(Dispatch, UnknownCodesAndTheDummyDoNothing) {
    handle(kDummySplitCode);
    for (const char* c : {"", "ZZZ", "AZZ(99)", "Dummy add split at end list", "DUMMY ADD SPLIT AT END LIST", "x::y"}) {
        EXPECT_EQ(dispatch.DoMnuKeys(c, MnuMode::DoMnuKeys), "") << c;
    }
    EXPECT_TRUE(calls.empty());
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(Dispatch, FixedCodesRun) {
    handle("RE_DIRLIST");
    handle("84ca");
    dispatch.DoMnuKeys("re_dirlist", MnuMode::DoMnuKeys, 1);
    dispatch.DoMnuKeys("84CA", MnuMode::DoMnuKeys);
    ASSERT_EQ(ran(), (std::vector<std::string>{"RE_DIRLIST", "84CA"}));
    EXPECT_EQ(calls[0].argument, 1);
}

TEST_F(Dispatch, WithoutAFileListWindow) {
    window.window = false;
    for (const char* c : {"WW", "FX", "EO", "HC", "HL", "HK", "HM", "HT", "HA", "FM"}) handle(c);
    for (const char* c : {"WW", "FX", "EO", "HC", "HL", "HK", "HM", "HT", "HA"})
        dispatch.DoMnuKeys(c, MnuMode::DoMnuKeys);
    EXPECT_EQ(calls.size(), 9u);
    EXPECT_TRUE(host.asked().empty());
    EXPECT_FALSE(dispatch.shownEnabled(*tree.find("FM")));
    EXPECT_TRUE(dispatch.shownEnabled(*tree.find("WW")));

    calls.clear();
    host.answer(2);  // Cancel
    dispatch.DoMnuKeys("FM", MnuMode::DoMnuKeys);
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].message,
              "This function requires a File List window.\rThere is no File List window.\r"
              "Do You wish to create a new window now?\r"
              "Press OK to Create a new window now. Press Cancel to stop.");
    EXPECT_EQ(host.asked()[0].buttons, "1");
    EXPECT_TRUE(calls.empty());

    host.answer(1);  // OK: a new window
    dispatch.DoMnuKeys("FM", MnuMode::DoMnuKeys);
    EXPECT_EQ(ran(), std::vector<std::string>{"WW"});
}

TEST_F(Dispatch, RequireFileListWindowWithoutTheOffer) {
    handle("WW");
    host.answer(1);
    EXPECT_FALSE(dispatch.RequireFileListWindow(false));
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].message,
              "This function requires a File List window.\rThere is no File List window.\r"
              "Use menu item \"New\" or \"Get Saved Window\" on Window menu to create a new window.\r"
              "Press OK to continue.");
    EXPECT_TRUE(calls.empty());
}

TEST_F(Dispatch, MenuClickSetsTheLastCodeUnlessEventsAreOff) {
    handle("HL");
    window.off = true;
    EXPECT_FALSE(dispatch.menuClick("HL"));
    EXPECT_EQ(dispatch.lastMnuCode(), "");
    EXPECT_TRUE(calls.empty());
    window.off = false;
    EXPECT_TRUE(dispatch.menuClick("hl"));
    EXPECT_EQ(dispatch.lastMnuCode(), "HL");
    window.states["FM"] = {true, false, false};
    EXPECT_FALSE(dispatch.menuClick("FM"));  // disabled: ignored, but the code is the last one
    EXPECT_EQ(dispatch.lastMnuCode(), "FM");
}

TEST_F(Dispatch, BusCommands) {
    handle("LF");
    handle("OX");
    EXPECT_EQ(dispatch.busCommand("DoMnuKeys", "LF|-1"), "");
    EXPECT_EQ(dispatch.busCommand("DoMnuKeys", "OX|"), "");
    ASSERT_EQ(ran(), (std::vector<std::string>{"LF", "OX"}));
    EXPECT_EQ(calls[0].argument, -1);
    EXPECT_EQ(dispatch.busCommand("GetCaptionMnu", "FM|2"), "&Move|2|-1|-1|-1|&File|File");
    EXPECT_EQ(dispatch.busCommand("AllMnuKeys", "")->substr(0, 7), "|09(0)|");
    EXPECT_FALSE(dispatch.busCommand("Enable Menus", "").has_value());
}
