#pragma once
// Line ends become blanks, so that a cell keeps to one line: a CR LF pair
// or a lone CR or LF each give one blank.
#include <string>
#include <string_view>

namespace tav {

std::string cleanCell(std::string_view text);

}  // namespace tav
