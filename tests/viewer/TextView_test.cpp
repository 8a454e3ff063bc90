#include "viewer/TextView.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "viewer/RawConversion.h"
#include "ViewerTestFiles.h"

namespace {

using tav::FileTextSource;
using tav::FixedWidthMeasure;
using tav::TextBlockCache;
using tav::TextView;

std::string stripBreaks(std::string s) {
    while (!s.empty() && (s.back() == '\n' || s.back() == '\r')) s.pop_back();
    return s;
}

class ViewTest : public ::testing::Test {
protected:
    tavtest::TempDir dir;
    TextBlockCache cache;
    tavtest::ScriptedHost host;
    FixedWidthMeasure measure{40, 20};
    TextView view{cache, measure, host};
    std::string content;  // the file as the view shows it (after conversion)

    void open(const std::string& bytes, int64_t start = 1, bool removeBlank = false) {
        content = tav::convertRawBlock(bytes, false);
        const std::string path = dir.write("f.txt", bytes).string();
        ASSERT_TRUE(view.show(std::make_shared<FileTextSource>(path, removeBlank), start));
    }

    // Every line on screen is the file's bytes at its byte numbers, lines
    // follow each other, and the screen is full unless the file ends on it.
    void expectScreenIsFile() {
        const auto lines = view.screen();
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.front().firstByte, view.topByte());
        for (size_t i = 0; i < lines.size(); ++i) {
            const auto& l = lines[i];
            ASSERT_GE(l.firstByte, 1);
            ASSERT_LE(l.endByte, static_cast<int64_t>(content.size()) + 1);
            EXPECT_EQ(l.text, stripBreaks(content.substr(static_cast<size_t>(l.firstByte - 1),
                                                         static_cast<size_t>(l.endByte - l.firstByte))))
                << "line " << i << " at byte " << l.firstByte;
            if (i + 1 < lines.size()) {
                EXPECT_EQ(l.endByte, lines[i + 1].firstByte);
            }
        }
        if (static_cast<int>(lines.size()) < measure.visibleLines()) {
            EXPECT_EQ(lines.back().endByte, static_cast<int64_t>(content.size()) + 1);
        }
    }
    bool startsHardLine(int64_t byte) const { return byte == 1 || content[static_cast<size_t>(byte - 2)] == '\n'; }
};

