#include "cli/ListOptions.h"

#include <charconv>
#include <filesystem>
#include <ostream>

#include "cli/ListRowPrinter.h"
#include "cli/OptionWord.h"
#include "core/ListText.h"
#include "filelist/ColumnLayout.h"
#include "filelist/ColumnTypes.h"

namespace tav::cli {

const char* const kListOptionsUsage =
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
    "  --lowercase         names and paths in lower case (also --lower)\n"
    "  --threads N         read files on N threads (rows keep their order)\n"
    "  --limit N           stop after N rows\n"
    "  --errors            print the error list on standard error\n"
    "  --csv               CSV lines, every field in double quotes, instead of tab-separated lines\n"
    "  --separator S       separator of the list columns (tags, addresses; default ',')\n"
    "  --end-tags          count html end tags with the tags\n";

namespace {

bool parseCount(const std::string& text, std::int64_t& value) {
    const char* end = text.data() + text.size();
    auto [p, ec] = std::from_chars(text.data(), end, value);
    return ec == std::errc() && p == end && value >= 0;
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

}  // namespace

bool takeListOption(const std::vector<std::string>& args, std::size_t& i, ListArgs& a, std::string& problem) {
    OptionWord word = splitOptionWord(args[i]);
    const std::string opt = std::move(word.name);
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
    auto takeCount = [&](std::int64_t& out) {
        std::string text;
        if (!take(text))
            problem = "option " + opt + " needs a number";
        else if (!parseCount(text, out))
            problem = "option " + opt + " needs a whole number, not '" + text + "'";
    };
    static const char* const kFlags[] = {"--subdirs", "--dirs",       "--no-dirs", "--lower", "--lowercase", "--dirs-to-top",
                                         "--hidden",  "--system",     "--descending", "--case", "--renumber",
                                         "--errors", "--csv", "--end-tags"};
    bool flag = false;
    for (const char* name : kFlags) flag = flag || opt == name;
    if (flag && hasValue) {
        problem = "option " + opt + " takes no value";
        return true;
    }
    if (opt == "--columns") {
        if (!take(a.columns)) problem = "option --columns needs a list";
    } else if (opt == "--sort") {
        if (!take(a.sort)) problem = "option --sort needs a list";
    } else if (opt == "--type") {
        if (!take(a.type)) problem = "option --type needs a pattern";
    } else if (opt == "--date-format") {
        if (!take(a.formats.date)) problem = "option --date-format needs a mask";
    } else if (opt == "--time-format") {
        if (!take(a.formats.time)) problem = "option --time-format needs a mask";
    } else if (opt == "--size-format") {
        if (!take(a.formats.size)) problem = "option --size-format needs a mask";
    } else if (opt == "--first-bytes") {
        takeCount(a.firstBytes);
    } else if (opt == "--last-bytes") {
        takeCount(a.lastBytes);
    } else if (opt == "--first-plain") {
        takeCount(a.firstPlain);
    } else if (opt == "--last-plain") {
        takeCount(a.lastPlain);
    } else if (opt == "--threads") {
        takeCount(a.threads);
        if (problem.empty() && (a.threads < 1 || a.threads > 64)) problem = "option --threads takes 1 to 64";
    } else if (opt == "--first-part") {
        takeCount(a.firstPart);
    } else if (opt == "--limit") {
        takeCount(a.limit);
    } else if (opt == "--subdirs") {
        a.subdirs = true;
    } else if (opt == "--dirs") {
        a.dirs = 1;
    } else if (opt == "--no-dirs") {
        a.dirs = 0;
    } else if (opt == "--lower" || opt == "--lowercase") {
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
    } else if (opt == "--csv") {
        a.csv = true;
    } else if (opt == "--end-tags") {
        a.endTags = true;
    } else if (opt == "--separator") {
        if (!take(a.separator))
            problem = "option --separator needs a text";
        else if (a.separator.empty())
            problem = "option --separator needs a text, not an empty one";
    } else if (opt.size() > 1 && opt[0] == '-') {
        return false;
    } else {
        a.entries.push_back(args[i]);
    }
    return true;
}

std::string entryText(const std::string& entry) {
    if (entry.find(" <") != std::string::npos) return entry;
    std::error_code ec;
    if (!entry.empty() && entry.back() != '/' && std::filesystem::is_directory(entry, ec))
        return entry + static_cast<char>(std::filesystem::path::preferred_separator);
    return entry;
}

std::string prepareListRun(const CommandContext& ctx, const ListArgs& a, bool searchActive,
                           const std::vector<int>& extraColTypes, ListRun& run) {
    ColumnSpecs specs = factoryColumnSpecs();
    if (!ctx.dataDir.empty()) {
        run.session = std::make_unique<EngineSession>(ctx.err);
        run.session->ini().missingDefault = kMissingEmpty;
        if (!run.session->open(ctx.dataDir)) {
            run.sessionFailed = true;
            return {};
        }
        const std::string formats = run.session->ini().get(kColumnSpecsSection, kStdFormatsEntry);
        const std::string types = run.session->ini().get(kColumnSpecsSection, kStdDataTypesEntry);
        if (!formats.empty() || !types.empty()) specs = parseColumnSpecs(formats, types);
    }

    ColumnRequest request;
    request.searchActive = searchActive;
    std::string bad = readColumns(a.columns, run.session.get(), request.colTypes, request.userColumns);
    if (!bad.empty()) return bad;
    for (int t : extraColTypes) {
        bool present = false;
        for (int c : request.colTypes) present = present || c == t;
        if (!present) request.colTypes.push_back(t);
    }
    std::vector<UserColumn> sortUsers = request.userColumns;
    bad = readColumns(a.sort, run.session.get(), run.sortTypes, sortUsers);
    if (!bad.empty()) return bad;
    request.firstBytes = a.firstBytes;
    request.firstPlainBytes = a.firstPlain;

    ListJobSpec& spec = run.spec;
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
    if (!a.separator.empty()) spec.content.options.LstSep = a.separator;
    spec.content.options.IncEndTag = a.endTags;
    spec.lowerCaseNames = a.lower;
    spec.contentThreads = static_cast<int>(a.threads);
    return {};
}

void setUpTable(const ListArgs& a, RowTable& table) {
    table.setRowLimit(static_cast<std::size_t>(a.limit));
    table.setDirsToTop(a.dirsToTop);
}

void printListTable(const CommandContext& ctx, RowTable& table, const ListArgs& a, const std::vector<int>& sortTypes,
                    const std::string& command) {
    if (!sortTypes.empty()) {
        SortOrder order;
        order.colTypes = sortTypes;
        order.ascending = !a.descending;
        order.caseSensitive = a.caseSensitive;
        SortRows(table, order);
    }
    if (a.renumber) Renumber(table);
    {
        ListRowPrinter printer(ctx.out, a.csv ? ListStyle::Csv : ListStyle::Tabs);
        printer.begin(table.columns());
        for (const Row& r : table.rows()) printer.row(r);
    }
    printListEnd(ctx, table.errors(), table.totals(), a, command);
}

bool listCanStream(const ListArgs& a, const std::vector<int>& sortTypes) {
    return sortTypes.empty() && !a.renumber && !a.dirsToTop;
}

void printListEnd(const CommandContext& ctx, const std::vector<FileErrorLine>& errors, const ListTotals& totals,
                  const ListArgs& a, const std::string& command) {
    ctx.out.flush();
    if (a.errors)
        for (const FileErrorLine& e : errors) ctx.err << e.text << '\n';
    if (!totals.message.empty()) ctx.err << "tavelo " << command << ":" << totals.message << '\n';
}

}  // namespace tav::cli
