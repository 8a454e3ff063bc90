#include "filelist/DateParseText.h"

#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace tav {

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"january", "february", "march",     "april",   "may",      "june",
                                                      "july",    "august",   "september", "october", "november", "december"};

struct Cursor {
    std::string_view s;
    std::size_t i = 0;
    bool done() const { return i >= s.size(); }
    char peek() const { return done() ? '\0' : s[i]; }
    void skipBlanks() {
        while (!done() && (s[i] == ' ' || s[i] == '\t')) ++i;
    }
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isAlpha(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

// Digits: value and count. False if none.
bool takeDigits(Cursor& c, int& value, int& count, int maxCount) {
    value = 0;
    count = 0;
    while (!c.done() && isDigit(c.peek()) && count < maxCount) {
        value = value * 10 + (c.peek() - '0');
        ++count;
        ++c.i;
    }
    return count > 0 && (c.done() || !isDigit(c.peek()));
}

// An English month name or its first three letters (or more).
bool takeMonthName(Cursor& c, int& month) {
    const std::size_t start = c.i;
    std::string word;
    while (!c.done() && isAlpha(c.peek())) word += static_cast<char>(std::tolower(static_cast<unsigned char>(c.s[c.i++])));
    if (word.size() >= 3) {
        for (std::size_t m = 0; m < kMonths.size(); ++m)
            if (kMonths[m].substr(0, word.size()) == word) {
                month = static_cast<int>(m) + 1;
                return true;
            }
    }
    c.i = start;
    return false;
}

struct Group {
    int value = 0;
    int digits = 0;  // 0: a month name
};

bool takeGroup(Cursor& c, Group& g) {
    if (isAlpha(c.peek())) {
        g.digits = 0;
        return takeMonthName(c, g.value);
    }
    return takeDigits(c, g.value, g.digits, 4);
}

int fullYear(const Group& g) {
    if (g.digits > 2) return g.value;
    return g.value < 30 ? 2000 + g.value : 1900 + g.value;
}

bool setDate(int year, int month, int day, CivilDateTime& out) {
    CivilDateTime probe;
    probe.year = year;
    probe.month = month;
    probe.day = day;
    if (!isValidCivil(probe)) return false;
    out.year = year;
    out.month = month;
    out.day = day;
    return true;
}

bool readDate(Cursor& c, CivilDateTime& out) {
    const std::size_t start = c.i;
    std::array<Group, 3> g;
    for (int k = 0; k < 3; ++k) {
        if (k > 0) {
            const char sep = c.peek();
            if (sep == '/' || sep == '-' || sep == '.') {
                ++c.i;
            } else if (sep == ' ') {
                // Blanks separate only where a month is written as a name.
                std::size_t j = c.i;
                while (j < c.s.size() && (c.s[j] == ' ' || c.s[j] == '\t')) ++j;
                const bool nameNear = (j < c.s.size() && isAlpha(c.s[j])) || g[0].digits == 0 ||
                                      (k == 2 && g[1].digits == 0);
                if (!nameNear) break;
                c.i = j;
            } else {
                break;
            }
        }
        if (!takeGroup(c, g[k])) {
            c.i = start;
            return false;
        }
        if (k == 2) {
            const Group& a = g[0];
            const Group& b = g[1];
            const Group& y = g[2];
            bool ok = false;
            if (a.digits >= 3 && b.digits > 0 && y.digits > 0 && y.digits <= 2)
                ok = setDate(a.value, b.value, y.value, out) || setDate(a.value, y.value, b.value, out);
            else if (a.digits >= 3 && b.digits == 0 && y.digits > 0 && y.digits <= 2)
                ok = setDate(a.value, b.value, y.value, out);
            else if (a.digits == 0 && b.digits > 0 && b.digits <= 2 && y.digits > 0)
                ok = setDate(fullYear(y), a.value, b.value, out);
            else if (b.digits == 0 && a.digits > 0 && a.digits <= 2 && y.digits > 0)
                ok = setDate(fullYear(y), b.value, a.value, out);
            else if (a.digits > 0 && a.digits <= 2 && b.digits > 0 && b.digits <= 2 && y.digits > 0)
                ok = setDate(fullYear(y), b.value, a.value, out) || setDate(fullYear(y), a.value, b.value, out);
            if (!ok) c.i = start;
            return ok;
        }
    }
    c.i = start;
    return false;
}

bool readTime(Cursor& c, CivilDateTime& out) {
    const std::size_t start = c.i;
    int hour = 0, minute = 0, second = 0, n = 0;
    if (!takeDigits(c, hour, n, 2) || c.peek() != ':') {
        c.i = start;
        return false;
    }
    ++c.i;
    if (!takeDigits(c, minute, n, 2)) {
        c.i = start;
        return false;
    }
    if (c.peek() == ':' || c.peek() == '.') {
        ++c.i;
        if (!takeDigits(c, second, n, 2)) {
            c.i = start;
            return false;
        }
    }
    c.skipBlanks();
    std::string mark;
    while (!c.done() && isAlpha(c.peek())) mark += static_cast<char>(std::toupper(static_cast<unsigned char>(c.s[c.i++])));
    if (!mark.empty()) {
        const bool pm = mark == "PM" || mark == "P";
        if (!pm && mark != "AM" && mark != "A") {
            c.i = start;
            return false;
        }
        if (hour < 1 || hour > 12) {
            c.i = start;
            return false;
        }
        hour = hour % 12 + (pm ? 12 : 0);
    }
    if (hour > 23 || minute > 59 || second > 59) {
        c.i = start;
        return false;
    }
    out.hour = hour;
    out.minute = minute;
    out.second = second;
    return true;
}

}  // namespace

bool readDateTimeText(std::string_view text, CivilDateTime& out) {
    Cursor c{text};
    c.skipBlanks();
    CivilDateTime value;
    const bool date = readDate(c, value);
    c.skipBlanks();
    const bool time = readTime(c, value);
    c.skipBlanks();
    if (!c.done() || (!date && !time)) return false;
    out = value;
    return true;
}

std::int64_t WholeDayNumber(std::string_view text) {
    CivilDateTime value;
    return readDateTimeText(text, value) ? WholeDayNumber(value) : 0;
}

}  // namespace tav
