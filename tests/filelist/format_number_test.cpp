#include <gtest/gtest.h>
#include "filelist/FormatNumberMask.h"
TEST(FormatNumber, Smoke) { EXPECT_EQ(tav::formatNumber(std::int64_t{1234}, "#,##0").text, "1,234"); }
