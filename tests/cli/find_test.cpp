// `tavelo find` run as a process: the hits it prints, the criteria it
// shows, and its exit codes.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <string>
#include <vector>

#include "support/RunProcess.h"
#include "support/TempDir.h"

namespace {

using FindRun = tavtest::ProcessRun;

FindRun runFind(const tavtest::TempDir&, const std::vector<std::string>& args) {
    std::vector<std::string> all{"find"};
    all.insert(all.end(), args.begin(), args.end());
    return tavtest::runProcess(TAVELO_EXE, all);
}

std::string hitLine(long long byte, const std::string& value, long long end, long long start) {
    return std::to_string(byte) + "\t" + value + "\t" + std::to_string(end) + "|" + std::to_string(start) + "\n";
}

class FindCommand : public ::testing::Test {
protected:
    tavtest::TempDir dir;
};

TEST_F(FindCommand, HitsAtTheFirstAndTheLastByteOfAFileOfSeveralBlocks) {
    // 25,005 bytes: "needle" at byte 1 and as the file's last six bytes.
    std::string bytes = "needle" + std::string(24993, '.') + "needle";
    const std::string f = dir.write("big.txt", bytes).string();
    const long long last = static_cast<long long>(bytes.size()) - 5;
    FindRun r = runFind(dir, {"--text", "needle", "--in", f});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, hitLine(1, "needle", 6, 1));
    r = runFind(dir, {"--text", "needle", "--in", f, "--all"});
    EXPECT_EQ(r.out, hitLine(1, "needle", 6, 1) + hitLine(last, "needle", last + 5, last));
    r = runFind(dir, {"--text", "needle", "--in", f, "--from", "2"});
    EXPECT_EQ(r.out, hitLine(last, "needle", last + 5, last));
}

TEST_F(FindCommand, BackwardFromTheEndGivesTheLastHitFirst) {
    // Hits on both sides of the 10,000-byte seam counted back from the end,
    // one of them across it.
    std::string bytes(30000, '-');
    for (size_t at : {0u, 9000u, 19997u, 29990u}) bytes.replace(at, 5, "Alpha");
    const std::string f = dir.write("b.txt", bytes).string();
    FindRun r = runFind(dir, {"--text", "alpha", "--in", f, "--backward"});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, hitLine(29991, "Alpha", 29995, 29991));
    r = runFind(dir, {"--text", "alpha", "--in", f, "--backward", "--all"});
    EXPECT_EQ(r.out, hitLine(29991, "Alpha", 29995, 29991) + hitLine(19998, "Alpha", 20002, 19998) +
                         hitLine(9001, "Alpha", 9005, 9001) + hitLine(1, "Alpha", 5, 1));
    // From a byte: only hits that end before it.
    r = runFind(dir, {"--text", "alpha", "--in", f, "--backward", "--from", "20002"});
    EXPECT_EQ(r.out, hitLine(9001, "Alpha", 9005, 9001));
}

TEST_F(FindCommand, AllHitsForwardAcrossBlockSeamsEachOnce) {
    std::string bytes(40000, ' ');
    std::vector<size_t> at = {9997, 10001, 19999, 29995, 39996};  // 0-based; two cross a seam
    for (size_t a : at) bytes.replace(a, 4, "word");
    const std::string f = dir.write("s.txt", bytes).string();
    FindRun r = runFind(dir, {"--text", "word", "--in", f, "--all"});
    std::string want;
    for (size_t a : at) want += hitLine(static_cast<long long>(a) + 1, "word", static_cast<long long>(a) + 4,
                                        static_cast<long long>(a) + 1);
    EXPECT_EQ(r.out, want);
}

TEST_F(FindCommand, MatchCaseAndWholeWord) {
    const std::string f = dir.write("c.txt", "Cat concat cat CAT cats").string();
    FindRun r = runFind(dir, {"--text", "cat", "--in", f, "--all"});
    EXPECT_EQ(r.out, hitLine(1, "Cat", 3, 1) + hitLine(8, "cat", 10, 8) + hitLine(12, "cat", 14, 12) +
                         hitLine(16, "CAT", 18, 16) + hitLine(20, "cat", 22, 20));
    r = runFind(dir, {"--text", "cat", "--in", f, "--all", "--match-case"});
    EXPECT_EQ(r.out, hitLine(8, "cat", 10, 8) + hitLine(12, "cat", 14, 12) + hitLine(20, "cat", 22, 20));
    r = runFind(dir, {"--text", "cat", "--in", f, "--all", "--whole-word"});
    EXPECT_EQ(r.out, hitLine(1, "Cat", 3, 1) + hitLine(12, "cat", 14, 12) + hitLine(16, "CAT", 18, 16));
    r = runFind(dir, {"--text", "cat", "--in", f, "--all", "--whole-word", "--match-case"});
    EXPECT_EQ(r.out, hitLine(12, "cat", 14, 12));
}

TEST_F(FindCommand, ExclusionRejectsOnlyTheExcludedText) {
    const std::string f = dir.write("e.txt", "Peter Smith\nSmith\nPeter  Smith\n").string();
    FindRun r = runFind(dir, {"--text", "Smith", "--exclude", "Peter Smith", "--in", f, "--all", "--rejected"});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, hitLine(13, "Smith", 17, 13) + hitLine(26, "Smith", 30, 26));
    EXPECT_NE(r.err.find("Peter Smith   -(Peter Smith)"), std::string::npos) << r.err;
    // Only excluded hits: none found.
    const std::string g = dir.write("g.txt", "xx Peter Smith yy").string();
    r = runFind(dir, {"--text", "Smith", "--exclude", "Peter Smith", "--in", g});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, "");
}

