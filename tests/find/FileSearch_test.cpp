#include "find/FileSearch.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "find/ComplexCriteria.h"
#include "find/FileHits.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

PreparedCriteria plain(const std::string& text, bool matchCase = false, bool wholeWord = false) {
    return prepareFindCriteria(text, "", matchCase, wholeWord, "", "");
}

SearchOutcome find(const PreparedCriteria& c, const std::string& path, bool forward, int64_t start = 1,
                   int64_t end = kNoEndByte) {
    SearchRange r;
    r.forward = forward;
    r.startByte = start;
    r.endByte = end;
    return findInFile(c, path, r);
}

// A file of `size` filler bytes with `value` placed at 1-based byte `at`.
std::string fileWith(int64_t size, const std::string& value, int64_t at, char filler = '.') {
    std::string s(static_cast<size_t>(size), filler);
    s.replace(static_cast<size_t>(at - 1), value.size(), value);
    return s;
}

}  // namespace

struct SeamRow {
    const char* name;
    int64_t size;
    int64_t at;
};

class Seams : public testing::TestWithParam<SeamRow> {};

TEST_P(Seams, FoundAtItsByteInBothDirections) {
    const auto& row = GetParam();
    tavtest::TempDir dir;
    auto path = dir.write("f.txt", fileWith(row.size, "needle", row.at)).string();
    auto c = plain("needle");
    auto fw = find(c, path, true);
    ASSERT_TRUE(fw.found);
    EXPECT_EQ(fw.hit.byteNumber, row.at);
    EXPECT_EQ(fw.hit.value, "needle");
    auto bw = find(c, path, false);
    ASSERT_TRUE(bw.found);
    EXPECT_EQ(bw.hit.byteNumber, row.at);
}

INSTANTIATE_TEST_SUITE_P(
    Places, Seams,
    testing::Values(SeamRow{"FirstByte", 25000, 1}, SeamRow{"AcrossFirstSeam", 25000, 9998},
                    SeamRow{"EndsOnSeam", 25000, 9995}, SeamRow{"StartsOnSeam", 25000, 10001},
                    SeamRow{"EndsOnLastByte", 25000, 24995}, SeamRow{"LastByteOfShortFile", 6, 1},
                    SeamRow{"OneByteBeyondABlock", 10001, 9996}, SeamRow{"LastByteOneBeyondABlock", 10006, 10001},
                    SeamRow{"BackwardFirstBlockSeam", 25000, 14998}, SeamRow{"BackwardLastBlockSeam", 25000, 4998}),
    [](const testing::TestParamInfo<SeamRow>& row) { return std::string(row.param.name); });

TEST(FileSearch, AgreesWithPlainScanAroundSeams) {
    // Every occurrence, in both directions, from random places, over files
    // whose values cluster around the block seams.
    std::mt19937 rng(11);
    tavtest::TempDir dir;
    for (int round = 0; round < 30; ++round) {
        int64_t size = 20000 + static_cast<int64_t>(rng() % 15000);
        std::string bytes(static_cast<size_t>(size), 'x');
        for (int k = 0; k < 40; ++k) {
            int64_t seam = 10000 * (1 + static_cast<int64_t>(rng() % 3)) - static_cast<int64_t>(rng() % 8);
            if (seam + 3 < size) bytes.replace(static_cast<size_t>(seam), 3, "aba");
        }
        auto path = dir.write("r" + std::to_string(round), bytes).string();
        auto c = plain("aba");
        std::vector<int64_t> all;
        for (size_t p = bytes.find("aba"); p != std::string::npos; p = bytes.find("aba", p + 1))
            all.push_back(static_cast<int64_t>(p) + 1);
        int64_t from = 1 + static_cast<int64_t>(rng() % static_cast<uint64_t>(size));
        auto fw = find(c, path, true, from);
        auto next = std::find_if(all.begin(), all.end(), [&](int64_t b) { return b >= from; });
        ASSERT_EQ(fw.found, next != all.end()) << round;
        if (fw.found) {
            EXPECT_EQ(fw.hit.byteNumber, *next) << round;
        }
        auto bw = find(c, path, false, 1, from);
        auto prev = std::find_if(all.rbegin(), all.rend(), [&](int64_t b) { return b + 3 <= from; });
        ASSERT_EQ(bw.found, prev != all.rend()) << round;
        if (bw.found) {
            EXPECT_EQ(bw.hit.byteNumber, *prev) << round;
        }

        FileHitsRequest req;
        req.path = path;
        req.criteria.text = "aba";
        req.allHits = true;
        std::vector<int64_t> got;
        for (const auto& h : fileHits(req).hits) got.push_back(h.byteNumber);
        EXPECT_EQ(got, all) << round;
    }
}

