#pragma once
// The one number reader of the system: the value of the leading number of a
// text. Blanks, tabs and line feeds inside the number are ignored; a sign,
// digits, a decimal point and an exponent (`E` or `D`) are read; `&H` and
// `&O` read hexadecimal and octal. A thousands comma or a letter ends the
// number, so a count must be typed as digits only. No number gives 0.
// A reading that fails (an overflow) is tried again with every `&` removed,
// then with every `%` removed; if all fail, the value is 0.
#include <string_view>

namespace tav {

double ReadNumber(std::string_view text);

}  // namespace tav
