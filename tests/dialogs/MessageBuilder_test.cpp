#include "dialogs/MessageBuilder.h"

#include <gtest/gtest.h>

#include "core/AppError.h"
#include "dialogs/ControlSpec.h"
#include "dialogs/SpecText.h"

namespace tav {
namespace {

struct SpecCase {
    const char* name;
    const char* written;
    const char* stored;
};

class MBSpecTable : public ::testing::TestWithParam<SpecCase> {};

TEST_P(MBSpecTable, WrittenToStored) { EXPECT_EQ(MBSpec(GetParam().written), GetParam().stored); }

INSTANTIATE_TEST_SUITE_P(
    Table, MBSpecTable,
    ::testing::Values(SpecCase{"Empty", "", ""}, SpecCase{"OneField", "10000", "10000"},
                      SpecCase{"PlainBars", "6000|2000|||||", "6000|~~|2000|~~||~~||~~||~~||~~|"},
                      SpecCase{"BracedFieldKeepsItsBars", "|1|0|{2600|1200|4000|2000}|{1|2}|3|-1",
                               "|~~|1|~~|0|~~|2600|1200|4000|2000|~~|1|2|~~|3|~~|-1"},
                      SpecCase{"BraceAtTheEnd", "a|{b|c}", "a|~~|b|c"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(MBRepeatBars, AddressesAFieldByPosition) {
    EXPECT_EQ(MBRepeatBars(0, "x"), "");
    EXPECT_EQ(MBRepeatBars(-3), "");
    EXPECT_EQ(MBRepeatBars(1, "x"), "x");
    EXPECT_EQ(MBRepeatBars(3, "x"), "x|~~||~~|");
    // Field 8 (select all) of a text box: seven separators before the value.
    ControlSpec spec = parseControlSpec("TextBox|~~|" + MBRepeatBars(8) + "-1");
    EXPECT_TRUE(spec.selectAll());
}

TEST(MBAddButton, NumbersFollowTheListAndFirstResets) {
    std::string list = "stale|list";
    int yes = MBAddButton("&Yes", list, true);
    int no = MBAddButton("&No", list, false);
    int cancel = MBAddButton("&Cancel", list, false);
    EXPECT_EQ(yes, 1);
    EXPECT_EQ(no, 2);
    EXPECT_EQ(cancel, 3);
    EXPECT_EQ(list, "&Yes|&No|&Cancel");
    EXPECT_EQ(MBAddButton("&OK", list, true), 1);
    EXPECT_EQ(list, "&OK");
    std::string empty;
    EXPECT_EQ(MBAddButton("&Go", empty, false), 1);
}

TEST(MBAddCtl, StoresTypeAndSpecAndKeepsArraysParallel) {
    MessageRequest r;
    r.ctlSpecs = {"old", "old"};
    int text = MBAddCtl("TextBox", "10000||||||", "typed", r, true);
    int list = MBAddCtl("_ListBox", MBSpec("|||||-1"), "2", r);
    int label = MBAddCtl("Label", "2000", "[b]:", r);
    EXPECT_EQ(text, 1);
    EXPECT_EQ(list, 2);
    EXPECT_EQ(label, 3);
    ASSERT_EQ(r.ctlSpecs.size(), 4u);
    ASSERT_EQ(r.values.size(), 4u);
    ASSERT_EQ(r.lists.size(), 4u);
    EXPECT_EQ(r.ctlSpecs[1], "TextBox|~~|10000|~~||~~||~~||~~||~~||~~|");
    EXPECT_EQ(r.values[1], "typed");
    // A list control's value is row 0 of its column, not in Values.
    EXPECT_EQ(r.ctlSpecs[2], "_ListBox|~~||~~||~~||~~||~~||~~|-1");
    EXPECT_EQ(r.values[2], "");
    EXPECT_EQ(r.lists[2], (std::vector<std::string>{"2"}));
    EXPECT_TRUE(r.lists[3].empty());
}

TEST(MBAddCtl, EmptyTypeRaises9710) {
    MessageRequest r;
    try {
        MBAddCtl("", "", "", r, true);
        FAIL();
    } catch (const AppError& e) {
        EXPECT_EQ(e.number(), 9710);
    }
}

TEST(MBAddListItem, AppendsInsertsAndRefusesNonLists) {
    MessageRequest r;
    int combo = MBAddCtl("ComboBox", "", "CBtxtabc", r, true);
    EXPECT_EQ(MBAddListItem("one", -1, r), 1);
    EXPECT_EQ(MBAddListItem("three", -1, r), 2);
    EXPECT_EQ(MBAddListItem("two", 2, r, combo), 2);
    EXPECT_EQ(r.lists[combo], (std::vector<std::string>{"CBtxtabc", "one", "two", "three"}));
    MBAddCtl("TextBox", "", "", r);
    try {
        MBAddListItem("x", -1, r);
        FAIL();
    } catch (const AppError& e) {
        EXPECT_EQ(e.number(), 9712);
    }
    EXPECT_THROW(MBAddListItem("x", -1, r, 7), AppError);
}

TEST(MBAddButtons, OneRowOfCommandButtons) {
    MessageRequest r;
    MBAddCtl("Label", "", "Pick:", r, true);
    std::string indices = MBAddButtons(false, "800", "&Up|Do&wn", r);
    EXPECT_EQ(indices, "2|3");
    EXPECT_EQ(r.ctlSpecs[2], "_CommandButton|~~|800");
    EXPECT_EQ(r.values[3], "Do&wn");
    EXPECT_EQ(MBAddButtons(true, "", "&A|&B", r, true), "1|2");
    EXPECT_EQ(r.ctlSpecs[1], "CommandButton|~~|");
    EXPECT_EQ(r.ctlSpecs[2], "_CommandButton|~~|");
}

TEST(MBAddOptionGroup, MarksTheChosenOneAndCarriesCaptions) {
    MessageRequest r;
    int chosen = -5;
    std::string indices = MBAddOptionGroup("&Files|&Dirs|&Both", 2, &chosen, r, "OptionButton", "3000", true);
    EXPECT_EQ(indices, "1|2|3");
    EXPECT_EQ(chosen, 2);
    EXPECT_EQ(r.values[1], "0");
    EXPECT_EQ(r.values[2], "-1");
    ControlSpec second = parseControlSpec(r.ctlSpecs[2]);
    EXPECT_EQ(second.kind, ControlKind::OptionButton);
    EXPECT_FALSE(second.sharesRow);
    EXPECT_EQ(second.caption, "&Dirs");
    EXPECT_EQ(second.width(), 3000);

    MBAddOptionGroup("a|b", 0, &chosen, r, "CheckBox", "", false, true);
    EXPECT_EQ(chosen, 0);
    EXPECT_FALSE(parseControlSpec(r.ctlSpecs[4]).sharesRow);
    EXPECT_TRUE(parseControlSpec(r.ctlSpecs[5]).sharesRow);
    EXPECT_EQ(parseControlSpec(r.ctlSpecs[5]).caption, "b");
}

TEST(ControlSpec, CheckBoxCaptionStandsBeforeTheFields) {
    MessageRequest r;
    int i = MBAddCtl("_CheckBox", "Keep Backup Copy in Rec&ycled dir|2500||-1|||", "-1", r, true);
    ControlSpec spec = parseControlSpec(r.ctlSpecs[i]);
    EXPECT_EQ(spec.kind, ControlKind::CheckBox);
    EXPECT_TRUE(spec.sharesRow);
    EXPECT_EQ(spec.caption, "Keep Backup Copy in Rec&ycled dir");
    EXPECT_EQ(spec.width(), 2500);
    EXPECT_FALSE(spec.height());
    EXPECT_TRUE(spec.bold());
    EXPECT_TRUE(spec.enabled());  // field 13 absent: enabled
}

TEST(ControlSpec, GridFieldsAndListDefaults) {
    std::string stored =
        "Grid|~~|" + MBSpec("5000|3000||||||0|3|2|3|{800|1200|900}|{0|1|2}|2|1|-1|-1|2_3|7");
    ControlSpec g = parseControlSpec(stored);
    EXPECT_EQ(g.kind, ControlKind::Grid);
    EXPECT_EQ(g.width(), 5000);
    EXPECT_EQ(g.rowsToFill(), 0);
    EXPECT_EQ(g.doubleClickAction().action, ListAction::PressButton);
    EXPECT_EQ(g.doubleClickAction().button, 3);
    EXPECT_EQ(g.fixedRows(), 2);
    EXPECT_EQ(g.fixedColumns(), 2);
    EXPECT_EQ(g.columnWidths(), (std::vector<int>{800, 1200, 900}));
    EXPECT_EQ(g.columnAlignments(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(g.scrollBars(), 2);
    EXPECT_TRUE(g.userSort());
    ASSERT_TRUE(g.initialColumns());
    EXPECT_EQ(g.initialColumns()->first, 2);
    EXPECT_EQ(g.initialColumns()->second, 3);
    EXPECT_EQ(g.enterAction().button, 7);

    ControlSpec list = parseControlSpec("ListBox|~~|" + MBSpec("|||||-1"));
    EXPECT_FALSE(list.width());  // empty: the designed width
    EXPECT_EQ(list.doubleClickAction().action, ListAction::ShowText);
    EXPECT_EQ(list.enterAction().action, ListAction::Nothing);
    EXPECT_EQ(list.multiSelect(), 0);
    EXPECT_EQ(parseControlSpec("ListBox|~~|" + MBSpec("0|||||||||2")).multiSelect(), 2);
    EXPECT_FALSE(parseControlSpec("ListBox|~~|" + MBSpec("0|||||||||2")).width());  // zero: designed width
    EXPECT_EQ(parseControlSpec("ListBox|~~|" + MBSpec("||||||||-3")).doubleClickAction().action,
              ListAction::OpenLink);
}

TEST(ControlSpec, MarkersAndUnknownTypes) {
    EXPECT_EQ(parseControlSpec("JustAddHeight|~~||~~|60").kind, ControlKind::JustAddHeight);
    EXPECT_EQ(parseControlSpec("JustAddHeight|~~||~~|60").addHeight(), 60);
    EXPECT_EQ(parseControlSpec("AddButtons before RestCtls|~~|").kind, ControlKind::AddButtonsBeforeRest);
    EXPECT_EQ(parseControlSpec("Frame|~~|1").kind, ControlKind::Unknown);
    EXPECT_EQ(parseControlSpec("Shape").field(1), "");
}

}  // namespace
}  // namespace tav
