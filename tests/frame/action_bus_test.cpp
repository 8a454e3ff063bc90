// The deferred action bus: how commands are queued, served one a tick, held
// back by the popup marker and by wait entries.
#include <gtest/gtest.h>

#include <vector>

#include "frame/ActionBus.h"

using namespace tav;

namespace {
const std::string S(kBusSeparator);

struct BusFixture : ::testing::Test {
    double now = 3600.0;
    ActionBus bus{[this] { return now; }};

    // Serves ticks until the timer stops (at most `limit`), giving the
    // captions dispatched in order ("" for a tick that dispatched nothing).
    std::vector<std::string> drain(int limit = 20) {
        std::vector<std::string> out;
        while (bus.timerEnabled() && limit-- > 0) {
            auto c = bus.ServiceQueue(false);
            out.push_back(c ? c->caption : "");
        }
        return out;
    }
};
}  // namespace

TEST_F(BusFixture, FlagsOfQueueAction) {
    using Steps = std::vector<std::pair<std::string, std::string>>;  // command, options
    struct Case {
        const char* name;
        Steps steps;
        std::string queue;
    };
    const Case cases[] = {
        {"front of an empty queue leaves a trailing separator", {{"A", ""}}, "A" + S},
        {"front goes before the others", {{"B", ""}, {"A", "0|0|0"}}, "A" + S + "B" + S},
        {"append to an empty queue leaves a leading separator", {{"A", "||True"}}, S + "A"},
        {"append goes behind the others", {{"B", "||1"}, {"A", "||-1"}}, S + "B" + S + "A"},
        {"unique refuses a command already queued", {{"A", ""}, {"B", ""}, {"A", "True|"}}, "B" + S + "A" + S},
        {"unique is a plain search: a longer command holds it", {{"TLVX", ""}, {"TLV", "True|"}}, "TLVX" + S},
        {"a flag written \" False \" is false", {{"TLVX", ""}, {"TLV", " False |"}}, "TLV" + S + "TLVX" + S},
        {"remove first takes out every copy followed by a separator",
         {{"C", ""}, {"A", ""}, {"B", ""}, {"A", ""}, {"A", "|1|1"}},
         "B" + S + "C" + S + S + "A"},
        {"remove first keeps a copy with no separator behind it",
         {{"A", "||1"}, {"B", "||1"}, {"A", "||1"}, {"A", "|1|"}},
         "A" + S + S + "B" + S + "A"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        bus.clear();
        for (const auto& [command, options] : c.steps) bus.QueueAction(command, options);
        EXPECT_EQ(bus.queue(), c.queue);
        EXPECT_TRUE(bus.timerEnabled());
    }
}

TEST_F(BusFixture, LastQueuedToTheFrontRunsFirst) {
    bus.QueueAction("first", "");
    bus.QueueAction("second", "");
    bus.QueueAction("third", "");
    EXPECT_EQ(drain(), (std::vector<std::string>{"third", "second", "first"}));
    EXPECT_FALSE(bus.timerEnabled());
}

TEST_F(BusFixture, AppendingToAnEmptyQueueRunsOnTheSecondTick) {
    bus.QueueAction("DoMnuKeys|EE|", "||True");
    EXPECT_TRUE(bus.timerEnabled());
    EXPECT_FALSE(bus.ServiceQueue(false).has_value());  // the empty entry in front
    EXPECT_TRUE(bus.timerEnabled());
    auto c = bus.ServiceQueue(false);
    ASSERT_TRUE(c.has_value());
    EXPECT_EQ(c->caption, "DoMnuKeys");
    EXPECT_EQ(c->tag, "EE|");
    EXPECT_FALSE(bus.timerEnabled());
}

TEST_F(BusFixture, EntryGivesCaptionAndTag) {
    struct Case {
        const char* entry;
        const char* caption;
        const char* tag;
    };
    const Case cases[] = {
        {"Enable Menus", "Enable Menus", ""},
        {"DoMnuKeys|LF|-1", "DoMnuKeys", "LF|-1"},
        {"1|-7", "1", "-7"},
        {"DropNSetFoc|{a|b}|c", "DropNSetFoc", "{a|b}|c"},
        {"{x|y}|z", "x|y", "y}|z"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.entry);
        bus.clear();
        bus.QueueAction(c.entry, "");
        auto served = bus.ServiceQueue(false);
        ASSERT_TRUE(served.has_value());
        EXPECT_EQ(served->caption, c.caption);
        EXPECT_EQ(served->tag, c.tag);
    }
}

TEST_F(BusFixture, PopupMarkerHoldsEverythingUntilThePopupCloses) {
    bus.QueueAction("Get Rid Popup", "True|");
    bus.HoldWhilePopup();
    bus.HoldWhilePopup();  // one marker only
    EXPECT_EQ(bus.queue(), std::string(kBusWaitMarker) + "Get Rid Popup" + S);
    EXPECT_EQ(bus.headCommand(), "Get Rid Popup");
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(bus.ServiceQueue(true).has_value());
        EXPECT_TRUE(bus.timerEnabled());
    }
    auto c = bus.ServiceQueue(false);
    ASSERT_TRUE(c.has_value());
    EXPECT_EQ(c->caption, "Get Rid Popup");
    EXPECT_EQ(bus.queue(), "");
    EXPECT_FALSE(bus.timerEnabled());
}

