// Content columns of a list, files that fail while being read, stopping a
// run, and the job's progress reports.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/AppError.h"
#include "filelist/ListJob.h"
#include "filelist/RowBatcher.h"
#include "filelist/RowTable.h"
#include "support/TempDir.h"

namespace fs = std::filesystem;
using namespace tav;

namespace {

ListJobSpec specFor(const std::string& listSpec, std::vector<int> colTypes, std::vector<UserColumn> users = {}) {
    ListJobSpec spec;
    spec.listSpec = listSpec;
    spec.listDirs = false;
    ColumnRequest request;
    request.colTypes = std::move(colTypes);
    request.userColumns = std::move(users);
    spec.layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
    spec.content.options.BytF = 12;
    spec.content.options.PBytF = 200;
    return spec;
}

std::string cellOf(const RowTable& table, const std::string& name, int colType) {
    for (const Row& r : table.rows())
        if (fs::path(r.path).filename() == name) return r.cells[static_cast<std::size_t>(table.columnOf(colType))];
    ADD_FAILURE() << "no row for " << name;
    return {};
}

// A sink that does something when a row arrives.
class HookedTable : public RowTable {
public:
    std::function<void(const Row&)> onRow;
    bool row(Row&& r) override {
        if (onRow) onRow(r);
        return RowTable::row(std::move(r));
    }
};

// The cells of every row of a run on `threads` readers.
std::vector<std::vector<std::string>> rowsOn(ListJobSpec spec, int threads) {
    RowTable table;
    JobContext job;
    spec.contentThreads = threads;
    EXPECT_TRUE(FindAndListFiles(spec, job, table));
    std::vector<std::vector<std::string>> rows;
    for (const Row& r : table.rows()) rows.push_back(r.cells);
    return rows;
}

const char* const kPage =
    "<html><head><title>Fish and\r\nchips</title>\r\n"
    "<meta name=\"description\" content=\"All about fish\">\r\n</head>\r\n"
    "<body><h1>Menu</h1><p>Mail us at cook@example.com or see www.example.com/menu.\r\n"
    "Second line of text.</p></body></html>\r\n";

}  // namespace

TEST(ListContent, ContentColumnsComeFromOneReadOfEachFile) {
    tavtest::TempDir dir;
    dir.write("page.htm", kPage);
    dir.write("plain.txt", "just some words");
    RowTable table;
    JobContext job;
    ListJobSpec spec = specFor("{" + dir.str() + "/}", {1, 10, 15, 21, 25, 26});
    EXPECT_TRUE(FindAndListFiles(spec, job, table));
    EXPECT_EQ(cellOf(table, "page.htm", 10), "Fish and chips");
    EXPECT_EQ(cellOf(table, "page.htm", 15), "<html><head>");
    EXPECT_NE(cellOf(table, "page.htm", 21).find("Menu"), std::string::npos);
    EXPECT_EQ(cellOf(table, "page.htm", 21).find('\r'), std::string::npos) << "cells keep to one line";
    EXPECT_EQ(cellOf(table, "page.htm", 26), "cook@example.com");
    EXPECT_NE(cellOf(table, "page.htm", 25).find("www.example.com/menu"), std::string::npos);
    EXPECT_EQ(cellOf(table, "plain.txt", 15), "just some wo");
    EXPECT_EQ(cellOf(table, "plain.txt", 26), "");
}

TEST(ListContent, UserColumnsAreCutFromTheFile) {
    tavtest::TempDir dir;
    dir.write("page.htm", kPage);
    UserColumn h1;
    ASSERT_TRUE(parseUserColumn("[H1 Heading];[<h1>];[</h1>];[];[];[];[];[H1]", h1));
    h1.def.colType = 27;
    RowTable table;
    JobContext job;
    EXPECT_TRUE(FindAndListFiles(specFor("{" + dir.str() + "/}", {1, 27}, {h1}), job, table));
    EXPECT_EQ(cellOf(table, "page.htm", 27), "Menu");
    EXPECT_EQ(table.columns()[1].caption, "H1");
    EXPECT_GE(table.columnOf(10), 0) << "the Title is there, hidden, for the user column";
}

