// Random walks through files of several shapes: whatever the order of moves,
// the screen shows the file's bytes at the byte numbers it claims, lines
// follow each other, the screen is full unless the file ends on it, and
// nothing is asked of the user.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <set>

#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "viewer/RawConversion.h"
#include "viewer/TextView.h"
#include "ViewerTestFiles.h"

namespace {

struct Shape {
    std::string name;
    std::string bytes;
    int columns, lines;
    bool wordWrap;
};

// Lines of every length from empty to longer than the room for wrap, with
// all three line ends, tabs, zeros and UTF-8.
std::string mixedText(size_t size) {
    std::string s;
    std::mt19937 rng(3);
    while (s.size() < size) {
        const int kind = static_cast<int>(rng() % 6);
        const size_t n = rng() % (kind == 4 ? 3000 : 90);
        for (size_t i = 0; i < n; ++i) s += (i % 7 == 6) ? ' ' : static_cast<char>('a' + kind);
        if (kind == 0) s += std::string("\t\xC3\xA9\0x", 5);
        s += kind == 1 ? "\r\n" : kind == 2 ? "\r" : "\n";
        if (kind == 3) s += "\n\n\n";
    }
    return s;
}

std::vector<Shape> shapes() {
    return {
        {"numbered", viewertest::numberedLines(6000), 40, 20, false},
        {"mixed", mixedText(160000), 33, 15, false},
        {"mixed-wordwrap", mixedText(160000), 50, 30, true},
        {"binary", viewertest::binaryNoBreaks(140000), 64, 40, false},
        {"narrow", viewertest::numberedLines(3000), 7, 9, false},
    };
}

class RandomMoves : public ::testing::TestWithParam<Shape> {};

TEST_P(RandomMoves, ScreenAlwaysShowsTheFile) {
    const Shape& shape = GetParam();
    tavtest::TempDir dir;
    const std::string path = dir.write("f.bin", shape.bytes).string();
    const std::string shown = tav::convertRawBlock(shape.bytes, false);
    tav::TextBlockCache cache;
    tavtest::ScriptedHost host;
    tav::FixedWidthMeasure measure(shape.columns, shape.lines, shape.wordWrap);
    tav::TextView view(cache, measure, host);
    ASSERT_TRUE(view.show(std::make_shared<tav::FileTextSource>(path, false)));
    // A second view on the same cache now and then takes it away.
    tav::TextView intruder(cache, measure, host);
    const std::string other = dir.write("other.txt", "other file\n").string();

    std::mt19937 rng(11);
    std::set<int64_t> tops;
    for (int step = 0; step < 1500; ++step) {
        const int move = static_cast<int>(rng() % 12);
        switch (move) {
        case 0: case 1: view.pageDown(); break;
        case 2: case 3: view.pageUp(); break;
        case 4: view.lineDown(); break;
        case 5: view.lineUp(); break;
        case 6: view.scrollLinesUp(1 + static_cast<int>(rng() % 60)); break;
        case 7: view.scrollLinesDown(1 + static_cast<int>(rng() % 60)); break;
        case 8: view.scrollBarMoved(static_cast<int>(rng() % 10003)); break;
        case 9: rng() % 2 ? view.toEnd() : view.toStart(); break;
        case 10: view.repositionText(1 + static_cast<int64_t>(rng() % shown.size())); break;
        default:
            if (rng() % 4 == 0) intruder.show(std::make_shared<tav::FileTextSource>(other, false));
            view.lineDown();
            break;
        }
        const auto lines = view.screen();
        ASSERT_FALSE(lines.empty()) << "step " << step << " move " << move;
        ASSERT_EQ(lines.front().firstByte, view.topByte());
        for (size_t i = 0; i < lines.size(); ++i) {
            const auto& l = lines[i];
            ASSERT_LE(l.endByte, static_cast<int64_t>(shown.size()) + 1);
            std::string want = shown.substr(static_cast<size_t>(l.firstByte - 1), static_cast<size_t>(l.endByte - l.firstByte));
            while (!want.empty() && (want.back() == '\n' || want.back() == '\r')) want.pop_back();
            ASSERT_EQ(l.text, want) << "step " << step << " move " << move << " line " << i;
            if (i + 1 < lines.size()) {
                ASSERT_EQ(l.endByte, lines[i + 1].firstByte);
            }
        }
        if (static_cast<int>(lines.size()) < shape.lines) {
            ASSERT_EQ(lines.back().endByte, static_cast<int64_t>(shown.size()) + 1) << "step " << step;
        }
        tops.insert(view.topByte());
        const int bar = view.scrollBarValue();
        ASSERT_GE(bar, 0);
        ASSERT_LE(bar, 10000);
    }
    EXPECT_GT(tops.size(), 300u);  // the walk went places
    EXPECT_TRUE(host.asked().empty());
}

INSTANTIATE_TEST_SUITE_P(Shapes, RandomMoves, ::testing::ValuesIn(shapes()),
                         [](const ::testing::TestParamInfo<Shape>& param) {
                             std::string n = param.param.name;
                             for (char& c : n)
                                 if (c == '-') c = '_';
                             return n;
                         });

}  // namespace

