#include <gtest/gtest.h>

#include "viewer/DisplayText.h"
#include "viewer/LineMeasure.h"
#include "viewer/PlainText.h"
#include "viewer/RawConversion.h"

namespace {

using namespace std::string_literals;

TEST(RawConversion, ZeroAndTabBecomeByteOneAndNothingElseChanges) {
    EXPECT_EQ(tav::convertRawBlock("a\0b\tc\r\n\xE9"s, false), "a\x01" "b\x01" "c\r\n\xE9"s);
}

TEST(RawConversion, RemoveBlankDropsWhiteLinesKeepsBreaksOfOthers) {
    EXPECT_EQ(tav::removeBlankLines("one\r\n\r\n  \t\r\ntwo\n\nthree"), "one\r\ntwo\nthree");
    EXPECT_EQ(tav::removeBlankLines("\n\nx\n"), "x\n");
    EXPECT_EQ(tav::removeBlankLines("tail  "), "tail  ");  // may go on in the next block
    EXPECT_EQ(tav::convertRawBlock("a\n\t\nb", true), "a\nb");
}

TEST(FixedWidthMeasure, BreaksAtLineEndsAndWrapsAtWidth) {
    tav::FixedWidthMeasure m(5, 3);
    EXPECT_EQ(m.lineLength("ab\r\ncd"), 4u);
    EXPECT_EQ(m.lineLength("ab\rcd"), 3u);
    EXPECT_EQ(m.lineLength("ab\ncd"), 3u);
    EXPECT_EQ(m.lineLength("abcdefgh"), 5u);
    EXPECT_EQ(m.lineLength("abcde\r\nf"), 7u);  // a break right behind a full line belongs to it
    EXPECT_EQ(m.lineLength("abc"), 3u);
    // UTF-8 sequences take one column; other high bytes one each.
    EXPECT_EQ(m.lineLength("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9xyz"), 10u);
    EXPECT_EQ(m.lineLength("\xE9\xE9\xE9\xE9\xE9xyz"), 5u);
}

TEST(FixedWidthMeasure, WordWrapBreaksBehindTheLastBlank) {
    tav::FixedWidthMeasure m(10, 3, true);
    EXPECT_EQ(m.lineLength("hello big world"), 10u);  // "hello big " then "world"
    EXPECT_EQ(m.lineLength("abcdefghijklmno"), 10u);  // no blank: cut at width
}

TEST(PlainText, TakesOutTagsCommentsScriptsAndStyles) {
    EXPECT_EQ(tav::stripMarkup("<p>Hello</p><p>World</p>"), "Hello World");
    EXPECT_EQ(tav::stripMarkup("a<!-- <p>x</p> -->b"), "a b");
    EXPECT_EQ(tav::stripMarkup("a<script>var x = '<b>';</script>b"), "a b");
    EXPECT_EQ(tav::stripMarkup("a<STYLE type=x>p{}</style >b</style>c"), "a c");
    EXPECT_EQ(tav::stripMarkup("x <% server %> y"), "x  y");
    EXPECT_EQ(tav::stripMarkup("no tags at all"), "no tags at all");
    EXPECT_EQ(tav::stripMarkup("cut <here and never ends"), "cut ");
}

TEST(PlainText, DecodesReferences) {
    EXPECT_EQ(tav::decodeEntities("&amp;lt;"), "&lt;");
    EXPECT_EQ(tav::decodeEntities("&#65;"), "A");
    EXPECT_EQ(tav::decodeEntities("&#300;"), " ");
    EXPECT_EQ(tav::decodeEntities("&#65x"), "A");  // the character behind the number goes
    EXPECT_EQ(tav::decodeEntities("caf&eacute; &EACUTE;"), "caf\xC3\xA9 ???EACUTE???");
    EXPECT_EQ(tav::decodeEntities("&Copy; &acute; &eth;"), "\xC2\xA9 a \xC3\x90");
    EXPECT_EQ(tav::decodeEntities("a & b; c"), "a ??? b??? c");
    EXPECT_EQ(tav::decodeEntities("AT&T"), "AT&T");
}

TEST(PlainText, TidyKeepsAtMostTheBlankLinesAsked) {
    EXPECT_EQ(tav::tidyText("a\n\n\n\n\n\n\n\n\n\n\nb", 0, 1, true), "a\r\n\r\nb");
    EXPECT_EQ(tav::tidyText("a\r\n   \r\n\r\n  b", 0, 0, true), "a\r\nb");
    EXPECT_EQ(tav::tidyText("\x01\x02start", 0, 1, true), "start");
    EXPECT_EQ(tav::tidyText("\x01  start", 0, 1, true), "  start");
    EXPECT_EQ(tav::tidyText("\xC2\x85\xC2\xA0x", 0, 1, true), "\xC2\xA0x");  // U+0085 goes, U+00A0 stays
    EXPECT_EQ(tav::tidyText("abcdef", 3, 1, true), "abc");
    EXPECT_EQ(tav::tidyText("abcdef", 0, 1, true), "abcdef");
}

TEST(PlainText, WholeConversionOfHtmlAndOfBinary) {
    EXPECT_EQ(tav::plainTextOf("<html><title>T</title><body>\n\n\n\n<p>caf&eacute;\tok</p></body>"),
              "T\r\n\r\ncaf\xC3\xA9\x01ok");
    // Bytes that are not UTF-8 are read as Windows-1252.
    EXPECT_EQ(tav::plainTextOf("\x93quoted\x94"), "\xE2\x80\x9Cquoted\xE2\x80\x9D");
    const std::string binary("\x00\x01<\x02>\x03zz"s);
    EXPECT_EQ(tav::plainTextOf(binary), "zz");
}

}  // namespace

