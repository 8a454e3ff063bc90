#include "find/CriteriaText.h"

#include <cstdio>

#include "core/ListText.h"
#include "find/ComplexCriteria.h"
#include "find/FindCriteria.h"

namespace tav {

namespace {

void addEntries(std::vector<std::string>& out, const std::vector<std::string>& values, std::string_view prefix) {
    for (const auto& v : values) out.push_back(std::string(prefix) + "(" + v + ")");
}

std::string rangeText(const DateRange& d, const DateFormat& date) {
    if (d.from && d.to) return "From " + date(*d.from) + " To " + date(*d.to);
    if (d.from) return "After " + date(*d.from);
    if (d.to) return "Before " + date(*d.to);
    return {};
}

}  // namespace

std::string complexAsText(std::string_view complex, std::string_view section) {
    ComplexCriteria c = parseComplexCriteria(complex);
    std::vector<std::string> e;
    addEntries(e, c.values, "or");
    addEntries(e, c.exclude, "-");
    addEntries(e, c.excludeLineStarts, c.excludeStartIgnoreSpaces ? "-LG" : "-L");
    addEntries(e, c.excludeSameLine, "-S");
    addEntries(e, c.excludeRange, "-R" + std::to_string(c.excludeRangeBytes));
    addEntries(e, c.includeLineStarts, c.includeStartIgnoreSpaces ? "+LG" : "+L");
    addEntries(e, c.includeSameLine, "+S");
    addEntries(e, c.includeRange, "+R" + std::to_string(c.includeRangeBytes));
    std::string out;
    for (const auto& s : e) {
        if (!out.empty()) out += ' ';
        out += s;
    }
    bool lines = !c.excludeLineStarts.empty() || !c.includeLineStarts.empty() || !c.excludeSameLine.empty() ||
                 !c.includeSameLine.empty();
    if ((section == kSectionText || section == kSectionFindContaining) && lines)
        out += " Restrict Line(" + std::to_string(c.restrictLine) + ")";
    return out;
}

std::string criteriaAsText(std::string_view text, std::string_view exclude, bool matchCase, bool wholeWord,
                           std::string_view complex, std::string_view section) {
    std::string x;
    if (wholeWord) x += " WW";
    if (matchCase) x += " MC";
    if (!complex.empty())
        x += " " + complexAsText(complex, section);
    else if (!exclude.empty())
        x += " -(" + std::string(exclude) + ")";
    if (x.empty()) return std::string(text);
    return "(" + std::string(text) + ")" + x;
}

std::string plainSizeText(int64_t bytes) { return std::to_string(bytes); }

std::string plainDateText(int64_t dayNumber) {
    // Civil date from days since 1970-01-01 (H. Hinnant's algorithm).
    int64_t z = dayNumber - 25569 + 719468;
    int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    int64_t doe = z - era * 146097;
    int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    int64_t y = yoe + era * 400;
    int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    int64_t mp = (5 * doy + 2) / 153;
    int64_t d = doy - (153 * mp + 2) / 5 + 1;
    int64_t m = mp < 10 ? mp + 3 : mp - 9;
    if (m <= 2) ++y;
    char buf[32];
    std::snprintf(buf, sizeof buf, "%02d/%02d/%04d", static_cast<int>(d), static_cast<int>(m), static_cast<int>(y));
    return buf;
}

std::string dateSizeAsText(const FileFindRecord& r, const SizeFormat& size, const DateFormat& date) {
    std::string out;
    if (r.minSize > 0) out += "Sz > " + size(r.minSize) + ", ";
    if (r.maxSize > 0) out += "Sz < " + size(r.maxSize) + ", ";
    if (r.modifiedToday) {
        out += "M: Today";
    } else if (r.modified.on) {
        out += "M: " + rangeText(r.modified, date);
    } else if (r.created.on) {
        out += "C: " + rangeText(r.created, date);
    } else if (r.accessed.on) {
        out += "A: " + rangeText(r.accessed, date);
    } else if (out.size() >= 2) {
        out.resize(out.size() - 2);
    }
    return out;
}

std::string fileFindAsText(const FileFindRecord& r, std::string_view lookIn, std::string_view lineBreak,
                           const SizeFormat& size, const DateFormat& date) {
    std::vector<std::string> lines;
    if (r.pattern != "*") lines.push_back("Files Named: " + r.pattern);
    std::string ds = dateSizeAsText(r, size, date);
    if (!ds.empty()) lines.push_back("Date/Size Criteria: " + ds);
    std::string where;
    switch (r.mode) {
        case FindSearchMode::CurrentListAll: where = kLookInAllListed; break;
        case FindSearchMode::CurrentListNamed: where = kLookInNamedListed; break;
        case FindSearchMode::Directories:
            for (const auto& d : splitItems(lookIn)) {
                if (!where.empty()) where += ", ";
                where += d;
            }
            break;
    }
    lines.push_back("Look In: " + where);
    if (r.options.maxBytes > 0)
        lines.push_back("** NB Only First " + std::to_string(r.options.maxBytes) +
                        " bytes of each file will be checked. **");
    std::string out;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i) out += lineBreak;
        out += lines[i];
    }
    return out;
}

const Legend& findLegend() {
    static const Legend legend = [] {
        Legend l;
        l.heading = {"The search criteria used for find is shown in format >>(...) xxxx<<",
                     "where ... is the main text to find,",
                     "xxxx contains a list of options & complex criteria",
                     "Options & complex criteria is made up of the following parts:"};
        const std::string ignore = " (Ignore Leading Spaces)";
        l.rows = {
            {" MC", "Match Case"},
            {" WW", "Whole Words only"},
            {"or(...)", "Find >> ... << or Any other Value From this List"},
            {"-(...)", "ExclUde Values [u]"},
            {"-L(...)", "Exclude Lines Which Start [l]"},
            {"-LG(...)", "Exclude Lines Which Start [l]" + ignore},
            {"-S(...)", "Exclude When one of following on Same line as text to find [s]"},
            {"-Rnn(...)", "Exclude When any of following wiThin range (nn bytes) of text to find [t]"},
            {"+L(...)", "Only Find When Line Starts [l]"},
            {"+LG(...)", "Only Find When Line Starts [l]" + ignore},
            {"+S(...)", "Only Find When one of following on Same line as text to find [s]"},
            {"+Rnn(...)", "Only Find When one of following wiThin range (nn bytes) of text to find [t]"},
            {"Restrict Line(...)", "For same line condition search maximum number of bytes before and after found value"},
        };
        return l;
    }();
    return legend;
}

}  // namespace tav
