#pragma once
// Small UTF-8 helpers: code points <-> bytes, and the Windows-1252 fallback
// for text that is not valid UTF-8.
#include <string>
#include <string_view>

namespace tav {

// Appends the UTF-8 form of code point cp.
void appendUtf8(std::string& out, char32_t cp);
std::string utf8Char(char32_t cp);

// True when the bytes are well-formed UTF-8.
bool isValidUtf8(std::string_view bytes);

// The character a Windows-1252 byte stands for.
char32_t cp1252CodePoint(unsigned char byte);

// Windows-1252 bytes to UTF-8 (the five undefined codes map to U+0080 + code).
std::string cp1252ToUtf8(std::string_view bytes);

// The text as UTF-8: itself when valid, else read as Windows-1252.
std::string toUtf8(std::string_view bytes);

// Number of code points (invalid bytes count one each).
size_t utf8Length(std::string_view text);

// Byte offset of the code point with index `index` (clamped to the end).
size_t utf8Offset(std::string_view text, size_t index);

}  // namespace tav
