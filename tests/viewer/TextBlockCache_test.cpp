#include "viewer/TextBlockCache.h"

#include <gtest/gtest.h>

#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "viewer/FileBlockReader.h"
#include "ViewerTestFiles.h"

namespace {

using tav::FileTextSource;
using tav::TextBlockCache;

class CacheTest : public ::testing::Test {
protected:
    tavtest::TempDir dir;
    std::string content = viewertest::numberedLines(3000);  // 93000 bytes
    std::string path = dir.write("big.txt", content).string();
    FileTextSource source{path, false};
    TextBlockCache cache;
    tavtest::ScriptedHost host;

    // The cache's text is the file from its start byte to its end byte.
    void expectCacheIsFile() {
        ASSERT_EQ(cache.text(), content.substr(static_cast<size_t>(cache.startByte() - 1),
                                               static_cast<size_t>(cache.endByte() - cache.startByte())));
    }
};

TEST_F(CacheTest, ReadsAtMostOneBlockAndMergesBehind) {
    auto r = cache.readTextBlock(source, 1, &host);
    EXPECT_EQ(r.nextByte, 10001);
    EXPECT_EQ(cache.startByte(), 1);
    EXPECT_EQ(cache.endByte(), 10001);
    r = cache.readTextBlock(source, 10001, &host);
    EXPECT_EQ(r.merge, TextBlockCache::Merge::Back);
    EXPECT_EQ(cache.text().size(), 20000u);
    expectCacheIsFile();
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(CacheTest, ReadAheadOfCacheStopsWhereCacheStarts) {
    cache.readTextBlock(source, 50001, &host);
    auto r = cache.readTextBlock(source, 45001, &host);  // 5000 bytes before the cache
    EXPECT_EQ(r.merge, TextBlockCache::Merge::Front);
    EXPECT_EQ(r.nextByte, 50001);
    EXPECT_EQ(cache.startByte(), 45001);
    expectCacheIsFile();
    r = cache.readTextBlock(source, 30001, &host);  // more than a block before: a block only
    EXPECT_EQ(r.nextByte, 40001);
    EXPECT_EQ(r.merge, TextBlockCache::Merge::Replaced);
    expectCacheIsFile();
}

TEST_F(CacheTest, SlidesOnceFullInBothDirections) {
    for (int64_t at = 1; at <= 80001; at += 10000) cache.readTextBlock(source, at, &host);
    // Grows to 30002 or more, then each block pushes as much out at the front.
    EXPECT_GE(cache.text().size(), tav::kCacheSlideLength);
    EXPECT_LE(cache.text().size(), tav::kCacheSlideLength + 10000);
    EXPECT_EQ(cache.endByte(), 90001);
    expectCacheIsFile();
    const int64_t startBefore = cache.startByte();
    while (cache.startByte() > 1) cache.readTextBlock(source, std::max<int64_t>(1, cache.startByte() - 10000), &host);
    EXPECT_LT(cache.startByte(), startBefore);
    EXPECT_LE(cache.text().size(), tav::kCacheSlideLength + 10000);
    expectCacheIsFile();
}

TEST_F(CacheTest, PositionsStayFixedWhileTheCacheSlides) {
    cache.readTextBlock(source, 40001, &host);
    const int64_t pos = cache.posOfByte(45000);
    const uint64_t gen = cache.generation();
    cache.readTextBlock(source, 30001, &host);  // in front
    for (int64_t at = 50001; at <= 70001; at += 10000) cache.readTextBlock(source, at, &host);  // behind, sliding
    EXPECT_EQ(cache.generation(), gen);
    EXPECT_EQ(cache.posOfByte(45000), pos);
    EXPECT_EQ(cache.byteAtPos(pos), 45000);
    EXPECT_EQ(cache.textFrom(pos).substr(0, 20), content.substr(44999, 20));
    expectCacheIsFile();
    cache.readTextBlock(source, 10001, &host);  // far ahead of the cache: replaces it
    EXPECT_NE(cache.generation(), gen);
    EXPECT_EQ(cache.startByte(), 10001);
    expectCacheIsFile();
}

TEST_F(CacheTest, AnotherFileResetsTheCache) {
    cache.readTextBlock(source, 1, &host);
    const std::string other = dir.write("other.txt", "other text").string();
    FileTextSource otherSource(other, false);
    cache.readTextBlock(otherSource, 1, &host);
    EXPECT_EQ(cache.text(), "other text");
    EXPECT_EQ(cache.file(), otherSource.key());
}

TEST_F(CacheTest, ReadPastEndReportsLengthAndStart) {
    auto r = cache.readTextBlock(source, 93002, &host);
    EXPECT_EQ(r.nextByte, -1);
    ASSERT_EQ(host.messages().size(), 1u);
    EXPECT_EQ(host.messages()[0],
              "Start at byte specified is after end of file. File length: 93000. Start at Byte: 93002");
    host.clear();
    cache.readTextBlock(source, 93002, nullptr);  // told not to report
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(CacheTest, UnreadableFileGivesOpenError) {
    FileTextSource missing((dir / "nothere.txt").string(), false);
    auto r = cache.readTextBlock(missing, 1, &host);
    EXPECT_EQ(r.nextByte, -1);
    ASSERT_EQ(host.messages().size(), 1u);
    EXPECT_EQ(host.messages()[0], "Error opening file >>" + (dir / "nothere.txt").string() + "<<.");
}

TEST(CacheRemoveBlank, BlockStartsMapExactlyThoughTextIsShorter) {
    tavtest::TempDir dir;
    std::string content;
    while (content.size() < 25000) content += "word\n\n\n";
    const std::string path = dir.write("blank.txt", content).string();
    FileTextSource source(path, true);
    TextBlockCache cache;
    tavtest::ScriptedHost host;
    auto r = cache.readTextBlock(source, 1, &host);
    EXPECT_EQ(r.nextByte, 10001);  // measured before conversion
    EXPECT_LT(cache.text().size(), 10000u);
    cache.readTextBlock(source, 10001, &host);
    const int64_t pos = cache.posOfByte(10001);
    EXPECT_EQ(cache.byteAtPos(pos), 10001);
    EXPECT_EQ(cache.endByte(), 20001);
}

TEST(FileReader, CutsToMaximumAndFlagsTruncation) {
    tavtest::TempDir dir;
    const std::string path = dir.write("f.txt", "0123456789").string();
    auto r = tav::readFileBytes(path, 3, 4);
    EXPECT_EQ(r.bytes, "2345");
    EXPECT_TRUE(r.truncated);
    r = tav::readFileBytes(path, 8, 0);
    EXPECT_EQ(r.bytes, "789");
    EXPECT_FALSE(r.truncated);
    EXPECT_EQ(r.fileLength, 10);
    const std::string empty = dir.write("e.txt", "").string();
    r = tav::readFileBytes(empty, 1, 100);
    EXPECT_TRUE(r.ok());
    EXPECT_EQ(r.bytes, "");
}

}  // namespace
