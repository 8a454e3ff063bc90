#include "find/FindNowCheck.h"

#include <cctype>

#include "find/FindCriteria.h"
#include "find/FindOptions.h"
#include "find/ValueSearcher.h"

namespace tav {

namespace {

constexpr char kCr = '\r';

std::string lines(std::initializer_list<std::string_view> parts) {
    std::string out;
    for (auto p : parts) {
        if (!out.empty()) out += kCr;
        out += p;
    }
    return out;
}

FindNowOutcome refuse(MessageHost& host, std::string message) {
    MessageRequest r;
    r.message = message;
    r.buttons = "0";
    host.show(r);
    return {false, std::move(message)};
}

bool askYes(MessageHost& host, std::string message) {
    MessageRequest r;
    r.message = std::move(message);
    r.buttons = "4";
    return host.show(r) == 1;
}

bool isNumberText(std::string_view s) {
    size_t i = 0;
    while (i < s.size() && s[i] == ' ') ++i;
    size_t digits = 0;
    for (; i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])); ++i) ++digits;
    while (i < s.size() && s[i] == ' ') ++i;
    return digits > 0 && i == s.size();
}

int64_t numberOf(std::string_view s) {
    int64_t v = 0;
    for (char c : s)
        if (std::isdigit(static_cast<unsigned char>(c))) v = v > INT64_MAX / 10 - 9 ? INT64_MAX : v * 10 + (c - '0');
    return v;
}

int64_t daysFromCivil(int64_t y, int64_t m, int64_t d) {
    y -= m <= 2;
    int64_t era = (y >= 0 ? y : y - 399) / 400;
    int64_t yoe = y - era * 400;
    int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468 + 25569;  // day 0 is 30 December 1899
}

}  // namespace

