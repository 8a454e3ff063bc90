#pragma once
// The three display masks of a File List window, kept in its last formats
// section as `Date Format`, `Time format` and `Size format` (window items
// `.1`, `.2`, `.3`).
#include <functional>
#include <string>
#include <string_view>

namespace tav {

struct WindowFormats {
    std::string date = "dd mmm yyyy";
    std::string time = "hh:nn:ss";
    std::string size = "#,##0";
};

inline constexpr std::string_view kDateFormatEntry = "Date Format";
inline constexpr std::string_view kTimeFormatEntry = "Time format";
inline constexpr std::string_view kSizeFormatEntry = "Size format";

// Reads the three entries through `get` (entry name -> value, empty when
// missing); a missing or empty entry keeps the default mask.
WindowFormats readWindowFormats(const std::function<std::string(std::string_view entry)>& get);

// Writes the three entries through `put` (entry name, value).
void writeWindowFormats(const WindowFormats& formats,
                        const std::function<void(std::string_view entry, const std::string& value)>& put);

}  // namespace tav
