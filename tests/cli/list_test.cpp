// `tavelo list` run as a process: the header, the rows, the options.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "support/RunProcess.h"
#include "support/TempDir.h"

namespace {

using ListRun = tavtest::ProcessRun;

ListRun runList(const tavtest::TempDir&, const std::vector<std::string>& args) {
    std::vector<std::string> all{"list"};
    all.insert(all.end(), args.begin(), args.end());
    return tavtest::runProcess(TAVELO_EXE, all);
}

using tavtest::linesOf;

void setModified(const std::filesystem::path& p, int y, int mo, int d) {
    std::tm tm{};
    tm.tm_year = y - 1900;
    tm.tm_mon = mo - 1;
    tm.tm_mday = d;
    tm.tm_hour = 12;
    tm.tm_isdst = -1;
    struct timespec times[2];
    times[0].tv_sec = std::mktime(&tm);
    times[0].tv_nsec = 0;
    times[1] = times[0];
    ::utimensat(AT_FDCWD, p.c_str(), times, 0);
}

class ListCommand : public ::testing::Test {
protected:
    void SetUp() override {
        setModified(tree.write("b.txt", std::string(2000, 'b')), 2020, 5, 1);
        setModified(tree.write("a.htm", "<html><title>Apples</title><p>x</p></html>"), 2019, 1, 2);
        setModified(tree.write("sub/c.txt", "c"), 2021, 7, 8);
        tree.write(".hidden.txt", "h");
    }
    std::string root() const { return tree.str(); }
    tavtest::TempDir tree;
    tavtest::TempDir scratch;
};

}  // namespace

TEST_F(ListCommand, HeaderOfCaptionsThenOneTabSeparatedLineARow) {
    ListRun r = runList(scratch, {"--columns", "FileName|Type|Size|Date", "--no-dirs", "--sort", "FileName", root()});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{"FileName\tType\tSize\tDate", "a\thtm\t42\t02 Jan 2019",
                                                         "b\ttxt\t2,000\t01 May 2020"}));
}

TEST_F(ListCommand, SubdirectoriesHiddenItemsAndTypes) {
    ListRun r = runList(scratch, {"--columns", "1|2", "--subdirs", "--sort", "1", root()});
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{"FileName\tType", "(sub)\t<DIR>", "a\thtm", "b\ttxt", "c\ttxt"}));
    r = runList(scratch, {"--columns", "FileName", "--no-dirs", "--hidden", "--type", "*.txt", "--sort", "1", root()});
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{"FileName", ".hidden", "b"}));
    r = runList(scratch, {"--columns", "FileName", "--sort", "1", root() + "/ <htm+>"});
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{"FileName", "a"}));
}

TEST_F(ListCommand, SortDescendingByDateAndRenumber) {
    ListRun r = runList(scratch, {"--columns", "No.|FileName|Date", "--subdirs", "--no-dirs", "--sort", "Date",
                                  "--descending", "--renumber", "--date-format", "yyyy-mm-dd", root()});
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{"No.\tFileName\tDate", "1\tc\t2021-07-08", "2\tb\t2020-05-01",
                                                         "3\ta\t2019-01-02"}));
}

TEST_F(ListCommand, ContentColumnsAndTheErrorList) {
    tree.write("big.txt", std::string(5'000'100, 'z'));
    ListRun r = runList(scratch, {"--columns", "FileName|Title|FirstNBytes", "--first-bytes", "6", "--type", "*.htm",
                                  root()});
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{"FileName\tTitle\tFirstNBytes", "a\tApples\t<html>"}));
    r = runList(scratch, {"--columns", "FileName|HTMLTags", "--errors", "--type", "big", root()});
    EXPECT_EQ(r.code, 0);
    EXPECT_NE(r.err.find("No html tags (<html>, <p> etc.) in section of 64,000 bytes."), std::string::npos) << r.err;
}

TEST_F(ListCommand, MistakesAreUsageErrors) {
    ListRun r = runList(scratch, {"--columns", "FileName|Nonsense", root()});
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("Invalid column specified. Will not be included in list >>Nonsense<< "), std::string::npos);
    r = runList(scratch, {"--bogus", root()});
    EXPECT_EQ(r.code, 2);
    r = runList(scratch, {});
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("usage: tavelo list"), std::string::npos);
}

TEST_F(ListCommand, UserColumnsComeFromTheDataDirectory) {
    tree.write("h.htm", "<html><title>T</title><body><h1>Menu</h1></body></html>");
    std::string cmd = tavtest::shellQuoted(TAVELO_EXE) + " --data " + tavtest::shellQuoted((scratch / "d").string()) +
                      " list --columns 'FileName|H1 Heading' --type h.htm " + tavtest::shellQuoted(root()) + " 2>/dev/null";
    FILE* p = popen(cmd.c_str(), "r");
    ASSERT_NE(p, nullptr);
    std::string out;
    char buf[4096];
    size_t n;
    while ((n = fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
    EXPECT_EQ(pclose(p), 0);
    EXPECT_EQ(linesOf(out), (std::vector<std::string>{"FileName\tH1", "h\tMenu"}));
    // Without a data directory only the standard columns are known.
    ListRun r = runList(scratch, {"--columns", "FileName|H1 Heading", root()});
    EXPECT_EQ(r.code, 2);
}

TEST_F(ListCommand, NamesThatAreNotUtf8PrintAsWindows1252OnOneLine) {
    tavtest::TempDir odd;
    odd.write("caf\xe9.txt", "x");
    odd.write("two\nlines.txt", "x");
    ListRun r = runList(scratch, {"--columns", "FileName", "--sort", "1", odd.str()});
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{"FileName", "caf\xc3\xa9", "two lines"}));
}

TEST_F(ListCommand, LowercaseNamesTypesAndPaths) {
    tavtest::TempDir mixed;
    mixed.write("Base/Sub Dir/Read ME.TXT", "x");
    for (const char* option : {"--lowercase", "--lower"}) {
        ListRun r = runList(scratch, {"--columns", "FileName|Type|FilePath", "--no-dirs", "--subdirs", option,
                                      mixed.str() + "/Base/"});
        EXPECT_EQ(r.code, 0) << r.err;
        const auto lines = linesOf(r.out);
        ASSERT_EQ(lines.size(), 2u) << r.out;
        EXPECT_EQ(lines[1], "read me\ttxt\t../sub dir/") << option;
    }
}
