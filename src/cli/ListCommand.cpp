// tavelo list: makes a file list and prints it, a header line of the shown
// columns' captions and one tab-separated line a row.
#include <sys/stat.h>

#include <charconv>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/OptionWord.h"
#include "cli/EngineSession.h"
#include "core/ListText.h"
#include "core/Utf8.h"
#include "filelist/ColumnLayout.h"
#include "filelist/ColumnTypes.h"
#include "filelist/JobContext.h"
#include "filelist/ListJob.h"
#include "filelist/RowTable.h"

namespace tav::cli {

namespace {

const char* const kUsage =
    "usage: tavelo list [--data DIR] [options] ENTRY...\n"
    "  ENTRY               a directory, or a list entry such as 'DIR/*.txt' or 'DIR/ <*.htm+>'\n"
    "  --columns LIST      captions or column numbers separated by '|' (default: No.|FileName|Type|Size|Date|Time|FilePath)\n"
    "  --subdirs           list subdirectories too (entries without a <+/-> mark)\n"
    "  --dirs, --no-dirs   give directories rows, or not; --dirs-to-top puts them first\n"
    "  --hidden, --system  list hidden (names starting with '.') and system items too\n"
    "  --type PATTERN      file type of entries that give none (default '*')\n"
    "  --date-format M, --time-format M, --size-format M   display masks\n"
    "  --first-bytes N, --last-bytes N, --first-plain N, --last-plain N   lengths of those columns\n"
    "  --sort LIST         columns to sort by; --descending, --case (case-sensitive)\n"
    "  --renumber          number the rows again after the sort\n"
    "  --first-part N      read only the first N bytes of each file\n"
    "  --lower             names and paths in lower case\n"
    "  --threads N         read files for content columns on N threads (rows keep their order)\n"
    "  --limit N           stop after N rows\n"
    "  --errors            print the error list on standard error\n";

constexpr const char* kDefaultColumns = "4|1|2|3|6|7|0";

struct ListArgs {
    std::string columns = kDefaultColumns;
    std::string sort;
    bool subdirs = false;
    int dirs = -1;  // -1: the setting
    bool hidden = false, system = false;
    std::string type;
    WindowFormats formats;
    std::int64_t firstBytes = 200, lastBytes = 200, firstPlain = 200, lastPlain = 200;
    bool descending = false, caseSensitive = false, renumber = false, errors = false, dirsToTop = false;
    std::int64_t limit = 0;
    std::int64_t firstPart = 0;
    std::int64_t threads = 1;
    bool lower = false;
    std::vector<std::string> entries;
};

int usage(const CommandContext& ctx, const std::string& problem) {
    ctx.err << "tavelo list: " << problem << "\n" << kUsage;
    return 2;
}

bool parseCount(const std::string& text, std::int64_t& value) {
    const char* end = text.data() + text.size();
    auto [p, ec] = std::from_chars(text.data(), end, value);
    return ec == std::errc() && p == end && value >= 0;
}

std::string parseArgs(const std::vector<std::string>& args, ListArgs& a) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        OptionWord word = splitOptionWord(args[i]);
        std::string opt = std::move(word.name);
        std::string value = std::move(word.value);
        const bool hasValue = word.hasValue;
        auto take = [&](std::string& out) -> bool {
            if (!hasValue) {
                if (i + 1 >= args.size()) return false;
                value = args[++i];
            }
            out = value;
            return true;
        };
        auto takeCount = [&](std::int64_t& out) -> std::string {
            std::string text;
            if (!take(text)) return "option " + opt + " needs a number";
            if (!parseCount(text, out)) return "option " + opt + " needs a whole number, not '" + text + "'";
            return {};
        };
        std::string problem;
        if (opt == "--columns") {
            if (!take(a.columns)) return "option --columns needs a list";
        } else if (opt == "--sort") {
            if (!take(a.sort)) return "option --sort needs a list";
        } else if (opt == "--type") {
            if (!take(a.type)) return "option --type needs a pattern";
        } else if (opt == "--date-format") {
            if (!take(a.formats.date)) return "option --date-format needs a mask";
        } else if (opt == "--time-format") {
            if (!take(a.formats.time)) return "option --time-format needs a mask";
        } else if (opt == "--size-format") {
            if (!take(a.formats.size)) return "option --size-format needs a mask";
        } else if (opt == "--first-bytes") {
            problem = takeCount(a.firstBytes);
        } else if (opt == "--last-bytes") {
            problem = takeCount(a.lastBytes);
        } else if (opt == "--first-plain") {
            problem = takeCount(a.firstPlain);
        } else if (opt == "--last-plain") {
            problem = takeCount(a.lastPlain);
        } else if (opt == "--threads") {
            problem = takeCount(a.threads);
            if (problem.empty() && (a.threads < 1 || a.threads > 64)) problem = "option --threads takes 1 to 64";
        } else if (opt == "--first-part") {
            problem = takeCount(a.firstPart);
        } else if (opt == "--limit") {
            problem = takeCount(a.limit);
        } else if (hasValue) {
            return "option " + opt + " takes no value";
        } else if (opt == "--subdirs") {
            a.subdirs = true;
        } else if (opt == "--dirs") {
            a.dirs = 1;
        } else if (opt == "--no-dirs") {
            a.dirs = 0;
        } else if (opt == "--lower") {
            a.lower = true;
        } else if (opt == "--dirs-to-top") {
            a.dirsToTop = true;
        } else if (opt == "--hidden") {
            a.hidden = true;
        } else if (opt == "--system") {
            a.system = true;
        } else if (opt == "--descending") {
            a.descending = true;
        } else if (opt == "--case") {
            a.caseSensitive = true;
        } else if (opt == "--renumber") {
            a.renumber = true;
        } else if (opt == "--errors") {
            a.errors = true;
        } else if (opt.size() > 1 && opt[0] == '-') {
            return "unknown option " + args[i];
        } else {
            a.entries.push_back(opt);
        }
        if (!problem.empty()) return problem;
    }
    if (a.entries.empty()) return "no directory given";
    return {};
}

