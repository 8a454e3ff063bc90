#pragma once
// Trimming of stored texts: blanks only, as lists and values are trimmed.
#include <string_view>

namespace tav {

inline std::string_view trimBlanks(std::string_view s) {
    size_t b = 0, e = s.size();
    while (b < e && s[b] == ' ') ++b;
    while (e > b && s[e - 1] == ' ') --e;
    return s.substr(b, e - b);
}

}  // namespace tav
