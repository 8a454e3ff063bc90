#include "frame/RefreshSpec.h"

#include <cstdlib>
#include <thread>

#include "core/ListText.h"
#include "filelist/ColumnTypes.h"
#include "filelist/FormatReadNumber.h"
#include "frame/WindowState.h"
#include "settings/IniStore.h"

namespace tav {

namespace {

// A count stored as text, read by the number reader; 0 when there is none.
std::int64_t countOf(const WindowState& w, std::string_view entry) {
    const std::string text = w.value(entry);
    if (text.empty()) return 0;
    const double v = ReadNumber(text);
    return v > 0 ? static_cast<std::int64_t>(v) : 0;
}

}  // namespace

std::string expandHome(const std::string& entry) {
    if (entry.size() < 2 || entry[0] != '~' || (entry[1] != '/' && entry[1] != '\\')) return entry;
    const char* home = std::getenv("HOME");
    if (!home || !*home) home = std::getenv("USERPROFILE");
    if (!home || !*home) return entry;
    std::string out = home;
    if (out.back() == '/' || out.back() == '\\') out.pop_back();
    return out + entry.substr(1);
}

std::vector<ColumnListItem> readColumnList(const std::string& lastColList, IniStore& ini,
                                           std::vector<UserColumn>& userColumns,
                                           std::vector<std::string>* problems) {
    std::vector<ColumnListItem> out;
    for (const std::string& raw : splitItems(lastColList)) {
        if (raw.empty()) continue;
        ColumnListItem item;
        if (raw.size() > kUserColPrefix.size() && raw.compare(0, kUserColPrefix.size(), kUserColPrefix) == 0) {
            item.userName = raw.substr(kUserColPrefix.size());
            const std::string definition = ini.mode(kMissingEmpty).get(kColumnSpecsSection, item.userName);
            UserColumn u;
            if (definition.empty() || !parseUserColumn(definition, u)) {
                if (problems)
                    problems->push_back("Invalid column specified. Will not be included in list >>" + raw + "<< ");
                continue;
            }
            if (u.caption.empty()) u.caption = item.userName;
            item.colType = DefineUserColumn(userColumns, std::move(u));
        } else {
            item.colType = colTypeFromName(raw);
            if (item.colType < 0 || item.colType >= kStdColTypes) {
                if (problems)
                    problems->push_back("Invalid column specified. Will not be included in list >>" + raw + "<< ");
                continue;
            }
        }
        out.push_back(std::move(item));
    }
    return out;
}

std::string columnListText(const std::vector<ColumnListItem>& items) {
    std::vector<std::string> parts;
    parts.reserve(items.size());
    for (const ColumnListItem& item : items)
        parts.push_back(item.userName.empty() ? std::to_string(item.colType)
                                              : std::string(kUserColPrefix) + item.userName);
    return joinList(parts);
}

RefreshSpec makeRefreshSpec(const WindowState& w, IniStore& ini, bool searchActive) {
    RefreshSpec out;
    ColumnSpecs specs = factoryColumnSpecs();
    const std::string formats = ini.mode(kMissingEmpty).get(kColumnSpecsSection, kStdFormatsEntry);
    const std::string types = ini.mode(kMissingEmpty).get(kColumnSpecsSection, kStdDataTypesEntry);
    if (!formats.empty() || !types.empty()) specs = parseColumnSpecs(formats, types);

    ColumnRequest request;
    out.columnList = readColumnList(w.value("Last Col List"), ini, request.userColumns, &out.problems);
    for (const ColumnListItem& item : out.columnList) request.colTypes.push_back(item.colType);
    request.searchActive = searchActive;
    request.startValue = w.value("Last Start Option");
    if (request.startValue.empty()) request.startValue = "*";
    request.firstBytes = countOf(w, "Bytes from start raw text");
    request.firstPlainBytes = countOf(w, "Bytes from start plain text");

    WindowFormats masks = readWindowFormats([&](std::string_view entry) { return w.value(entry); });
    ListJobSpec& job = out.job;
    job.layout = SetUpListColumns(request, specs, masks);

    std::vector<std::string> entries;
    std::string listSpec = w.value("Last Dir");
    for (const std::string& e : splitItems(listSpec))
        if (!e.empty()) entries.push_back(expandHome(e));
    job.listSpec = joinList(entries);
    job.defaultType = w.value("Last FileType");
    if (job.defaultType.empty()) job.defaultType = "*";
    job.subdirsByDefault = w.flag("Sub Dirs");
    job.includeSystemEntry = w.flag("Include system");
    job.includeHiddenEntry = w.flag("Include Hidden");
    job.listDirs = w.flag("List Dirs");
    job.lowerCaseNames = ini.mode(kMissingEmpty).getBool("Main", "Change FileList NAMES to LOWERCASE");
    out.dirsToTop = ini.mode(kMissingEmpty).getBool("Main", "DirsToTop");

    DissectOptions& o = job.content.options;
    o.BytF = countOf(w, "Bytes from start raw text");
    o.BytL = countOf(w, "Bytes from end raw text");
    o.PBytF = countOf(w, "Bytes from start plain text");
    o.PBytL = countOf(w, "Bytes from end plain text");
    o.Only1stPart = w.flag("First Part Only");
    o.Only1stByt = countOf(w, "First Part Bytes");
    o.IncEndTag = w.flag("Include html end tags");
    const std::string sep = w.value("List Seperator");
    if (!sep.empty()) o.LstSep = sep;
    // Every core reads: the job's own thread and one worker for each other core.
    const unsigned cores = std::thread::hardware_concurrency();
    job.contentThreads = cores < 2 ? 2 : cores > 8 ? 8 : static_cast<int>(cores);
    return out;
}

}  // namespace tav
