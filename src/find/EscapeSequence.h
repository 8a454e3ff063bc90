#pragma once
// Substitutes for delimiter characters inside stored criteria strings.
#include <string>
#include <string_view>

namespace tav {

// The first sequence of three characters with codes 33 to 126 that `text`
// does not hold, skipping the delimiters of the criteria strings (` # ~ [ ]
// | { }) and every sequence whose first and last characters are equal.
// Such a sequence never overlaps itself, so putting it in for a delimiter
// and taking it out again gives back exactly the text put in. Raises error
// 9910 when every sequence is used.
std::string escapeSequence(std::string_view text);

// Every `from` in s replaced by `to`, scanning left to right.
std::string replaceAllOf(std::string_view s, std::string_view from, std::string_view to);

}  // namespace tav
