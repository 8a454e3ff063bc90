// `tavelo list` output: CSV lines, the separator of the list columns, html
// end tags, and rows printed while the list is made.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/RunProcess.h"
#include "support/TempDir.h"

namespace {

tavtest::ProcessRun runList(const std::vector<std::string>& args) {
    std::vector<std::string> all{"list"};
    all.insert(all.end(), args.begin(), args.end());
    return tavtest::runProcess(TAVELO_EXE, all);
}

using tavtest::linesOf;

constexpr const char* kPage =
    "<html><head><title>Say \"hi\", all</title></head><body><p>x</p>"
    "<a href=\"http://www.example.com/a\">l</a> me@example.com "
    "<a href=\"http://www.other.org/\">o</a> you@example.org</body></html>";

class ListOutput : public ::testing::Test {
protected:
    void SetUp() override { tree.write("page.htm", kPage); }
    std::string root() const { return tree.str(); }
    tavtest::TempDir tree;
};

TEST_F(ListOutput, CsvQuotesEveryFieldAndDoublesQuotes) {
    tree.write("caf\xe9.txt", "x");
    tree.write("tab\there.txt", "x");
    const auto r = runList({"--csv", "--columns", "FileName|Type|Title", "--sort", "FileName", root()});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(linesOf(r.out), (std::vector<std::string>{"\"FileName\",\"Type\",\"Title\"",
                                                         "\"caf\xc3\xa9\",\"txt\",\"\"",
                                                         "\"page\",\"htm\",\"Say \"\"hi\"\", all\"",
                                                         "\"tab\there\",\"txt\",\"\""}));
}

TEST_F(ListOutput, CsvKeepsALineEndInsideItsQuotes) {
    tavtest::TempDir odd;
    odd.write("two\nlines.txt", "x");
    const auto r = runList({"--csv", "--columns", "FileName", odd.str()});
    EXPECT_EQ(r.out, "\"FileName\"\n\"two\nlines\"\n");
    // Tab-separated lines have none.
    EXPECT_EQ(runList({"--columns", "FileName", odd.str()}).out, "FileName\ntwo lines\n");
}

TEST_F(ListOutput, SeparatorJoinsTheListColumns) {
    const std::vector<std::string> columns = {"--columns", "WWWAddresses|MailAddresses"};
    auto args = columns;
    args.push_back(root());
    EXPECT_EQ(linesOf(runList(args).out)[1], "http://www.example.com/a,http://www.other.org/\tme@example.com,you@example.org");
    args = columns;
    args.insert(args.end(), {"--separator", " ; ", root()});
    EXPECT_EQ(linesOf(runList(args).out)[1],
              "http://www.example.com/a ; http://www.other.org/\tme@example.com ; you@example.org");
    args = columns;
    args.insert(args.end(), {"--separator=|", root()});
    EXPECT_EQ(linesOf(runList(args).out)[1], "http://www.example.com/a|http://www.other.org/\tme@example.com|you@example.org");
}

TEST_F(ListOutput, EndTagsCountUnderTheirStartTags) {
    const auto plain = runList({"--columns", "HTMLTags", root()});
    const auto ends = runList({"--columns", "HTMLTags", "--end-tags", root()});
    ASSERT_EQ(plain.code, 0) << plain.err;
    ASSERT_EQ(ends.code, 0) << ends.err;
    const std::string without = linesOf(plain.out).at(1);
    const std::string with = linesOf(ends.out).at(1);
    EXPECT_NE(without.find("/TITLE"), std::string::npos) << without;
    EXPECT_EQ(with.find('/'), std::string::npos) << with;
    EXPECT_NE(with.find("TITLE"), std::string::npos) << with;
}

TEST_F(ListOutput, BadUseOfTheNewOptions) {
    for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
             {"--separator"}, {"--separator", "", "."}, {"--csv=yes", "."}, {"--end-tags=1", "."}}) {
        const auto r = runList(args);
        EXPECT_EQ(r.code, 2) << args.front();
        EXPECT_NE(r.err.find("usage: tavelo list"), std::string::npos) << r.err;
    }
}

// Without a sort the rows come in walk order, as they are made: a file's
// items first, then each subdirectory's; the limit holds there too.
TEST_F(ListOutput, UnsortedListsKeepWalkOrderAndTheLimit) {
    tree.write("sub/inner.txt", "x");
    tree.write("sub/deeper/leaf.txt", "x");
    const auto r = runList({"--columns", "FileName|FilePath", "--subdirs", root()});
    ASSERT_EQ(r.code, 0) << r.err;
    const std::vector<std::string> lines = linesOf(r.out);
    ASSERT_EQ(lines.size(), 6u) << r.out;
    auto indexOf = [&lines](const std::string& name) {
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (lines[i].rfind(name + "\t", 0) == 0) return i;
        return lines.size();
    };
    EXPECT_LT(indexOf("(sub)"), indexOf("inner"));
    EXPECT_LT(indexOf("page"), indexOf("inner"));
    EXPECT_LT(indexOf("inner"), indexOf("leaf"));
    EXPECT_LT(indexOf("(deeper)"), indexOf("leaf"));

    const auto limited = runList({"--columns", "FileName", "--subdirs", "--limit", "2", root()});
    EXPECT_EQ(linesOf(limited.out).size(), 3u) << limited.out;
    const auto csv = runList({"--csv", "--columns", "FileName", "--subdirs", "--limit", "1", root()});
    EXPECT_EQ(linesOf(csv.out).size(), 2u) << csv.out;
}

}  // namespace

TEST_F(ListOutput, TabFieldsHaveNoTabsOrLineEndsAndAreUtf8) {
    tavtest::TempDir odd;
    odd.write("a.txt", std::string("one\ttwo\r\nthree caf\xE9 \"q\"") + std::string(40, 'x'));
    const auto tabs = runList({"--columns", "FileName|FirstNBytes", "--first-bytes", "30", odd.str()});
    const auto lines = linesOf(tabs.out);
    ASSERT_EQ(lines.size(), 2u) << tabs.out;
    EXPECT_EQ(lines[1], "a\tone two three caf\xC3\xA9 \"q\"xxxxxxx");
    const auto csv = runList({"--csv", "--columns", "FileName|FirstNBytes", "--first-bytes", "30", odd.str()});
    EXPECT_EQ(linesOf(csv.out)[1], "\"a\",\"one\ttwo three caf\xC3\xA9 \"\"q\"\"xxxxxxx\"");
}
