#include "filelist/FormatNumberMask.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "filelist/FormatDateMask.h"
#include "filelist/FormatMaskCache.h"
#include "filelist/FormatMaskScan.h"

namespace tav {

namespace {

// A decimal value: 0.d1d2d3... times 10^point. No leading zeros in digits;
// empty digits mean zero.
struct Decimal {
    bool negative = false;
    std::string digits;
    int point = 0;
    bool approximate = false;  // from a floating value

    bool isZero() const { return digits.find_first_not_of('0') == std::string::npos; }
};

Decimal decimalOf(std::int64_t value) {
    Decimal d;
    d.negative = value < 0;
    const std::uint64_t magnitude =
        d.negative ? static_cast<std::uint64_t>(-(value + 1)) + 1 : static_cast<std::uint64_t>(value);
    if (magnitude != 0) d.digits = std::to_string(magnitude);
    d.point = static_cast<int>(d.digits.size());
    return d;
}

Decimal decimalOf(double value) {
    Decimal d;
    d.negative = std::signbit(value) && value != 0.0;
    // Fifteen significant digits, the precision a floating value is shown
    // with, so that 2.675 rounds as written rather than as stored.
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.14e", std::fabs(value));
    // buffer: d.dddddddddddddde[+-]xx
    std::string text(buffer);
    const std::size_t e = text.find('e');
    std::string digits = text.substr(0, 1) + text.substr(2, e - 2);
    const int exponent = std::atoi(text.c_str() + e + 1);
    const std::size_t last = digits.find_last_not_of('0');
    if (last == std::string::npos) return Decimal{};
    digits.resize(last + 1);
    d.approximate = true;
    d.digits = digits;
    d.point = exponent + 1;
    return d;
}

// Rounds half away from zero to `decimals` places after the point.
void roundTo(Decimal& d, int decimals) {
    const int keep = d.point + decimals;
    if (keep < 0) {
        d.digits.clear();
        return;
    }
    if (static_cast<int>(d.digits.size()) <= keep) return;
    const bool up = d.digits[keep] >= '5';
    d.digits.resize(keep);
    if (!up) return;
    int i = keep - 1;
    while (i >= 0 && d.digits[i] == '9') d.digits[i--] = '0';
    if (i < 0) {
        d.digits.insert(0, "1");
        ++d.point;
    } else {
        ++d.digits[i];
    }
}

std::string integerDigits(const Decimal& d) {
    if (d.point <= 0 || d.isZero()) return {};
    std::string out = d.digits.substr(0, std::min<std::size_t>(d.digits.size(), d.point));
    out.append(d.point - out.size(), '0');
    const std::size_t first = out.find_first_not_of('0');
    return first == std::string::npos ? std::string{} : out.substr(first);
}

std::string fractionDigits(const Decimal& d, int decimals) {
    std::string out;
    for (int k = 0; k < decimals; ++k) {
        const int index = d.point + k;
        out += (index >= 0 && index < static_cast<int>(d.digits.size())) ? d.digits[index] : '0';
    }
    return out;
}

enum class Kind { Literal, Zero, Hash, Point, Comma, Percent, Exponent };

struct Token {
    Kind kind;
    std::string text;  // Literal: the text; Exponent: "E+", "e-", ...
};

std::vector<Token> tokenize(std::string_view mask, std::string& error) {
    std::vector<Token> tokens;
    bool seenPoint = false;
    std::size_t i = 0;
    while (i < mask.size() && error.empty()) {
        std::string literal;
        if (takeMaskLiteral(mask, i, literal, error)) {
            tokens.push_back({Kind::Literal, literal});
            continue;
        }
        const char c = mask[i];
        if (c == '0') {
            tokens.push_back({Kind::Zero, {}});
        } else if (c == '#') {
            tokens.push_back({Kind::Hash, {}});
        } else if (c == '.' && !seenPoint) {
            seenPoint = true;
            tokens.push_back({Kind::Point, {}});
        } else if (c == ',') {
            tokens.push_back({Kind::Comma, {}});
        } else if (c == '%') {
            tokens.push_back({Kind::Percent, {}});
        } else if ((c == 'E' || c == 'e') && i + 2 < mask.size() && (mask[i + 1] == '+' || mask[i + 1] == '-') &&
                   (mask[i + 2] == '0' || mask[i + 2] == '#')) {
            tokens.push_back({Kind::Exponent, std::string(mask.substr(i, 2))});
            ++i;
        } else {
            tokens.push_back({Kind::Literal, std::string(1, c)});
        }
        ++i;
    }
    return tokens;
}

std::string groupDigits(const std::string& digits, bool grouping) {
    if (!grouping) return digits;
    std::string out;
    for (std::size_t k = 0; k < digits.size(); ++k) {
        out += digits[k];
        const std::size_t fromRight = digits.size() - 1 - k;
        if (fromRight > 0 && fromRight % 3 == 0) out += ',';
    }
    return out;
}

// One section of a mask with what its tokens say about the number, worked
// out once when the mask is read.
struct Section {
    std::vector<Token> tokens;
    std::size_t exponentAt = 0;      // tokens.size() if none
    std::size_t integerEnd = 0;      // first token after the integer part
    std::size_t integerSlots = 0;    // placeholders of the integer part
    std::vector<Kind> fractionKinds; // placeholders after the point
    std::size_t zeroRun = 0;         // integer placeholders from the first `0` to the right end
    std::size_t exponentMinimum = 0; // exponent digits always shown
    bool grouping = false;
    int shift = 0;                   // powers of ten: 2 a percent sign, -3 a scaling comma
    bool anyPlaceholder = false;
};

bool isPlaceholder(const Token& t) { return t.kind == Kind::Zero || t.kind == Kind::Hash; }

Section layoutOf(std::vector<Token> tokens) {
    Section s;
    const std::size_t count = tokens.size();
    std::size_t pointAt = count;
    s.exponentAt = count;
    for (std::size_t k = 0; k < count; ++k) {
        if (tokens[k].kind == Kind::Point && pointAt == count && s.exponentAt == count) pointAt = k;
        if (tokens[k].kind == Kind::Exponent && s.exponentAt == count) s.exponentAt = k;
    }
    s.integerEnd = std::min(pointAt, s.exponentAt);

    std::size_t firstInteger = count, lastInteger = count;
    bool exponentZeroSeen = false;
    for (std::size_t k = 0; k < count; ++k) {
        if (!isPlaceholder(tokens[k])) continue;
        if (k < s.integerEnd) {
            if (firstInteger == count) firstInteger = k;
            lastInteger = k;
            ++s.integerSlots;
        } else if (k < s.exponentAt) {
            s.fractionKinds.push_back(tokens[k].kind);
        } else {
            if (tokens[k].kind == Kind::Zero) exponentZeroSeen = true;
            if (exponentZeroSeen) ++s.exponentMinimum;
        }
    }
    s.zeroRun = 0;
    for (std::size_t k = 0, seen = 0; k < s.integerEnd; ++k) {
        if (!isPlaceholder(tokens[k])) continue;
        if (tokens[k].kind == Kind::Zero) {
            s.zeroRun = s.integerSlots - seen;
            break;
        }
        ++seen;
    }
    s.anyPlaceholder = s.integerSlots > 0 || !s.fractionKinds.empty();

    // Commas between integer placeholders group; commas after the last one scale.
    for (std::size_t k = 0; k < s.integerEnd; ++k) {
        if (tokens[k].kind != Kind::Comma || firstInteger == count) continue;
        if (k > firstInteger && k < lastInteger) s.grouping = true;
        if (k > lastInteger) s.shift -= 3;
    }
    for (const Token& t : tokens)
        if (t.kind == Kind::Percent) s.shift += 2;
    s.tokens = std::move(tokens);
    return s;
}

// Places a value into one section of a mask. The sign, if any, is the caller's.
std::string applySection(Decimal value, const Section& section, bool& shownNonZero) {
    const std::vector<Token>& tokens = section.tokens;
    const std::size_t count = tokens.size();
    const std::size_t exponentAt = section.exponentAt;
    const std::size_t integerEnd = section.integerEnd;
    const bool grouping = section.grouping;
    const bool anyPlaceholder = section.anyPlaceholder;
    value.point += section.shift;

    const int decimals = static_cast<int>(section.fractionKinds.size());
    int exponent = 0;
    if (exponentAt != count && !value.isZero()) {
        exponent = value.point - static_cast<int>(section.integerSlots);
        value.point -= exponent;
        roundTo(value, decimals);
        if (value.point > static_cast<int>(section.integerSlots)) {
            --value.point;
            ++exponent;
        }
    } else {
        roundTo(value, decimals);
    }
    shownNonZero = !value.isZero();

    std::string digits = integerDigits(value);
    if (digits.size() < section.zeroRun) digits.insert(0, section.zeroRun - digits.size(), '0');

    const std::string fraction = fractionDigits(value, decimals);
    std::size_t fractionShown = fraction.size();  // trailing zeros at `#` are left out
    while (fractionShown > 0 && section.fractionKinds[fractionShown - 1] == Kind::Hash &&
           fraction[fractionShown - 1] == '0')
        --fractionShown;

    std::string out;
    const std::size_t slots = section.integerSlots;
    const std::size_t length = digits.size();
    auto emitDigit = [&](std::size_t index) {
        out += digits[index];
        const std::size_t fromRight = length - 1 - index;
        if (grouping && fromRight > 0 && fromRight % 3 == 0) out += ',';
    };
    std::size_t integerSeen = 0, fractionSeen = 0;
    bool digitsPlaced = slots > 0;
    for (std::size_t k = 0; k < count; ++k) {
        const Token& t = tokens[k];
        if (k >= exponentAt && isPlaceholder(t)) continue;  // written with the exponent
        switch (t.kind) {
            case Kind::Literal: out += t.text; break;
            case Kind::Comma: break;
            case Kind::Percent: out += '%'; break;
            case Kind::Point:
                if (!digitsPlaced && anyPlaceholder) {
                    out += groupDigits(digits, grouping);
                    digitsPlaced = true;
                }
                out += '.';
                break;
            case Kind::Zero:
            case Kind::Hash:
                if (k < integerEnd) {
                    const std::size_t fromRight = slots - 1 - integerSeen;
                    if (integerSeen == 0) {
                        for (std::size_t index = 0; index + fromRight < length; ++index) emitDigit(index);
                    } else if (fromRight < length) {
                        emitDigit(length - 1 - fromRight);
                    }
                    ++integerSeen;
                } else {
                    if (!digitsPlaced) {
                        out += groupDigits(digits, grouping);
                        digitsPlaced = true;
                    }
                    if (fractionSeen < fractionShown) out += fraction[fractionSeen];
                    ++fractionSeen;
                }
                break;
            case Kind::Exponent: {
                out += t.text[0];
                if (exponent < 0)
                    out += '-';
                else if (t.text[1] == '+')
                    out += '+';
                const std::size_t minimum = section.exponentMinimum;
                std::string e = exponent == 0 ? std::string{} : std::to_string(std::abs(exponent));
                if (e.size() < minimum) e.insert(0, minimum - e.size(), '0');
                out += e;
                break;
            }
        }
    }
    return out;
}

std::string generalNumber(Decimal d) {
    if (d.approximate) {
        roundTo(d, 15 - d.point);
        const std::size_t last = d.digits.find_last_not_of('0');
        d.digits.resize(last == std::string::npos ? 0 : last + 1);
    }
    std::string out = d.negative && !d.isZero() ? "-" : "";
    const std::string integer = integerDigits(d);
    out += integer.empty() ? "0" : integer;
    const int decimals = std::max(0, static_cast<int>(d.digits.size()) - d.point);
    if (decimals > 0) {
        const std::string fraction = fractionDigits(d, decimals);
        out += '.' + fraction;
    }
    return out;
}

// A number mask in its read form: the tokens of each section.
struct CompiledMask {
    std::string error;
    std::vector<Section> sections;  // no tokens: general number
};

CompiledMask compile(std::string_view mask) {
    CompiledMask c;
    const std::vector<std::string> texts = splitMaskSections(mask, c.error);
    if (!c.error.empty()) return c;
    if (texts.size() > 4) {
        c.error = "The format has more than four sections.";
        return c;
    }
    if (!maskHasDigitPlaceholder(mask) && maskHasDateToken(mask)) {
        c.error = "The format is a date or time format, not a number format.";
        return c;
    }
    for (const std::string& text : texts) {
        c.sections.push_back(layoutOf(tokenize(text, c.error)));
        if (!c.error.empty()) return c;
    }
    return c;
}

FormatResult formatDecimal(Decimal value, std::string_view mask) {
    thread_local MaskCache<CompiledMask> cache;
    const CompiledMask& compiled = cache.get(mask, compile);
    if (!compiled.error.empty()) return formatFailure(compiled.error);
    const auto& sections = compiled.sections;

    const Section* section = &sections[0];
    bool writeSign = value.negative;
    if (value.negative && sections.size() >= 2 && !sections[1].tokens.empty()) {
        section = &sections[1];
        writeSign = false;
    } else if (value.isZero() && sections.size() >= 3 && !sections[2].tokens.empty()) {
        section = &sections[2];
    }
    if (section->tokens.empty()) return FormatResult{generalNumber(value), {}};

    const bool negative = value.negative;
    value.negative = false;
    bool shownNonZero = false;
    std::string text = applySection(value, *section, shownNonZero);
    // A value that rounds to nothing loses its sign.
    if (writeSign && negative && shownNonZero) text.insert(0, "-");
    return FormatResult{text, {}};
}

}  // namespace

bool maskHasDigitPlaceholder(std::string_view mask) {
    std::string ignored, error;
    for (std::size_t i = 0; i < mask.size();) {
        if (takeMaskLiteral(mask, i, ignored, error)) continue;
        if (mask[i] == '0' || mask[i] == '#') return true;
        ++i;
    }
    return false;
}

FormatResult formatNumber(std::int64_t value, std::string_view mask) { return formatDecimal(decimalOf(value), mask); }

FormatResult formatNumber(double value, std::string_view mask) {
    if (!std::isfinite(value)) return formatFailure("The number is out of range.");
    return formatDecimal(decimalOf(value), mask);
}

}  // namespace tav
