// Find Files Containing Text over directories: the list maker with the
// find test. Only files that pass the name, size and date test and hold an
// accepted hit get rows, in walk order, with the Found columns; rejected
// hits go to the rejected list; the content columns come from the same read.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "filelist/FormatCivil.h"
#include "filelist/JobContext.h"
#include "filelist/ListJob.h"
#include "filelist/RowTable.h"
#include "find/FindFileTest.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

namespace fs = std::filesystem;
using namespace tav;

namespace {

FindCriteria textToFind(const std::string& text) {
    FindCriteria c;
    c.text = text;
    return c;
}

// A search over one directory of the tree (with its subdirectories).
struct Search {
    ListJobSpec spec;
    FindFileTest test;
    RowTable table;
    bool ranToEnd = false;

    Search(const tavtest::TempDir& root, const FindCriteria& criteria, const FileFindRecord& record,
           std::vector<int> colTypes = {1, 2, 11, 12, 13}, int64_t today = 0)
        : test(criteria, record, today) {
        spec.listSpec = root.str() + "/";
        spec.subdirsByDefault = true;
        ColumnRequest request;
        request.colTypes = std::move(colTypes);
        request.searchActive = true;
        spec.layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
        spec.fileTest = &test;
    }

    void run(JobContext& job) { ranToEnd = FindAndListFiles(spec, job, table); }
    void run() {
        JobContext job;
        run(job);
    }

