#include "dialogs/StandardButtons.h"

#include <gtest/gtest.h>

#include <sstream>

#include "dialogs/MessageBoxState.h"
#include "dialogs/MessageBuilder.h"
#include "dialogs/MessageText.h"
#include "dialogs/StderrHost.h"

namespace tav {
namespace {

struct ButtonsCase {
    const char* name;
    const char* buttons;
    const char* options;
    std::vector<std::string> captions;
    int esc;
    int cancelCode;  // -99: left as it was
    int retryCode;   // -99: left as it was
    int dflt;
};

class ButtonTable : public ::testing::TestWithParam<ButtonsCase> {};

TEST_P(ButtonTable, CaptionsEscAndCodes) {
    const auto& c = GetParam();
    MessageRequest r;
    r.buttons = c.buttons;
    r.options = c.options;
    ButtonSet set = resolveButtons(r);
    EXPECT_EQ(set.captions, c.captions);
    EXPECT_EQ(set.escButton, c.esc);
    EXPECT_EQ(set.defaultButton, c.dflt);

    MessageBoxState state;
    state.cancelCode = -99;
    state.retryCode = -99;
    applyButtonCodes(set, state);
    EXPECT_EQ(state.cancelCode, c.cancelCode);
    EXPECT_EQ(state.retryCode, c.retryCode);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ButtonTable,
    ::testing::Values(
        ButtonsCase{"Zero", "0", "", {"&OK"}, 1, -99, -99, 1},
        ButtonsCase{"Negative", "-4", "", {"&OK"}, 1, -99, -99, 1},
        ButtonsCase{"EmptyIsZero", "", "", {"&OK"}, 1, -99, -99, 1},
        ButtonsCase{"OkCancel", "1", "", {"&OK", "&Cancel"}, 2, 2, -99, 1},
        ButtonsCase{"AbortRetryIgnore", "2", "", {"&Abort", "&Retry", "&Ignore"}, 0, -99, 2, 1},
        ButtonsCase{"YesNoCancel", "3", "", {"&Yes", "&No", "&Cancel"}, 3, 3, -99, 1},
        ButtonsCase{"YesNo", "4", "", {"&Yes", "&No"}, 2, -99, -99, 1},
        ButtonsCase{"RetryCancel", "5", "", {"&Retry", "&Cancel"}, 2, 2, 1, 1},
        ButtonsCase{"TextHasNoEsc", "&Go|&Stop", "", {"&Go", "&Stop"}, 0, -99, -99, 1},
        ButtonsCase{"TextWithEscOption", "&Go|&Stop", "Esc=2|", {"&Go", "&Stop"}, 2, -99, -99, 1},
        ButtonsCase{"EscOptionOverridesStandard", "3", "Esc=2|", {"&Yes", "&No", "&Cancel"}, 2, 3, -99, 1},
        ButtonsCase{"EscBeyondLastIsNone", "&Go", "Esc=4|", {"&Go"}, 0, -99, -99, 1},
        ButtonsCase{"DefaultFromFlags", "4", "32|256|", {"&Yes", "&No"}, 2, -99, -99, 2},
        ButtonsCase{"NumericOptions", "3", "512", {"&Yes", "&No", "&Cancel"}, 3, 3, -99, 3},
        ButtonsCase{"DefaultBeyondLastIsFirst", "4", "DfltButton=5|", {"&Yes", "&No"}, 2, -99, -99, 1}),
    [](const auto& row) { return std::string(row.param.name); });

struct TitleCase {
    const char* name;
    const char* title;
    const char* app;
    const char* main;
    const char* shown;
};

class TitleRule : public ::testing::TestWithParam<TitleCase> {};

TEST_P(TitleRule, Shown) {
    const auto& c = GetParam();
    EXPECT_EQ(resolveTitle(c.title, c.app, c.main), c.shown);
}

INSTANTIATE_TEST_SUITE_P(Table, TitleRule,
                         ::testing::Values(TitleCase{"DashAppends", "- [Rename]", "Tavelo", "Main", "Tavelo - [Rename]"},
                                           TitleCase{"DashAlone", "-", "Tavelo", "Main", "Tavelo -"},
                                           TitleCase{"OwnTitle", "Find", "Tavelo", "Main", "Find"},
                                           TitleCase{"EmptyTakesApp", "", "Tavelo", "Main", "Tavelo"},
                                           TitleCase{"EmptyAndNoApp", "", "", "Main window", "Main window"},
                                           TitleCase{"DashWithoutApp", "- x", "", "Main", " - x"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MessageText, CaptionsAndAccelerators) {
    EXPECT_EQ(captionText("&Yes"), "Yes");
    EXPECT_EQ(captionText("Save && Go"), "Save & Go");
    EXPECT_EQ(captionText("Do&wn"), "Down");
    EXPECT_EQ(acceleratorOf("Do&wn"), 'w');
    EXPECT_EQ(acceleratorOf("&Yes"), 'y');
    EXPECT_EQ(acceleratorOf("Save && Go"), 0);
    EXPECT_EQ(acceleratorOf("Save && &Go"), 'g');
    EXPECT_EQ(acceleratorOf("Trailing&"), 0);
}

TEST(MessageText, MessageKeepsAmpersandsAndBreaksAtCr) {
    EXPECT_EQ(messagePlainText("A & B\rline #H160#2\r\nend"), "A & B\nline 2\nend");
    EXPECT_EQ(messageLabelText("A & B #H160#x"), "A && B &x");
}

TEST(StderrHost, WritesTheBoxAndAnswersEscOrDefault) {
    resetMbState();
    std::ostringstream out;
    StderrHost host(out, "Tavelo");
    MessageRequest r;
    r.message = "File exists.\rReplace it?";
    r.buttons = "3";
    r.title = "- [Copy]";
    EXPECT_EQ(host.show(r), 3);
    EXPECT_EQ(out.str(), "[Tavelo - [Copy]]\nFile exists.\nReplace it?\nButtons: Yes | No | Cancel\nAnswered: Cancel\n");
    EXPECT_EQ(mbState().cancelCode, 3);

    // A text button list has no Esc button: the default button answers.
    std::ostringstream out2;
    StderrHost host2(out2, "Tavelo");
    MessageRequest t;
    t.message = "Go on?";
    int go = MBAddButton("&Go", t.buttons, true);
    int skip = MBAddButton("&Skip", t.buttons, false);
    t.options = "DfltButton=" + std::to_string(skip) + "|";
    mbState().cancelCode = go;  // the caller's own Cancel button stays
    EXPECT_EQ(host2.show(t), skip);
    EXPECT_EQ(mbState().cancelCode, go);
    EXPECT_NE(out2.str().find("Buttons: Go | Skip\n"), std::string::npos);
}

TEST(StderrHost, ShowsControlsAndSetsRetryCode) {
    resetMbState();
    std::ostringstream out;
    StderrHost host(out, "Tavelo");
    MessageRequest r;
    r.message = "Disk full";
    r.buttons = "5";
    MBAddCtl("Label", "", "Target:", r, true);
    MBAddCtl("TextBox", "", "/tmp/x", r);
    MBAddCtl("CheckBox", "&Remember||||", "-1", r);
    r.values[0] = "13|0|fButton";
    EXPECT_EQ(host.show(r), 2);
    EXPECT_EQ(mbState().retryCode, 1);
    EXPECT_EQ(mbState().cancelCode, 2);
    EXPECT_EQ(mbState().lastKeyData, "13|0|fButton");
    EXPECT_NE(out.str().find("  Target:\n  [/tmp/x]\n  [x] Remember\n"), std::string::npos);
}

}  // namespace
}  // namespace tav
