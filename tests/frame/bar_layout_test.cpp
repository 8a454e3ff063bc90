#include <gtest/gtest.h>

#include "frame/BarLayout.h"

using namespace tav;

namespace {

// A window of 12000 x 9000 twips inner size, bars 60 thick, Text frame 2500.
BarGeometry window() {
    BarGeometry g;
    g.innerWidth = 12000;
    g.innerHeight = 9000;
    g.dirFilesBarWidth = 60;
    g.textBarHeight = 60;
    g.topListBarHeight = 60;
    g.textFrameHeight = 2500;
    return g;
}

}  // namespace

TEST(BarLayout, DragNamesAndTheirEntries) {
    EXPECT_EQ(barOfDragName("Sep_DFListsText"), Bar::TextLists);
    EXPECT_EQ(barOfDragName("Sep_DirFiles"), Bar::DirFiles);
    EXPECT_EQ(barOfDragName("Sep_TopListDirList"), Bar::TopListDirList);
    EXPECT_EQ(barOfDragName("fFDgrid"), std::nullopt);  // any other drop does nothing here
    EXPECT_EQ(toggleEntryOf(Bar::TextLists), "% text");
    EXPECT_EQ(toggleEntryOf(Bar::DirFiles), "% tree");
    EXPECT_EQ(toggleEntryOf(Bar::TopListDirList), "% toplist");
}

TEST(BarLayout, DropsAreClampedToTheWindow) {
    const BarGeometry g = window();
    struct Row {
        const char* name;
        Bar bar;
        int position;
        int size;
    } rows[] = {
        {"text past the bottom", Bar::TextLists, 20000, 9000 - 60},
        {"text above the top", Bar::TextLists, -500, 0},
        {"text inside", Bar::TextLists, 4000, 4000},
        {"tree past the right", Bar::DirFiles, 13000, 12000 - 60},
        {"tree past the left", Bar::DirFiles, -1, 0},
        {"top list below the column", Bar::TopListDirList, 9000, 9000 - 2500 - 60 - 60},
        {"top list above the top", Bar::TopListDirList, -3000, 0},
        {"top list exactly at the limit", Bar::TopListDirList, 6380, 6380},
    };
    for (const Row& r : rows) EXPECT_EQ(MoveBar(r.bar, r.position, g).size, r.size) << r.name;
}

TEST(BarLayout, TopListIsFirstSetProvisionallySoTheColumnLaysOut) {
    const BarGeometry g = window();
    EXPECT_EQ(MoveBar(Bar::TopListDirList, 500, g).provisional, 1500);
    EXPECT_EQ(MoveBar(Bar::TopListDirList, -4000, g).provisional, 0);
    EXPECT_EQ(MoveBar(Bar::TextLists, 500, g).provisional, std::nullopt);
}

TEST(BarLayout, ArrowKeysMoveByStepsOf120) {
    const BarGeometry g = window();
    EXPECT_EQ(keyStepOf(false, false), 120);
    EXPECT_EQ(keyStepOf(true, false), 40);
    EXPECT_EQ(keyStepOf(false, true), 360);
    struct Row {
        Bar bar;
        int key;
        bool shift, ctrl;
        int current;
        std::optional<int> size;
    } rows[] = {
        {Bar::TextLists, 40, false, false, 2500, 2620},
        {Bar::TextLists, 38, true, false, 2500, 2460},
        {Bar::TopListDirList, 40, false, true, 1800, 2160},
        {Bar::DirFiles, 39, true, false, 3000, 3040},
        {Bar::DirFiles, 37, false, true, 3000, 2640},
        {Bar::DirFiles, 37, false, false, 50, 0},          // clamped at 0
        {Bar::TextLists, 40, false, true, 8900, 8940},     // clamped at the limit
        {Bar::DirFiles, 38, false, false, 3000, std::nullopt},  // Up does not move the tree bar
        {Bar::TextLists, 39, false, false, 2500, std::nullopt},
        {Bar::TextLists, 65, false, false, 2500, std::nullopt},
    };
    for (const Row& r : rows)
        EXPECT_EQ(keyedBarMove(r.bar, r.key, r.shift, r.ctrl, r.current, g), r.size)
            << static_cast<int>(r.bar) << " key " << r.key;
}