TEST_F(BusFixture, WaitEntryBlocksWhatIsBehindItAndSlowsTheTimer) {
    bus.QueueAction(busWaitEntry(3610.0, 250), "||True");
    bus.QueueAction("after", "||True");
    EXPECT_FALSE(bus.ServiceQueue(false).has_value());  // the leading empty entry
    const std::string held = bus.queue();
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(bus.ServiceQueue(false).has_value());
        EXPECT_EQ(bus.queue(), held);
        EXPECT_EQ(bus.interval(), 250);
        EXPECT_TRUE(bus.timerEnabled());
    }
    now = 3610.0;  // no longer earlier: the wait entry goes, running nothing
    EXPECT_FALSE(bus.ServiceQueue(false).has_value());
    EXPECT_EQ(bus.interval(), 1);
    auto c = bus.ServiceQueue(false);
    ASSERT_TRUE(c.has_value());
    EXPECT_EQ(c->caption, "after");
}

TEST_F(BusFixture, WaitEntryKeepsTheLargerInterval) {
    bus.QueueAction(busWaitEntry(7200.0, 0), "");
    EXPECT_FALSE(bus.ServiceQueue(false).has_value());
    EXPECT_EQ(bus.interval(), 1);
}

TEST_F(BusFixture, WaitEntryComparesInSinglePrecision) {
    // 86399.998 and 86400 are the same single-precision value: not earlier.
    now = 86399.998;
    bus.QueueAction(std::string(kBusWaitEntry) + "|86400|100", "");
    EXPECT_FALSE(bus.ServiceQueue(false).has_value());
    EXPECT_TRUE(bus.empty());
}

TEST_F(BusFixture, WaitEntryPastMidnightWaitsForTheSameTimeNextDay) {
    now = 86000.0;
    bus.QueueAction(busWaitEntry(86300.0, 1000), "");
    now = 10.0;  // wrapped past midnight: still earlier
    EXPECT_FALSE(bus.ServiceQueue(false).has_value());
    EXPECT_FALSE(bus.empty());
}

TEST(BusWaitEntry, Text) { EXPECT_EQ(busWaitEntry(3600.5, 200), "<<<WtUntilTmrIs<<<|3600.5|200"); }

TEST(FileListBus, ShowCellWaitsForTheActiveWindow) {
    ActionBus bus([] { return 0.0; });
    EXPECT_TRUE(fileListMayServe(bus, false));  // empty queue
    bus.QueueAction("=z|3|4", "");
    EXPECT_FALSE(fileListMayServe(bus, false));
    EXPECT_TRUE(fileListMayServe(bus, true));
    bus.HoldWhilePopup();
    EXPECT_FALSE(fileListMayServe(bus, false));  // the marker does not hide the head
    bus.clear();
    bus.QueueAction("=zz", "");
    EXPECT_TRUE(fileListMayServe(bus, false));
    bus.QueueAction("=y", "");  // only the head counts
    bus.QueueAction("=z", "||1");
    EXPECT_TRUE(fileListMayServe(bus, false));
}
