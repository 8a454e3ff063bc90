// The cells the list maker puts in a row: names, types, paths, sizes, dates
// and times through their masks, with hidden keys that sort in value order.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "filelist/ListJob.h"
#include "filelist/RowTable.h"
#include "support/TempDir.h"

namespace fs = std::filesystem;
using namespace tav;

namespace {

// POSIX seconds of a local date and time.
std::int64_t localSeconds(int y, int mo, int d, int h, int mi, int s) {
    std::tm tm{};
    tm.tm_year = y - 1900;
    tm.tm_mon = mo - 1;
    tm.tm_mday = d;
    tm.tm_hour = h;
    tm.tm_min = mi;
    tm.tm_sec = s;
    tm.tm_isdst = -1;
    return static_cast<std::int64_t>(std::mktime(&tm));
}

void setModified(const fs::path& p, std::int64_t seconds) {
    struct timespec times[2];
    times[0].tv_sec = static_cast<time_t>(seconds);
    times[0].tv_nsec = 0;
    times[1] = times[0];
    ASSERT_EQ(::utimensat(AT_FDCWD, p.c_str(), times, 0), 0);
}

class ListCells : public ::testing::Test {
protected:
    RowTable& list(const std::string& listSpec, std::vector<int> colTypes, const ColumnSpecs& specs = factoryColumnSpecs(),
                   WindowFormats formats = {}) {
        ListJobSpec spec;
        spec.listSpec = listSpec;
        ColumnRequest request;
        request.colTypes = std::move(colTypes);
        spec.layout = SetUpListColumns(request, specs, formats);
        JobContext job;
        FindAndListFiles(spec, job, table);
        return table;
    }
    // The display cell of a ColType in the row of `path`.
    std::string cell(const std::string& name, int colType) {
        const Row& r = rowOf(name);
        return r.cells[static_cast<std::size_t>(table.columnOf(colType))];
    }
    std::string key(const std::string& name, int colType) {
        const Row& r = rowOf(name);
        return r.cells[static_cast<std::size_t>(table.keyColumnOf(colType))];
    }
    const Row& rowOf(const std::string& name) {
        for (const Row& r : table.rows())
            if (fs::path(r.path).filename() == name) return r;
        static Row none;
        ADD_FAILURE() << "no row for " << name;
        none.cells.assign(table.columns().size(), "?");
        return none;
    }
    std::vector<std::string> column(int colType) {
        std::vector<std::string> out;
        for (const Row& r : table.rows()) out.push_back(r.cells[static_cast<std::size_t>(table.columnOf(colType))]);
        return out;
    }
    std::string top() const { return "{" + dir.str() + "/}"; }

    tavtest::TempDir dir;
    RowTable table;
};

}  // namespace

// ---- columns ----

TEST(ListColumns, EveryGridHasTheFiveBaseColumnsAndKeysBehind) {
    ColumnRequest request;
    request.colTypes = {10};
    ColumnLayout layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
    ASSERT_GE(layout.columns.size(), 6u);
    EXPECT_EQ(layout.visibleCount, 1);
    EXPECT_EQ(layout.columns[0].caption, "Title");
    for (int t = 0; t <= 4; ++t) {
        ASSERT_TRUE(layout.wanted(t)) << t;
        EXPECT_TRUE(layout.columns[static_cast<std::size_t>(layout.position[static_cast<std::size_t>(t)])].hidden);
    }
    // Size and No. have numeric keys, which come after every other column.
    ASSERT_GE(layout.keyColumn[3], 0);
    ASSERT_GE(layout.keyColumn[4], 0);
    EXPECT_GT(layout.keyColumn[3], layout.position[4]);
    EXPECT_EQ(layout.columns[static_cast<std::size_t>(layout.keyColumn[3])].mask, "0000000000000000");
    EXPECT_TRUE(layout.readContent);
    EXPECT_EQ(layout.bytesNeeded, 2000);
}

