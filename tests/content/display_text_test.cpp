// The display form of bytes and the character counts, against plain
// byte-at-a-time readings of the same rules, on texts that mix ASCII runs,
// valid sequences and stray bytes at every distance from the word steps.
#include "content/DisplayText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "content/StreamFinder.h"
#include "content/Tidy.h"

using namespace tav;

namespace {

// One byte at a time: a valid sequence stays, any other byte is read as
// Windows-1252.
std::string slowDisplay(std::string_view bytes) {
    std::string out;
    std::size_t i = 0;
    while (i < bytes.size()) {
        std::size_t next = i;
        const char32_t c = nextCodePoint(bytes, next);
        if (next - i > 1 || static_cast<unsigned char>(bytes[i]) < 0x80)
            out.append(bytes.substr(i, next - i));
        else
            appendUtf8(out, cp1252CodePoint(static_cast<unsigned char>(c)));
        i = next;
    }
    return out;
}

std::size_t slowCount(std::string_view text) {
    std::size_t i = 0, n = 0;
    while (i < text.size()) {
        nextCodePoint(text, i);
        ++n;
    }
    return n;
}

std::string mixedText(std::mt19937& rng, std::size_t length) {
    static const char* const pieces[] = {"abcdefgh", "xy", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                                         "\xE9",     "\x80", "\xC3", "\r\n", "\n",
                                         "   ",      "\t",  "\xED\xA0\x80"};
    std::string s;
    while (s.size() < length) s += pieces[rng() % (sizeof pieces / sizeof *pieces)];
    return s;
}

}  // namespace

TEST(DisplayText, FastPathsAgreeWithTheByteByByteReading) {
    std::mt19937 rng(7);
    for (int round = 0; round < 300; ++round) {
        const std::string raw = mixedText(rng, static_cast<std::size_t>(rng() % 300));
        const std::string shown = toDisplayText(raw);
        ASSERT_EQ(shown, slowDisplay(raw)) << round;
        ASSERT_TRUE(isValidUtf8(shown));
        const std::size_t chars = slowCount(shown);
        ASSERT_EQ(charCount(shown), chars);
        for (std::size_t k = 0; k <= chars + 2; ++k) {
            std::size_t i = 0, left = k;
            while (left > 0 && i < shown.size()) {
                nextCodePoint(shown, i);
                --left;
            }
            ASSERT_EQ(byteLengthOfChars(shown, k), i) << round << " k=" << k;
        }
        // A bare byte is counted as one character by both.
        ASSERT_EQ(charCount(raw), slowCount(raw));
    }
}

TEST(DisplayText, LongTextsAreConvertedWholeAcrossPieces) {
    // Longer than the converter's pieces, with a sequence on every seam.
    std::string raw;
    for (int i = 0; i < 30000; ++i) raw += i % 7 == 0 ? "ab\xE9" : "c\xE2\x82\xAC";
    EXPECT_EQ(toDisplayText(raw), slowDisplay(raw));
}

TEST(Tidy, LineEndsAreFoundAtEveryPlaceOfAWord) {
    for (std::size_t at = 1; at < 20; ++at) {
        std::string text(24, 'a');
        text[at] = '\n';
        const std::string expected = text.substr(0, at) + "\r\n" + text.substr(at + 1);
        EXPECT_EQ(Tidy(text, 0, 1, true), expected) << at;
        text[at] = '\r';
        EXPECT_EQ(Tidy(text, 0, 1, true), expected) << at;
    }
}

TEST(StreamFinder, WideStepsFindEveryPlace) {
    StreamFinder f;
    f.setPattern("<title", true);
    for (std::size_t at = 0; at < 100; ++at) {
        std::string text(120, 'e');
        text.replace(at, 6, "<TiTle");
        EXPECT_EQ(f.findIn(text, 0), at);
        EXPECT_EQ(f.findIn(text, at + 1), StreamFinder::npos);
    }
}
