#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "content/ContentExtractor.h"
#include "content/DisplayText.h"

namespace {

struct Case {
    const char* name;
    std::string text;
    std::string mail;
    std::string www;
};

tav::ContentCells addressesOf(const std::string& text, const tav::EndChars& wwwEnd = tav::defaultWwwEndChars(),
                              const tav::EndChars& mailEnd = tav::defaultMailEndChars()) {
    tav::ContentSpec spec;
    spec.columns.www = spec.columns.mail = true;
    spec.options.LstSep = " | ";
    spec.wwwEndChars = wwwEnd;
    spec.mailEndChars = mailEnd;
    tav::ContentExtractor x(spec);
    x.beginFile("f", -1);
    x.feed(text);
    x.finish();
    return x.cells();
}

class CandidateTest : public ::testing::TestWithParam<Case> {};

TEST_P(CandidateTest, Gives) {
    const tav::ContentCells c = addressesOf(GetParam().text);
    EXPECT_EQ(c.mailAddresses, GetParam().mail);
    EXPECT_EQ(c.wwwAddresses, GetParam().www);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CandidateTest,
    ::testing::Values(
        Case{"MailAfterTag", "<b>abc@d.org</b>", "abc@d.org", ""},
        Case{"MailPrefixIsAtMostThirtyBytes", std::string(40, 'x') + "@d.org", std::string(30, 'x') + "@d.org", ""},
        Case{"MailPrefixStopsAtBlank", "write to ann@d.org now", "ann@d.org", ""},
        Case{"AddressHoldingAtIsMail", "http://u@h.org/p x", "u@h.org/p", ""},
        Case{"AddressInsideAddressIsNotSeparate", "http://a.org/?u=http://b.org x", "",
             "http://a.org/?u=http://b.org"},
        Case{"UpperCaseDelimiters", "HTTP://A.ORG WwW.b.org", "", "HTTP://A.ORG | WwW.b.org"},
        Case{"LineEndEnds", "www.a.org\nb", "", "www.a.org"},
        Case{"BareWwwDropped", "see http://www only", "", ""},
        Case{"HttpsIsFoundByItsWww", "https://www.a.org/x", "", "www.a.org/x"},
        Case{"TwoMails", "a@b.c,d@e.f", "a@b.c | d@e.f", ""},
        Case{"AtTheVeryStart", "@media x", "@media", ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Candidates, EndCharactersComeFromTheSettings) {
    // Without end characters a candidate runs to the line end.
    const tav::ContentCells c = addressesOf("www.a.org b c\nx", tav::EndChars(), tav::EndChars());
    EXPECT_EQ(c.wwwAddresses, "www.a.org b c");
    const tav::ContentCells d = addressesOf("www.a.org/b.c", tav::EndChars::fromChars("/"));
    EXPECT_EQ(d.wwwAddresses, "www.a.org");
}

TEST(Candidates, ListGoesOutOfTheSearchPastItsLimit) {
    std::string text;
    for (int i = 0; i < 100; ++i) text += "www.site" + std::to_string(i) + ".org ";
    const tav::ContentCells c = addressesOf(text);
    // Items of 13 bytes (then 14) and 5 for the separator: the 22nd passes 400.
    const std::size_t items = static_cast<std::size_t>(std::count(c.wwwAddresses.begin(), c.wwwAddresses.end(), '|')) + 1;
    EXPECT_EQ(items, 22u);
}

TEST(DisplayText, InvalidBytesAreWindows1252AndValidUtf8Stays) {
    EXPECT_EQ(tav::toDisplayText("caf\xC3\xA9"), "caf\xC3\xA9");
    EXPECT_EQ(tav::toDisplayText("caf\xE9"), "caf\xC3\xA9");
    EXPECT_EQ(tav::toDisplayText("\x80\xC3\xA9\x93"), "\xE2\x82\xAC\xC3\xA9\xE2\x80\x9C");
    EXPECT_EQ(tav::toDisplayText("\xED\xA0\x80"), "\xC3\xAD\xC2\xA0\xE2\x82\xAC");  // a surrogate is not valid
    EXPECT_EQ(tav::charCount("a\xC3\xA9\xE2\x82\xAC"), 3u);
    EXPECT_EQ(tav::byteLengthOfChars("a\xC3\xA9\xE2\x82\xAC", 2), 3u);
}

}  // namespace