    std::string cell(const Row& r, int colType) const {
        return r.cells[static_cast<std::size_t>(table.columnOf(colType))];
    }
    // FileName.Type of every row, in row order.
    std::vector<std::string> names() const {
        std::vector<std::string> out;
        for (const Row& r : table.rows()) out.push_back(cell(r, 1) + "." + cell(r, 2));
        return out;
    }
};

// Sets a file's modified and accessed times to noon of a local date.
void setDate(const fs::path& p, int year, int month, int day) {
    std::tm tm{};
    tm.tm_year = year - 1900;
    tm.tm_mon = month - 1;
    tm.tm_mday = day;
    tm.tm_hour = 12;
    tm.tm_isdst = -1;
    const std::time_t t = std::mktime(&tm);
    struct timespec times[2] = {{t, 0}, {t, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, p.c_str(), times, 0), 0);
}

TEST(DirectorySearch, TheFoundTextCellIsDisplayTextWithoutCutCharacters) {
    const struct {
        const char* name;
        std::string text;
        std::string cell;
    } cases[] = {
        {"plain", "a needle", "a needle\r\n[Bytes 10 to 17]"},
        {"an e acute cut at the start", "\xA9t\xC3\xA9 needle", "t\xC3\xA9 needle\r\n[Bytes 11 to 20]"},
        {"a euro sign cut at the end", "needle \xE2\x82", "needle \r\n[Bytes 10 to 16]"},
        {"a byte of Windows-1252", "caf\xE9 needle", "caf\xC3\xA9 needle\r\n[Bytes 10 to 20]"},
        {"line ends joined", "a\r\n\r\n\r\nneedle", "a\r\n\r\nneedle\r\n[Bytes 10 to 22]"},
    };
    for (const auto& c : cases) {
        const int64_t end = 10 + static_cast<int64_t>(c.text.size()) - 1;
        EXPECT_EQ(foundTextCell(c.text, 10, end), c.cell) << c.name;
    }
    EXPECT_EQ(foundTextCell(std::string(300, 'x'), 1, 300), std::string(200, 'x') + "\r\n[Bytes 1 to 300]");
}

TEST(DirectorySearch, TheOptionsChooseTheFoundColumns) {
    FindOptions o;
    EXPECT_TRUE(foundColumnsFor(o).empty());
    o.showFoundValue = o.showFoundText = true;
    EXPECT_EQ(foundColumnsFor(o), (std::vector<int>{11, 13}));
    o.showFoundAt = true;
    EXPECT_EQ(foundColumnsFor(o), (std::vector<int>{11, 12, 13}));
}

TEST(DirectorySearch, FilesWithAHitGetRowsWithTheFoundColumnsInWalkOrder) {
    tavtest::TempDir root;
    root.write("a.txt", "one needle here");
    root.write("b.txt", "nothing to see");
    root.write("sub/c.txt", "NEEDLE at the start");
    root.write("sub/d.txt", std::string(12000, '.') + "needle");
    Search s(root, textToFind("needle"), FileFindRecord{});
    s.run();
    EXPECT_TRUE(s.ranToEnd);

    // The order of a plain list of the same tree, less the files without a hit.
    ListJobSpec plain = s.spec;
    plain.fileTest = nullptr;
    plain.listDirs = false;
    RowTable all;
    JobContext job;
    FindAndListFiles(plain, job, all);
    std::vector<std::string> expected;
    for (const Row& r : all.rows()) {
        const std::string name = r.cells[static_cast<std::size_t>(all.columnOf(1))] + "." +
                                 r.cells[static_cast<std::size_t>(all.columnOf(2))];
        if (name != "b.txt") expected.push_back(name);
    }
    EXPECT_EQ(s.names(), expected);
    ASSERT_EQ(s.table.rows().size(), 3u);

    for (const Row& r : s.table.rows()) {
        const std::string name = s.cell(r, 1);
        SCOPED_TRACE(name);
        if (name == "a") {
            EXPECT_EQ(s.cell(r, 11), "needle");
            EXPECT_EQ(s.cell(r, 12), "5");
            EXPECT_EQ(s.cell(r, 13), "one needle here\r\n[Bytes 1 to 15]");
        } else if (name == "c") {
            EXPECT_EQ(s.cell(r, 11), "NEEDLE");  // as it stands in the file
            EXPECT_EQ(s.cell(r, 12), "1");
        } else {
            EXPECT_EQ(s.cell(r, 12), "12001");
            // 100 bytes ahead of the hit, the value, nothing behind it.
            EXPECT_EQ(s.cell(r, 13), std::string(100, '.') + "needle\r\n[Bytes 11901 to 12006]");
        }
    }
    EXPECT_EQ(s.test.filesFound(), 3);
    EXPECT_EQ(s.table.totals().filesExamined, 5);  // four files and the subdirectory
}

TEST(DirectorySearch, HitsRejectedByTheCriteriaAreListedUnderTheirFile) {
    tavtest::TempDir root;
    root.write("peter.txt", "Peter Smith wrote");
    root.write("both.txt", "Peter Smith and Smith");
    FindCriteria c = textToFind("Smith");
    c.exclude = "Peter Smith";
    FileFindRecord record;
    record.options.keepAllRejected = true;
    Search s(root, c, record);
    s.spec.subdirsByDefault = false;
    s.run();
    ASSERT_EQ(s.names(), std::vector<std::string>{"both.txt"});
    EXPECT_EQ(s.cell(s.table.rows()[0], 12), "17");

    // Both files are in the list, each under its heading, whatever the order.
    const std::vector<std::string>& lines = s.test.rejected().lines();
    const std::string reject = "Peter Smith   -(Peter Smith)";
    for (const std::string file : {"peter.txt", "both.txt"}) {
        const std::string heading = "^^ File: " + root.str() + "/" + file + " ^^";
        auto at = std::find(lines.begin(), lines.end(), heading);
        ASSERT_NE(at, lines.end()) << heading;
        ASSERT_NE(at + 1, lines.end());
        EXPECT_EQ(*(at + 1), reject);
    }
}

TEST(DirectorySearch, WithoutSaveDetailOfAllTheRejectedListKeepsTheLastFileOnly) {
    tavtest::TempDir root;
    root.write("1.txt", "Peter Smith");
    Search first(root, [] {
        FindCriteria c = textToFind("Smith");
        c.exclude = "Peter Smith";
        return c;
    }(), FileFindRecord{});
    root.write("2.txt", "Peter Smith");
    first.run();
    EXPECT_TRUE(first.table.rows().empty());
    const std::vector<std::string>& lines = first.test.rejected().lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1], "Peter Smith   -(Peter Smith)");
}

struct FilterCase {
    const char* name;
    FileFindRecord record;
    std::vector<std::string> listed;  // sorted
};

