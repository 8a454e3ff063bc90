// tavelo find: Find Files Containing Text over directories, printed as the
// list it makes; the accepted hits of find criteria in one file; or the
// criteria as the program shows them.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/ListOptions.h"
#include "cli/OptionWord.h"
#include "filelist/ColumnTypes.h"
#include "filelist/JobContext.h"
#include "filelist/ListJob.h"
#include "filelist/RowTable.h"
#include "find/ComplexCriteria.h"
#include "find/CriteriaText.h"
#include "find/FileFindRecord.h"
#include "find/FileSearch.h"
#include "find/FindCriteria.h"
#include "find/FindFileTest.h"
#include "find/FindNowCheck.h"
#include "find/FindOptions.h"
#include "find/PreparedCriteria.h"
#include "find/RejectedList.h"
#include "find/SizeDateTest.h"

namespace tav::cli {

namespace {

const char* const kUsage =
    "usage: tavelo find [--data DIR] [criteria options] [file options] [list options] ENTRY...\n"
    "       tavelo find [criteria options] --in FILE [--from BYTE] [--backward] [--all] [--context N]\n"
    "                   [--max-bytes N] [--rejected]\n"
    "       tavelo find [criteria options] [file options] [--in FILE | ENTRY...] [--max-bytes N] --criteria\n";

const char* const kHelp =
    "With ENTRY... searches the directories of the entries and prints the files\n"
    "that pass the file options and hold an accepted hit as a list, the way\n"
    "tavelo list prints it, with the columns Found Value, Fnd At Byte No and\n"
    "Found Text added (the first hit of each file). Without a text to find the\n"
    "files are chosen by name, size and date alone.\n"
    "Exit status: 0 files listed, 1 none, 2 bad use.\n"
    "\n"
    "With --in FILE searches one file and prints each accepted hit as a line\n"
    "  BYTE<TAB>VALUE<TAB>END|START\n"
    "BYTE is the byte number of the hit's first byte (the file's first byte is 1),\n"
    "VALUE the bytes found as they stand in the file, END|START the last and the\n"
    "first byte of the found text around the hit: the value itself widened by\n"
    "--context bytes on either side, clipped to the file.\n"
    "Exit status: 0 hits printed, 1 no hit or the file cannot be read, 2 bad use.\n"
    "\n"
    "Criteria:\n"
    "  --text T                  the text to find\n"
    "  --or V                    a further value to find (repeatable)\n"
    "  --match-case              match the case of the values\n"
    "  --whole-word              only hits with no word character either side\n"
    "  --word-ranges R           word characters as byte code ranges, e.g. [48-57]-[65-90]-[97-122]\n"
    "  --exclude E               drop hits that are part of E (E must contain T)\n"
    "  --exclude-value V         likewise, one more exclusion (repeatable)\n"
    "  --exclude-line-start V    drop hits on lines starting with V (repeatable)\n"
    "  --exclude-same-line V     drop hits with V on the same line (repeatable)\n"
    "  --exclude-within N:V      drop hits with V within N bytes (repeatable, one N)\n"
    "  --line-start V            keep only hits on lines starting with one such V (repeatable)\n"
    "  --same-line V             keep only hits with one such V on the same line (repeatable)\n"
    "  --within N:V              keep only hits with one such V within N bytes (repeatable, one N)\n"
    "  --restrict-line N         farthest a line start or end may lie from a hit (0: 1000)\n"
    "  --ignore-leading-spaces   line starts are compared after the line's leading spaces\n"
    "With any of the options from --or on, --exclude counts as one more --exclude-value.\n"
    "\n"
    "Search:\n"
    "  --in FILE                 the one file to search\n"
    "  --from BYTE               forward: hits that start at BYTE or later (default 1);\n"
    "                            backward: hits that end before BYTE (default: the file's end)\n"
    "  --backward                search from the end toward the start\n"
    "  --all                     every accepted hit, in search order; otherwise the first\n"
    "  --context N               bytes of found text either side of the value (default 0)\n"
    "  --max-bytes N             search only the first N bytes, rounded up to whole 10,000\n"
    "  --rejected                write the hits rejected by the criteria to standard error\n"
    "  --criteria                print the criteria as shown and the file search statement\n"
    "\n"
    "File options (directory search):\n"
    "  --named PATTERN           only files whose name matches (* ? # [set]; case ignored)\n"
    "  --min-size N, --max-size N   sizes in bytes, both inclusive\n"
    "  --today                   only files modified today\n"
    "  --modified FROM..TO       modified between two days (dd/mm/yyyy or yyyy-mm-dd), either may be empty\n"
    "  --created FROM..TO, --accessed FROM..TO   likewise, created or last read\n"
    "  --subdirs                 search the subdirectories too\n"
    "\n"
    "List options:\n";

struct FindArgs {
    FindCriteria criteria;
    ComplexCriteria complex;
    std::optional<int64_t> excludeRange, includeRange;  // the one distance of each range list
    std::string file;
    int64_t from = 0;          // 0: the default of the direction
    bool backward = false;
    bool all = false;
    int64_t context = 0;
    int64_t maxBytes = 0;      // 0: no limit
    std::string maxBytesText;  // as typed
    bool rejected = false;
    bool showCriteria = false;
    bool help = false;
    bool textGiven = false;
    // The directory search.
    ListArgs list;
    std::string pattern = "*";
    std::string minSize, maxSize;  // as typed
    DateChoice dates = DateChoice::AllFiles;
    std::string dateFrom, dateTo;  // as typed
};

// "FROM..TO" of the date options; either end may be empty.
std::string parseDays(const std::string& option, const std::string& text, FindArgs& f, DateChoice choice) {
    if (f.dates != DateChoice::AllFiles)
        return "only one of --today, --modified, --created and --accessed may be given";
    const size_t dots = text.find("..");
    if (dots == std::string::npos) return "option " + option + " needs FROM..TO, not '" + text + "'";
    f.dates = choice;
    f.dateFrom = text.substr(0, dots);
    f.dateTo = text.substr(dots + 2);
    return {};
}

bool parseNumber(const std::string& text, int64_t& value, int64_t lowest) {
    const char* end = text.data() + text.size();
    auto [p, ec] = std::from_chars(text.data(), end, value);
    return ec == std::errc() && p == end && !text.empty() && value >= lowest;
}

// "N:V" of the range options: the distance and the value.
std::string parseRange(const std::string& option, const std::string& text, std::optional<int64_t>& distance,
                       std::vector<std::string>& values) {
    const size_t colon = text.find(':');
    int64_t n = 0;
    if (colon == std::string::npos || !parseNumber(text.substr(0, colon), n, 0))
        return "option " + option + " needs N:VALUE with a whole number N from 0, not '" + text + "'";
    if (colon + 1 == text.size()) return "option " + option + " needs a value after '" + text + "'";
    if (distance && *distance != n)
        return "option " + option + " takes one distance for all its values: " + std::to_string(*distance) +
               " and " + std::to_string(n);
    distance = n;
    values.push_back(text.substr(colon + 1));
    return {};
}

// The arguments, or an error text for stderr.
std::string parseArgs(const std::vector<std::string>& args, FindArgs& f) {
    static const char* const kFlags[] = {"--match-case", "--whole-word", "--ignore-leading-spaces", "--backward",
                                         "--all",        "--rejected",   "--criteria",              "--help",
                                         "--today"};
    for (size_t i = 0; i < args.size(); ++i) {
        OptionWord word = splitOptionWord(args[i]);
        std::string a = std::move(word.name);
        std::string value = std::move(word.value);
        const bool hasValue = word.hasValue;
        bool flag = false;
        for (const char* name : kFlags) flag = flag || a == name;
        if (flag) {
            if (hasValue) return "option " + a + " takes no value";
            if (a == "--match-case") f.criteria.matchCase = true;
            if (a == "--whole-word") f.criteria.wholeWord = true;
            if (a == "--ignore-leading-spaces")
                f.complex.excludeStartIgnoreSpaces = f.complex.includeStartIgnoreSpaces = true;
            if (a == "--backward") f.backward = true;
            if (a == "--all") f.all = true;
            if (a == "--rejected") f.rejected = true;
            if (a == "--criteria") f.showCriteria = true;
            if (a == "--help") f.help = true;
            if (a == "--today") {
                if (f.dates != DateChoice::AllFiles)
                    return "only one of --today, --modified, --created and --accessed may be given";
                f.dates = DateChoice::Today;
            }
            continue;
        }
        static const char* const kValued[] = {
            "--text",         "--exclude",          "--word-ranges",    "--or",           "--exclude-value",
            "--exclude-line-start", "--exclude-same-line", "--exclude-within", "--line-start", "--same-line",
            "--within",       "--restrict-line",    "--max-bytes",      "--in",           "--from",
            "--context",      "--named",            "--min-size",       "--max-size",     "--modified",
            "--created",      "--accessed"};
        bool known = false;
        for (const char* name : kValued) known = known || a == name;
        if (!known) {
            std::string problem;
            if (!takeListOption(args, i, f.list, problem)) return "unknown option " + args[i];
            if (!problem.empty()) return problem;
            continue;
        }
        if (!hasValue) {
            if (i + 1 >= args.size()) return "option " + a + " needs a value";
            value = args[++i];
        }
        int64_t n = 0;
        if (a == "--text") {
            f.criteria.text = value;
            f.textGiven = true;
        } else if (a == "--exclude") {
            f.criteria.exclude = value;
        } else if (a == "--word-ranges") {
            if (parseWordRanges(value).empty())
                return "option --word-ranges needs ranges like [48-57]-[65-90], not '" + value + "'";
            f.criteria.wordRanges = value;
        } else if (a == "--or") {
            f.complex.values.push_back(value);
        } else if (a == "--exclude-value") {
            f.complex.exclude.push_back(value);
        } else if (a == "--exclude-line-start") {
            f.complex.excludeLineStarts.push_back(value);
        } else if (a == "--exclude-same-line") {
            f.complex.excludeSameLine.push_back(value);
        } else if (a == "--line-start") {
            f.complex.includeLineStarts.push_back(value);
        } else if (a == "--same-line") {
            f.complex.includeSameLine.push_back(value);
        } else if (a == "--exclude-within") {
            if (std::string e = parseRange(a, value, f.excludeRange, f.complex.excludeRange); !e.empty()) return e;
        } else if (a == "--within") {
            if (std::string e = parseRange(a, value, f.includeRange, f.complex.includeRange); !e.empty()) return e;
        } else if (a == "--named") {
            if (value.empty()) return "option --named needs a pattern";
            f.pattern = value;
        } else if (a == "--min-size" || a == "--max-size") {
            if (!parseNumber(value, n, 0))
                return "option " + a + " needs a whole number from 0, not '" + value + "'";
            (a == "--min-size" ? f.minSize : f.maxSize) = value;
        } else if (a == "--modified" || a == "--created" || a == "--accessed") {
            const DateChoice choice = a == "--modified"  ? DateChoice::Modified
                                      : a == "--created" ? DateChoice::Created
                                                         : DateChoice::Accessed;
            if (std::string e = parseDays(a, value, f, choice); !e.empty()) return e;
        } else if (a == "--in") {
            if (value.empty()) return "option --in needs a file";
            f.file = value;
        } else if (a == "--from" || a == "--context" || a == "--restrict-line" || a == "--max-bytes") {
            const int64_t lowest = a == "--from" ? 1 : 0;
            if (!parseNumber(value, n, lowest))
                return "option " + a + " needs a whole number from " + std::to_string(lowest) + ", not '" + value +
                       "'";
            if (a == "--from") f.from = n;
            if (a == "--context") f.context = n;
            if (a == "--restrict-line") f.complex.restrictLine = n;
            if (a == "--max-bytes") {
                f.maxBytes = n;
                f.maxBytesText = value;
            }
        }
    }
    if (f.help) return {};
    for (const auto* list : {&f.complex.values, &f.complex.exclude, &f.complex.excludeLineStarts,
                             &f.complex.excludeSameLine, &f.complex.excludeRange, &f.complex.includeLineStarts,
                             &f.complex.includeSameLine, &f.complex.includeRange})
        for (const std::string& v : *list)
            if (v.empty()) return "a criteria value may not be empty";
    f.complex.excludeRangeBytes = f.excludeRange.value_or(0);
    f.complex.includeRangeBytes = f.includeRange.value_or(0);
    if (!f.complex.empty()) {
        // The complex criteria replace the simple exclusion: it becomes an exclude value.
        if (!f.criteria.exclude.empty()) f.complex.exclude.insert(f.complex.exclude.begin(), f.criteria.exclude);
        f.criteria.complex = buildComplexCriteria(f.complex);
    }
    return {};
}

// Messages of the checks become lines on stderr; questions are answered yes.
class StderrHost : public MessageHost {
public:
    explicit StderrHost(std::ostream& err) : err_(err) {}
    int show(MessageRequest& request) override {
        std::string text = request.message;
        for (char& c : text)
            if (c == '\r') c = '\n';
        err_ << "tavelo find: " << text << "\n";
        return 1;
    }

private:
    std::ostream& err_;
};

// The file find record of the arguments, after the checks.
FileFindRecord searchRecord(const FindArgs& f) {
    FileFindRecord r;
    r.options.maxBytes = f.maxBytes > 0 ? roundMaxBytes(f.maxBytes) : 0;
    r.options.includeSubdirs = f.list.subdirs;
    r.options.keepAllRejected = f.rejected;
    r.options.showFoundValue = r.options.showFoundAt = r.options.showFoundText = true;
    r.pattern = f.pattern;
    int64_t n = 0;
    if (parseNumber(f.minSize, n, 0)) r.minSize = std::min(n, kMaxSearchBytes);
    if (parseNumber(f.maxSize, n, 0)) r.maxSize = std::min(n, kMaxSearchBytes);
    DateRange range;
    range.on = true;
    range.from = plainDateParse(f.dateFrom);
    range.to = plainDateParse(f.dateTo);
    switch (f.dates) {
        case DateChoice::AllFiles: break;
        case DateChoice::Today: r.modifiedToday = true; break;
        case DateChoice::Modified: r.modified = range; break;
        case DateChoice::Created: r.created = range; break;
        case DateChoice::Accessed: r.accessed = range; break;
    }
    return r;
}

// Where the search looks, as the statement shows it.
std::string lookInText(const FindArgs& f) {
    if (!f.list.entries.empty()) {
        std::string out;
        for (const std::string& e : f.list.entries) out += (out.empty() ? "" : "|") + e;
        return out;
    }
    if (!f.file.empty()) return f.file;
    std::error_code ec;
    return std::filesystem::current_path(ec).string();
}

// The directory search: the list it makes, printed.
int searchDirectories(const CommandContext& ctx, const FindArgs& f) {
    const FileFindRecord record = searchRecord(f);
    FindFileTest test(f.criteria, record, todayDayNumber());
    const bool hasText = test.testsContent();
    ListRun run;
    const std::vector<int> found = foundColumnsFor(record.options);
    const std::string problem = prepareListRun(ctx, f.list, hasText, hasText ? found : std::vector<int>{}, run);
    if (run.sessionFailed) return 2;
    if (!problem.empty()) {
        ctx.err << "tavelo find: " << problem << "\n" << kUsage;
        return 2;
    }
    run.spec.fileTest = &test;
    JobContext job;
    RowTable table;
    setUpTable(f.list, table);
    FindAndListFiles(run.spec, job, table);
    printListTable(ctx, table, f.list, run.sortTypes, "find");
    if (f.rejected)
        for (const std::string& l : test.rejected().lines()) ctx.err << l << "\n";
    return table.rows().empty() ? 1 : 0;
}

int printCriteria(const CommandContext& ctx, const FindArgs& f) {
    const FindCriteria& c = f.criteria;
    const std::string lookIn = lookInText(f);
    ctx.out << criteriaAsText(c.text, c.exclude, c.matchCase, c.wholeWord, c.complex, kSectionFindContaining)
            << "\n"
            << fileFindAsText(searchRecord(f), lookIn, "\n") << "\n";
    return 0;
}

}  // namespace

int runFind(const CommandContext& ctx) {
    FindArgs f;
    if (const std::string error = parseArgs(ctx.args, f); !error.empty()) {
        ctx.err << "tavelo find: " << error << "\n" << kUsage;
        return 2;
    }
    if (f.help) {
        ctx.out << kUsage << "\n" << kHelp << kListOptionsUsage;
        return 0;
    }
    StderrHost host(ctx.err);
    FindNowEntries entries;
    entries.section = std::string(kSectionFindContaining);
    entries.text = f.criteria.text;
    entries.exclude = f.criteria.exclude;
    entries.matchCase = f.criteria.matchCase;
    entries.complexShown = false;
    entries.maxLength = f.maxBytesText;
    entries.includeSubdirs = true;
    entries.pattern = f.pattern;
    entries.minSizeOn = !f.minSize.empty();
    entries.minSize = f.minSize;
    entries.maxSizeOn = !f.maxSize.empty();
    entries.maxSize = f.maxSize;
    entries.dates = f.dates;
    entries.dateFrom = f.dateFrom;
    entries.dateTo = f.dateTo;
    if (!checkFindNow(entries, host).ok) {
        ctx.err << kUsage;
        return 2;
    }
    f.criteria.exclude = entries.exclude;  // dropped by the checks when there is no text
    if (f.showCriteria) return printCriteria(ctx, f);
    if (!f.file.empty() && !f.list.entries.empty()) {
        ctx.err << "tavelo find: give either --in FILE or directory entries, not both\n" << kUsage;
        return 2;
    }
    if (f.file.empty()) {
        if (f.list.entries.empty()) {
            ctx.err << "tavelo find: no directory given\n" << kUsage;
            return 2;
        }
        return searchDirectories(ctx, f);
    }

    std::error_code ec;
    if (std::filesystem::is_directory(f.file, ec)) {
        ctx.err << "tavelo find: " << f.file << " is a directory; give it as an entry, without --in\n";
        return 2;
    }
    FileBytes source(f.file);
    if (!source.open()) {
        ctx.err << "tavelo find: cannot read " << f.file << ": " << source.error() << "\n";
        return 1;
    }
    const PreparedCriteria prepared = prepareFindCriteria(f.criteria, f.rejected);
    const int64_t maxBytes = searchRecord(f).options.maxBytes;
    SearchRange range;
    range.forward = !f.backward;
    if (range.forward) {
        range.startByte = f.from > 0 ? f.from : 1;
        if (maxBytes > 0) range.endByte = maxBytes + 1;
    } else {
        range.endByte = f.from > 0 ? f.from : kNoEndByte;
        if (maxBytes > 0) range.endByte = std::min(range.endByte, maxBytes + 1);
    }
    range.beforeLength = range.afterLength = f.context;
    RejectedList rejected;
    SearchHooks hooks;
    if (f.rejected) {
        hooks.rejected = &rejected;
        hooks.heading = "File: " + f.file;
        hooks.keepAllRejected = true;
    }
    int64_t count = 0;
    std::string line;
    const SearchOutcome o = searchBytes(prepared, source, range, hooks, [&](const FoundHit& h) {
        line.clear();
        line += std::to_string(h.byteNumber);
        line += '\t';
        line += h.value;
        line += '\t';
        line += h.textRange();
        line += '\n';
        ctx.out << line;
        ++count;
        return f.all;
    });
    if (f.rejected)
        for (const std::string& l : rejected.lines()) ctx.err << l << "\n";
    if (!o.error.empty()) {
        ctx.err << "tavelo find: cannot read " << f.file << ": " << o.error << "\n";
        return 1;
    }
    return count > 0 ? 0 : 1;
}

}  // namespace tav::cli
