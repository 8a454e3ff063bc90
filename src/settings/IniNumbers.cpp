#include "settings/IniNumbers.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include "settings/ProfileFile.h"

namespace tav {

std::optional<double> numberAtStart(std::string_view text) {
    size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
    if (i + 1 < text.size() && text[i] == '&') {
        char base = static_cast<char>(text[i + 1] | 0x20);
        int radix = base == 'h' ? 16 : base == 'o' ? 8 : 0;
        if (radix) {
            long long v = 0;
            auto [p, ec] = std::from_chars(text.data() + i + 2, text.data() + text.size(), v, radix);
            if (ec != std::errc() || p == text.data() + i + 2) return std::nullopt;
            return static_cast<double>(v);
        }
    }
    size_t start = i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    size_t digits = 0;
    while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i, ++digits;
    if (i < text.size() && text[i] == '.') {
        ++i;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i, ++digits;
    }
    if (digits == 0) return std::nullopt;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        size_t e = i + 1;
        if (e < text.size() && (text[e] == '+' || text[e] == '-')) ++e;
        if (e < text.size() && text[e] >= '0' && text[e] <= '9') {
            i = e;
            while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i;
        }
    }
    std::string number(text.substr(start, i - start));
    if (number.front() == '+') number.erase(0, 1);
    return std::strtod(number.c_str(), nullptr);
}

bool valueIsTrue(std::string_view text) {
    size_t b = 0, e = text.size();
    while (b < e && text[b] == ' ') ++b;
    while (e > b && text[e - 1] == ' ') --e;
    std::string_view t = text.substr(b, e - b);
    return t == "-1" || foldName(t) == "true";
}

std::string numberText(double value) {
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < 1e15)
        return std::to_string(static_cast<long long>(value));
    char buf[64];
    auto [p, ec] = std::to_chars(buf, buf + sizeof buf, value);
    return std::string(buf, p);
}

}  // namespace tav
