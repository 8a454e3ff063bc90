#include "content/ContentExtractor.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr std::size_t kSection = 5000000;

tav::ContentCells feedAll(const tav::ContentSpec& spec, const std::string& text, std::size_t chunk = 65536) {
    tav::ContentExtractor x(spec);
    x.beginFile("big.txt", static_cast<std::int64_t>(text.size()));
    for (std::size_t pos = 0; pos < text.size(); pos += chunk)
        if (!x.feed(std::string_view(text).substr(pos, chunk))) break;
    x.finish();
    return x.cells();
}

tav::ContentSpec tagsAndEnds() {
    tav::ContentSpec spec;
    spec.columns.htmlTags = spec.columns.lastBytes = spec.columns.firstPlain = true;
    spec.options.BytL = 8;
    spec.options.PBytF = 5;
    return spec;
}

TEST(Sections, TextWithoutAngleBracketsStopsAfterTheFirstSection) {
    std::string text(6000000, 'a');
    text.replace(5500000, 6, "<html>");  // in the second section: never read
    const tav::ContentCells c = feedAll(tagsAndEnds(), text);
    ASSERT_EQ(c.errors.size(), 1u);
    EXPECT_EQ(c.errors[0],
              "No html tags (<html>, <p> etc.) in section of 64,000 bytes. Rest of file >>big.txt<< skipped.");
    EXPECT_EQ(c.htmlTags, "");
    EXPECT_EQ(c.firstPlain, "aaaaa");
    EXPECT_EQ(c.lastBytes, "aaaaaaaa");  // the end of the last section read
}

TEST(Sections, ExactlyOneSectionIsNotCut) {
    const std::string text(kSection, 'a');
    EXPECT_TRUE(feedAll(tagsAndEnds(), text).errors.empty());
    EXPECT_EQ(feedAll(tagsAndEnds(), text + "b").errors.size(), 1u);
}

TEST(Sections, TagCutBySectionEndIsReadWholeInTheNextSection) {
    for (std::size_t before : {1u, 3u, 7u}) {
        std::string text = "<p>" + std::string(kSection - 3 - before, 'x');
        text += "<straddling attr=1>tail<last>";
        const tav::ContentCells c = feedAll(tagsAndEnds(), text, 4096);
        EXPECT_EQ(c.htmlTags, "P,STRADDLING,LAST") << before;
        EXPECT_TRUE(c.errors.empty());
        // LastNBytes: the first 8 of the last 16 characters.
        EXPECT_EQ(c.lastBytes, "ttr=1>ta");
    }
}

TEST(Sections, LastBytesComeFromTheLastSectionOnly) {
    // The first section ends in "<b": the second starts again at its '<'.
    const std::string text = std::string(kSection - 2, 'a') + "<b>c";
    tav::ContentSpec spec = tagsAndEnds();
    spec.options.BytL = 100;
    EXPECT_EQ(feedAll(spec, text).lastBytes, "<b>c");
}

TEST(Sections, FirstPartOnlyReadsOnePart) {
    tav::ContentSpec spec = tagsAndEnds();
    spec.options.Only1stPart = true;
    spec.options.Only1stByt = 10;
    const tav::ContentCells c = feedAll(spec, "<a><b><c><d><e>", 3);
    EXPECT_EQ(c.htmlTags, "A,B,C");  // "<a><b><c><" is read
    EXPECT_EQ(c.lastBytes, "<a><b><c");
    EXPECT_TRUE(c.errors.empty());
}

TEST(Sections, SpanColumnAddsOnceASection) {
    tav::ContentSpec spec;
    spec.columns.spanCols = {{27, "[", "]", ""}};
    std::string text = "<p>[one][two]" + std::string(kSection, 'x') + "<q>[three]";
    const tav::ContentCells c = feedAll(spec, text);
    EXPECT_EQ(c.spanCols[0], "onethree");
}

}  // namespace