std::optional<int64_t> plainDateParse(std::string_view t) {
    int n[3] = {0, 0, 0};
    int len[3] = {0, 0, 0};
    int part = 0;
    char sep = 0;
    for (char c : t) {
        if (std::isdigit(static_cast<unsigned char>(c))) {
            if (len[part] >= 4) return std::nullopt;
            n[part] = n[part] * 10 + (c - '0');
            ++len[part];
        } else if ((c == '/' || c == '-' || c == '.') && part < 2 && len[part] > 0 && (sep == 0 || sep == c)) {
            sep = c;
            ++part;
        } else {
            return std::nullopt;
        }
    }
    if (part != 2 || len[2] == 0) return std::nullopt;
    int y, m, d;
    if (len[0] == 4) {
        y = n[0], m = n[1], d = n[2];
    } else {
        d = n[0], m = n[1], y = n[2];
        if (len[2] != 4) return std::nullopt;
    }
    static const int days[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (m < 1 || m > 12 || d < 1 || d > days[m - 1]) return std::nullopt;
    bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
    if (m == 2 && d == 29 && !leap) return std::nullopt;
    return daysFromCivil(y, m, d);
}

bool namePatternValid(std::string_view p) {
    for (size_t i = 0; i < p.size(); ++i) {
        if (p[i] != '[') continue;
        size_t close = p.find(']', i + 1);
        if (close == std::string_view::npos) return false;
        std::string_view inner = p.substr(i + 1, close - i - 1);
        if (!inner.empty() && inner[0] == '!') inner.remove_prefix(1);
        for (size_t k = 1; k + 1 < inner.size(); ++k)
            if (inner[k] == '-' && static_cast<unsigned char>(inner[k - 1]) > static_cast<unsigned char>(inner[k + 1]))
                return false;
        i = close;
    }
    return true;
}

FindNowOutcome checkFindNow(FindNowEntries& e, MessageHost& host, const DateParse& parseDate,
                            const DateFormat& shortDate) {
    const bool containing = e.section == kSectionFindContaining;
    const bool anyPattern = containing && !(e.pattern.empty() || e.pattern == "*" || e.pattern == "*.*");
    const bool fileCriteria = containing && (anyPattern || e.minSizeOn || e.maxSizeOn || e.dates != DateChoice::AllFiles);

    // 1. File criteria without text.
    if (fileCriteria && e.text.empty()) {
        e.exclude.clear();
        if (e.mode != FindSearchMode::Directories)
            return refuse(host, lines({"To search for files in Current List, you must specify Text to find.",
                                       "To search By date/size only, select a directory to Look In."}));
    }
    // 2. Nothing to look for.
    if (e.text.empty() && !fileCriteria)
        return refuse(host, containing ? "Enter Text to Find or Date / Size Criteria" : "Enter Text to Find");
    // 3. The name pattern.
    if (containing && !namePatternValid(e.pattern))
        return refuse(host,
                      "Named criteria not allowed. Enter valid criteria in form name.type with an * before/after "
                      "the dot when required. E.g.: *.txt to search files called a.txt, b.txt, etc OR aa* to "
                      "search files aa1, aa2.jpg, aa3.htm");
    // 4. The exclude text must hold the text to find.
    if (!e.exclude.empty() && !e.text.empty() &&
        ValueSearcher(e.text, !e.matchCase).find(e.exclude) == ValueSearcher::npos) {
        const std::string_view last = "Text to be Excluded from search must contain Text to find.";
        if (!e.complexShown)
            return refuse(host, lines({"The Exclude Text entered does not contain the Text to be found. Try again.",
                                       "Match case option will be the same for exclude selection and Find Text.",
                                       "E.g. Find: \"Smith\", but exclude \"Peter Smith\".", last}));
        return refuse(host, std::string(last));
    }
    // 5. Dates.
    if (containing && e.dates != DateChoice::AllFiles && e.dates != DateChoice::Today) {
        const std::string example =
            "E.g. enter date 19th April 2001 in format: " + shortDate(daysFromCivil(2001, 4, 19));
        if (e.dateFrom.empty() && e.dateTo.empty())
            return refuse(host, lines({"Enter at least one date between which files should be selected. Or Select All Files.",
                                       example}));
        if (!e.dateFrom.empty() && !parseDate(e.dateFrom))
            return refuse(host, lines({"Enter a valid date as date to start selection of files.", example}));
        if (!e.dateTo.empty() && !parseDate(e.dateTo))
            return refuse(host, lines({"Enter a valid date as date to end selection of files.", example}));
    }
    // 6. Sizes above the highest value.
    auto checkSize = [&](bool on, std::string& value, std::string_view which) {
        if (!containing || !on || !isNumberText(value) || numberOf(value) <= kMaxSearchBytes) return true;
        std::string msg = lines({"Value entered as " + std::string(which) + " [" + value + "]" +
                                     " is more than highest value allowed allowed [2147483647].",
                                 "Press Yes to continue with value reduced to maximum", "Press No to change value.",
                                 "Do you want to continue with search using this " + std::string(which)});
        if (!askYes(host, msg)) return false;
        value = std::to_string(kMaxSearchBytes);
        return true;
    };
    if (!checkSize(e.maxSizeOn, e.maxSize, "maximum size")) return {false, {}};
    if (!checkSize(e.minSizeOn, e.minSize, "minimum size")) return {false, {}};
    // 7. Maximum length to search.
    if (containing && isNumberText(e.maxLength) && numberOf(e.maxLength) > kMaxSearchBytes) {
        MessageRequest r;
        r.message = "Maximum length more than 2147483647not allowed. Maximum length to be used will be reduced automatically.";
        r.buttons = "0";
        host.show(r);
        e.maxLength = std::to_string(kMaxSearchBytes);
    }
    // 8. No text and only the top directories.
    if (containing && e.text.empty() && !e.includeSubdirs && e.viewMode != 'S' && e.viewMode != 'T' &&
        e.viewMode != 'M') {
        if (askYes(host, lines({"Search for files without specifying Text to Find.",
                                "Usually you will want to search all subdirectories of each directory specified.",
                                "Do you want to search all Subdirectories now?", "Press Yes to check Include Subdirs now.",
                                "Press No to search only top level directory/directories."})))
            e.includeSubdirs = true;
    }
    return {true, {}};
}

}  // namespace tav