TEST_F(ViewTest, PageDownToTheEndAndPageUpToTheStartThroughALargeFile) {
    open(viewertest::numberedLines(8000));  // 248000 bytes, eight caches
    expectScreenIsFile();
    EXPECT_EQ(view.topByte(), 1);
    int64_t previousTop = 0;
    int pages = 0;
    while (!view.atEnd()) {
        const auto before = view.screen();
        view.pageDown();
        ASSERT_LT(previousTop, view.topByte());
        // The last line of the old screen is the first of the new one.
        if (!view.atEnd()) {
            EXPECT_EQ(view.topByte(), before[before.size() - 1].firstByte);
        }
        expectScreenIsFile();
        previousTop = view.topByte();
        ASSERT_LT(++pages, 1000);
    }
    EXPECT_EQ(view.screen().size(), 20u);
    EXPECT_EQ(view.screenEndByte(), static_cast<int64_t>(content.size()) + 1);
    view.pageDown();  // at the end nothing moves
    EXPECT_EQ(view.topByte(), previousTop);
    while (view.topByte() > 1) {
        const int64_t top = view.topByte();
        view.pageUp();
        ASSERT_LT(view.topByte(), top);
        EXPECT_TRUE(startsHardLine(view.topByte()));
        expectScreenIsFile();
    }
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(ViewTest, CtrlEndThenLineUpWalksBackLineByLine) {
    open(viewertest::numberedLines(5000));
    view.toEnd();
    expectScreenIsFile();
    EXPECT_TRUE(view.atEnd());
    EXPECT_EQ(view.screen().size(), 20u);
    EXPECT_EQ(view.scrollBarValue(), 10000);
    for (int i = 0; i < 700; ++i) {  // well past one cache of text
        const int64_t top = view.topByte();
        view.lineUp();
        ASSERT_EQ(view.topByte(), top - 31);
    }
    expectScreenIsFile();
    view.toStart();
    EXPECT_EQ(view.topByte(), 1);
    EXPECT_EQ(view.scrollBarValue(), 0);
}

TEST_F(ViewTest, LineDownMovesOneLine) {
    open(viewertest::numberedLines(2000));
    for (int i = 0; i < 500; ++i) view.lineDown();
    EXPECT_EQ(view.topByte(), 500 * 31 + 1);
    expectScreenIsFile();
}

TEST_F(ViewTest, ScrollBarJumpsMapTheWholeFile) {
    open(viewertest::numberedLines(10000));  // 310000 bytes
    const int64_t len = view.fileLength();
    for (int value : {2, 3, 1000, 5000, 5001, 9999, 10000, 7777, 2}) {
        ASSERT_TRUE(view.scrollBarMoved(value));
        expectScreenIsFile();
        const int64_t target = len * (value - 2) / 9998;
        if (value < 9990) {
            // The line that holds the target byte is on top.
            EXPECT_LE(view.topByte(), std::max<int64_t>(1, target));
            EXPECT_GT(view.topByte() + 31, target);
            EXPECT_TRUE(startsHardLine(view.topByte()));
        } else {
            EXPECT_TRUE(view.atEnd());
        }
        const int back = view.scrollBarValue();
        EXPECT_NEAR(back, value, 20) << "bar value " << value;
    }
    // Page and line values of the bar.
    view.scrollBarMoved(5000);
    const int64_t top = view.topByte();
    view.scrollBarMoved(tav::kBarLineDown);
    EXPECT_EQ(view.topByte(), top + 31);
    view.scrollBarMoved(tav::kBarPageDown);
    EXPECT_EQ(view.topByte(), top + 31 + 19 * 31);
    view.scrollBarMoved(tav::kBarPageUp);
    view.scrollBarMoved(tav::kBarLineUp);
    EXPECT_EQ(view.topByte(), top);
}

TEST_F(ViewTest, SelectionInBytesSurvivesRefills) {
    open(viewertest::numberedLines(6000));
    view.setSelection(2000, 2100);
    for (int i = 0; i < 300; ++i) view.pageDown();  // the cache has moved on many times
    view.toEnd();
    EXPECT_EQ(view.selection().first(), 2000);
    EXPECT_EQ(view.selection().behind(), 2100);
    view.toStart();
    for (int i = 0; i < 3; ++i) view.pageDown();
    EXPECT_EQ(view.selection().anchor, 2000);
    EXPECT_EQ(view.selection().caret, 2100);
    // The selected bytes are on screen where the file has them.
    bool seen = false;
    for (const auto& l : view.screen())
        if (l.firstByte <= 2000 && l.endByte > 2000) {
            EXPECT_EQ(l.text.substr(static_cast<size_t>(2000 - l.firstByte), 5), content.substr(1999, 5));
            seen = true;
        }
    EXPECT_TRUE(seen);
    // What a widget paints: the selected part of each screen line.
    for (const auto& l : view.screen()) {
        const auto [from, to] = view.selectedPart(l);
        if (l.endByte <= 2000 || l.firstByte >= 2100) {
            EXPECT_EQ(from, to);
        } else {
            EXPECT_EQ(l.text.substr(from, to - from),
                      stripBreaks(content.substr(static_cast<size_t>(l.firstByte - 1 + static_cast<int64_t>(from)),
                                                 to - from)));
        }
    }
}

TEST_F(ViewTest, ShiftMovesExtendTheSelection) {
    open(viewertest::numberedLines(3000));
    view.setSelection(100, 100);
    view.pageDown(true);
    EXPECT_EQ(view.selection().anchor, 100);
    EXPECT_EQ(view.selection().caret, view.screenEndByte());
    view.toEnd(true);
    EXPECT_EQ(view.selection().caret, view.fileLength() + 1);
    view.toStart(true);
    EXPECT_EQ(view.selection().caret, 1);
}

TEST_F(ViewTest, BarJumpWithSelectionAsksFirstAndCancelKeepsIt) {
    open(viewertest::numberedLines(3000));
    view.setSelection(10, 20);
    host.answer(2);  // Cancel
    EXPECT_FALSE(view.scrollBarMoved(5000));
    EXPECT_EQ(view.topByte(), 1);
    EXPECT_EQ(view.selection().first(), 10);
    ASSERT_EQ(host.messages().size(), 1u);
    EXPECT_EQ(host.messages()[0],
              "By repositioning using scroll bar, you willl lose selection. To Reposition text and keep selection, "
              "use keys PgDn, PgUp, up, down.\rPress OK to reposition and lose selection now.");
    host.answer(1);
    EXPECT_TRUE(view.scrollBarMoved(5000));
    EXPECT_TRUE(view.selection().empty());
    EXPECT_GT(view.topByte(), 1);
}

TEST_F(ViewTest, BinaryWithoutLineBreaksWrapsAndMovesBothWays) {
    open(viewertest::binaryNoBreaks(120000));
    expectScreenIsFile();
    for (int i = 0; i < 100; ++i) view.pageDown();
    expectScreenIsFile();
    EXPECT_EQ(view.topByte(), 1 + 100 * 19 * 40);
    view.toEnd();
    expectScreenIsFile();
    EXPECT_TRUE(view.atEnd());
    for (int i = 0; i < 100; ++i) view.pageUp();
    expectScreenIsFile();
    view.scrollBarMoved(5000);
    expectScreenIsFile();
    for (int i = 0; i < 50; ++i) view.lineUp();
    expectScreenIsFile();
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(ViewTest, ShortFileIsWholeAndDoesNotMove) {
    open("one\ntwo\nthree\n");
    EXPECT_TRUE(view.wholeFileShown());
    view.pageDown();
    view.lineDown();
    view.toEnd();
    EXPECT_EQ(view.topByte(), 1);
    ASSERT_EQ(view.screen().size(), 3u);
    EXPECT_EQ(view.screen()[2].text, "three");
}

TEST_F(ViewTest, OpensInTheMiddleAtTheLineOfTheStartByte) {
    open(viewertest::numberedLines(3000), 31 * 1000 + 15);
    EXPECT_EQ(view.topByte(), 31 * 1000 + 1);
    expectScreenIsFile();
}

TEST_F(ViewTest, FileShrinkingBetweenReadsGivesAMessageAndTheViewGoesOn) {
    const std::string bytes = viewertest::numberedLines(4000);
    open(bytes);
    const std::string path = (dir / "f.txt").string();
    std::filesystem::resize_file(path, 5000);
    for (int i = 0; i < 40; ++i) view.pageDown();
    ASSERT_FALSE(host.messages().empty());
    EXPECT_EQ(host.messages()[0].rfind("Start at byte specified is after end of file. File length: 5000.", 0), 0u);
    EXPECT_EQ(view.fileLength(), 5000);
    EXPECT_FALSE(view.screen().empty());
    view.toStart();
    EXPECT_EQ(view.topByte(), 1);
    EXPECT_EQ(view.screen().front().text, stripBreaks(bytes.substr(0, 31)));
}

TEST_F(ViewTest, VanishedFileGivesAMessageAndTheViewGoesOn) {
    open(viewertest::numberedLines(4000));
    std::filesystem::remove(dir / "f.txt");
    for (int i = 0; i < 40; ++i) view.pageDown();
    ASSERT_FALSE(host.messages().empty());
    EXPECT_EQ(host.messages().back(), "Error opening file >>" + (dir / "f.txt").string() + "<<.");
    EXPECT_FALSE(view.screen().empty());
    view.pageUp();
    EXPECT_FALSE(view.screen().empty());
}

TEST_F(ViewTest, ScreenTooBigForTheCacheGivesTheOverflowMessage) {
    FixedWidthMeasure huge(200, 250);  // 50000 characters a screen
    TextView big(cache, huge, host);
    const std::string path = dir.write("b.txt", viewertest::binaryNoBreaks(300000)).string();
    ASSERT_FALSE(big.show(std::make_shared<FileTextSource>(path, false)) && !big.overflowed());
    ASSERT_FALSE(host.messages().empty());
    EXPECT_EQ(host.messages()[0].rfind("Overflow or Memory problem. Cannot read enough text from file", 0), 0u);
    big.pageDown();
    big.pageUp();
    EXPECT_FALSE(big.screen().empty());  // still usable
}

TEST_F(ViewTest, TwoViewsShareTheCacheAndReloadTheirOwnFile) {
    open(viewertest::numberedLines(3000));
    view.scrollBarMoved(5000);
    const int64_t top = view.topByte();
    FixedWidthMeasure m2(40, 20);
    TextView other(cache, m2, host);
    const std::string path2 = dir.write("g.txt", viewertest::binaryNoBreaks(50000)).string();
    other.show(std::make_shared<FileTextSource>(path2, false));
    EXPECT_TRUE(view.screen().empty());  // its text is gone from the cache until it moves
    view.lineDown();
    EXPECT_EQ(view.topByte(), top + 31);
    expectScreenIsFile();
}

TEST_F(ViewTest, RemoveBlankShowsNoBlankLines) {
    std::string bytes;
    for (int i = 0; i < 3000; ++i) bytes += "line " + std::to_string(i) + "\r\n\r\n   \r\n";
    const std::string path = dir.write("nb.txt", bytes).string();
    ASSERT_TRUE(view.show(std::make_shared<FileTextSource>(path, true)));
    for (int i = 0; i < 60; ++i) {
        for (const auto& l : view.screen()) ASSERT_EQ(l.text.rfind("line ", 0), 0u) << l.text;
        view.pageDown();
    }
    view.toEnd();
    EXPECT_EQ(view.screen().back().text, "line 2999");
    for (int i = 0; i < 60; ++i) view.pageUp();
    for (const auto& l : view.screen()) EXPECT_EQ(l.text.rfind("line ", 0), 0u) << l.text;
}

TEST(HugeFile, ThreeGigabyteSparseFileOpensAtItsEndAtOnce) {
    tavtest::TempDir dir;
    const auto path = dir / "huge.txt";
    const int64_t size = int64_t{3} << 30;
    {
        std::ofstream out(path, std::ios::binary);
    }
    const std::string tail = viewertest::numberedLines(129);
    std::filesystem::resize_file(path, static_cast<uintmax_t>(size) - tail.size());
    {
        std::ofstream out(path, std::ios::binary | std::ios::app);
        out << tail;
    }
    ASSERT_EQ(static_cast<int64_t>(std::filesystem::file_size(path)), size);
    TextBlockCache cache;
    tavtest::ScriptedHost host;
    FixedWidthMeasure measure(80, 25);
    TextView view(cache, measure, host);
    const auto t0 = std::chrono::steady_clock::now();
    ASSERT_TRUE(view.show(std::make_shared<FileTextSource>(path.string(), false), size));
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - t0);
    EXPECT_LT(ms.count(), 500);
    EXPECT_TRUE(view.atEnd());
    EXPECT_GT(view.topByte(), int64_t{1} << 31);
    EXPECT_EQ(view.screen().back().text.substr(0, 7), "L000129");
    EXPECT_LE(cache.text().size(), tav::kCacheSlideLength + 10000);
    view.scrollBarMoved(5000);  // the middle is all zero bytes, shown as byte 1
    EXPECT_NEAR(static_cast<double>(view.topByte()), static_cast<double>(size) * 4998.0 / 9998.0, 100.0);
    EXPECT_EQ(view.screen().front().text, std::string(80, '\x01'));
    view.pageUp();
    EXPECT_FALSE(view.screen().empty());
}

}  // namespace

