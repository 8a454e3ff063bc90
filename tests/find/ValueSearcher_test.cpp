#include "find/ValueSearcher.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using tav::ValueSearcher;

namespace {

// Which bytes of a value fold, spelled out: ASCII letters; the second
// byte of a UTF-8 Latin letter pair C3 xx; a Latin-1 letter byte standing
// outside any UTF-8 sequence.
std::vector<bool> foldingBytes(const std::string& v) {
    std::vector<bool> fold(v.size(), false);
    auto u = [&](size_t i) { return static_cast<unsigned char>(v[i]); };
    auto cont = [&](size_t i) { return i < v.size() && (u(i) & 0xC0) == 0x80; };
    for (size_t i = 0; i < v.size(); ++i) {
        unsigned char c = u(i);
        if ((c | 0x20) >= 'a' && (c | 0x20) <= 'z') {
            fold[i] = true;
        } else if (c >= 0xC2 && c <= 0xDF && cont(i + 1)) {
            unsigned char t = u(i + 1) & ~0x20;
            fold[i + 1] = c == 0xC3 && t <= 0x9E && t != 0x97;
            ++i;
        } else if (c >= 0xE0 && c <= 0xEF && cont(i + 1) && cont(i + 2)) {
            i += 2;
        } else if (c >= 0xF0 && c <= 0xF4 && cont(i + 1) && cont(i + 2) && cont(i + 3)) {
            i += 3;
        } else {
            unsigned char t = c & ~0x20;
            fold[i] = t >= 0xC0 && t <= 0xDE && t != 0xD7;
        }
    }
    return fold;
}

bool sameUnderRule(const std::string& hay, size_t at, const std::string& value, bool ignoreCase) {
    std::vector<bool> fold = foldingBytes(value);
    for (size_t i = 0; i < value.size(); ++i) {
        auto h = static_cast<unsigned char>(hay[at + i]);
        auto v = static_cast<unsigned char>(value[i]);
        if (h == v) continue;
        if (!ignoreCase || (h ^ v) != 0x20 || !fold[i]) return false;
    }
    return true;
}

size_t naiveForward(const std::string& hay, const std::string& v, size_t from, bool ic) {
    for (size_t p = from; p + v.size() <= hay.size(); ++p)
        if (sameUnderRule(hay, p, v, ic)) return p;
    return ValueSearcher::npos;
}

size_t naiveBackward(const std::string& hay, const std::string& v, size_t limit, bool ic) {
    for (size_t p = limit + 1; p-- > 0;)
        if (p + v.size() <= limit && sameUnderRule(hay, p, v, ic)) return p;
    return ValueSearcher::npos;
}

}  // namespace

TEST(ValueSearcher, AgreesWithPlainScanOnRandomText) {
    std::mt19937 rng(7);
    const std::string alphabet = "aAbB \n\xC3\xA9\x89\xC9\xE9xy";
    for (int round = 0; round < 400; ++round) {
        std::string hay(rng() % 300, ' ');
        for (auto& ch : hay) ch = alphabet[rng() % alphabet.size()];
        std::string value(1 + rng() % 6, ' ');
        for (auto& ch : value) ch = alphabet[rng() % alphabet.size()];
        if (round % 3 == 0 && hay.size() > value.size()) hay.replace(rng() % (hay.size() - value.size()), value.size(), value);
        for (bool ic : {false, true}) {
            ValueSearcher s(value, ic);
            size_t from = hay.empty() ? 0 : rng() % (hay.size() + 1);
            ASSERT_EQ(s.findForward(hay.data(), hay.size(), from), naiveForward(hay, value, from, ic))
                << "round " << round << " ic " << ic;
            size_t limit = hay.empty() ? 0 : rng() % (hay.size() + 1);
            ASSERT_EQ(s.findBackward(hay.data(), limit), naiveBackward(hay, value, limit, ic))
                << "round " << round << " ic " << ic;
        }
    }
}

TEST(ValueSearcher, FindsEveryOccurrenceInLongBuffers) {
    // Long buffers run through the wide scan; hits at each lane position.
    std::string hay(5000, 'e');
    for (size_t at : {0u, 31u, 40u, 64u, 1000u, 4993u}) hay.replace(at, 7, "needle!");
    ValueSearcher s("NEEDLE!", true);
    std::vector<size_t> forward, backward;
    for (size_t p = s.findForward(hay.data(), hay.size()); p != ValueSearcher::npos;
         p = s.findForward(hay.data(), hay.size(), p + 1))
        forward.push_back(p);
    for (size_t p = s.findBackward(hay.data(), hay.size()); p != ValueSearcher::npos; p = s.findBackward(hay.data(), p))
        backward.insert(backward.begin(), p);
    std::vector<size_t> want = {0, 31, 40, 64, 1000, 4993};
    EXPECT_EQ(forward, want);
    EXPECT_EQ(backward, want);
    EXPECT_EQ(s.findForward(hay.data(), hay.size() - 1, 4993), ValueSearcher::npos) << "value cut by the end";
}

struct CaseRow {
    const char* name;
    std::string value, text;
    bool ignoreCase;
    bool equal;
};

class CaseRule : public testing::TestWithParam<CaseRow> {};

TEST_P(CaseRule, Compare) {
    const auto& r = GetParam();
    EXPECT_EQ(tav::textEquals(r.text, r.value, r.ignoreCase), r.equal);
}

INSTANTIATE_TEST_SUITE_P(
    Letters, CaseRule,
    testing::Values(CaseRow{"AsciiIgnore", "Smith", "SMITH", true, true},
                    CaseRow{"AsciiMatch", "Smith", "SMITH", false, false},
                    CaseRow{"Utf8Latin", "\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89", true, true},
                    CaseRow{"Utf8LatinMatchCase", "\xC3\x89", "\xC3\xA9", false, false},
                    CaseRow{"Latin1Bytes", "\xC9", "\xE9", true, true},
                    CaseRow{"TimesIsNotALetter", "\xC3\x97", "\xC3\xB7", true, false},
                    CaseRow{"SharpSHasNoCapital", "\xC3\x9F", "\xC3\xBF", true, false},
                    CaseRow{"NotOtherUtf8Pairs", "\xC4\x80", "\xC4\xA0", true, false},
                    CaseRow{"AtSignIsNotBacktick", "@", "`", true, false},
                    CaseRow{"BracketNotBrace", "[", "{", true, false}),
    [](const testing::TestParamInfo<CaseRow>& row) { return std::string(row.param.name); });
