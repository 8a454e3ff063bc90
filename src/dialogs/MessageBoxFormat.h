#pragma once
// The user's message box font, kept in section "MB formats" of the main INI
// file: "MB all Fontname", "MB all Size", "MB all Bold", "MB all Italic".
// The name "-FIXFONT-" stands for the fixed font.
#include <optional>
#include <string>
#include <string_view>

namespace tav {

class IniStore;

inline constexpr std::string_view kMessageBoxFormats = "MB formats";
inline constexpr std::string_view kFixedFontName = "-FIXFONT-";

struct MessageBoxFormat {
    std::string fontName;  // "-FIXFONT-": the fixed font
    double size = 8;       // points
    bool bold = false;
    bool italic = false;
};

// The stored format; none when no font name is stored (the box keeps the
// application's font). A missing or zero size reads as 8 points.
std::optional<MessageBoxFormat> readMessageBoxFormat(IniStore& ini);

// Stores the format, all four entries.
void writeMessageBoxFormat(IniStore& ini, const MessageBoxFormat& format);

}  // namespace tav