TEST(FileSearch, EndByteLimitsForwardHits) {
    tavtest::TempDir dir;
    auto path = dir.write("f", fileWith(30000, "abc", 15000)).string();
    EXPECT_FALSE(find(plain("abc"), path, true, 1, 15000).found);
    EXPECT_TRUE(find(plain("abc"), path, true, 1, 15001).found);
    EXPECT_FALSE(find(plain("abc"), path, true, 15001).found);
    EXPECT_FALSE(find(plain("abc"), path, false, 1, 15002).found) << "must end before the end byte";
    EXPECT_TRUE(find(plain("abc"), path, false, 1, 15003).found);
    EXPECT_FALSE(find(plain("abc"), path, false, 15001).found) << "backward hits start at or after the start byte";
    EXPECT_TRUE(find(plain("abc"), path, false, 15000).found);
}

TEST(FileSearch, TwoValuesAtOnePlaceReportTheLaterEntry) {
    ComplexCriteria more;
    more.values = {"abc"};
    auto c = prepareFindCriteria("ab", "", false, false, buildComplexCriteria(more), "");
    auto hit = findInText(c, "xxabcxx", {});
    ASSERT_TRUE(hit.found);
    EXPECT_EQ(hit.hit.value, "abc");
    EXPECT_EQ(hit.hit.valueIndex, 1u);
    more.values = {"ab"};
    c = prepareFindCriteria("abc", "", false, false, buildComplexCriteria(more), "");
    EXPECT_EQ(findInText(c, "xxabcxx", {}).hit.value, "ab");
    SearchRange back;
    back.forward = false;
    EXPECT_EQ(findInText(c, "xxabcxx", back).hit.value, "ab");
    // The nearest wins over the list order.
    EXPECT_EQ(findInText(c, "ab abc", {}).hit.byteNumber, 1);
    EXPECT_EQ(findInText(c, "ab abc", back).hit.byteNumber, 4);
}

TEST(FileSearch, MatchCaseWithLatinLetters) {
    tavtest::TempDir dir;
    auto path = dir.write("f", fileWith(20000, "CAF\xC3\x89 \xC9T\xC9", 9997)).string();
    EXPECT_EQ(find(plain("caf\xC3\xA9"), path, true).hit.byteNumber, 9997);
    EXPECT_FALSE(find(plain("caf\xC3\xA9", true), path, true).found);
    EXPECT_TRUE(find(plain("CAF\xC3\x89", true), path, true).found);
    // A value given as Latin-1 bytes folds on the file's Latin-1 bytes.
    EXPECT_EQ(find(plain("\xE9t\xE9"), path, false).hit.byteNumber, 10003);
}

TEST(FileSearch, FoundTextAroundTheHit) {
    SearchRange r;
    r.beforeLength = 3;
    r.afterLength = 100;
    auto o = findInText(plain("Smith"), "Mr Smith.", r);
    ASSERT_TRUE(o.found);
    EXPECT_EQ(o.hit.text, "Mr Smith.");
    EXPECT_EQ(o.hit.textStart, 1);
    EXPECT_EQ(o.hit.textEnd, 9);
    EXPECT_EQ(o.hit.textRange(), "9|1");
}

