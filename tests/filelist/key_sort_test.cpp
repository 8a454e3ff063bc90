// The fast sort of large lists gives the very order of the plain text sort:
// case folding, shorter keys first, ties left in their order, descending,
// keys that share their first eight bytes, and missing cells.
#include <gtest/gtest.h>

#include <random>

#include "filelist/KeySort.h"
#include "grid_test_rows.h"

using namespace tav;

namespace {

// Rows whose names and keys are drawn from few letters, so that equal
// keys, common prefixes longer than eight bytes and case pairs abound.
void fillRandom(RowTable& table, int count, unsigned seed, bool zeroBytes = false) {
    std::mt19937 random(seed);
    const std::string letters("aAbB0\xE9~\0", zeroBytes ? 8 : 7);
    auto word = [&](int maxLength) {
        std::string w = random() % 2 ? "prefix12" : "";
        const int length = static_cast<int>(random() % static_cast<unsigned>(maxLength + 1));
        for (int i = 0; i < length; ++i) w += letters[random() % letters.size()];
        return w;
    };
    table.begin(gridtest::gridColumns());
    for (int i = 0; i < count; ++i) {
        Row r;
        r.cells = {std::to_string(i), word(3), word(2), "", "", word(4), word(3)};
        if (i % 17 == 0) r.cells.resize(3);  // a row cut short
        r.path = std::to_string(i);
        table.row(std::move(r));
    }
}

std::vector<std::string> identities(const RowTable& table) {
    std::vector<std::string> v;
    for (const Row& r : table.rows()) v.push_back(r.path);
    return v;
}

struct OrderCase {
    const char* name;
    std::vector<int> colTypes;
    bool ascending, caseSensitive;
};

class KeySortTest : public ::testing::TestWithParam<OrderCase> {};

TEST_P(KeySortTest, GivesTheOrderOfTheTextSort) {
    for (unsigned seed : {1u, 2u, 3u}) {
        RowTable plain, fast;
        fillRandom(plain, 3000, seed);
        fillRandom(fast, 3000, seed);
        SortOrder order;
        order.colTypes = GetParam().colTypes;
        order.ascending = GetParam().ascending;
        order.caseSensitive = GetParam().caseSensitive;
        EXPECT_EQ(SortRowsByKeys(fast, order), SortRows(plain, order));
        EXPECT_EQ(identities(fast), identities(plain)) << "seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Orders, KeySortTest,
    ::testing::Values(OrderCase{"NameWithoutCase", {col::FileName}, true, false},
                      OrderCase{"NameWithCase", {col::FileName}, true, true},
                      OrderCase{"NameDescending", {col::FileName}, false, false},
                      OrderCase{"TwoKeysThenName", {col::Date, col::Size, col::FileName}, true, false},
                      OrderCase{"TypeThenSizeDescendingWithCase", {col::Type, col::Size}, false, true},
                      OrderCase{"RepeatsAndUnknownsDropped", {col::Title, col::Type, -2, col::Type}, true, false}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(KeySort, KeysHoldingZeroBytesStillSortAsText) {
    RowTable plain, fast;
    fillRandom(plain, 3000, 9, true);
    fillRandom(fast, 3000, 9, true);
    SortOrder order;
    order.colTypes = {col::Type, col::FileName, col::Date};
    SortRows(plain, order);
    SortRowsByKeys(fast, order);
    EXPECT_EQ(identities(fast), identities(plain));
}

TEST(KeySort, OneRowOrNoColumnLeavesTheList) {
    RowTable table;
    fillRandom(table, 1, 5);
    SortOrder order;
    order.colTypes = {col::FileName};
    EXPECT_EQ(SortRowsByKeys(table, order), std::vector<int>{col::FileName});
    fillRandom(table, 50, 5);
    const auto before = identities(table);
    order.colTypes = {col::Title};
    EXPECT_TRUE(SortRowsByKeys(table, order).empty());
    EXPECT_EQ(identities(table), before);
}

TEST(KeySort, MarksTravelWithTheirRows) {
    RowTable table;
    gridtest::fill(table, {{"b", "", "", "", "", ""}, {"a", "", "", "", "", ""}});
    table.rows()[0].blue = true;
    table.rows()[1].hidden = true;
    SortOrder order;
    order.colTypes = {col::FileName};
    SortRowsByKeys(table, order);
    EXPECT_EQ(gridtest::names(table), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(table.rows()[0].hidden && !table.rows()[0].blue);
    EXPECT_TRUE(table.rows()[1].blue && !table.rows()[1].hidden);
}

}  // namespace
