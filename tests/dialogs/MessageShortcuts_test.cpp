#include <gtest/gtest.h>

#include "dialogs/MessageBoxState.h"
#include "dialogs/MessageShortcuts.h"
#include "settings/IniStore.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;

namespace {
class Shortcuts : public ::testing::Test {
protected:
    Shortcuts() : ini(service, &host) {
        ini.setDataDir(dir.str());
        ini.setRoleFile(IniRole::Main, ini.qualify("Tavelo.ini"));
        resetMbState();
    }
    // Ticks the "do not show again" box of the next request and presses button 1.
    void tickAndPress(const std::string& thresholdText = {}) {
        host.answerWith([thresholdText](MessageRequest& r) {
            for (size_t i = 1; i < r.ctlSpecs.size(); ++i) {
                if (r.ctlSpecs[i].find("CheckBox") == 0) r.values[i] = "-1";
                if (!thresholdText.empty() && r.ctlSpecs[i].find("_TextBox") == 0) r.values[i] = thresholdText;
            }
            return 1;
        });
    }
    tavtest::TempDir dir;
    ProfileService service;
    tavtest::ScriptedHost host;
    IniStore ini;
};
}  // namespace

TEST_F(Shortcuts, OkBoxEscClosesAndKeyDataIsKept) {
    host.answerWith([](MessageRequest& r) {
        r.values.resize(1);
        r.values[0] = "65|0|";
        return 1;
    });
    EXPECT_EQ(MBOk(host, "Done."), 1);
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].buttons, "0");
    EXPECT_NE(host.asked()[0].options.find("Esc=1"), std::string::npos);
    EXPECT_EQ(mbState().lastKeyData, "65|0|");
}

TEST_F(Shortcuts, OnceIsShownUntilTickedThenSkippedWithMinusTwo) {
    host.answer(1);
    EXPECT_EQ(MBOkOnce(host, ini, "Tip.", "Main", "Tip seen"), 1);
    tickAndPress();
    EXPECT_EQ(MBOkOnce(host, ini, "Tip.", "Main", "Tip seen"), 1);
    EXPECT_EQ(host.asked().size(), 2u);
    EXPECT_EQ(MBOkOnce(host, ini, "Tip.", "Main", "Tip seen"), -1);
    EXPECT_EQ(host.asked().size(), 2u);
    EXPECT_EQ(mbState().cancelCode, -2);
}

TEST_F(Shortcuts, CountFiresFromItsThresholdAndATickIsStoredNegative) {
    ini.put("Main", "Big copy", "100");
    EXPECT_EQ(MBCount(host, ini, 99, "Many files.", "files", true, true, "1", "", "", "Main", "Big copy"), -1);
    EXPECT_EQ(mbState().cancelCode, -1);
    EXPECT_TRUE(host.asked().empty());

    tickAndPress("250");
    EXPECT_EQ(MBCount(host, ini, 150, "Many files.", "files", true, true, "1", "", "", "Main", "Big copy"), 1);
    ASSERT_EQ(host.asked().size(), 1u);
    bool thresholdLabel = false;
    for (const auto& v : host.asked()[0].values)
        thresholdLabel = thresholdLabel || v == "Number of files that will give this message [b]:";
    EXPECT_TRUE(thresholdLabel);
    EXPECT_EQ(ini.get("Main", "Big copy"), "-250");
    // A negative threshold is never above a count: the box shows each time.
    host.answer(1);
    EXPECT_EQ(MBCount(host, ini, 1, "Many files.", "files", true, true, "1", "", "", "Main", "Big copy"), 1);
}

TEST_F(Shortcuts, InputGivesTheTextOrEmptyOnCancel) {
    host.answerWith([](MessageRequest& r) {
        r.values[1] = "new name";
        return 1;
    });
    EXPECT_EQ(MBInput(host, "Name:", "- [Rename]", "old"), "new name");
    EXPECT_EQ(host.asked()[0].values[1], "old");  // the box starts with the default
    host.answerWith([](MessageRequest& r) {
        r.values[1] = "typed";
        return 2;
    });
    EXPECT_EQ(MBInput(host, "Name:", "", "old"), "");
}

TEST_F(Shortcuts, FormattedInputCarriesItsOptionsAndSpec) {
    host.answer(1);
    EXPECT_EQ(MBInputFmt(host, "Name:", "", "abc", true, 50, true, 300, 4000), "abc");
    const MessageRequest& r = host.asked()[0];
    EXPECT_NE(r.options.find("TextBold"), std::string::npos);
    EXPECT_NE(r.options.find("Default and Min Width"), std::string::npos);
    EXPECT_EQ(r.ctlSpecs[1], "TextBox|~~|4000|~~|300|~~||~~||~~||~~||~~||~~|-1");
}

TEST_F(Shortcuts, SequenceMovesTheSelectedItem) {
    std::vector<std::string> items = {"a", "b", "c"};
    auto select = [](int index, int button) {
        return [index, button](MessageRequest& r) {
            r.lists[1][0] = std::to_string(index);
            return button;
        };
    };
    host.answerWith(select(2, 1));  // Up on "c"
    host.answerWith(select(1, 1));  // Up on "c" again
    host.answerWith(select(0, 3));  // OK
    EXPECT_TRUE(MBSequence(host, "Columns", "", items));
    EXPECT_EQ(items, (std::vector<std::string>{"c", "a", "b"}));
    EXPECT_EQ(host.asked()[0].title, "- Sequence for Columns");
    EXPECT_EQ(host.asked()[0].message, "Select Item and Press Up/Down to change sequence.");
    host.answerWith(select(0, 2));  // Down, then Cancel keeps the old order
    host.answer(4);
    EXPECT_FALSE(MBSequence(host, "Columns", "", items));
    EXPECT_EQ(items, (std::vector<std::string>{"c", "a", "b"}));
}

TEST_F(Shortcuts, LinesAddsALineAndKeepsTheEdits) {
    std::vector<std::string> lines = {"one"};
    host.answerWith([](MessageRequest& r) {
        r.values[1] = "first";
        return 3;  // Add Line
    });
    host.answerWith([](MessageRequest& r) {
        EXPECT_EQ(r.values[1], "first");
        r.values[2] = "second";
        return 1;
    });
    EXPECT_TRUE(MBLines(host, lines, "Lines"));
    EXPECT_EQ(lines, (std::vector<std::string>{"first", "second"}));
}