FileFindRecord withPattern(const char* p) {
    FileFindRecord r;
    r.pattern = p;
    return r;
}
FileFindRecord withSizes(int64_t min, int64_t max) {
    FileFindRecord r;
    r.minSize = min;
    r.maxSize = max;
    return r;
}
FileFindRecord withDates(DateRange FileFindRecord::*which, std::optional<int64_t> from, std::optional<int64_t> to) {
    FileFindRecord r;
    r.*which = DateRange{true, from, to};
    return r;
}

TEST(DirectorySearch, NameSizeAndDateTestsChooseTheFilesBeforeTheText) {
    tavtest::TempDir root;
    // Every file holds the text; sizes 10, 20, 30; dates 1, 10, 20 March 2020.
    const fs::path small = root.write("small.txt", "x needle x");
    const fs::path mid = root.write("Mid.HTM", "x needle x" + std::string(10, '-'));
    const fs::path big = root.write("big.txt", "x needle x" + std::string(20, '-'));
    // Reading a file moves its access time: the dates are set again for each case.
    auto setDates = [&] {
        setDate(small, 2020, 3, 1);
        setDate(mid, 2020, 3, 10);
        setDate(big, 2020, 3, 20);
    };
    const int64_t mar10 = daySerial(2020, 3, 10);
    FileFindRecord today;
    today.modifiedToday = true;

    const FilterCase cases[] = {
        {"no criteria", FileFindRecord{}, {"Mid.HTM", "big.txt", "small.txt"}},
        {"pattern, case ignored", withPattern("*.htm"), {"Mid.HTM"}},
        {"pattern with ?", withPattern("?ig.*"), {"big.txt"}},
        {"star dot star is every name", withPattern("*.*"), {"Mid.HTM", "big.txt", "small.txt"}},
        {"minimum inclusive", withSizes(20, 0), {"Mid.HTM", "big.txt"}},
        {"maximum inclusive", withSizes(0, 20), {"Mid.HTM", "small.txt"}},
        {"both", withSizes(11, 29), {"Mid.HTM"}},
        {"modified from, inclusive", withDates(&FileFindRecord::modified, mar10, std::nullopt), {"Mid.HTM", "big.txt"}},
        {"modified to, inclusive", withDates(&FileFindRecord::modified, std::nullopt, mar10), {"Mid.HTM", "small.txt"}},
        {"modified on one day", withDates(&FileFindRecord::modified, mar10, mar10), {"Mid.HTM"}},
        {"accessed", withDates(&FileFindRecord::accessed, mar10 + 1, std::nullopt), {"big.txt"}},
        {"today is the day given", today, {"Mid.HTM"}},
    };
    for (const FilterCase& c : cases) {
        SCOPED_TRACE(c.name);
        setDates();
        Search s(root, textToFind("needle"), c.record, {1, 2, 11, 12, 13}, mar10);
        s.run();
        std::vector<std::string> names = s.names();
        std::sort(names.begin(), names.end());
        EXPECT_EQ(names, c.listed);
        // Without a text the same files are listed.
        setDates();
        Search dateOnly(root, FindCriteria{}, c.record, {1, 2, 11, 12, 13}, mar10);
        dateOnly.run();
        names = dateOnly.names();
        std::sort(names.begin(), names.end());
        EXPECT_EQ(names, c.listed);
    }
}

TEST(DirectorySearch, OnlyTheFirstMaximumBytesAreSearched) {
    tavtest::TempDir root;
    root.write("early.txt", std::string(9990, '.') + "needle");
    root.write("late.txt", std::string(10001, '.') + "needle");
    FileFindRecord record;
    record.options.maxBytes = 5;  // rounded up to 10,000
    Search s(root, textToFind("needle"), record);
    s.run();
    EXPECT_EQ(s.names(), std::vector<std::string>{"early.txt"});
}