namespace {

TEST(DisplayText, Utf8StaysOtherHighBytesAreWindows1252) {
    EXPECT_EQ(tav::displayText("\xC3\xA9\xE9\x80\x01\x7F", true), "\xC3\xA9\xC3\xA9\xE2\x82\xAC..");
    EXPECT_EQ(tav::displayText("a\x01" "b\r\n", false), "a\x01" "b\r\n");
}

TEST(DisplayText, UnfinishedSequenceAtTheEndIsKeptForTheNextPiece) {
    EXPECT_EQ(tav::unfinishedUtf8Tail("ab\xE2\x82"), 2u);
    EXPECT_EQ(tav::unfinishedUtf8Tail("ab\xE2\x82\xAC"), 0u);
    EXPECT_EQ(tav::unfinishedUtf8Tail("ab\xC3"), 1u);
    EXPECT_EQ(tav::unfinishedUtf8Tail("ab\xE9"), 1u);  // may begin a three-byte sequence
    EXPECT_EQ(tav::unfinishedUtf8Tail("ab\xFF"), 0u);  // begins nothing
}

}  // namespace

namespace {

TEST(RawConversion, ALineCutByTheBlockEdgesIsJudgedWhole) {
    // A blank line cut in two: both halves go, the lines around it stay whole.
    EXPECT_EQ(tav::removeBlankLines("x\n \t", "", "  \nnext", false), "x\n");
    EXPECT_EQ(tav::removeBlankLines("  \nnext\n", "x\n \t", "", true), "next\n");
    // A line with text cut in two: both halves stay, blanks and all.
    EXPECT_EQ(tav::removeBlankLines("x\n  ", "", "word\n", false), "x\n  ");
    EXPECT_EQ(tav::removeBlankLines("  \nnext", "x\nword", "", true), "  \nnext");
    // Nothing known behind: the half line stays.
    EXPECT_EQ(tav::removeBlankLines("x\n  ", "", "    ", false), "x\n  ");
    EXPECT_EQ(tav::removeBlankLines("x\n  ", "", "    ", true), "x\n");
}

}  // namespace
