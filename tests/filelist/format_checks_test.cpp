// The checks of new window formats, size mask reversibility, free space text
// and the window's format entries.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "filelist/FormatChecks.h"
#include "filelist/FormatFreeSpace.h"
#include "support/TempDir.h"

namespace {

struct ReversibleCase {
    const char* name;
    const char* mask;
    bool reversible;
};

class SizeReversible : public ::testing::TestWithParam<ReversibleCase> {};

TEST_P(SizeReversible, Decides) {
    EXPECT_EQ(tav::SizeFormatIsReversible(GetParam().mask), GetParam().reversible) << GetParam().mask;
}

INSTANTIATE_TEST_SUITE_P(
    Table, SizeReversible,
    ::testing::Values(ReversibleCase{"Thousands", "#,##0", true}, ReversibleCase{"Hash", "#", true},
                      ReversibleCase{"Zero", "0", true}, ReversibleCase{"GroupedMinimum", "#,##0,000", true},
                      ReversibleCase{"Decimals", "0.00", true}, ReversibleCase{"General", "", true},
                      ReversibleCase{"TrailingTextReadsBack", "#\" bytes\"", true},
                      ReversibleCase{"KiloSuffix", "#,##0K", false}, ReversibleCase{"Scaled", "#,##0,", false},
                      ReversibleCase{"Percent", "0%", false}, ReversibleCase{"LeadingText", "\"x\"#", false},
                      ReversibleCase{"Exponent", "0.00E+00", false}, ReversibleCase{"DateMask", "dd", false},
                      ReversibleCase{"Broken", "\"#", false}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(EditedFormats, GoodMasksPass) {
    const tav::FormatsVerdict v = tav::checkEditedFormats({"dd/mm/yy", "hh:mm AM/PM", "#,##0"});
    EXPECT_EQ(v.failed, tav::FormatsVerdict::Field::None);
    EXPECT_TRUE(v.message.empty());
    EXPECT_TRUE(v.sizeReversible);
}

TEST(EditedFormats, FirstBadMaskIsReported) {
    tav::FormatsVerdict v = tav::checkEditedFormats({"#", "#", "dd"});
    EXPECT_EQ(v.failed, tav::FormatsVerdict::Field::Date);
    EXPECT_EQ(v.message,
              "Date format is not correct. Examples of correct formats are dd/mm/yy, dd mmm yyyy, mm-dd-yy, etc. "
              "Try again.");

    v = tav::checkEditedFormats({"dd mmm yyyy", "0.0", "dd"});
    EXPECT_EQ(v.failed, tav::FormatsVerdict::Field::Time);
    EXPECT_EQ(v.message,
              "Time format is not correct. Examples of correct formats are hh:mm, hh:mm:ss, hh:mm AM/PM, etc. Try "
              "again.");

    v = tav::checkEditedFormats({"dd mmm yyyy", "hh:nn", "dd/mm"});
    EXPECT_EQ(v.failed, tav::FormatsVerdict::Field::Size);
    EXPECT_EQ(v.message,
              "The Size format entered <<\rdd/mm\r>> is not correct.\r\rSize format should be made up of "
              "characters:\r# to print number or nothing,\r0 to print number always,\r, as thousand separator.\r\r"
              "Examples of correct formats are:\r #   \r #,##0   \r #,##0,000   \r 0\r\rTry again.");
}

TEST(EditedFormats, KiloSizePassesButIsNotReversible) {
    const tav::FormatsVerdict v = tav::checkEditedFormats({"dd mmm yyyy", "hh:nn", "#,##0K"});
    EXPECT_EQ(v.failed, tav::FormatsVerdict::Field::None);
    EXPECT_FALSE(v.sizeReversible);
    EXPECT_EQ(tav::sizeNotReversiblePrompt("#,##0K"),
              "Size format entered >> #,##0K << contains characters other than , # 0. It cannot be used to "
              "determine total bytes (listed / selected).\rPress Yes to keep the entered size format and remove "
              "display of byte counts.  Press No to enter a different size format. #,##0 will not cause this "
              "problem.");
}

struct FreeCase {
    const char* name;
    std::uint64_t bytes;
    const char* expected;
};

class FreeSpace : public ::testing::TestWithParam<FreeCase> {};

TEST_P(FreeSpace, Text) { EXPECT_EQ(tav::freeSpaceTextForBytes(GetParam().bytes), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(Table, FreeSpace,
                         ::testing::Values(FreeCase{"Nothing", 0, "0K"}, FreeCase{"BelowHalfKilobyte", 511, "0K"},
                                           FreeCase{"HalfKilobyteRoundsUp", 512, "1K"},
                                           FreeCase{"Kilobytes", 1024 * 1234, "1,234K"},
                                           FreeCase{"JustBelowLimit", 2147155967ULL, "2,096,832K"},
                                           FreeCase{"AtLimit", 2147155968ULL, "more than 2GB"},
                                           FreeCase{"Above4GiB", 5000000000ULL, "more than 2GB"}),
                         [](const auto& p) { return std::string(p.param.name); });

TEST(FreeSpace, OfARealDirectoryAndOfAPathNotYetMade) {
    tavtest::TempDir dir;
    std::string error;
    EXPECT_FALSE(tav::FreeSpaceText(dir.path(), &error).empty()) << error;
    EXPECT_FALSE(tav::FreeSpaceText(dir.path() / "not" / "yet", &error).empty()) << error;
}

TEST(WindowFormats, MissingEntriesKeepDefaultsAndWrittenOnesReadBack) {
    std::map<std::string, std::string, std::less<>> section{{"Date Format", "dd/mm/yy"}, {"Size format", ""}};
    auto get = [&section](std::string_view entry) {
        const auto it = section.find(entry);
        return it == section.end() ? std::string{} : it->second;
    };
    tav::WindowFormats f = tav::readWindowFormats(get);
    EXPECT_EQ(f.date, "dd/mm/yy");
    EXPECT_EQ(f.time, tav::WindowFormats{}.time);
    EXPECT_EQ(f.size, tav::WindowFormats{}.size);

    f.time = "hh:nn AM/PM";
    tav::writeWindowFormats(f, [&section](std::string_view entry, const std::string& value) {
        section[std::string(entry)] = value;
    });
    EXPECT_EQ(section.at("Time format"), "hh:nn AM/PM");
    const tav::WindowFormats back = tav::readWindowFormats(get);
    EXPECT_EQ(back.date, f.date);
    EXPECT_EQ(back.time, f.time);
    EXPECT_EQ(back.size, f.size);
}

}  // namespace
