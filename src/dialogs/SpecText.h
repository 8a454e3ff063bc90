#pragma once
// The stored form of a control specification: fields joined with "|~~|".
// Callers write specs with plain bars ("6000|2000|||||") and convert them.
#include <string>
#include <string_view>
#include <vector>

namespace tav {

inline constexpr std::string_view kSpecSeparator = "|~~|";

// The written spec in its stored form. A text holding "{" is split on "|"
// with "{ }" brackets, so a bracketed field keeps its bars; otherwise each
// "|" becomes "|~~|".
std::string MBSpec(std::string_view text);

// text followed by count-1 separators: addresses field `count` by position.
// Empty for a count below 1.
std::string MBRepeatBars(int count, std::string_view text = {});

// The fields of a stored spec (or of a stored control entry, whose first
// element is the type).
std::vector<std::string> splitStoredSpec(std::string_view stored);

}  // namespace tav
