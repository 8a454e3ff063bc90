#include "content/StreamFinder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Every match end in `text`, found through chunks of `size` bytes.
std::vector<std::int64_t> findAll(const std::string& pattern, bool ignoreCase, const std::string& text,
                                  std::size_t size) {
    tav::StreamFinder f;
    f.setPattern(pattern, ignoreCase);
    std::vector<std::int64_t> ends;
    std::int64_t minStart = 0;
    for (std::size_t pos = 0; pos < text.size(); pos += size) {
        const std::string_view chunk = std::string_view(text).substr(pos, size);
        const auto base = static_cast<std::int64_t>(pos);
        while (true) {
            const std::size_t end = f.findEnd(chunk, base, minStart);
            if (end == tav::StreamFinder::npos) break;
            ends.push_back(base + static_cast<std::int64_t>(end));
            minStart = base + static_cast<std::int64_t>(end) - static_cast<std::int64_t>(pattern.size()) + 1;
        }
        f.keep(chunk, base);
    }
    return ends;
}

TEST(StreamFinder, FindsTheSameMatchesWhateverTheChunks) {
    std::string text;
    for (int i = 0; i < 50; ++i) text += "xx <TiTlE> ab<title <titl e" + std::string(static_cast<std::size_t>(i % 7), 'y');
    const std::vector<std::int64_t> whole = findAll("<title", true, text, text.size());
    EXPECT_EQ(whole.size(), 100u);
    for (std::size_t size : {1u, 2u, 3u, 5u, 16u, 17u, 64u})
        EXPECT_EQ(findAll("<title", true, text, size), whole) << size;
    EXPECT_EQ(findAll("<title", false, text, 7).size(), 50u);
}

TEST(StreamFinder, CaseOfLettersAtBothEnds) {
    const std::string text = std::string(40, '-') + "Name=\"DESCRIPTION\" Content=\"" + std::string(40, '-');
    tav::StreamFinder f;
    f.setPattern("name=\"description\" content=\"", true);
    EXPECT_EQ(f.findIn(text, 0), 40u);
    EXPECT_EQ(f.findIn(text, 41), tav::StreamFinder::npos);
    f.setPattern("name=\"description\" content=\"", false);
    EXPECT_EQ(f.findIn(text, 0), tav::StreamFinder::npos);
}

TEST(StreamFinder, EmptyPatternMatchesAtOnce) {
    tav::StreamFinder f;
    f.setPattern("", true);
    EXPECT_EQ(f.findEnd("abc", 10, 12), 2u);
    EXPECT_EQ(f.findEnd("abc", 10, 0), 0u);
}

}  // namespace