TEST(ListContent, AFileThatVanishesKeepsItsRowWithAnErrorLine) {
    tavtest::TempDir dir;
    dir.write("d/first.htm", kPage);
    dir.write("d/second.htm", kPage);
    HookedTable table;
    std::string gone;
    table.onRow = [&](const Row& r) {
        if (!gone.empty()) return;
        gone = fs::path(r.path).filename() == "first.htm" ? dir.str() + "/d/second.htm" : dir.str() + "/d/first.htm";
        fs::remove(gone);
    };
    JobContext job;
    EXPECT_TRUE(FindAndListFiles(specFor("{" + dir.str() + "/d/}", {1, 10, 3}), job, table));
    ASSERT_EQ(table.rows().size(), 2u);
    EXPECT_EQ(table.rows()[1].path, gone);
    EXPECT_EQ(table.rows()[1].cells[static_cast<std::size_t>(table.columnOf(10))], "");
    EXPECT_EQ(table.rows()[1].cells[static_cast<std::size_t>(table.columnOf(3))], std::to_string(std::string(kPage).size()))
        << "the size found by the walk stays";
    EXPECT_EQ(table.rows()[0].cells[static_cast<std::size_t>(table.columnOf(10))], "Fish and chips");
    ASSERT_EQ(table.errors().size(), 1u);
    EXPECT_EQ(table.errors()[0].text, "Error opening file >>" + gone + "<<.");
    EXPECT_TRUE(table.totals().complete);
}

TEST(ListContent, AFileIsReadAsTheWalkFoundIt) {
    tavtest::TempDir dir;
    dir.write("grows.txt", "first part;");
    for (int threads : {1, 2}) {
        dir.write("grows.txt", "first part;");
        ListJobSpec spec = specFor("{" + dir.str() + "/}", {1, 16});
        spec.content.options.BytL = 5;
        spec.contentThreads = threads;
        spec.lister = [&](const std::string& d, std::vector<FoundItem>& items) {
            const bool ok = listDirectory(d, items);
            std::ofstream(dir / "grows.txt", std::ios::app) << "second part";  // written after the walk
            return ok;
        };
        RowTable table;
        JobContext job;
        EXPECT_TRUE(FindAndListFiles(spec, job, table));
        // The last ten bytes, cut to five characters: of the file as it was.
        EXPECT_EQ(cellOf(table, "grows.txt", 16), "irst ") << threads;
    }
}

TEST(ListContent, ASectionWithoutTagsIsReportedOnce) {
    tavtest::TempDir dir;
    dir.write("big.txt", std::string(5'000'100, 'a'));
    RowTable table;
    JobContext job;
    FindAndListFiles(specFor("{" + dir.str() + "/}", {1, 23}), job, table);
    ASSERT_EQ(table.rows().size(), 1u);
    ASSERT_EQ(table.errors().size(), 1u);
    EXPECT_NE(table.errors()[0].text.find("No html tags"), std::string::npos);
}

// ---- stopping ----

TEST(ListStop, AStopAfterNFilesKeepsTheRowsMadeSoFar) {
    tavtest::TempDir dir;
    for (int i = 0; i < 20; ++i) dir.write("f" + std::to_string(i) + ".txt", "x");
    HookedTable table;
    JobContext job;
    table.onRow = [&](const Row&) {
        if (table.rows().size() + 1 == 5) job.requestStop();
    };
    EXPECT_FALSE(FindAndListFiles(specFor("{" + dir.str() + "/}", {1}), job, table));
    EXPECT_EQ(table.rows().size(), 5u);
    EXPECT_FALSE(table.totals().complete);
    EXPECT_EQ(table.totals().filesListed, 5);
    EXPECT_TRUE(table.finished());
    const std::string entry = dir.str() + "/";
    EXPECT_EQ(table.totals().message, " Incomplete List of Files/Subdirectories for directory: " + entry +
                                          ".Interrupted at: 5.  Interrupted using Stop button.");
    EXPECT_EQ(table.totals().caption, "Incomplete " + entry + "*");
    EXPECT_EQ(table.totals().entries, std::vector<std::string>{entry + "* (incomplete)"});
}

TEST(ListStop, ARunToItsEndDescribesItsEntries) {
    tavtest::TempDir dir;
    dir.write("a/x.TXT", "x");
    dir.write("b/y.htm", "x");
    RowTable table;
    JobContext job;
    const std::string a = dir.str() + "/a/", b = dir.str() + "/b/";
    EXPECT_TRUE(FindAndListFiles(specFor("{" + a + "*.TXT}|{" + b + " <htm+>}", {1}), job, table));
    EXPECT_EQ(table.totals().caption, a + "*.txt, " + b + "htm <+>");
    EXPECT_EQ(table.totals().wildEntries, std::vector<std::string>{a + "*.txt"});
    EXPECT_EQ(table.totals().namedEntries, std::vector<std::string>{b + "htm <+>"});
    EXPECT_EQ(table.totals().message, "");
    EXPECT_TRUE(table.totals().complete);
}