TEST_F(FindCommand, LineAndRangeConditions) {
    const std::string f =
        dir.write("l.txt", "REM Smith Peter\n  REM Smith\nSmith far away from anyone\nPeter met Smith\n").string();
    FindRun r = runFind(dir, {"--text", "Smith", "--exclude-line-start", "REM", "--in", f, "--all"});
    EXPECT_EQ(r.out, hitLine(23, "Smith", 27, 23) + hitLine(29, "Smith", 33, 29) + hitLine(66, "Smith", 70, 66));
    r = runFind(dir, {"--text", "Smith", "--exclude-line-start", "REM", "--ignore-leading-spaces", "--in", f,
                      "--all"});
    EXPECT_EQ(r.out, hitLine(29, "Smith", 33, 29) + hitLine(66, "Smith", 70, 66));
    r = runFind(dir, {"--text", "Smith", "--within", "10:Peter", "--in", f, "--all"});
    EXPECT_EQ(r.out, hitLine(5, "Smith", 9, 5) + hitLine(66, "Smith", 70, 66));
}

TEST_F(FindCommand, CriteriaShowsTheDisplayFormAndTheSearchStatement) {
    const std::string f = dir.write("x.txt", "x").string();
    FindRun r = runFind(dir, {"--text", "Smith", "--whole-word", "--exclude-line-start", "REM", "--within",
                              "20:Peter", "--in", f, "--criteria"});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, "(Smith) WW -L(REM) +R20(Peter) Restrict Line(0)\nLook In: " + f + "\n");
    r = runFind(dir, {"--text", "a", "--match-case", "--whole-word", "--or", "b", "--or", "c", "--exclude", "xa",
                      "--exclude-same-line", "q", "--exclude-within", "5:r", "--line-start", "#",
                      "--ignore-leading-spaces", "--same-line", "s~t", "--restrict-line", "80", "--max-bytes",
                      "12345", "--in", f, "--criteria"});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out,
              "(a) WW MC or(b) or(c) -(xa) -S(q) -R5(r) +LG(#) +S(s~t) Restrict Line(80)\n"
              "Look In: " + f + "\n** NB Only First 20000 bytes of each file will be checked. **\n");
    // Without complex criteria the simple exclusion shows.
    r = runFind(dir, {"--text", "Smith", "--exclude", "Peter Smith", "--criteria"});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out.substr(0, r.out.find('\n')), "(Smith) -(Peter Smith)");
}

TEST_F(FindCommand, MaxBytesLimitsTheSearchToWholeBlocks) {
    std::string bytes(30000, '.');
    bytes.replace(15000, 3, "hit");
    const std::string f = dir.write("m.txt", bytes).string();
    EXPECT_EQ(runFind(dir, {"--text", "hit", "--in", f, "--max-bytes", "10000"}).code, 1);
    EXPECT_EQ(runFind(dir, {"--text", "hit", "--in", f, "--max-bytes", "10001"}).out, hitLine(15001, "hit", 15003, 15001));
}

TEST_F(FindCommand, ContextWidensTheFoundTextWithinTheFile) {
    const std::string f = dir.write("t.txt", "ab needle cd").string();
    EXPECT_EQ(runFind(dir, {"--text", "needle", "--in", f, "--context", "2"}).out, hitLine(4, "needle", 11, 2));
    EXPECT_EQ(runFind(dir, {"--text", "needle", "--in", f, "--context", "50"}).out, hitLine(4, "needle", 12, 1));
}

TEST_F(FindCommand, BadUseExitsTwoAndUnreadableFileOne) {
    const std::string f = dir.write("u.txt", "some text").string();
    for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
             {"--text", "x"},                                   // neither --in nor a directory
             {"--in", f},                                       // no text
             {"--text", "x", "--in"},                           // missing value
             {"--text", "x", "--in", f, "--from", "0"},          // byte numbers count from 1
             {"--text", "x", "--in", f, "--from", "12a"},
             {"--text", "x", "--in", f, "--max-bytes", "-5"},
             {"--text", "x", "--in", f, "--within", "Peter"},    // N:V
             {"--text", "x", "--in", f, "--within", "5:a", "--within", "6:b"},
             {"--text", "x", "--in", f, "--word-ranges", "letters"},
             {"--text", "x", "--in", f, "--frobnicate"},
             {"--text", "x", "--exclude", "y", "--in", f},       // exclude must contain the text
             {"--text", "x", "--in", dir.str()},
         }) {
        FindRun r = runFind(dir, args);
        EXPECT_EQ(r.code, 2) << args.back();
        EXPECT_EQ(r.out, "") << args.back();
        EXPECT_FALSE(r.err.empty()) << args.back();
    }
    EXPECT_NE(runFind(dir, {"--text", "x"}).err.find("no directory given"), std::string::npos);
    EXPECT_NE(runFind(dir, {"--text", "x", "--in", f, dir.str()}).err.find("not both"), std::string::npos);
    FindRun missing = runFind(dir, {"--text", "x", "--in", (dir / "no-such-file").string()});
    EXPECT_EQ(missing.code, 1);
    EXPECT_FALSE(missing.err.empty());
    EXPECT_EQ(runFind(dir, {"--text", "absent", "--in", f}).code, 1);
    FindRun help = runFind(dir, {"--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_NE(help.out.find("END|START"), std::string::npos);
}

}  // namespace