TEST(BarLayout, RepositionCommandsOfTheKeyTable) {
    auto c = parseRepositionCommand("Reposition Tree bar - Move Left");
    ASSERT_TRUE(c);
    EXPECT_EQ(c->bar, Bar::DirFiles);
    EXPECT_EQ(c->action, BarAction::Decrease);
    c = parseRepositionCommand("Reposition List bar - Toggle");
    ASSERT_TRUE(c);
    EXPECT_EQ(c->bar, Bar::TopListDirList);
    EXPECT_EQ(c->action, BarAction::Toggle);
    EXPECT_EQ(parseRepositionCommand("Reposition Text bar - Move Down")->action, BarAction::Increase);
    EXPECT_FALSE(parseRepositionCommand("Reposition Text bar - Move Left"));
    EXPECT_FALSE(parseRepositionCommand("Reposition Tree bar - Move Up"));
}

TEST(BarLayout, PercentMovesAreClamped) {
    const BarGeometry g = window();
    EXPECT_EQ(percentBarMove(Bar::TextLists, 2500, 5, 1, g), 2950);   // 5% of 9000
    EXPECT_EQ(percentBarMove(Bar::DirFiles, 3000, 5, -1, g), 2400);   // 5% of 12000
    EXPECT_EQ(percentBarMove(Bar::TextLists, 200, 5, -1, g), 0);
    EXPECT_EQ(percentBarMove(Bar::TextLists, 8800, 5, 1, g), 8940);
}

TEST(BarLayout, ToggleGoesToTheFartherPosition) {
    // "30|60" of 9000: p1 2700, p2 5400.
    struct Row {
        const char* name;
        int current;
        const char* entry;
        int result;
    } rows[] = {
        {"near p1", 2600, "30|60", 5400},
        {"near p2", 5000, "30|60", 2700},
        {"exactly half way", 4050, "30|60", 5400},
        {"positions equal", 1000, "40|40", 3600},
        {"positions equal, already there", 3600, "40|40", 3600},
        {"second missing reads 0", 100, "30", 2700},
    };
    for (const Row& r : rows) EXPECT_EQ(ToggleBar(r.current, r.entry, 9000), r.result) << r.name;
}

TEST(BarLayout, SavingATogglePositionKeepsTheOtherElement) {
    EXPECT_EQ(SaveTogglePosition("30|60", 2250, 9000, 1), "25|60");
    EXPECT_EQ(SaveTogglePosition("30|60", 6300, 9000, 2), "30|70");
    EXPECT_EQ(SaveTogglePosition("", 4500, 9000, 2), "|50");
    EXPECT_EQ(SaveTogglePosition("30|60", 100, 0, 1), std::nullopt);
    EXPECT_EQ(SaveTogglePosition("30|60", 100, 1000, 3), std::nullopt);
    // Whole percentages round half to even, and stay within 16 bits.
    EXPECT_EQ(wholePercent(125, 1000), 12);
    EXPECT_EQ(wholePercent(135, 1000), 14);
    EXPECT_EQ(wholePercent(400000, 1000), std::nullopt);
}

TEST(BarLayout, SavePairFollowsThePresentPercentage) {
    struct Row {
        const char* name;
        const char* entry;
        double size, total;
        bool first, second;
    } rows[] = {
        {"between the two", "30|60", 4000, 10000, true, true},
        {"beyond the second", "30|60", 7000, 10000, false, true},
        {"before the first", "30|60", 2000, 10000, true, false},
        {"at the second", "30|60", 6000, 10000, true, true},
        {"no total", "30|60", 4000, 0, false, false},
    };
    for (const Row& r : rows) {
        const SavePairState s = savePairEnabled(r.entry, r.size, r.total);
        EXPECT_EQ(s.first, r.first) << r.name;
        EXPECT_EQ(s.second, r.second) << r.name;
    }
}

TEST(BarLayout, ShrinkingBelowTheTextFrameReducesItForGood) {
    const std::string options = "2500|3000|0|plain|{/home/a|b.txt}|/c|/m";
    TextFrameResize r = resizeTextFrame(2000, options, false, false);
    EXPECT_TRUE(r.acted);
    EXPECT_TRUE(r.reduced);
    EXPECT_EQ(r.frameHeight, 1895);
    EXPECT_EQ(r.textOptions, "2500|1895|0|plain|{/home/a|b.txt}|/c|/m");

    // Growing again keeps the reduced height.
    r = resizeTextFrame(9000, r.textOptions, false, false);
    EXPECT_FALSE(r.reduced);
    EXPECT_EQ(r.frameHeight, 1895);

    EXPECT_EQ(resizeTextFrame(50, options, false, false).frameHeight, 0);
    EXPECT_EQ(resizeTextFrame(3105, options, false, false).reduced, false);  // exactly fits
    EXPECT_FALSE(resizeTextFrame(100, options, true, false).acted);
    EXPECT_EQ(resizeTextFrame(100, options, false, true).textOptions, options);
}