TEST(DirectorySearch, ContentColumnsComeFromTheSameReadAsTheSearch) {
    tavtest::TempDir root;
    // A hit at the start of a file much larger than one read: the search
    // ends early, the content columns still see the whole file.
    std::string bytes = "<title>Big</title> needle " + std::string(300000, 'x') + "ABCDEFGTHE END";
    root.write("big.htm", bytes);
    root.write("none.htm", "<title>None</title>");
    for (int threads : {1, 2}) {
        SCOPED_TRACE(threads);
        Search s(root, textToFind("needle"), FileFindRecord{}, {1, 10, 11, 12, 16});
        s.spec.content.options.BytL = 7;
        s.spec.contentThreads = threads;
        s.run();
        ASSERT_EQ(s.table.rows().size(), 1u);
        const Row& r = s.table.rows()[0];
        EXPECT_EQ(s.cell(r, 10), "Big");
        EXPECT_EQ(s.cell(r, 12), "20");
        // The last 2 x 7 bytes, cut to 7.
        EXPECT_EQ(s.cell(r, 16), "ABCDEFG");
    }
}

// Files the walk reports that are gone when the search opens them.
DirectoryLister withGhosts(std::vector<std::string> ghosts) {
    return [ghosts](const std::string& dir, std::vector<FoundItem>& items) {
        if (!listDirectory(dir, items)) return false;
        for (const std::string& g : ghosts) {
            FoundItem item;
            item.directory = dir;
            item.name = g;
            item.size = 6;
            items.push_back(item);
        }
        return true;
    };
}

TEST(DirectorySearch, AFileThatCannotBeReadIsNotFoundAndPromptsWithTheChoices) {
    tavtest::TempDir root;
    root.write("open.txt", "needle");
    {
        SCOPED_TRACE("OK, then OK for All: one prompt each, then lines of the error list");
        tavtest::ScriptedHost host;
        host.answer(1);
        host.answer(2);
        Search s(root, textToFind("needle"), FileFindRecord{});
        s.spec.lister = withGhosts({"gone1.txt", "gone2.txt", "gone3.txt"});
        JobContext job(&host);
        s.run(job);
        EXPECT_TRUE(s.ranToEnd);
        EXPECT_EQ(s.names(), std::vector<std::string>{"open.txt"});
        ASSERT_EQ(host.asked().size(), 2u);
        EXPECT_EQ(host.asked()[0].buttons, "&OK|OK for &All|&Cancel");
        const std::string gone1 = root.str() + "/gone1.txt";
        EXPECT_EQ(host.asked()[0].message.rfind("Error when searching for text in file:\r" + gone1 + "\rError: >>", 0),
                  0u);
        ASSERT_EQ(s.table.errors().size(), 1u);
        EXPECT_EQ(s.table.errors()[0].path, root.str() + "/gone3.txt");
    }
    {
        SCOPED_TRACE("Cancel stops the run");
        tavtest::ScriptedHost host;
        host.answer(3);
        Search s(root, textToFind("needle"), FileFindRecord{});
        s.spec.lister = withGhosts({"gone1.txt", "gone2.txt"});
        JobContext job(&host);
        s.run(job);
        EXPECT_FALSE(s.ranToEnd);
        EXPECT_EQ(host.asked().size(), 1u);
    }
}

TEST(DirectorySearch, AStopAtAHitKeepsTheRowsMadeSoFar) {
    tavtest::TempDir root;
    for (int i = 0; i < 5; ++i) root.write("f" + std::to_string(i) + ".txt", "needle");
    root.write("sub/g.txt", "needle");
    Search s(root, textToFind("needle"), FileFindRecord{});
    int popups = 0;
    s.test.onHit = [&](const FoundItem&, const FileVerdict& v) {
        EXPECT_EQ(v.found.value, "needle");
        return ++popups < 2;  // "Sto&p" at the second file
    };
    s.run();
    EXPECT_FALSE(s.ranToEnd);
    EXPECT_EQ(s.table.rows().size(), 2u);
    EXPECT_FALSE(s.table.totals().complete);

    // The Stop button during the search of a file: no row for that file.
    Search t(root, textToFind("needle"), FileFindRecord{});
    JobContext job;
    t.test.onHit = [&](const FoundItem&, const FileVerdict&) {
        job.requestStop();
        return true;
    };
    t.run(job);
    EXPECT_FALSE(t.ranToEnd);
    EXPECT_EQ(t.table.rows().size(), 1u);
}

}  // namespace