TEST(ListColumns, ReadingIsDecidedByTheContentColumns) {
    ColumnRequest request;
    request.colTypes = {1, 3, 6, 7, 8};
    EXPECT_FALSE(SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{}).readContent);
    request.startValue = "<title>";
    EXPECT_TRUE(SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{}).readContent);
    request.startValue = "*";
    request.colTypes = {1, 15};
    request.firstBytes = 300;
    ColumnLayout layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
    EXPECT_TRUE(layout.readContent);
    EXPECT_FALSE(layout.wholeFile);
    EXPECT_EQ(layout.bytesNeeded, 300);
    request.colTypes = {1, 25};
    EXPECT_TRUE(SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{}).wholeFile);
}

TEST(ListColumns, FoundColumnsNeedASearchAndNamesAreCaptionsOrNumbers) {
    ColumnRequest request;
    request.colTypes = {11, 1, 12, 13, 1, 14};
    ColumnLayout layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
    EXPECT_EQ(layout.visibleCount, 1);
    EXPECT_FALSE(layout.wanted(11));
    EXPECT_EQ(colTypeFromName("fnd at byte no"), 12);
    EXPECT_EQ(colTypeFromName("No."), 4);
    EXPECT_EQ(colTypeFromName("26"), 26);
    EXPECT_EQ(colTypeFromName("14"), -1);
    EXPECT_EQ(colTypeFromName("27"), -1);
    EXPECT_EQ(colTypeFromName("Nothing"), -1);
}

TEST(ListColumns, UserColumnDefinitions) {
    UserColumn u;
    std::string name;
    ASSERT_TRUE(parseUserColumn("[H1 Heading];[<h1>];[</h1>];[];[];[];[];[H1]", u, &name));
    EXPECT_EQ(name, "H1 Heading");
    EXPECT_EQ(u.def.textFrom, "<h1>");
    EXPECT_EQ(u.def.textTo, "</h1>");
    EXPECT_EQ(u.caption, "H1");
    ASSERT_TRUE(parseUserColumn("[Price];[a;b];[c];[];", u));
    EXPECT_EQ(u.def.textFrom, "a;b");
    EXPECT_EQ(u.caption, "Price");
    EXPECT_FALSE(parseUserColumn("[Short];[a];[b]", u));
}

TEST(ListColumns, UserColumnsDifferingOnlyInNameOrCaptionAreOne) {
    std::vector<UserColumn> defined;
    UserColumn a, b, c;
    ASSERT_TRUE(parseUserColumn("[First];[<h1>];[</h1>];[];[];[];[];[One]", a));
    ASSERT_TRUE(parseUserColumn("[Second];[<h1>];[</h1>];[];[];[];[];[Two]", b));
    ASSERT_TRUE(parseUserColumn("[Third];[<H1>];[</h1>];[];[];[];[];[One]", c));
    EXPECT_EQ(DefineUserColumn(defined, a), 27);
    EXPECT_EQ(DefineUserColumn(defined, b), 27);
    EXPECT_EQ(DefineUserColumn(defined, c), 28) << "texts compare with case";
    EXPECT_EQ(defined.size(), 2u);

    // A window that asks for both shows one column.
    ColumnRequest request;
    request.colTypes = {1, 27, 27, 28};
    request.userColumns = defined;
    ColumnLayout layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
    EXPECT_EQ(layout.visibleCount, 3);
    EXPECT_EQ(layout.userColumns.size(), 2u);
    EXPECT_TRUE(layout.wanted(10)) << "the Title comes along, hidden";
}

// ---- cells ----

TEST_F(ListCells, NamesTypesAndDirectories) {
    for (const char* f : {"report.final.txt", "noext", "trail.", "sub/inner.htm"}) dir.write(f, "x");
    list(top(), {1, 2, 3, 0});
    EXPECT_EQ(cell("report.final.txt", 1), "report.final");
    EXPECT_EQ(cell("report.final.txt", 2), "txt");
    EXPECT_EQ(cell("noext", 1), "noext");
    EXPECT_EQ(cell("noext", 2), "");
    EXPECT_EQ(cell("trail.", 1), "trail");
    EXPECT_EQ(cell("trail.", 2), "");
    EXPECT_EQ(cell("sub", 1), "(sub)");
    EXPECT_EQ(cell("sub", 2), "<DIR>");
    EXPECT_EQ(cell("sub", 3), "") << "a directory has no size";
    EXPECT_EQ(key("sub", 3), "");
    EXPECT_EQ(cell("noext", 0), "../") << "one entry: paths are shown relative to it";
}

