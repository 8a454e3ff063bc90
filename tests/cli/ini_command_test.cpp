// tavelo ini, run as a process: exit codes, values through standard input,
// the routing of ::* inside a data directory.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sys/wait.h>

#include "support/RunProcess.h"
#include "support/TempDir.h"

namespace {
using Outcome = tavtest::ProcessRun;

// Runs tavelo with shell-style words (quotes group words).
Outcome run(const std::string& words, const std::string& input = {}) {
    std::vector<std::string> args;
    std::string word;
    bool quoted = false, any = false;
    char quote = 0;
    for (char c : words) {
        if (quoted) {
            if (c == quote) quoted = false;
            else word += c;
        } else if (c == '\'' || c == '"') {
            quoted = true;
            quote = c;
            any = true;
        } else if (c == ' ') {
            if (any || !word.empty()) args.push_back(word);
            word.clear();
            any = false;
        } else {
            word += c;
        }
    }
    if (any || !word.empty()) args.push_back(word);
    return tavtest::runProcess(TAVELO_EXE, args, input);
}
}  // namespace

TEST(IniCommand, GetPutEraseOnAPath) {
    tavtest::TempDir dir;
    std::string f = (dir / "x.ini").string();
    EXPECT_EQ(run("ini put " + f + " Sec Key '\"quoted\" '").code, 0);
    Outcome got = run("ini get " + f + " sec KEY");
    EXPECT_EQ(got.code, 0);
    EXPECT_EQ(got.out, "\"quoted\" \n");
    EXPECT_EQ(run("ini put " + f + " Sec Lines -", "a\r\nb").code, 0);
    EXPECT_EQ(run("ini get " + f + " Sec Lines").out, "a\r\nb\n");
    EXPECT_EQ(run("ini erase " + f + " Sec Key").code, 0);
    EXPECT_EQ(run("ini get " + f + " Sec Key").code, 1);
    Outcome mode1 = run("ini get --mode 1 " + f + " Sec Key");
    EXPECT_EQ(mode1.code, 1);
    EXPECT_EQ(mode1.out, "*** not found ***\n");
    EXPECT_EQ(run("ini erase " + f + " Sec").code, 0);
    EXPECT_EQ(run("ini get " + f + " Sec Lines").code, 1);
}

TEST(IniCommand, AutomaticFileInADataDirectory) {
    tavtest::TempDir dir;
    std::string data = "--data " + (dir / "d").string();
    Outcome cols = run(data + " ini get ::* Main \"PAFN ColsIni\"");
    ASSERT_EQ(cols.code, 0);
    std::string colsFile = cols.out.substr(0, cols.out.size() - 1);
    EXPECT_EQ(run(data + " ini put ::* \"Column Specs\" Probe value").code, 0);
    EXPECT_NE(dir.read("d/" + colsFile).find("Probe=value"), std::string::npos);
    EXPECT_EQ(run(data + " ini get " + colsFile + " \"Column Specs\" Probe").out, "value\n");
    // A headless command leaves the first-run steps to the desktop program.
    EXPECT_EQ(run(data + " ini get Tavelo.ini Main FirstRunAfterSetup").out, "-1\n");
}

TEST(IniCommand, BadUseAndFailuresExitTwo) {
    EXPECT_EQ(run("ini").code, 2);
    EXPECT_EQ(run("ini get /tmp/x.ini onlysection").code, 2);
    EXPECT_EQ(run("ini frob a b c").code, 2);
    EXPECT_EQ(run("ini get --mode 7 /tmp/x.ini a b").code, 2);
    EXPECT_EQ(run("ini put /proc/no/such.ini S E v").code, 2);
    Outcome version = run("--version");
    EXPECT_EQ(version.code, 0);
    EXPECT_EQ(version.out.rfind("Tavelo ", 0), 0u);
}
