// `tavelo find ENTRY...` run as a process: the list a directory search
// makes, its file options, the list options it shares with `tavelo list`,
// the criteria statement and the rejected list.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

#include "support/RunProcess.h"
#include "support/TempDir.h"

namespace {

tavtest::ProcessRun runTavelo(const std::string& command, const std::vector<std::string>& args) {
    std::vector<std::string> all{command};
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
    const std::time_t t = std::mktime(&tm);
    struct timespec times[2] = {{t, 0}, {t, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, p.c_str(), times, 0), 0);
}

class FindDirs : public ::testing::Test {
protected:
    void SetUp() override {
        setModified(dir.write("a.txt", "one needle here"), 2021, 5, 1);
        setModified(dir.write("b.htm", "<p>no hit</p>"), 2021, 5, 2);
        setModified(dir.write("sub/c.txt", "NEEDLE and " + std::string(40, '-')), 2021, 5, 3);
    }
    tavtest::TempDir dir;
};

TEST_F(FindDirs, TheListOfFilesWithAHitWithTheFoundColumns) {
    tavtest::ProcessRun r = runTavelo("find", {"--text", "needle", "--columns", "FileName|Type|Size", dir.str()});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out,
              "FileName\tType\tSize\tFound Value\tFnd At Byte No\tFound Text\n"
              "a\ttxt\t15\tneedle\t5\tone needle here  [Bytes 1 to 15]\n");
    // With the subdirectories, in walk order; the same columns as `tavelo list` gives, plus the Found ones.
    r = runTavelo("find", {"--text", "needle", "--subdirs", "--columns", "FileName|Type", dir.str()});
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{
                                  "FileName\tType\tFound Value\tFnd At Byte No\tFound Text",
                                  "a\ttxt\tneedle\t5\tone needle here  [Bytes 1 to 15]",
                                  "c\ttxt\tNEEDLE\t1\tNEEDLE and " + std::string(40, '-') + "  [Bytes 1 to 51]",
                              }));
    tavtest::ProcessRun list = runTavelo("list", {"--subdirs", "--no-dirs", "--columns", "FileName|Type|Date", "--sort",
                                                  "Date", dir.str()});
    r = runTavelo("find", {"--text", "n", "--subdirs", "--columns", "FileName|Type|Date", "--sort", "Date", dir.str()});
    std::vector<std::string> found = linesOf(r.out), listed = linesOf(list.out);
    ASSERT_EQ(found.size(), listed.size());
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(found[i].rfind(listed[i] + "\t", 0), 0u) << found[i];
    // Nothing found: only the header, and exit status 1.
    r = runTavelo("find", {"--text", "absent", dir.str()});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(linesOf(r.out).size(), 1u);
}

struct FileOptionCase {
    const char* name;
    std::vector<std::string> options;
    std::vector<std::string> names;  // FileName.Type, sorted
};

TEST_F(FindDirs, FileOptionsChooseByNameSizeAndDateWithOrWithoutAText) {
    const FileOptionCase cases[] = {
        {"named", {"--named", "*.HTM"}, {"b.htm"}},
        {"min size", {"--min-size", "15"}, {"a.txt", "c.txt"}},
        {"max size", {"--max-size", "15"}, {"a.txt", "b.htm"}},
        {"modified from", {"--modified", "02/05/2021.."}, {"b.htm", "c.txt"}},
        {"modified to", {"--modified", "..2021-05-02"}, {"a.txt", "b.htm"}},
        {"modified between", {"--modified", "2021-05-02..2021-05-02"}, {"b.htm"}},
        {"today", {"--today"}, {}},
    };
    for (const FileOptionCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> args = c.options;
        for (const char* a : {"--subdirs", "--columns", "FileName|Type"}) args.push_back(a);
        args.push_back(dir.str());
        tavtest::ProcessRun r = runTavelo("find", args);
        EXPECT_EQ(r.code, c.names.empty() ? 1 : 0) << r.err;
        std::vector<std::string> names;
        for (const std::string& l : linesOf(r.out)) {
            const std::size_t tab = l.find('\t');
            names.push_back(l.substr(0, tab) + "." + l.substr(tab + 1, l.find('\t', tab + 1) - tab - 1));
        }
        ASSERT_FALSE(names.empty());
        EXPECT_EQ(names.front(), "FileName.Type");  // no Found columns without a text
        names.erase(names.begin());
        std::sort(names.begin(), names.end());
        EXPECT_EQ(names, c.names);
    }
    // With a text the file options come first, then the search.
    tavtest::ProcessRun r =
        runTavelo("find", {"--text", "needle", "--subdirs", "--max-size", "15", "--columns", "FileName", dir.str()});
    EXPECT_EQ(linesOf(r.out).size(), 2u);
    EXPECT_EQ(linesOf(r.out)[1].rfind("a\tneedle\t5\t", 0), 0u);
}

TEST_F(FindDirs, MaxBytesAndTheRejectedList) {
    dir.write("far.txt", std::string(10000, '.') + "needle");
    tavtest::ProcessRun r = runTavelo("find", {"--text", "needle", "--max-bytes", "1", "--columns", "FileName", dir.str()});
    EXPECT_EQ(linesOf(r.out).size(), 2u) << r.out;  // a.txt only: far.txt's hit starts at byte 10,001

    dir.write("peter.txt", "Peter needle");
    r = runTavelo("find", {"--text", "needle", "--exclude", "Peter needle", "--rejected", "--columns", "FileName",
                           dir.str()});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out.find("peter"), std::string::npos);
    const std::string heading = "^^ File: " + dir.str() + "/peter.txt ^^\nPeter needle   -(Peter needle)\n";
    EXPECT_NE(r.err.find(heading), std::string::npos) << r.err;
}

TEST_F(FindDirs, CriteriaShowTheFileSearchStatement) {
    tavtest::ProcessRun r = runTavelo("find", {"--text", "needle", "--whole-word", "--named", "*.txt", "--min-size",
                                               "10", "--max-size", "99", "--modified", "01/05/2021..",
                                               "--max-bytes", "15000", "--criteria", dir.str(), "/tmp"});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, "(needle) WW\n"
                     "Files Named: *.txt\n"
                     "Date/Size Criteria: Sz > 10, Sz < 99, M: After 01/05/2021\n"
                     "Look In: " + dir.str() + ", /tmp\n"
                     "** NB Only First 20000 bytes of each file will be checked. **\n");
}

TEST_F(FindDirs, MistakesAreUsageErrors) {
    for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
             {"--text", "x", "--modified", "yesterday", dir.str()},      // FROM..TO
             {"--text", "x", "--modified", "..", dir.str()},             // one end at least
             {"--text", "x", "--modified", "31/02/2021..", dir.str()},   // no such day
             {"--text", "x", "--today", "--created", "..1/1/2020", dir.str()},
             {"--text", "x", "--min-size", "ten", dir.str()},
             {"--text", "x", "--named", "[z-a]", dir.str()},
             {"--text", "x", "--threads", "0", dir.str()},             // a list option, checked as `tavelo list` does
             {"--text", "x", "--columns", "NoSuchColumn", dir.str()},
             {"--text", "x", "--today=1", dir.str()},
         }) {
        tavtest::ProcessRun r = runTavelo("find", args);
        EXPECT_EQ(r.code, 2) << args[3];
        EXPECT_EQ(r.out, "") << args[3];
        EXPECT_FALSE(r.err.empty()) << args[3];
    }
}

}  // namespace
