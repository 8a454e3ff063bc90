#pragma once
// File bytes become display text here: valid UTF-8 sequences pass unchanged,
// and each byte that is not part of one is read as Windows-1252, so a stray
// byte in a UTF-8 file spoils only itself.
#include <string>
#include <string_view>

#include "core/Utf8.h"

namespace tav {

// The display form of raw file bytes.
std::string toDisplayText(std::string_view bytes);
void appendDisplayText(std::string& out, std::string_view bytes);

// Decodes the code point that starts at text[i] of valid UTF-8 text and
// advances i past it. A byte that starts no valid sequence counts as itself.
char32_t nextCodePoint(std::string_view text, std::size_t& i);

// Byte length of the first `count` characters of UTF-8 text.
std::size_t byteLengthOfChars(std::string_view text, std::size_t count);

// Number of characters of UTF-8 text.
std::size_t charCount(std::string_view text);

}  // namespace tav