TEST(FileSearch, RejectedHitsGoToTheListUnderTheFileHeading) {
    tavtest::TempDir dir;
    auto path = dir.write("f", "Peter Smith and Smith").string();
    auto c = prepareFindCriteria("Smith", "Peter Smith", false, false, "", "");
    RejectedList list;
    SearchHooks hooks;
    hooks.rejected = &list;
    SearchRange r;
    auto o = findInFile(c, path, r, hooks);
    ASSERT_TRUE(o.found);
    EXPECT_EQ(o.hit.byteNumber, 17);
    EXPECT_EQ(list.lines(), (std::vector<std::string>{"^^ File: " + path + " ^^", "Peter Smith   -(Peter Smith)"}));
    list.add("File: other", "x", false);
    EXPECT_EQ(list.lines(), (std::vector<std::string>{"^^ File: other ^^", "x"}));
    list.add("File: third", "y", true);
    EXPECT_EQ(list.lines(), (std::vector<std::string>{"^^ File: other ^^", "x", "", "^^ File: third ^^", "y"}));
}

TEST(FileSearch, StopIsTestedWhileReading) {
    tavtest::TempDir dir;
    auto path = dir.write("f", std::string(200000, 'x')).string();
    int asked = 0;
    SearchHooks hooks;
    hooks.stopRequested = [&] { return ++asked == 2; };
    auto o = findInFile(plain("needle"), path, {}, hooks);
    EXPECT_TRUE(o.interrupted);
    EXPECT_FALSE(o.found);
    EXPECT_EQ(asked, 2);
}

TEST(FileSearch, MissingFileGivesAnError) {
    auto o = findInFile(plain("x"), "/nonexistent/dir/file", {});
    EXPECT_FALSE(o.found);
    EXPECT_FALSE(o.error.empty());
}

TEST(FileSearch, PositionsBeyondTwoGigabytes) {
    tavtest::TempDir dir;
    auto path = (dir / "big.bin").string();
    const int64_t size = 3LL * 1024 * 1024 * 1024;
    {
        std::ofstream f(path, std::ios::binary);
        f.seekp(size - 100);
        f.write("the needle at the end", 21);
    }
    std::filesystem::resize_file(path, static_cast<uintmax_t>(size));
    auto c = plain("NEEDLE");
    const int64_t at = size - 100 + 5;
    auto fw = find(c, path, true, size - 50000);
    ASSERT_TRUE(fw.found);
    EXPECT_EQ(fw.hit.byteNumber, at);
    auto bw = find(c, path, false);
    ASSERT_TRUE(bw.found);
    EXPECT_EQ(bw.hit.byteNumber, at);
}

TEST(FileSearch, SingleByteValueOnTheLastByteAfterAFullBlock) {
    // The block after a full one holds one byte: it is still read.
    tavtest::TempDir dir;
    auto path = dir.write("f", fileWith(10001, "#", 10001)).string();
    EXPECT_EQ(find(plain("#"), path, true).hit.byteNumber, 10001);
    EXPECT_EQ(find(plain("#"), path, false).hit.byteNumber, 10001);
}

TEST(FileSearch, BlockRuleAtASeamWithValuesOfTwoLengths) {
    // "abcd" crosses the seam; in the first block only "ab" fits there, so
    // the first block reports "ab" although "abcd" is the later entry.
    ComplexCriteria more;
    more.values = {"abcd"};
    auto c = prepareFindCriteria("ab", "", false, false, buildComplexCriteria(more), "");
    std::string body = fileWith(20000, "abcd", 9999);
    auto o = findInText(c, body, {});
    EXPECT_EQ(o.hit.byteNumber, 9999);
    EXPECT_EQ(o.hit.value, "ab");
    // Away from a seam the later entry wins.
    EXPECT_EQ(findInText(c, fileWith(20000, "abcd", 5000), {}).hit.value, "abcd");
}
