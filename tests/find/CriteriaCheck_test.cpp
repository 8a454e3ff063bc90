#include "find/CriteriaCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "find/ComplexCriteria.h"
#include "find/FileSearch.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

// The first accepted hit of `text` in `body`, or -1; the reject texts met
// on the way in `rejects`.
int64_t firstFind(const PreparedCriteria& c, const std::string& body, std::vector<std::string>* rejects = nullptr) {
    RejectedList list;
    SearchHooks hooks;
    hooks.rejected = &list;
    hooks.heading = "h";
    auto o = findInText(c, body, {}, hooks);
    if (rejects) {
        rejects->clear();
        for (size_t i = 1; i < list.lines().size(); ++i) rejects->push_back(list.lines()[i]);
    }
    return o.found ? o.hit.byteNumber : -1;
}

PreparedCriteria withComplex(const std::string& text, const ComplexCriteria& cc, bool wholeWord = false) {
    return prepareFindCriteria(text, "", false, wholeWord, buildComplexCriteria(cc), "");
}

}  // namespace

struct ExcludeRow {
    const char* name;
    std::string body;
    int64_t found;
};

class SimpleExclude : public testing::TestWithParam<ExcludeRow> {};

TEST_P(SimpleExclude, PeterSmith) {
    auto c = prepareFindCriteria("Smith", "Peter Smith", false, false, "", "");
    EXPECT_EQ(firstFind(c, GetParam().body), GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(Alignment, SimpleExclude,
                         testing::Values(ExcludeRow{"Excluded", "Peter Smith", -1},
                                         ExcludeRow{"ExcludedAnyCase", "PETER smith", -1},
                                         ExcludeRow{"Alone", "Smith", 1},
                                         ExcludeRow{"TwoBlanks", "Peter  Smith", 8},
                                         ExcludeRow{"SecondOne", "Peter Smith, Smith", 14}),
                         [](const testing::TestParamInfo<ExcludeRow>& row) { return std::string(row.param.name); });

TEST(CriteriaCheck, ExclusionHoldingTheValueTwiceExcludesEitherHalf) {
    ComplexCriteria cc;
    cc.exclude = {"Smith Smith"};
    auto c = withComplex("Smith", cc);
    std::vector<std::string> rejects;
    EXPECT_EQ(firstFind(c, "Smith Smith Smith", &rejects), -1);
    EXPECT_EQ(rejects.front(), "Smith Smith   -(Smith Smith)");
    EXPECT_EQ(firstFind(c, "Smith Smith. Smith", &rejects), 14);
    // An exclusion without the value never rejects.
    cc.exclude = {"Jones"};
    EXPECT_EQ(firstFind(withComplex("Smith", cc), "Jones Smith"), 7);
}

struct WordRow {
    const char* name;
    std::string body, ranges;
    int64_t found;
    std::string reject;
};

class WholeWord : public testing::TestWithParam<WordRow> {};

TEST_P(WholeWord, Ranges) {
    const auto& r = GetParam();
    auto c = prepareFindCriteria("Smith", "", false, true, "", r.ranges);
    std::vector<std::string> rejects;
    EXPECT_EQ(firstFind(c, r.body, &rejects), r.found);
    if (!r.reject.empty()) {
        ASSERT_FALSE(rejects.empty());
        EXPECT_EQ(rejects.front(), r.reject);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WholeWord,
    testing::Values(WordRow{"FileStartAndEnd", "Smith", "", 1, ""},
                    WordRow{"LetterAhead", "xSmith Smith", "", 8, " WW   xSmith"},
                    WordRow{"DigitBehind", "Smith1 Smith", "", 8, " WW   Smith1"},
                    WordRow{"DigitsNotInRanges", "1Smith1", "[65-90]-[97-122]", 2, ""},
                    WordRow{"UnderscoreAdded", "_Smith Smith", "[95-95]-[65-90]-[97-122]", 8, " WW   _Smith"},
                    WordRow{"HighBytes", "\xC3\xA9Smith", "[128-255]", -1, " WW   \xA9Smith"}),
    [](const testing::TestParamInfo<WordRow>& row) { return std::string(row.param.name); });

TEST(CriteriaCheck, LineStartFarterThanRestrictDistance) {
    ComplexCriteria cc;
    cc.restrictLine = 10;
    cc.excludeLineStarts = {"REM"};
    const std::string body = "REM this line is long before Smith\n";
    // The exclusion cannot see the line start, so the hit stands.
    EXPECT_EQ(firstFind(withComplex("Smith", cc), body), 30);
    cc.excludeLineStarts.clear();
    cc.includeLineStarts = {"REM"};
    std::vector<std::string> rejects;
    EXPECT_EQ(firstFind(withComplex("Smith", cc), body, &rejects), -1);
    EXPECT_EQ(rejects, (std::vector<std::string>{"+L(Line start not found Cannot Check REM) etc.   "}));
    // Near enough, the line start is seen.
    cc.restrictLine = 0;  // 1000 when searching
    EXPECT_EQ(firstFind(withComplex("Smith", cc), body), 30);
}

TEST(CriteriaCheck, LineStartAtFileStartWithinRestrictDistance) {
    ComplexCriteria cc;
    cc.restrictLine = 100;
    cc.excludeLineStarts = {"REM"};
    std::vector<std::string> rejects;
    EXPECT_EQ(firstFind(withComplex("Smith", cc), "REM Smith", &rejects), -1);
    EXPECT_EQ(rejects, (std::vector<std::string>{"REM Smith   -L(REM)"}));
    EXPECT_EQ(firstFind(withComplex("Smith", cc), "REM Smith\r\nx Smith"), 14);
}

TEST(CriteriaCheck, IgnoreLeadingSpacesTrimsTheLineOnly) {
    ComplexCriteria cc;
    cc.excludeLineStarts = {"REM"};
    const std::string body = "a\n   REM Smith";
    EXPECT_EQ(firstFind(withComplex("Smith", cc), body), 10);
    cc.excludeStartIgnoreSpaces = true;
    std::vector<std::string> rejects;
    EXPECT_EQ(firstFind(withComplex("Smith", cc), body, &rejects), -1);
    EXPECT_EQ(rejects.front(), "REM Smith   -LG(REM)");
    cc.excludeLineStarts = {" REM"};  // values are not trimmed
    EXPECT_EQ(firstFind(withComplex("Smith", cc), body), 10);
}

TEST(CriteriaCheck, SameLineAndRangeTests) {
    ComplexCriteria cc;
    cc.excludeSameLine = {"//"};
    std::vector<std::string> rejects;
    EXPECT_EQ(firstFind(withComplex("x", cc), "a x // c\nb x", &rejects), 12);
    EXPECT_EQ(rejects.front(), "a x // c   -S(//)");

    cc = {};
    cc.includeSameLine = {"=", "Dim"};
    EXPECT_EQ(firstFind(withComplex("x", cc), "a x\nb = x", &rejects), 9);
    EXPECT_EQ(rejects.front(), "a x   +S(=) +S(Dim) ");

    cc = {};
    cc.excludeRange = {"Jones"};
    cc.excludeRangeBytes = 3;
    EXPECT_EQ(firstFind(withComplex("Smith", cc), "Jones Smith", &rejects), 7) << "Jones is 6 bytes away";
    cc.excludeRangeBytes = 6;
    EXPECT_EQ(firstFind(withComplex("Smith", cc), "Jones Smith", &rejects), -1);
    EXPECT_EQ(rejects.front(), "Jones Smith   -R6(Jones)");

    cc = {};
    cc.includeRange = {"Peter"};
    cc.includeRangeBytes = 20;
    EXPECT_EQ(firstFind(withComplex("Smith", cc), "Smith ............................ Peter Smith", &rejects), 42);
    EXPECT_EQ(rejects.front(), "Smith " + std::string(19, '.') + "   +R20(Peter) ");
}

TEST(CriteriaCheck, ContextFromTheFileAcrossBlocks) {
    // The exclusion's first part lies in the block ahead of the hit.
    std::string body(30000, '.');
    body.replace(9995, 11, "Peter Smith");
    body.replace(20000, 5, "Smith");
    auto c = prepareFindCriteria("Smith", "Peter Smith", false, false, "", "");
    EXPECT_EQ(firstFind(c, body), 20001);
    SearchRange back;
    back.forward = false;
    EXPECT_EQ(findInText(c, body.substr(0, 20000), back).found, false);
}

TEST(CriteriaCheck, GatheredLineIsCutAfterItsBreak) {
    PreparedCriteria c = withComplex("x", [] {
        ComplexCriteria cc;
        cc.includeSameLine = {"y"};
        return cc;
    }());
    MemoryBytes src("ab x\ncd");
    HitContext h = gatherHitContext(c, src, 4, "x");
    EXPECT_EQ(h.before, "ab ");
    EXPECT_EQ(h.lineStartIndex, 1);
    EXPECT_EQ(gatherLine(c, h), "ab x");
}

TEST(CriteriaCheck, ContextReadBackFromTheFile) {
    // Backward, the bytes behind a hit at a block's end lie outside what is
    // held, and are read again from the file.
    tavtest::TempDir dir;
    std::string body(30000, '.');
    body.replace(9995, 11, "Smith Jones");
    body.replace(100, 5, "Smith");
    auto path = dir.write("f", body).string();
    auto c = prepareFindCriteria("Smith", "Smith Jones", false, false, "", "");
    SearchRange back;
    back.forward = false;
    auto o = findInFile(c, path, back);
    ASSERT_TRUE(o.found);
    EXPECT_EQ(o.hit.byteNumber, 101);
    EXPECT_EQ(findInFile(c, path, {}).hit.byteNumber, 101);
}

TEST(CriteriaCheck, FileWalkAgreesWithCheckingEveryPlace) {
    // Whether a hit is a find depends only on its place: a walk over a file
    // must give the first place, from any start, in both directions, that
    // the check accepts on the whole text.
    std::mt19937 rng(5);
    tavtest::TempDir dir;
    ComplexCriteria cc;
    cc.exclude = {"no ab"};
    cc.excludeLineStarts = {"#"};
    cc.includeSameLine = {"="};
    cc.restrictLine = 40;
    const std::vector<std::string> words = {"ab", "no", "=", "#", "xab", " ", " ", "\n", "\r\n", "cd"};
    for (int round = 0; round < 20; ++round) {
        auto c = prepareFindCriteria("ab", "", false, round % 2 == 0, buildComplexCriteria(cc), "");
        std::string body;
        while (body.size() < 23000) body += words[rng() % words.size()];
        auto path = dir.write("w" + std::to_string(round), body).string();
        MemoryBytes whole(body);
        std::vector<int64_t> accepted;
        for (size_t p = body.find("ab"); p != std::string::npos; p = body.find("ab", p + 1))
            if (!checkCriteria(c, whole, static_cast<int64_t>(p) + 1, "ab")) accepted.push_back(static_cast<int64_t>(p) + 1);
        int64_t from = 1 + static_cast<int64_t>(rng() % body.size());
        SearchRange fw;
        fw.startByte = from;
        auto o = findInFile(c, path, fw);
        auto next = std::find_if(accepted.begin(), accepted.end(), [&](int64_t b) { return b >= from; });
        ASSERT_EQ(o.found, next != accepted.end()) << round;
        if (o.found) {
            EXPECT_EQ(o.hit.byteNumber, *next) << round;
        }
        SearchRange bw;
        bw.forward = false;
        bw.endByte = from;
        o = findInFile(c, path, bw);
        auto prev = std::find_if(accepted.rbegin(), accepted.rend(), [&](int64_t b) { return b + 2 <= from; });
        ASSERT_EQ(o.found, prev != accepted.rend()) << round;
        if (o.found) {
            EXPECT_EQ(o.hit.byteNumber, *prev) << round;
        }
    }
}