namespace {

// With blank lines removed the text is shorter than its bytes: byte numbers
// are no longer exact, but the lines on screen are still the file's lines,
// in order, with no blank line among them.
TEST(RandomMovesRemoveBlank, LinesStayInOrderWithoutBlanks) {
    tavtest::TempDir dir;
    std::string bytes;
    for (int i = 1; i <= 8000; ++i) bytes += "N" + std::to_string(100000 + i) + (i % 3 ? "\r\n\r\n" : "\n \t \n\n\n");
    const std::string path = dir.write("nb.txt", bytes).string();
    tav::TextBlockCache cache;
    tavtest::ScriptedHost host;
    tav::FixedWidthMeasure measure(30, 25);
    tav::TextView view(cache, measure, host);
    ASSERT_TRUE(view.show(std::make_shared<tav::FileTextSource>(path, true)));
    std::mt19937 rng(5);
    for (int step = 0; step < 800; ++step) {
        switch (rng() % 6) {
        case 0: case 1: view.pageDown(); break;
        case 2: case 3: view.pageUp(); break;
        case 4: view.scrollBarMoved(static_cast<int>(rng() % 10003)); break;
        default: view.scrollLinesUp(1 + static_cast<int>(rng() % 30)); break;
        }
        const auto lines = view.screen();
        ASSERT_EQ(lines.size(), 25u) << "step " << step;
        int previous = 0;
        for (const auto& l : lines) {
            ASSERT_EQ(l.text.size(), 7u) << "step " << step << ": '" << l.text << "'";
            const int n = std::stoi(l.text.substr(1));
            if (previous) {
                ASSERT_EQ(n, previous + 1) << "step " << step;
            }
            previous = n;
        }
    }
    EXPECT_TRUE(host.asked().empty());
}

}  // namespace

namespace {

// The file changes under the view: it shrinks, grows, vanishes and comes
// back. The view says so in its messages and never fails.
TEST(RandomMovesChangingFile, ViewSurvivesAFileThatChangesUnderIt) {
    tavtest::TempDir dir;
    const std::string full = viewertest::numberedLines(6000);
    const std::string path = dir.write("c.txt", full).string();
    tav::TextBlockCache cache;
    tavtest::ScriptedHost host;
    tav::FixedWidthMeasure measure(40, 20);
    tav::TextView view(cache, measure, host);
    ASSERT_TRUE(view.show(std::make_shared<tav::FileTextSource>(path, false)));
    std::mt19937 rng(9);
    for (int step = 0; step < 600; ++step) {
        if (step % 37 == 0) {
            const auto r = rng() % 4;
            if (r == 0) std::filesystem::remove(path);
            else dir.write("c.txt", full.substr(0, rng() % full.size()));
        }
        switch (rng() % 6) {
        case 0: view.pageDown(); break;
        case 1: view.pageUp(); break;
        case 2: view.toEnd(); break;
        case 3: view.toStart(); break;
        case 4: view.scrollBarMoved(static_cast<int>(rng() % 10003)); break;
        default: view.lineDown(); break;
        }
        for (const auto& l : view.screen()) ASSERT_LT(l.firstByte, l.endByte);
        ASSERT_GE(view.scrollBarValue(), 0);
    }
    for (const std::string& m : host.messages())
        EXPECT_TRUE(m.rfind("Start at byte specified is after end of file. File length: ", 0) == 0 ||
                    m == "Error opening file >>" + path + "<<.")
            << m;
    // Once the file is whole again the view shows it truly.
    dir.write("c.txt", full);
    view.scrollBarMoved(5000);
    view.toStart();
    ASSERT_FALSE(view.screen().empty());
    EXPECT_EQ(view.screen()[0].text, full.substr(0, 30));
}

}  // namespace
