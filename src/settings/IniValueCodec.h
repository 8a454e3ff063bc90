#pragma once
// The encoding of stored values: markers of two no-break spaces (U+00A0)
// and a word keep CR LF, edge quotes and a trailing blank through the
// profile service, which cannot store them.
#include <string>
#include <string_view>

namespace tav {

extern const std::string kMarkerCrlf;       // U+00A0 U+00A0 "CRLF."
extern const std::string kMarkerQuote;      // U+00A0 U+00A0 "quote."
extern const std::string kMarkerBlank;      // U+00A0 U+00A0 "<< less two."

// Turns markers back into what they stand for.
std::string decodeIniValue(std::string_view stored);

// Encodes a value for storing. Control characters are left in place.
std::string encodeIniValue(std::string_view value);

// Replaces every character 0 to 13 by a blank; true when any was found.
bool blankOutControls(std::string& value);

// The warnings due for a value that already holds markers, in order.
struct MarkerWarnings {
    bool crlf = false, quote = false, blank = false;
};
MarkerWarnings markerWarnings(std::string_view value);

extern const char* const kWarnCrlf;
extern const char* const kWarnQuote;
extern const char* const kWarnBlank;
extern const char* const kWarnControls;

}  // namespace tav