namespace {

class WrapTest : public ::testing::Test {
protected:
    tavtest::TempDir dir;
    TextBlockCache cache;
    tavtest::ScriptedHost host;
};

// Paging down and back up again passes the same tops: display lines are the
// same whichever way they were measured.
void expectPagingRetraces(TextView& view) {
    std::vector<int64_t> tops{view.topByte()};
    while (!view.atEnd()) {
        view.pageDown();
        tops.push_back(view.topByte());
        ASSERT_LT(tops.size(), 5000u);
    }
    // The last page is pulled back to fill the screen, off the pages' grid: stop short of it.
    tops.resize(tops.size() - 2);
    view.toStart();
    for (size_t i = 1; i < tops.size(); ++i) view.pageDown();
    ASSERT_EQ(view.topByte(), tops.back());
    while (tops.size() > 1) {
        tops.pop_back();
        view.pageUp();
        ASSERT_EQ(view.topByte(), tops.back()) << "page up did not retrace page down";
    }
    view.pageUp();
    EXPECT_EQ(view.topByte(), 1);
}

TEST_F(WrapTest, CrLfLinesPageBothWaysWithoutStrayLineFeeds) {
    std::string bytes;
    for (int i = 0; i < 9000; ++i) bytes += "row " + std::to_string(i) + std::string(static_cast<size_t>(i % 7), '-') + "\r\n";
    const std::string path = dir.write("crlf.txt", bytes).string();
    FixedWidthMeasure measure(30, 17);
    TextView view(cache, measure, host);
    ASSERT_TRUE(view.show(std::make_shared<FileTextSource>(path, false)));
    for (int i = 0; i < 400 && !view.atEnd(); ++i) {
        for (const auto& l : view.screen()) ASSERT_EQ(l.text.rfind("row ", 0), 0u) << "at byte " << l.firstByte;
        view.pageDown();
    }
    view.toStart();
    expectPagingRetraces(view);
}

TEST_F(WrapTest, WordWrappedLongLinesRetraceWhenPagingBack) {
    std::string bytes;
    for (int i = 0; i < 600; ++i) {
        for (int w = 0; w < 20 + i % 30; ++w) bytes += "word" + std::to_string((i * w) % 97) + " ";
        bytes += "\n";
    }
    const std::string path = dir.write("wrap.txt", bytes).string();
    FixedWidthMeasure measure(37, 11, true);
    TextView view(cache, measure, host);
    ASSERT_TRUE(view.show(std::make_shared<FileTextSource>(path, false)));
    expectPagingRetraces(view);
}

}  // namespace