TEST_F(ListCells, PathsOfSeveralEntriesStayWhole) {
    dir.write("a/one.txt", "x");
    dir.write("b/two.txt", "x");
    list("{" + dir.str() + "/a/}|{" + dir.str() + "/b/}", {1, 0});
    EXPECT_EQ(cell("one.txt", 0), dir.str() + "/a/");
    EXPECT_EQ(cell("two.txt", 0), dir.str() + "/b/");

    table = RowTable();
    list("{" + dir.str() + "/ <*+>}", {1, 0});
    EXPECT_EQ(cell("two.txt", 0), "../b/");
}

TEST_F(ListCells, AHiddenNameHasAnEmptyFileName) {
    dir.write(".profile", "x");
    ListJobSpec spec;
    spec.listSpec = top();
    spec.includeSystemEntry = true;
    ColumnRequest request;
    request.colTypes = {1, 2, 8};
    spec.layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
    JobContext job;
    FindAndListFiles(spec, job, table);
    EXPECT_EQ(cell(".profile", 1), "");
    EXPECT_EQ(cell(".profile", 2), "profile");
    EXPECT_EQ(cell(".profile", 8), "h");
}

TEST_F(ListCells, DatesTimesAndSizesThroughTheWindowMasks) {
    setModified(dir.write("a.txt", std::string(1234, 'x')), localSeconds(2021, 3, 4, 5, 6, 7));
    list(top(), {1, 3, 6, 7, 4});
    EXPECT_EQ(cell("a.txt", 3), "1,234");
    EXPECT_EQ(key("a.txt", 3), "0000000000001234");
    EXPECT_EQ(cell("a.txt", 6), "04 Mar 2021");
    EXPECT_EQ(key("a.txt", 6), "2021/03/04");
    EXPECT_EQ(cell("a.txt", 7), "05:06:07");
    EXPECT_EQ(key("a.txt", 7), "05:06:07");
    EXPECT_EQ(cell("a.txt", 4), "1");

    table = RowTable();
    WindowFormats formats;
    formats.date = "yyyy-mm-dd";
    formats.time = "h:nn AM/PM";
    formats.size = "0.0,,\" MB\"";
    list(top(), {1, 3, 6, 7}, factoryColumnSpecs(), formats);
    EXPECT_EQ(cell("a.txt", 6), "2021-03-04");
    EXPECT_EQ(cell("a.txt", 7), "5:06 AM");
    EXPECT_EQ(key("a.txt", 6), "2021/03/04") << "keys do not depend on the display mask";
}

TEST_F(ListCells, AccessTimesGoToTheLastReadColumns) {
    const fs::path p = dir.write("a.txt", "x");
    struct timespec times[2];
    times[0].tv_sec = static_cast<time_t>(localSeconds(2010, 12, 31, 23, 59, 58));
    times[0].tv_nsec = 0;
    times[1].tv_sec = static_cast<time_t>(localSeconds(2011, 1, 2, 3, 4, 5));
    times[1].tv_nsec = 0;
    ASSERT_EQ(::utimensat(AT_FDCWD, p.c_str(), times, 0), 0);
    list(top(), {1, 19, 20, 6});
    EXPECT_EQ(cell("a.txt", 19), "31 Dec 2010");
    EXPECT_EQ(cell("a.txt", 20), "23:59:58");
    EXPECT_EQ(cell("a.txt", 6), "02 Jan 2011");
}

// ---- sort on keys ----

TEST_F(ListCells, DatesSortInCalendarOrderNotAsDisplayed) {
    setModified(dir.write("late.txt", "x"), localSeconds(2021, 1, 5, 10, 0, 0));
    setModified(dir.write("early.txt", "x"), localSeconds(1999, 12, 31, 10, 0, 0));
    setModified(dir.write("middle.txt", "x"), localSeconds(2005, 2, 28, 10, 0, 0));
    list(top(), {1, 6});
    SortOrder order;
    order.colTypes = {6};
    SortRows(table, order);
    EXPECT_EQ(column(1), (std::vector<std::string>{"early", "middle", "late"}));
    order.ascending = false;
    SortRows(table, order);
    EXPECT_EQ(column(1), (std::vector<std::string>{"late", "middle", "early"}));
}

