#include "filelist/FormatDateMask.h"

#include <array>
#include <cctype>
#include <string>
#include <vector>

#include "filelist/FormatMaskCache.h"
#include "filelist/FormatMaskScan.h"
#include "filelist/FormatNumberMask.h"

namespace tav {

namespace {

constexpr std::array<const char*, 12> kMonthNames = {"January", "February", "March",     "April",   "May",      "June",
                                                     "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> kDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};

enum class Kind {
    Literal, Day, DayShort, DayName, DayNameShort, ShortDate, LongDate, WeekdayNumber, WeekOfYear,
    Month, MonthPadded, MonthName, MonthNameShort, Quarter, DayOfYear, Year2, Year4,
    Hour, HourPadded, Minute, MinutePadded, Second, SecondPadded, FullTime, GeneralDate, AmPm
};

struct Token {
    Kind kind;
    std::string text;  // Literal: the text; AmPm: the morning and afternoon marks, "AM|PM"
};

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

std::size_t runLength(std::string_view mask, std::size_t i, char letter) {
    std::size_t n = 0;
    while (i + n < mask.size() && lower(mask[i + n]) == letter) ++n;
    return n;
}

bool startsWithNoCase(std::string_view mask, std::size_t i, std::string_view word) {
    if (mask.size() - i < word.size()) return false;
    for (std::size_t k = 0; k < word.size(); ++k)
        if (lower(mask[i + k]) != word[k]) return false;
    return true;
}

// The mark keeps the case in which the mask wrote it.
std::string caseLike(char model, char letter) {
    return std::string(1, std::isupper(static_cast<unsigned char>(model))
                              ? static_cast<char>(std::toupper(static_cast<unsigned char>(letter)))
                              : lower(letter));
}

std::vector<Token> tokenize(std::string_view mask, std::string& error) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    auto literal = [&tokens](std::string text) {
        if (!tokens.empty() && tokens.back().kind == Kind::Literal)
            tokens.back().text += text;
        else
            tokens.push_back({Kind::Literal, std::move(text)});
    };
    while (i < mask.size() && error.empty()) {
        std::string text;
        if (takeMaskLiteral(mask, i, text, error)) {
            literal(text);
            continue;
        }
        const char c = lower(mask[i]);
        std::size_t n = 1;
        switch (c) {
            case 'd': {
                n = std::min<std::size_t>(runLength(mask, i, 'd'), 6);
                static constexpr Kind kinds[] = {Kind::Day,     Kind::DayShort,  Kind::DayNameShort,
                                                 Kind::DayName, Kind::ShortDate, Kind::LongDate};
                tokens.push_back({kinds[n - 1], {}});
                break;
            }
            case 'w':
                n = std::min<std::size_t>(runLength(mask, i, 'w'), 2);
                tokens.push_back({n == 1 ? Kind::WeekdayNumber : Kind::WeekOfYear, {}});
                break;
            case 'm': {
                n = std::min<std::size_t>(runLength(mask, i, 'm'), 4);
                static constexpr Kind kinds[] = {Kind::Month, Kind::MonthPadded, Kind::MonthNameShort, Kind::MonthName};
                tokens.push_back({kinds[n - 1], {}});
                break;
            }
            case 'q': tokens.push_back({Kind::Quarter, {}}); break;
            case 'y': {
                const std::size_t run = runLength(mask, i, 'y');
                n = run >= 4 ? 4 : run >= 2 ? 2 : 1;
                tokens.push_back({n == 4 ? Kind::Year4 : n == 2 ? Kind::Year2 : Kind::DayOfYear, {}});
                break;
            }
            case 'h':
                n = std::min<std::size_t>(runLength(mask, i, 'h'), 2);
                tokens.push_back({n == 1 ? Kind::Hour : Kind::HourPadded, {}});
                break;
            case 'n':
                n = std::min<std::size_t>(runLength(mask, i, 'n'), 2);
                tokens.push_back({n == 1 ? Kind::Minute : Kind::MinutePadded, {}});
                break;
            case 's':
                n = std::min<std::size_t>(runLength(mask, i, 's'), 2);
                tokens.push_back({n == 1 ? Kind::Second : Kind::SecondPadded, {}});
                break;
            case 'c': tokens.push_back({Kind::GeneralDate, {}}); break;
            case 't':
                if (runLength(mask, i, 't') >= 5) {
                    n = 5;
                    tokens.push_back({Kind::FullTime, {}});
                } else {
                    literal(std::string(1, mask[i]));
                }
                break;
            case 'a':
                if (startsWithNoCase(mask, i, "am/pm")) {
                    n = 5;
                    tokens.push_back({Kind::AmPm, caseLike(mask[i], 'a') + caseLike(mask[i + 1], 'm') + "|" +
                                                      caseLike(mask[i + 3], 'p') + caseLike(mask[i + 4], 'm')});
                } else if (startsWithNoCase(mask, i, "a/p")) {
                    n = 3;
                    tokens.push_back({Kind::AmPm, caseLike(mask[i], 'a') + "|" + caseLike(mask[i + 2], 'p')});
                } else if (startsWithNoCase(mask, i, "ampm")) {
                    n = 4;
                    tokens.push_back({Kind::AmPm, "AM|PM"});
                } else {
                    literal(std::string(1, mask[i]));
                }
                break;
            default: literal(std::string(1, mask[i])); break;
        }
        i += n;
    }
    // `m` and `mm` are minutes right after an hour or right before seconds.
    auto neighbour = [&tokens](std::size_t k, int step) -> const Token* {
        for (long j = static_cast<long>(k) + step; j >= 0 && j < static_cast<long>(tokens.size()); j += step)
            if (tokens[j].kind != Kind::Literal) return &tokens[j];
        return nullptr;
    };
    for (std::size_t k = 0; k < tokens.size(); ++k) {
        Token& t = tokens[k];
        if (t.kind != Kind::Month && t.kind != Kind::MonthPadded) continue;
        const Token* before = neighbour(k, -1);
        const Token* after = neighbour(k, 1);
        const bool afterHour = before && (before->kind == Kind::Hour || before->kind == Kind::HourPadded);
        const bool beforeSecond = after && (after->kind == Kind::Second || after->kind == Kind::SecondPadded);
        if (afterHour || beforeSecond) t.kind = t.kind == Kind::Month ? Kind::Minute : Kind::MinutePadded;
    }
    return tokens;
}

std::string twoDigits(int v) {
    std::string s = std::to_string(v);
    return s.size() < 2 ? "0" + s : s;
}

std::string fourDigits(int v) {
    std::string s = std::to_string(v);
    return s.size() < 4 ? std::string(4 - s.size(), '0') + s : s;
}

int weekOfYear(const CivilDateTime& v) {
    // Week 1 holds 1 January; weeks start on Sunday.
    const int firstWeekday = weekdayNumber(v.year, 1, 1);
    return (dayOfYear(v.year, v.month, v.day) + firstWeekday - 2) / 7 + 1;
}

// A date mask in its read form.
struct CompiledMask {
    std::string error;
    std::vector<Token> tokens;
    bool twelveHour = false;
};

CompiledMask compile(std::string_view mask) {
    CompiledMask c;
    c.tokens = tokenize(mask, c.error);
    if (!c.error.empty()) return c;
    if (maskHasDigitPlaceholder(mask)) {
        c.error = "The format is a number format, not a date or time format.";
        return c;
    }
    bool any = false;
    for (const Token& t : c.tokens) {
        if (t.kind != Kind::Literal) any = true;
        if (t.kind == Kind::AmPm) c.twelveHour = true;
    }
    if (!any) c.error = "The format shows no part of the date or time.";
    return c;
}

const CompiledMask& compiled(std::string_view mask) {
    thread_local MaskCache<CompiledMask> cache;
    return cache.get(mask, compile);
}

void emit(const Token& t, const CivilDateTime& v, bool twelveHour, std::string& out);

// The masks inside other masks (short date, full time) are read afresh: a
// cached entry could give way while the outer mask is being written.
void emitMask(std::string_view mask, const CivilDateTime& v, std::string& out) {
    const CompiledMask c = compile(mask);
    for (const Token& t : c.tokens) emit(t, v, c.twelveHour, out);
}

void emit(const Token& t, const CivilDateTime& v, bool twelveHour, std::string& out) {
    const int hour = twelveHour ? (v.hour % 12 == 0 ? 12 : v.hour % 12) : v.hour;
    switch (t.kind) {
        case Kind::Literal: out += t.text; break;
        case Kind::Day: out += std::to_string(v.day); break;
        case Kind::DayShort: out += twoDigits(v.day); break;
        case Kind::DayName: out += kDayNames[weekdayNumber(v.year, v.month, v.day) - 1]; break;
        case Kind::DayNameShort:
            out += std::string(kDayNames[weekdayNumber(v.year, v.month, v.day) - 1]).substr(0, 3);
            break;
        case Kind::ShortDate: emitMask("dd/mm/yyyy", v, out); break;
        case Kind::LongDate: emitMask("dddd, d mmmm yyyy", v, out); break;
        case Kind::WeekdayNumber: out += std::to_string(weekdayNumber(v.year, v.month, v.day)); break;
        case Kind::WeekOfYear: out += std::to_string(weekOfYear(v)); break;
        case Kind::Month: out += std::to_string(v.month); break;
        case Kind::MonthPadded: out += twoDigits(v.month); break;
        case Kind::MonthName: out += kMonthNames[v.month - 1]; break;
        case Kind::MonthNameShort: out += std::string(kMonthNames[v.month - 1]).substr(0, 3); break;
        case Kind::Quarter: out += std::to_string((v.month - 1) / 3 + 1); break;
        case Kind::DayOfYear: out += std::to_string(dayOfYear(v.year, v.month, v.day)); break;
        case Kind::Year2: out += twoDigits(v.year % 100); break;
        case Kind::Year4: out += fourDigits(v.year); break;
        case Kind::Hour: out += std::to_string(hour); break;
        case Kind::HourPadded: out += twoDigits(hour); break;
        case Kind::Minute: out += std::to_string(v.minute); break;
        case Kind::MinutePadded: out += twoDigits(v.minute); break;
        case Kind::Second: out += std::to_string(v.second); break;
        case Kind::SecondPadded: out += twoDigits(v.second); break;
        case Kind::FullTime: emitMask("hh:nn:ss", v, out); break;
        case Kind::GeneralDate: {
            const bool hasDate = !(v.year == 1899 && v.month == 12 && v.day == 30);
            const bool hasTime = v.hour != 0 || v.minute != 0 || v.second != 0;
            if (hasDate) emitMask("dd/mm/yyyy", v, out);
            if (hasDate && hasTime) out += ' ';
            if (hasTime || !hasDate) emitMask("hh:nn:ss", v, out);
            break;
        }
        case Kind::AmPm: {
            const std::size_t bar = t.text.find('|');
            out += v.hour < 12 ? t.text.substr(0, bar) : t.text.substr(bar + 1);
            break;
        }
    }
}

}  // namespace

bool maskHasDateToken(std::string_view mask) {
    std::string error;
    for (const Token& t : tokenize(mask, error))
        if (t.kind != Kind::Literal) return true;
    return false;
}

FormatResult formatDateTime(const CivilDateTime& value, std::string_view mask) {
    if (!isValidCivil(value)) return formatFailure("The date is out of range.");
    if (mask.empty()) mask = "c";
    const CompiledMask& c = compiled(mask);
    if (!c.error.empty()) return formatFailure(c.error);
    std::string out;
    for (const Token& t : c.tokens) emit(t, value, c.twelveHour, out);
    return FormatResult{out, {}};
}

}  // namespace tav
