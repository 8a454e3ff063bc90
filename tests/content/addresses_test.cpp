#include "content/Addresses.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
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

// The rule as the steps state it, one kind of character after the other,
// against the cleaner on random candidates.
TEST(MailCandidate, AgreesWithTheStepByStepRule) {
    auto stepwise = [](std::string s) {
        for (char c : std::string_view(": =<>\n\"/;")) {
            for (;;) {
                const std::size_t at = s.find('@'), p = s.find(c);
                if (p == std::string::npos || at == std::string::npos || p >= at) break;
                s.erase(0, p + 1);
            }
        }
        for (char c : std::string_view("\">&<)")) {
            const std::size_t at = s.find('@');
            if (at == std::string::npos) break;
            const std::size_t p = s.find(c, at + 1);
            if (p != std::string::npos) s.erase(p);
        }
        if (!s.empty() && s.back() == '.') s.pop_back();
        return s;
    };
    const std::string alphabet = "ab.@:=<>\n\"/;&) ";
    std::uint32_t seed = 12345;
    for (int round = 0; round < 5000; ++round) {
        std::string s;
        seed = seed * 1103515245u + 12345u;
        const std::size_t length = (seed >> 16) % 24;
        for (std::size_t i = 0; i < length; ++i) {
            seed = seed * 1103515245u + 12345u;
            s += alphabet[(seed >> 16) % alphabet.size()];
        }
        ASSERT_EQ(tav::cleanMailCandidate(s), stepwise(s)) << s;
    }
}