TEST_F(ListCells, SizesAboveFourGibibytesSortAsNumbers) {
    const fs::path big = dir.write("big.bin", "");
    fs::resize_file(big, 5'000'000'000LL);  // sparse
    dir.write("small.bin", std::string(100, 'x'));
    dir.write("medium.bin", std::string(70000, 'x'));
    list(top(), {1, 3});
    EXPECT_EQ(cell("big.bin", 3), "5,000,000,000");
    EXPECT_EQ(key("big.bin", 3), "0000005000000000");
    SortOrder order;
    order.colTypes = {3};
    SortRows(table, order);
    EXPECT_EQ(column(1), (std::vector<std::string>{"small", "medium", "big"}));
    EXPECT_EQ(table.totals().bytesListed, 5'000'000'000LL + 70100);
}

TEST_F(ListCells, ANumericKeyThatGrowsIsRewrittenInEarlierRows) {
    // A two-digit key for Size: sizes of five digits widen it during the run.
    const ColumnSpecs specs = parseColumnSpecs("", "|||N2|N");
    dir.write("d/a.bin", std::string(7, 'x'));
    dir.write("d/b.bin", std::string(70000, 'x'));
    dir.write("d/c.bin", std::string(300, 'x'));
    dir.write("d/e.bin", std::string(9, 'x'));
    list("{" + dir.str() + "/d/}", {1, 3}, specs);
    for (const Row& r : table.rows())
        EXPECT_EQ(r.cells[static_cast<std::size_t>(table.keyColumnOf(3))].size(), 5u) << r.path;
    SortOrder order;
    order.colTypes = {3};
    SortRows(table, order);
    EXPECT_EQ(column(1), (std::vector<std::string>{"a", "e", "c", "b"}));
}

TEST(ListSort, TextSortIsStableAndCaseIsAChoice) {
    RowTable table;
    ListColumn name;
    name.colType = 1;
    ListColumn no;
    no.colType = 4;
    ListColumn noKey = no;
    noKey.isKey = true;
    noKey.mask = "00";
    noKey.keyMayGrow = true;
    table.begin({name, no, noKey});
    for (const char* n : {"beta", "Alpha", "alpha", "Beta", "gamma"}) {
        Row r;
        r.cells = {n, "", ""};
        table.row(std::move(r));
    }
    table.finish(ListTotals{});
    auto names = [&] {
        std::vector<std::string> out;
        for (const Row& r : table.rows()) out.push_back(r.cells[0]);
        return out;
    };
    SortOrder order;
    order.colTypes = {1, 99, -3, 1};
    EXPECT_EQ(SortRows(table, order), std::vector<int>{1}) << "unknown, negative and repeated columns drop out";
    EXPECT_EQ(names(), (std::vector<std::string>{"Alpha", "alpha", "beta", "Beta", "gamma"}));
    order.caseSensitive = true;
    SortRows(table, order);
    EXPECT_EQ(names(), (std::vector<std::string>{"Alpha", "Beta", "alpha", "beta", "gamma"}));

    // Renumbering follows the new order and keeps the key in step, grown past its mask.
    for (int i = 0; i < 120; ++i) {
        Row r;
        r.cells = {"z", "", ""};
        table.row(std::move(r));
    }
    Renumber(table);
    EXPECT_EQ(table.rows()[0].cells[1], "1");
    EXPECT_EQ(table.rows()[0].cells[2], "001");
    EXPECT_EQ(table.rows()[124].cells[1], "125");
    EXPECT_EQ(table.rows()[124].cells[2], "125");
    order.colTypes = {4};
    order.ascending = false;
    SortRows(table, order);
    EXPECT_EQ(table.rows()[0].cells[1], "125");
    EXPECT_EQ(table.rows()[124].cells[1], "1");
}
