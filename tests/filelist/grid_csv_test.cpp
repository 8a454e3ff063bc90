// The CSV export of a list: which columns and rows go out, how values are
// quoted, and that a stop or a failure never harms the file that was there.
#include <gtest/gtest.h>

#include <filesystem>

#include "filelist/GridCsv.h"
#include "filelist/GridMarks.h"
#include "grid_test_rows.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

struct FieldCase {
    const char* name;
    std::string value;
    bool doubled;
    std::string field;
};

class CsvFieldTest : public ::testing::TestWithParam<FieldCase> {};

TEST_P(CsvFieldTest, QuotesWhatNeedsIt) {
    CsvOptions options;
    options.doubledQuotes = GetParam().doubled;
    EXPECT_EQ(CsvField(GetParam().value, options), GetParam().field);
}

INSTANTIATE_TEST_SUITE_P(
    Values, CsvFieldTest,
    ::testing::Values(FieldCase{"Plain", "index", true, "index"},
                      FieldCase{"Empty", "", true, ""},
                      FieldCase{"Separator", "1,234", true, "\"1,234\""},
                      FieldCase{"QuoteDoubled", "say \"hi\"", true, "\"say \"\"hi\"\"\""},
                      FieldCase{"LineBreakQuoted", "a\r\nb", true, "\"a\r\nb\""},
                      FieldCase{"QuoteAsEntity", "say \"hi\"", false, "say &34#hi&34#"},
                      FieldCase{"EntityModeBreaksToBlanks", "a\r\nb", false, "a  b"},
                      FieldCase{"EntityModeSeparator", "1,234", false, "\"1,234\""}),
    [](const auto& p) { return std::string(p.param.name); });

class GridCsvTest : public ::testing::Test {
protected:
    void SetUp() override {
        gridtest::fill(table, {{"a,b", "txt", "1,234", "000000001234", "05/01/2021", "2021/01/05"},
                               {"say \"x\"", "htm", "10", "000000000010", "03/03/2019", "2019/03/03"},
                               {"caf\xE9", "", "0", "000000000000", "28/02/2021", "2021/02/28"}});
        target = dir / "grid.csv";
    }
    RowTable table;
    tavtest::TempDir dir;
    std::filesystem::path target;
};

TEST_F(GridCsvTest, WritesShownColumnsWithCaptionsAsUtf8Lines) {
    JobContext job;
    const CsvResult r = SaveGridAsCsv(table, ShownColumns(table.columns()), target.string(), job);
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(r.rows, 3);
    EXPECT_EQ(tavtest::readFile(target),
              "No.,FileName,Type,Size,Date\r\n"
              "1,\"a,b\",txt,\"1,234\",05/01/2021\r\n"
              "2,\"say \"\"x\"\"\",htm,10,03/03/2019\r\n"
              "3,caf\xC3\xA9,,0,28/02/2021\r\n");
}

TEST_F(GridCsvTest, HiddenRowsGoOutUnlessLeftOut) {
    HideRows(table, 0, 1);
    CsvOptions options;
    options.header = false;
    options.skipHiddenRows = true;
    JobContext job;
    const CsvResult r = SaveGridAsCsv(table, {1}, target.string(), job, options);
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(tavtest::readFile(target), "caf\xC3\xA9\r\n");
}

TEST_F(GridCsvTest, StopLeavesTheFormerFileAndNoTemporary) {
    dir.write("grid.csv", "former");
    JobContext job;
    int reports = 0;
    job.setProgressHandler([&](const JobProgress& p) {
        ++reports;
        EXPECT_EQ(p.current, "Writing CSV file " + target.string() + ". Please wait ....");
        job.requestStop();
    });
    const CsvResult r = SaveGridAsCsv(table, ShownColumns(table.columns()), target.string(), job);
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(r.stopped);
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(tavtest::readFile(target), "former");
    for (const auto& entry : std::filesystem::directory_iterator(dir.path()))
        EXPECT_EQ(entry.path().filename(), "grid.csv");
}

TEST_F(GridCsvTest, UnwritablePlaceFailsWithAReason) {
    JobContext job;
    const CsvResult r =
        SaveGridAsCsv(table, ShownColumns(table.columns()), (dir / "no-such-dir" / "grid.csv").string(), job);
    EXPECT_FALSE(r.ok);
    EXPECT_FALSE(r.stopped);
    EXPECT_NE(r.error.find("cannot create"), std::string::npos);
}

}  // namespace