// A directory named without its final separator gets one, so that it is
// listed rather than taken as a file name.
std::string entryText(const std::string& entry) {
    if (entry.find(" <") != std::string::npos) return entry;
    std::error_code ec;
    if (!entry.empty() && entry.back() != '/' && std::filesystem::is_directory(entry, ec))
        return entry + static_cast<char>(std::filesystem::path::preferred_separator);
    return entry;
}

// Column names to ColTypes; user columns are looked up in `Column Specs`.
std::string readColumns(const std::string& list, EngineSession* session, std::vector<int>& out,
                        std::vector<UserColumn>& users) {
    for (const std::string& item : splitItems(list)) {
        if (item.empty()) continue;
        const int t = colTypeFromName(item);
        if (t >= 0) {
            out.push_back(t);
            continue;
        }
        std::string definition;
        if (session) definition = session->ini().get(kColumnSpecsSection, item);
        UserColumn u;
        if (definition.empty() || !parseUserColumn(definition, u))
            return "Invalid column specified. Will not be included in list >>" + item + "<< ";
        out.push_back(DefineUserColumn(users, std::move(u)));
    }
    return {};
}

// A cell as one field of a printed line: UTF-8 (names that are not are read
// as Windows-1252), with no tabs or line ends of its own.
std::string printable(const std::string& cell) {
    std::string text = toUtf8(cell);
    for (char& c : text)
        if (c == '\t' || c == '\n' || c == '\r') c = ' ';
    return text;
}

}  // namespace

int runList(const CommandContext& ctx) {
    ListArgs a;
    const std::string problem = parseArgs(ctx.args, a);
    if (!problem.empty()) return usage(ctx, problem);

    std::unique_ptr<EngineSession> session;
    ColumnSpecs specs = factoryColumnSpecs();
    if (!ctx.dataDir.empty()) {
        session = std::make_unique<EngineSession>(ctx.err);
        session->ini().missingDefault = kMissingEmpty;
        if (!session->open(ctx.dataDir)) return 2;
        const std::string formats = session->ini().get(kColumnSpecsSection, kStdFormatsEntry);
        const std::string types = session->ini().get(kColumnSpecsSection, kStdDataTypesEntry);
        if (!formats.empty() || !types.empty()) specs = parseColumnSpecs(formats, types);
    }

    ColumnRequest request;
    std::string bad = readColumns(a.columns, session.get(), request.colTypes, request.userColumns);
    if (!bad.empty()) return usage(ctx, bad);
    std::vector<int> sortTypes;
    std::vector<UserColumn> sortUsers = request.userColumns;
    bad = readColumns(a.sort, session.get(), sortTypes, sortUsers);
    if (!bad.empty()) return usage(ctx, bad);
    request.firstBytes = a.firstBytes;
    request.firstPlainBytes = a.firstPlain;

    ListJobSpec spec;
    spec.layout = SetUpListColumns(request, specs, a.formats);
    std::vector<std::string> entries;
    for (const std::string& e : a.entries) entries.push_back(entryText(e));
    spec.listSpec = joinList(entries);
    if (!a.type.empty()) spec.defaultType = a.type;
    spec.subdirsByDefault = a.subdirs;
    spec.includeSystemEntry = a.hidden;   // the entry that decides on hidden items
    spec.includeHiddenEntry = a.system;   // the entry that decides on system items
    spec.listDirs = a.dirs != 0;
    spec.content.options.BytF = a.firstBytes;
    spec.content.options.BytL = a.lastBytes;
    spec.content.options.PBytF = a.firstPlain;
    spec.content.options.PBytL = a.lastPlain;
    spec.content.options.Only1stPart = a.firstPart > 0;
    spec.content.options.Only1stByt = a.firstPart;
    spec.lowerCaseNames = a.lower;
    spec.contentThreads = static_cast<int>(a.threads);

    JobContext job;
    RowTable table;
    table.setRowLimit(static_cast<std::size_t>(a.limit));
    table.setDirsToTop(a.dirsToTop);
    FindAndListFiles(spec, job, table);

    if (!sortTypes.empty()) {
        SortOrder order;
        order.colTypes = sortTypes;
        order.ascending = !a.descending;
        order.caseSensitive = a.caseSensitive;
        SortRows(table, order);
    }
    if (a.renumber) Renumber(table);

    const std::vector<ListColumn>& columns = table.columns();
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (!columns[i].hidden && !columns[i].isKey) shown.push_back(i);
    std::string line;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (i) line += '\t';
        line += columns[shown[i]].caption;
    }
    ctx.out << line << '\n';
    for (const Row& r : table.rows()) {
        line.clear();
        for (std::size_t i = 0; i < shown.size(); ++i) {
            if (i) line += '\t';
            if (shown[i] < r.cells.size()) line += printable(r.cells[shown[i]]);
        }
        ctx.out << line << '\n';
    }
    if (a.errors)
        for (const FileErrorLine& e : table.errors()) ctx.err << e.text << '\n';
    if (!table.totals().message.empty()) ctx.err << "tavelo list:" << table.totals().message << '\n';
    return 0;
}

}  // namespace tav::cli
