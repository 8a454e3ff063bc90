#include "content/Addresses.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Case {
    const char* name;
    std::string in;
    std::string out;
};

class MailCandidateTest : public ::testing::TestWithParam<Case> {};

TEST_P(MailCandidateTest, Cleans) { EXPECT_EQ(tav::cleanMailCandidate(GetParam().in), GetParam().out); }

INSTANTIATE_TEST_SUITE_P(
    Cases, MailCandidateTest,
    ::testing::Values(Case{"Mailto", "href=\"mailto:joe@example.com\">Joe", "joe@example.com"},
                      Case{"FinalDotDropped", "joe@example.com.", "joe@example.com"},
                      Case{"AngleBrackets", "<joe@example.com>", "joe@example.com"},
                      Case{"AmpAfterAt", "joe@example.com&amp;x", "joe@example.com"},
                      Case{"ParenthesisAfterAt", "joe@example.com)", "joe@example.com"},
                      Case{"SeparatorsAfterAtStay", "a/b@c/d", "b@c/d"},
                      Case{"NoAt", "plain.", "plain"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SplitAddresses, RoutesAndConverts) {
    std::vector<std::string> mail, www;
    tav::SplitAddresses({"http://www", "HTTP://WWW", "www.a.org", "http://b.org/x.", "x@y.org"}, true, true, true,
                        mail, www);
    EXPECT_EQ(www, (std::vector<std::string>{"http://www.a.org", "http://b.org/x."}));
    EXPECT_EQ(mail, (std::vector<std::string>{"x@y.org"}));
}

TEST(SplitAddresses, AtCandidateGoesToWwwWhenMailIsNotWanted) {
    std::vector<std::string> mail, www;
    tav::SplitAddresses({"http://u@h.org", "www.a.org"}, false, true, false, mail, www);
    EXPECT_TRUE(mail.empty());
    EXPECT_EQ(www, (std::vector<std::string>{"http://u@h.org", "www.a.org"}));
    www.clear();
    tav::SplitAddresses({"www.a.org", "a@b.c"}, true, false, false, mail, www);
    EXPECT_TRUE(www.empty());
    EXPECT_EQ(mail, (std::vector<std::string>{"a@b.c"}));
}

TEST(EndChars, FromStoredListAndDescribe) {
    const tav::EndChars e = tav::EndChars::fromList("<|>|\"| |{|}|;");
    EXPECT_TRUE(e.ends('<'));
    EXPECT_TRUE(e.ends(' '));
    EXPECT_TRUE(e.ends(';'));
    EXPECT_TRUE(e.ends('|'));  // "{|}" is the bracketed "|"
    EXPECT_TRUE(e.ends('\n'));
    EXPECT_TRUE(e.ends('\r'));
    EXPECT_FALSE(e.ends('a'));
    EXPECT_EQ(tav::EndChars().describe(), "**Empty**");
    EXPECT_EQ(tav::EndChars::fromChars("b a").describe(), " ab");
}

TEST(EndChars, StoredListGoesBothWays) {
    const tav::EndChars shipped = tav::EndChars::fromList("<|>|\"|'| |)|(|[|]|,|;|:|/|\\|?|=|&|^");
    EXPECT_EQ(shipped.table(), tav::defaultMailEndChars().table());
    tav::EndChars withBar = tav::defaultWwwEndChars();
    withBar.add('|');
    withBar.add(0xE9);
    EXPECT_EQ(tav::EndChars::fromList(withBar.toList()).table(), withBar.table());
}

}  // namespace
