// File times to local civil time: the cached converter must agree with the
// C library second for second, across changes of offset.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

#include "format_test_print.h"
#include "filelist/FormatLocalTime.h"

namespace {

void setZone(const char* zone) {
#ifdef _WIN32
    _putenv_s("TZ", zone);
#else
    setenv("TZ", zone, 1);
#endif
}

void clearZone() {
#ifdef _WIN32
    _putenv_s("TZ", "");
#else
    unsetenv("TZ");
#endif
}

// Switches the process time zone for one test and puts the old one back.
class TimeZone : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (const char* old = std::getenv("TZ")) saved_ = old;
        setZone(GetParam());
        tav::reloadLocalTimeZone();
    }
    void TearDown() override {
        if (saved_)
            setZone(saved_->c_str());
        else
            clearZone();
        tav::reloadLocalTimeZone();
    }

    static tav::CivilDateTime library(std::int64_t seconds) {
        const std::time_t t = static_cast<std::time_t>(seconds);
        std::tm tm{};
#ifdef _WIN32
        localtime_s(&tm, &t);
#else
        localtime_r(&t, &tm);
#endif
        return tav::CivilDateTime{tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
    }

private:
    std::optional<std::string> saved_;
};

TEST_P(TimeZone, AgreesWithTheLibraryAroundOffsetChanges) {
    tav::LocalTimeConverter converter;
    // The changes of 2026 in Europe, North America and on Lord Howe Island
    // (half an hour, in the middle of a UTC hour), stepped finely.
    for (std::int64_t start : {1774746000LL, 1792890000LL, 1772953200LL, 1793512800LL, 1775314800LL, 1791041400LL}) {
        for (std::int64_t t = start - 3 * 3600; t < start + 3 * 3600; t += 97)
            ASSERT_EQ(converter.fromPosix(t), library(t)) << GetParam() << " at " << t;
    }
}

TEST_P(TimeZone, AgreesWithTheLibraryOverTwoCenturies) {
    tav::LocalTimeConverter converter;
    // -2208988800 is 1900-01-01, 4102444800 is 2100-01-01 (UTC).
    for (std::int64_t t = -2208988800LL; t < 4102444800LL; t += 86400 * 3 + 3607)
        ASSERT_EQ(converter.fromPosix(t), library(t)) << GetParam() << " at " << t;
}

INSTANTIATE_TEST_SUITE_P(Zones, TimeZone,
                         ::testing::Values("UTC", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe",
                                           "Europe/Amsterdam", "Asia/Kathmandu"),
                         [](const auto& p) {
                             std::string n = p.param;
                             for (char& c : n)
                                 if (c == '/') c = '_';
                             return n;
                         });

TEST(FileTime, ConvertsToPosixSeconds) {
    using namespace std::chrono;
    const sys_seconds when{seconds{1234567890}};
    const auto fileTime = file_clock::from_sys(when);
    EXPECT_EQ(tav::posixSecondsOf(fileTime), 1234567890);
    EXPECT_EQ(tav::posixSecondsOf(fileTime + milliseconds{999}), 1234567890);
    EXPECT_EQ(tav::posixSecondsOf(file_clock::from_sys(sys_seconds{seconds{-1}}) + milliseconds{500}), -1);
}

}  // namespace