TEST(ListStop, ASinkThatWantsNoMoreEndsTheRun) {
    tavtest::TempDir dir;
    for (int i = 0; i < 10; ++i) dir.write("s" + std::to_string(i) + "/f.txt", "x");
    RowTable table;
    table.setRowLimit(3);
    JobContext job;
    ListJobSpec spec = specFor("{" + dir.str() + "/ <*+>}", {1});
    EXPECT_FALSE(FindAndListFiles(spec, job, table));
    EXPECT_EQ(table.rows().size(), 3u);
}

TEST(ListStop, AStopDuringAReadLeavesNoRowForThatFile) {
    tavtest::TempDir dir;
    dir.write("d/one.htm", std::string(300'000, 'x') + "<p>");
    // Stops when the job first looks at it inside a read.
    class StopInRead : public JobContext {
    public:
        bool stopRequested() const override { return ++calls_ > 1; }
        mutable int calls_ = 0;
    } job;
    RowTable table;
    EXPECT_FALSE(FindAndListFiles(specFor("{" + dir.str() + "/d/}", {1, 22}), job, table));
    EXPECT_TRUE(table.rows().empty());
    EXPECT_FALSE(table.totals().complete);
}

// ---- progress ----

TEST(ListProgress, ReportsAreAtMostTenASecond) {
    JobContext job;
    JobContext::Clock::time_point now{};
    job.setClock([&] { return now; });
    int reports = 0;
    job.setProgressHandler([&](const JobProgress&) { ++reports; });
    EXPECT_TRUE(job.progress({}));
    for (int i = 0; i < 50; ++i) {
        now += std::chrono::milliseconds(1);
        job.progress({});
    }
    EXPECT_EQ(reports, 1);
    now += std::chrono::milliseconds(60);
    EXPECT_TRUE(job.progress({}));
    EXPECT_EQ(reports, 2);
    job.requestStop();
    EXPECT_THROW(job.checkpoint(), AppError);
    job.clearStop();
    EXPECT_NO_THROW(job.checkpoint());
}

// ---- reading on worker threads ----

TEST(ListThreads, RowsLeaveInWalkOrderWithTheSameCells) {
    tavtest::TempDir dir;
    for (int i = 0; i < 40; ++i) {
        const std::string n = std::to_string(i);
        // Files of very different lengths, so that reads finish out of order.
        dir.write("s" + std::to_string(i % 3) + "/p" + n + ".htm",
                  "<html><title>Page " + n + "</title>" + std::string(static_cast<std::size_t>(i % 7) * 90000, ' ') +
                      "<p>mail" + n + "@example.com</p></html>");
    }
    dir.write("s1/gone/keep.txt", "x");
    ListJobSpec spec = specFor("{" + dir.str() + "/ <*+>}", {4, 1, 10, 26, 22, 3});
    spec.listDirs = true;
    const auto one = rowsOn(spec, 1);
    ASSERT_EQ(one.size(), 45u);
    EXPECT_EQ(rowsOn(spec, 3), one);
    EXPECT_EQ(rowsOn(spec, 2), one);
}

// More files than the readers' queue holds: the job waits for stretches of
// rows, and cells with line ends are cleaned on the readers.
TEST(ListThreads, AQueueFullManyTimesOverKeepsOrderAndCells) {
    tavtest::TempDir dir;
    for (int i = 0; i < 1300; ++i) {
        const std::string n = std::to_string(i);
        dir.write("d" + std::to_string(i % 4) + "/p" + n + ".htm",
                  "<title>Page\r\n" + n + "</title><h1>H\n" + n + "</h1>" +
                      std::string(static_cast<std::size_t>(i % 11) * 3000, 'x') + "<p>m" + n + "@example.com</p>");
    }
    // Files too long for the job's own thread to take go to the workers.
    std::string big;
    for (int i = 0; big.size() < 5u << 20; ++i) big += "<p>line " + std::to_string(i) + " mail@big.org</p>\n";
    dir.write("d2/big.htm", "<title>Big</title>" + big);
    UserColumn h1;
    ASSERT_TRUE(parseUserColumn("[H1 Heading];[<h1>];[</h1>];[];[];[];[];[H1]", h1));
    h1.def.colType = 27;
    const ListJobSpec all = specFor("{" + dir.str() + "/ <*+>}", {4, 1, 10, 26, 15, 27}, {h1});
    const auto one = rowsOn(all, 1);
    ASSERT_EQ(one.size(), 1301u);
    EXPECT_EQ(rowsOn(all, 2), one);
    EXPECT_EQ(rowsOn(all, 3), one);
    RowTable table;
    JobContext job;
    ListJobSpec spec = specFor("{" + dir.str() + "/ <*+>}", {1, 10, 27}, {h1});
    spec.contentThreads = 2;
    ASSERT_TRUE(FindAndListFiles(spec, job, table));
    EXPECT_EQ(cellOf(table, "p7.htm", 10), "Page 7");
    EXPECT_EQ(cellOf(table, "p7.htm", 27), "H 7");
}

TEST(ListThreads, AStopKeepsTheRowsBeforeItInOrder) {
    tavtest::TempDir dir;
    for (int i = 0; i < 30; ++i) dir.write("f" + std::to_string(i) + ".htm", "<title>t</title>");
    RowTable table;
    table.setRowLimit(7);
    JobContext job;
    ListJobSpec spec = specFor("{" + dir.str() + "/}", {4, 1, 10});
    spec.contentThreads = 3;
    EXPECT_FALSE(FindAndListFiles(spec, job, table));
    ASSERT_EQ(table.rows().size(), 7u);
    for (std::size_t i = 0; i < 7; ++i)
        EXPECT_EQ(table.rows()[i].cells[static_cast<std::size_t>(table.columnOf(4))], std::to_string(i + 1));
}

TEST(ListThreads, AVanishedFileIsReportedFromAWorker) {
    tavtest::TempDir dir;
    dir.write("a.htm", "<title>x</title>");
    RowTable table;
    JobContext job;
    ListJobSpec spec = specFor("{" + dir.str() + "/}", {1, 10});
    spec.contentThreads = 2;
    spec.lister = [&](const std::string& d, std::vector<FoundItem>& items) {
        const bool ok = listDirectory(d, items);
        fs::remove(dir / "a.htm");  // gone after the directory was read
        return ok;
    };
    EXPECT_TRUE(FindAndListFiles(spec, job, table));
    ASSERT_EQ(table.rows().size(), 1u);
    ASSERT_EQ(table.errors().size(), 1u);
    EXPECT_EQ(table.errors()[0].text, "Error opening file >>" + dir.str() + "/a.htm<<.");
}

// ---- batches for a slow receiver ----

TEST(ListBatches, RowsGoOnInBatchesAtMostTenASecondAndAllAtTheEnd) {
    std::vector<std::size_t> batches;
    std::vector<std::string> paths;
    bool finished = false;
    RowBatcher::Receiver to;
    to.rows = [&](std::vector<Row>&& rows) {
        batches.push_back(rows.size());
        for (const Row& r : rows) paths.push_back(r.path);
        return paths.size() < 25;
    };
    to.finish = [&](const ListTotals&) { finished = true; };
    RowBatcher batcher(to);
    RowBatcher::Clock::time_point now{};
    batcher.setClock([&] { return now; });
    batcher.begin({});
    bool going = true;
    for (int i = 0; i < 30 && going; ++i) {
        now += std::chrono::milliseconds(10);
        Row r;
        r.path = std::to_string(i);
        going = batcher.row(std::move(r));
    }
    EXPECT_FALSE(going) << "the receiver's stop reaches the job";
    EXPECT_EQ(batches, (std::vector<std::size_t>{10, 10, 10}));
    batcher.finish({});
    EXPECT_TRUE(finished);
    ASSERT_EQ(paths.size(), 30u);
    for (int i = 0; i < 30; ++i) EXPECT_EQ(paths[static_cast<std::size_t>(i)], std::to_string(i));

    // A short list arrives whole at the end.
    batches.clear();
    paths.clear();
    batcher.begin({});
    Row r;
    r.path = "only";
    EXPECT_TRUE(batcher.row(std::move(r)));
    EXPECT_TRUE(batches.empty());
    batcher.finish({});
    EXPECT_EQ(batches, std::vector<std::size_t>{1});
}

TEST(ListProgress, AJobReportsWhatItHasDone) {
    tavtest::TempDir dir;
    for (int i = 0; i < 5; ++i) dir.write("f" + std::to_string(i), "x");
    JobContext job;
    JobContext::Clock::time_point now{};
    job.setClock([&] { return now += std::chrono::milliseconds(150); });
    std::vector<JobProgress> reports;
    job.setProgressHandler([&](const JobProgress& p) { reports.push_back(p); });
    RowTable table;
    FindAndListFiles(specFor("{" + dir.str() + "/}", {1}), job, table);
    ASSERT_EQ(reports.size(), 5u);
    EXPECT_EQ(reports.back().filesListed, 5);
    EXPECT_EQ(reports.back().filesExamined, 5);
    EXPECT_EQ(reports.back().current, dir.str() + "/");
}
