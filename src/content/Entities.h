#pragma once
// Character references in text taken from a file: numeric (&#65;) and a
// fixed set of named ones. The rules are deliberately simple and fixed:
// keep them exactly as they are, odd results included (see the .cpp).
#include <string>
#include <string_view>
#include <vector>

namespace tav {

// Decodes the references of UTF-8 text. With `problems` given, each invalid
// numeric reference adds one message to it, for the caller to show.
std::string DecodeEntities(std::string_view text, std::vector<std::string>* problems = nullptr);

// A value that must stay on one line: characters with codes 32 to 126 and
// from 160 up stay, every other one becomes "&#" and its code.
std::string EscapeCell(std::string_view text);

}  // namespace tav
