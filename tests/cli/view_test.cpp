// `tavelo view` run as a process: what it prints, and its exit codes.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "support/RunProcess.h"
#include "support/TempDir.h"

namespace {

using ViewRun = tavtest::ProcessRun;

ViewRun runView(const tavtest::TempDir&, const std::vector<std::string>& args) {
    std::vector<std::string> all{"view"};
    all.insert(all.end(), args.begin(), args.end());
    return tavtest::runProcess(TAVELO_EXE, all);
}

std::string lines(int count) {
    std::string s;
    for (int i = 1; i <= count; ++i) s += "line " + std::to_string(i) + "\n";
    return s;
}

class ViewCommand : public ::testing::Test {
protected:
    tavtest::TempDir dir;
};

TEST_F(ViewCommand, RawPrintsAScreenfulFromTheLineOfTheStartByte) {
    const std::string f = dir.write("a.txt", lines(100)).string();
    ViewRun r = runView(dir, {"--raw", f});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, lines(24));
    r = runView(dir, {"--raw", "--from", "15", f});  // byte 15 is on line 3 ("line 3" starts at 15)
    EXPECT_EQ(r.out.substr(0, 7), "line 3\n");
    r = runView(dir, {"--raw", "--from=600", f});  // near the end: the last screen
    EXPECT_EQ(r.out.substr(r.out.size() - 9), "line 100\n");
    EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 24);
}

TEST_F(ViewCommand, RawBytesArePrintedWithControlsMarked) {
    const std::string f = dir.write("b.txt", std::string("ab\tc\0d\xE9\xC3\xA9z", 10)).string();
    ViewRun r = runView(dir, {"--raw", "--bytes", "9", f});
    EXPECT_EQ(r.code, 0);
    // Tab and zero are marked; a lone E9 is read as Windows-1252; C3 A9 is UTF-8.
    EXPECT_EQ(r.out, "ab.c.d\xC3\xA9\xC3\xA9\n");
}

TEST_F(ViewCommand, PlainTakesOutMarkup) {
    const std::string f = dir.write("p.html", "<html><body><p>Hi &amp; bye</p><script>x()</script></body>").string();
    ViewRun r = runView(dir, {f});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, "Hi & bye\n");
    r = runView(dir, {"--plain", "--from", "16", "--bytes", "6", f});
    EXPECT_EQ(r.out, "Hi &am\n");
}

TEST_F(ViewCommand, PlainScreenfulReadsOnPastTextlessMarkup) {
    std::string html;
    for (int i = 0; i < 40000; ++i) html += "<b></b>";  // 280 KB without text
    for (int i = 1; i <= 30; ++i) html += "<p>t" + std::to_string(i) + "</p>\n";
    const std::string f = dir.write("tags.html", html).string();
    ViewRun r = runView(dir, {f});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out.substr(0, 3), "t1\n");
    EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 24);
}

TEST_F(ViewCommand, HexDumpsAScreenfulOrTheBytesAsked) {
    const std::string f = dir.write("h.bin", std::string(1000, 'A')).string();
    ViewRun r = runView(dir, {"--hex", f});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 24);
    r = runView(dir, {"--hex", "--from", "993", "--bytes", "100", f});
    EXPECT_EQ(r.out, "       993: 41 41 41 41 41 41 41 41                           AAAAAAAA\n");
}

TEST_F(ViewCommand, EmptyFileSaysSo) {
    const std::string f = dir.write("e.txt", "").string();
    ViewRun r = runView(dir, {"--raw", f});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, "<empty file>\n");
}

TEST_F(ViewCommand, BadArgumentsExitTwoWithAMessage) {
    const std::string f = dir.write("a.txt", "x").string();
    for (const std::vector<std::string>& args :
         std::vector<std::vector<std::string>>{{}, {"--from", "0", f}, {"--bytes", "x", f}, {"--bytes"},
                                               {"--raw", "--hex", f}, {"--wide", f}, {f, f}}) {
        ViewRun r = runView(dir, args);
        EXPECT_EQ(r.code, 2) << (args.empty() ? "" : args[0]);
        EXPECT_NE(r.err.find("usage: tavelo view"), std::string::npos);
        EXPECT_TRUE(r.out.empty());
    }
}

TEST_F(ViewCommand, UnreadableFileOrStartPastTheEndExitOne) {
    const std::string missing = (dir / "missing.txt").string();
    ViewRun r = runView(dir, {missing});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err, "tavelo view: Error opening file >>" + missing + "<<.\n");
    r = runView(dir, {"--raw", dir.str()});
    EXPECT_EQ(r.code, 1);
    const std::string f = dir.write("a.txt", "abc").string();
    r = runView(dir, {"--hex", "--from", "4", f});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err,
              "tavelo view: Start at byte specified is after end of file. File length: 3. Start at Byte: 4\n");
}

}  // namespace
