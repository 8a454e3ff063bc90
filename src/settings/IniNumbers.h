#pragma once
// Numbers and flags in stored text.
#include <optional>
#include <string>
#include <string_view>

namespace tav {

// The number at the start of a text, after blanks: a sign, digits, a
// decimal point and an exponent; "&H" and "&O" for hex and octal. nullopt
// when the text does not start with a number.
std::optional<double> numberAtStart(std::string_view text);

// A stored flag counts as true only for "-1" and "True".
bool valueIsTrue(std::string_view text);

// A number as stored: the shortest text that reads back the same.
std::string numberText(double value);

}  // namespace tav
