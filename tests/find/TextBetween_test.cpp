#include "find/TextBetween.h"

#include <gtest/gtest.h>

#include "support/TempDir.h"

using namespace tav;

TEST(TextBetween, AcrossBlockSeams) {
    tavtest::TempDir dir;
    std::string body(40000, '.');
    body.replace(9998, 7, "<title>");
    body.replace(19997, 8, "</TITLE>");
    auto path = dir.write("f.htm", body).string();
    TextBetweenRequest r;
    r.startText = "<TITLE>";
    r.endText = "</title>";
    auto o = textBetweenInFile(path, r);
    EXPECT_TRUE(o.startFound);
    EXPECT_EQ(o.startByte, 9999);
    EXPECT_EQ(o.endByte, 19998);
    EXPECT_EQ(o.text, std::string(19997 - 10005, '.'));
    r.matchCase = true;
    EXPECT_FALSE(textBetweenInFile(path, r).startFound);
}

TEST(TextBetween, EndMissingLimitAndPieces) {
    MemoryBytes src("a[123");
    TextBetweenRequest r;
    r.startText = "[";
    r.endText = "]";
    auto o = textBetween(src, r);
    EXPECT_EQ(o.text, "123");
    EXPECT_EQ(o.endByte, 0);
    r.maxLength = 2;
    o = textBetween(src, r);
    EXPECT_EQ(o.text, "12");
    EXPECT_TRUE(o.truncated);
    r.maxLength = 0;
    o = textBetweenInPieces({"xx[a", "b", "c]d"}, 0, 3, r);
    EXPECT_FALSE(o.startFound) << "the start text lies ahead of the offset";
    o = textBetweenInPieces({"xx[a", "b", "c]d"}, 0, 1, r);
    EXPECT_EQ(o.text, "abc");
}

TEST(TextBetween, StopAbandonsWithoutResult) {
    std::string body(100000, '.');
    body += "[x]";
    MemoryBytes src(body);
    TextBetweenRequest r;
    r.startText = "[";
    r.stopRequested = [] { return true; };
    auto o = textBetween(src, r);
    EXPECT_TRUE(o.interrupted);
    EXPECT_FALSE(o.startFound);
    EXPECT_EQ(o.text, "");
}
