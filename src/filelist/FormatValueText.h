#pragma once
// Putting a cell's text through a mask, as the grid does for display cells
// and hidden key cells: a text that reads as a number goes through a number
// mask, one that reads as a date or time through a date mask; any other text
// stands as it is, and so does every text under an empty mask.
#include <cstdint>
#include <string_view>

#include "filelist/FormatResult.h"

namespace tav {

// A number as a cell holds it: blanks around it, a sign, digits (commas
// between integer digits allowed), a decimal point, an exponent.
struct NumericText {
    bool isInteger = false;     // integral and within 64 bits: `integer` is exact
    std::int64_t integer = 0;
    double value = 0;
};
bool readNumericText(std::string_view text, NumericText& out);

FormatResult formatValueText(std::string_view value, std::string_view mask);

}  // namespace tav
