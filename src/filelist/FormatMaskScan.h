#pragma once
// Reading a mask character by character: quoted text and backslash escapes
// are literals in every kind of mask.
#include <string>
#include <string_view>
#include <vector>

namespace tav {

// Splits a mask on `;` outside literals. Sets `error` on an open quote or a
// trailing backslash.
std::vector<std::string> splitMaskSections(std::string_view mask, std::string& error);

// If mask[i] starts a literal (`"text"` or `\x`), appends its text to `out`,
// moves `i` past it and returns true. An open quote or a trailing backslash
// sets `error` and also returns true.
bool takeMaskLiteral(std::string_view mask, std::size_t& i, std::string& out, std::string& error);

}  // namespace tav
