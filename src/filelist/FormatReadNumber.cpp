#include "filelist/FormatReadNumber.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

namespace tav {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

int digitValue(char c, int base) {
    int v = -1;
    if (isDigit(c))
        v = c - '0';
    else if (c >= 'a' && c <= 'f')
        v = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F')
        v = c - 'A' + 10;
    return v >= 0 && v < base ? v : -1;
}

std::optional<double> readRadix(const std::string& s, std::size_t i, int base) {
    double value = 0;
    for (; i < s.size(); ++i) {
        const int d = digitValue(s[i], base);
        if (d < 0) break;
        value = value * base + d;
        if (value > 18446744073709551615.0) return std::nullopt;  // beyond 64 bits
    }
    return value;
}

// nullopt when the reading fails.
std::optional<double> readOnce(std::string_view text) {
    std::string s;
    s.reserve(text.size());
    for (char c : text)
        if (c != ' ' && c != '\t' && c != '\n') s += c;

    if (!s.empty() && s[0] == '&') {
        if (s.size() > 1 && (s[1] == 'H' || s[1] == 'h')) return readRadix(s, 2, 16);
        if (s.size() > 1 && (s[1] == 'O' || s[1] == 'o')) return readRadix(s, 2, 8);
        if (s.size() > 1 && isDigit(s[1])) return readRadix(s, 1, 8);
        return 0.0;
    }

    std::string number;
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) number += s[i++];
    bool digits = false;
    while (i < s.size() && isDigit(s[i])) {
        number += s[i++];
        digits = true;
    }
    if (i < s.size() && s[i] == '.') {
        number += s[i++];
        while (i < s.size() && isDigit(s[i])) {
            number += s[i++];
            digits = true;
        }
    }
    if (!digits) return 0.0;
    if (i < s.size() && (s[i] == 'E' || s[i] == 'e' || s[i] == 'D' || s[i] == 'd')) {
        std::size_t j = i + 1;
        std::string exponent = "e";
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) exponent += s[j++];
        if (j < s.size() && isDigit(s[j])) {
            while (j < s.size() && isDigit(s[j])) exponent += s[j++];
            number += exponent;
        }
    }
    const double value = std::strtod(number.c_str(), nullptr);
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

std::string without(std::string_view text, char drop) {
    std::string out;
    for (char c : text)
        if (c != drop) out += c;
    return out;
}

}  // namespace

double ReadNumber(std::string_view text) {
    if (auto v = readOnce(text)) return *v;
    const std::string noAmpersand = without(text, '&');
    if (auto v = readOnce(noAmpersand)) return *v;
    if (auto v = readOnce(without(noAmpersand, '%'))) return *v;
    return 0;
}

}  // namespace tav
