#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "content/ContentExtractor.h"
#include "content/SkipList.h"
#include "content/SpanColumns.h"
#include "content/TitleFinder.h"

namespace {

struct Case {
    const char* name;
    std::string page;
    std::string title;
};

class GetTitleTest : public ::testing::TestWithParam<Case> {};

TEST_P(GetTitleTest, Finds) {
    EXPECT_EQ(tav::GetTitle(GetParam().page), GetParam().title);
    // The same page cut into chunks of three bytes.
    std::vector<std::string_view> chunks;
    const std::string& page = GetParam().page;
    for (std::size_t i = 0; i < page.size(); i += 3) chunks.push_back(std::string_view(page).substr(i, 3));
    EXPECT_EQ(tav::GetTitle(chunks), GetParam().title);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, GetTitleTest,
    ::testing::Values(
        Case{"Plain", "<html><TITLE>Hello</TITLE>", "Hello"},
        Case{"Attributes", "<title id=t>Hello</title>", "Hello"},
        Case{"LinesJoined", "<title>\n  Hello\n\n\n  World\n</title>", "Hello\r\n\r\nWorld\r\n"},
        Case{"Entities", "<title>A &amp; B &#65;</title>", "A & B A"},
        Case{"Description", "<meta name=\"description\" content=\"About &lt;x&gt;\">", "About <x>"},
        Case{"TitleBeatsDescription", "<meta name=\"description\" content=\"D\"><title>T</title>", "T"},
        Case{"UnclosedTitleFallsBack", "<title>T <meta NAME=\"Description\" CONTENT=\"D\">", "D"},
        Case{"Nothing", "just text", ""},
        Case{"Latin1Bytes", "<title>Caf\xE9</title>", "Caf\xC3\xA9"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SpanColumns, FoundTextIsDecodedAndTitleRestricts) {
    tav::ContentSpec spec;
    spec.columns.spanCols = {{27, "<B>", "</b>", ""},          // found, case ignored
                             {28, "nowhere", "</b>", ""},      // start text absent: empty
                             {29, "<b>", "</b>", "My Page"},   // title begins so: filled
                             {30, "<b>", "</b>", "Other"}};    // title differs: not searched
    tav::ContentExtractor x(spec);
    x.beginFile("f", -1);
    x.feed("<title>my page two</title><b>R&amp;D</b>");
    x.finish();
    EXPECT_EQ(x.cells().spanCols, (std::vector<std::string>{"R&D", "", "R&D", ""}));
    EXPECT_EQ(x.cells().title, "");  // not a wanted column, only used
}

TEST(SpanColumns, TitleTest) {
    EXPECT_TRUE(tav::titleAllowsSpanColumn("", "anything"));
    EXPECT_TRUE(tav::titleAllowsSpanColumn("ab", "AB cd"));
    EXPECT_TRUE(tav::titleAllowsSpanColumn("a\r\n\r\n\r\nb", "a\n\n\n\n\nb"));  // two blank lines kept
    EXPECT_FALSE(tav::titleAllowsSpanColumn("abc", "ab"));
}

TEST(SkipList, LoadsFromTheSectionEntries) {
    std::vector<std::string> problems;
    const tav::SkipList list = tav::loadSkipList({{"Plain Text Remove - Entry List", "Nav|Foot|Bad|Missing"},
                                                  {"Nav", "<<|>>"},
                                                  {"Foot", "{Copyright|}|All rights reserved"},
                                                  {"Bad", "no end text"}},
                                                 &problems);
    ASSERT_EQ(list.entries().size(), 2u);
    EXPECT_EQ(list.entries()[0].startText, "<<");
    EXPECT_EQ(list.entries()[1].startText, "Copyright|");
    EXPECT_EQ(list.entries()[1].endText, "All rights reserved");
    EXPECT_EQ(problems, (std::vector<std::string>{"Bad", "Missing"}));
    EXPECT_TRUE(tav::loadSkipList({}).empty());
}

TEST(SkipList, FilterCarriesAcrossPieces) {
    const tav::SkipList list({{"a", "((", "))"}, {"b", "[", "]"}});
    std::string out;
    int skipping = -1;
    list.filter("keep ((drop", skipping, out);
    list.filter("still dropped", skipping, out);
    list.filter("drop)) keep [x] end", skipping, out);
    EXPECT_EQ(out, "keep  keep  end");
    EXPECT_EQ(skipping, -1);
}

}  // namespace
