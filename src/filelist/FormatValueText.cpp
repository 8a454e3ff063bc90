#include "filelist/FormatValueText.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

#include "filelist/DateParseText.h"
#include "filelist/FormatDateMask.h"
#include "filelist/FormatMaskCache.h"
#include "filelist/FormatNumberMask.h"

namespace tav {

namespace {
bool isDigit(char c) { return c >= '0' && c <= '9'; }
}  // namespace

bool readNumericText(std::string_view text, NumericText& out) {
    std::size_t b = text.find_first_not_of(" \t");
    if (b == std::string_view::npos) return false;
    const std::size_t e = text.find_last_not_of(" \t");
    const std::string_view s = text.substr(b, e - b + 1);

    std::string clean;
    std::size_t i = 0;
    if (s[i] == '+' || s[i] == '-') clean += s[i++];
    bool digits = false, fraction = false, exponent = false;
    while (i < s.size() && (isDigit(s[i]) || (s[i] == ',' && digits && i + 1 < s.size() && isDigit(s[i + 1])))) {
        if (s[i] != ',') {
            clean += s[i];
            digits = true;
        }
        ++i;
    }
    if (i < s.size() && s[i] == '.') {
        clean += s[i++];
        while (i < s.size() && isDigit(s[i])) {
            clean += s[i++];
            digits = true;
            fraction = true;
        }
    }
    if (!digits) return false;
    if (i < s.size() && (s[i] == 'E' || s[i] == 'e')) {
        clean += 'e';
        ++i;
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) clean += s[i++];
        if (i >= s.size() || !isDigit(s[i])) return false;
        while (i < s.size() && isDigit(s[i])) clean += s[i++];
        exponent = true;
    }
    if (i != s.size()) return false;

    out = NumericText{};
    if (!fraction && !exponent) {
        const char* first = clean.data() + (clean[0] == '+' ? 1 : 0);
        const char* last = clean.data() + (clean.back() == '.' ? clean.size() - 1 : clean.size());
        std::int64_t v = 0;
        const auto [ptr, ec] = std::from_chars(first, last, v);
        if (ec == std::errc() && ptr == last) {
            out.isInteger = true;
            out.integer = v;
            out.value = static_cast<double>(v);
            return true;
        }
    }
    out.value = std::strtod(clean.c_str(), nullptr);
    if (!std::isfinite(out.value)) return false;
    return true;
}

FormatResult formatValueText(std::string_view value, std::string_view mask) {
    const FormatResult unchanged{std::string(value), {}};
    if (mask.empty() || value.empty()) return unchanged;
    enum class MaskKind { Number, Date };
    thread_local MaskCache<MaskKind> kinds;
    const MaskKind kind = kinds.get(mask, [](std::string_view m) {
        return maskHasDigitPlaceholder(m) || !maskHasDateToken(m) ? MaskKind::Number : MaskKind::Date;
    });
    if (kind == MaskKind::Number) {
        NumericText number;
        if (!readNumericText(value, number)) return unchanged;
        return number.isInteger ? formatNumber(number.integer, mask) : formatNumber(number.value, mask);
    }
    CivilDateTime when;
    if (!readDateTimeText(value, when)) return unchanged;
    return formatDateTime(when, mask);
}

}  // namespace tav
