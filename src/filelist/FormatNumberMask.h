#pragma once
// Number masks: `0` digit always, `#` digit or nothing, `.` decimal point,
// `,` thousands separator (or, right of the last integer digit, division by
// 1000), `%` percentage, `E+0`/`E-0` exponent, `"text"` and `\x` literals;
// every other character stands as a literal. Up to four sections separated
// by `;`: positive; negative; zero; (null, unused).
#include <cstdint>
#include <string_view>

#include "filelist/FormatResult.h"

namespace tav {

// Fixed masks: counts in progress texts, elapsed seconds.
inline constexpr std::string_view kProgressCountMask = "#,###,##0";
inline constexpr std::string_view kElapsedTimeMask = "#0.000";

// Exact for every 64-bit value: sizes above 4 GiB keep all their digits.
FormatResult formatNumber(std::int64_t value, std::string_view mask);
FormatResult formatNumber(double value, std::string_view mask);

// True if the mask holds an unquoted digit placeholder (`0` or `#`).
bool maskHasDigitPlaceholder(std::string_view mask);

}  // namespace tav
