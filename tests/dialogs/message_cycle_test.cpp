// The prompts that show their box again between steps: the sequence box,
// kept on screen through the NoHide cycle and removed at the end, and the
// lines box, shown again with one more line after "Add Line".
#include <gtest/gtest.h>

#include <functional>

#include "dialogs/MessageOptions.h"
#include "dialogs/MessageShortcuts.h"
#include "support/ScriptedHost.h"

using namespace tav;

namespace {

// Selects item `index` of the list and presses `button`.
std::function<int(MessageRequest&)> select(int index, int button) {
    return [index, button](MessageRequest& r) {
        r.lists[1][0] = std::to_string(index);
        return button;
    };
}

std::vector<std::string> itemsShown(const MessageRequest& r) {
    return std::vector<std::string>(r.lists[1].begin() + 1, r.lists[1].end());
}

MessageOptions optionsOf(const MessageRequest& r) { return MessageOptions::parse(r.options); }

constexpr int kUp = 1, kDown = 2, kOk = 3, kCancel = 4;

}  // namespace

TEST(SequenceCycle, EachStepShowsTheMovedItemsInTheKeptBoxAndTheEndRemovesIt) {
    tavtest::ScriptedHost host;
    std::vector<std::string> items = {"Name", "Size", "Date"};
    host.answerWith(select(2, kUp));    // Date up
    host.answerWith(select(1, kUp));    // Date up again
    host.answerWith(select(0, kDown));  // and down once
    host.answerWith(select(1, kOk));
    ASSERT_TRUE(MBSequence(host, "Columns", "", items));
    EXPECT_EQ(items, (std::vector<std::string>{"Name", "Date", "Size"}));

    const auto& asked = host.asked();
    ASSERT_EQ(asked.size(), 5u);
    // The first box is kept on screen after a press.
    auto first = optionsOf(asked[0]).noHide();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->text, "");
    EXPECT_FALSE(first->secondInstance);
    EXPECT_EQ(itemsShown(asked[0]), (std::vector<std::string>{"Name", "Size", "Date"}));
    EXPECT_EQ(asked[0].lists[1][0], "0");
    // Each step is the kept box shown again, built from the moved items,
    // with the moved item selected.
    const std::vector<std::vector<std::string>> shown = {
        {"Name", "Date", "Size"}, {"Date", "Name", "Size"}, {"Name", "Date", "Size"}};
    const std::vector<std::string> selected = {"1", "0", "1"};
    for (size_t step = 1; step <= 3; ++step) {
        SCOPED_TRACE(step);
        auto again = optionsOf(asked[step]).noHide();
        ASSERT_TRUE(again);
        EXPECT_EQ(again->text, "");  // no validation panel
        EXPECT_TRUE(again->secondInstance);
        EXPECT_FALSE(again->removeOthers);
        EXPECT_EQ(itemsShown(asked[step]), shown[step - 1]);
        EXPECT_EQ(asked[step].lists[1][0], selected[step - 1]);
        EXPECT_EQ(asked[step].title, "- Sequence for Columns");
        EXPECT_EQ(asked[step].buttons, "&Up|Do&wn|&OK|&Cancel");
    }
    // The end: a box without NoHide that is not shown removes the kept one.
    const MessageOptions end = optionsOf(asked[4]);
    EXPECT_TRUE(end.noShow());
    EXPECT_FALSE(end.noHide());
}

struct SequenceCase {
    const char* name;
    std::vector<std::function<int(MessageRequest&)>> steps;
    bool accepted;
    std::vector<std::string> result;
};

class SequenceEnds : public ::testing::TestWithParam<SequenceCase> {};

TEST_P(SequenceEnds, TheOrderChangesOnlyOnOk) {
    tavtest::ScriptedHost host(-99);  // runs out: no button of the box
    for (const auto& step : GetParam().steps) host.answerWith(step);
    std::vector<std::string> items = {"a", "b", "c"};
    EXPECT_EQ(MBSequence(host, "T", "Order:", items), GetParam().accepted);
    EXPECT_EQ(items, GetParam().result);
    EXPECT_EQ(host.asked().front().message, "Order:");
    EXPECT_TRUE(optionsOf(host.asked().back()).noShow());
}

INSTANTIATE_TEST_SUITE_P(
    Steps, SequenceEnds,
    ::testing::Values(
        SequenceCase{"UpOnTheFirstStays", {select(0, kUp), select(0, kOk)}, true, {"a", "b", "c"}},
        SequenceCase{"DownOnTheLastStays", {select(2, kDown), select(2, kOk)}, true, {"a", "b", "c"}},
        SequenceCase{"NothingSelectedMovesNothing", {select(-1, kDown), select(-1, kOk)}, true, {"a", "b", "c"}},
        SequenceCase{"CancelDropsTheMoves", {select(0, kDown), select(1, kCancel)}, false, {"a", "b", "c"}},
        SequenceCase{"EscOrKeyHidesDropsTheMoves", {select(1, kUp), select(0, -2)}, false, {"a", "b", "c"}},
        SequenceCase{"OkKeepsTheMoves", {select(0, kDown), select(1, kDown), select(2, kOk)}, true,
                     {"b", "c", "a"}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(LinesCycle, AddLineShowsTheBoxAgainWithTheTextsAndTheFocusOnTheNewLine) {
    tavtest::ScriptedHost host;
    std::vector<std::string> lines = {"one", "two"};
    host.answerWith([](MessageRequest& r) {
        r.values[2] = "TWO";
        return 3;  // Add Line
    });
    host.answerWith([](MessageRequest& r) {
        r.values[3] = "three";
        return 3;  // Add Line again
    });
    host.answerWith([](MessageRequest& r) {
        r.values[4] = "four";
        return 1;  // OK
    });
    ASSERT_TRUE(MBLines(host, lines, "Lines"));
    EXPECT_EQ(lines, (std::vector<std::string>{"one", "TWO", "three", "four"}));

    const auto& asked = host.asked();
    ASSERT_EQ(asked.size(), 3u);
    for (size_t step = 0; step < asked.size(); ++step) {
        SCOPED_TRACE(step);
        const MessageRequest& r = asked[step];
        // A box closed by its press and shown again: no NoHide.
        EXPECT_FALSE(optionsOf(r).noHide());
        EXPECT_EQ(r.buttons, "&OK|&Cancel|&Add Line");
        ASSERT_EQ(r.ctlSpecs.size(), step + 3);  // entry 0, then one text box a line
        // Only the newest line (the first at the start) takes the focus.
        for (size_t i = 1; i < r.ctlSpecs.size(); ++i) {
            const bool focus = step == 0 ? i == 1 : i == r.ctlSpecs.size() - 1;
            EXPECT_EQ(r.ctlSpecs[i].ends_with("|~~|-1"), focus) << r.ctlSpecs[i];
        }
    }
    EXPECT_EQ(asked[1].values[2], "TWO");
    EXPECT_EQ(asked[1].values[3], "");
    EXPECT_EQ(asked[2].values[3], "three");
}

TEST(LinesCycle, CancelKeepsTheLinesAsTheyWere) {
    tavtest::ScriptedHost host;
    std::vector<std::string> lines = {"one"};
    host.answerWith([](MessageRequest& r) {
        r.values[1] = "changed";
        return 3;
    });
    host.answer(2);
    EXPECT_FALSE(MBLines(host, lines, "Lines"));
    EXPECT_EQ(lines, (std::vector<std::string>{"one"}));
}
