#include "find/ListSearch.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>

#include "find/ComplexCriteria.h"
#include "filelist/ListSpec.h"
#include "find/CriteriaText.h"
#include "find/PreparedCriteria.h"
#include "find/SizeDateTest.h"

namespace tav {

namespace {

std::string fileNameOf(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// What the file system says of a listed file now; nothing when it is gone.
std::optional<FoundItem> statItem(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) return std::nullopt;
    FoundItem item;
    const size_t slash = path.find_last_of('/');
    item.directory = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    item.name = fileNameOf(path);
    item.isDirectory = S_ISDIR(st.st_mode);
    item.size = static_cast<int64_t>(st.st_size);
    item.modified = static_cast<int64_t>(st.st_mtime);
    item.accessed = static_cast<int64_t>(st.st_atime);
    item.created = static_cast<int64_t>(st.st_ctime);
#if defined(STATX_BTIME)
    struct statx sx {};
    if (::statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME, &sx) == 0 && (sx.stx_mask & STATX_BTIME) != 0)
        item.created = static_cast<int64_t>(sx.stx_btime.tv_sec);
#endif
    return item;
}

}  // namespace

std::string buildLastFound(const LastFound& found) {
    if (found.empty()) return {};
    return found.value + "|" + std::to_string(found.byteNumber);
}

LastFound parseLastFound(std::string_view text) {
    LastFound found;
    const size_t bar = text.rfind('|');
    if (bar == std::string_view::npos) return found;
    found.value = std::string(text.substr(0, bar));
    found.byteNumber = leadingNumber(text.substr(bar + 1));
    return found;
}

size_t firstRowToSearch(size_t currentRow, std::optional<size_t> lastShownRow) {
    return lastShownRow && *lastShownRow == currentRow ? currentRow + 1 : currentRow;
}

std::vector<ListSearchRow> rowsToSearch(const RowTable& table, const ListSearchRequest& request, size_t first) {
    std::vector<ListSearchRow> out;
    const bool named = request.record.mode == FindSearchMode::CurrentListNamed;
    const TypeFilter names(request.namePattern.empty() ? request.record.pattern : request.namePattern);
    const std::vector<Row>& rows = table.rows();
    for (size_t i = first; i < rows.size(); ++i) {
        const Row& r = rows[i];
        if (r.isDirectory || r.path.empty() || r.hidden) continue;
        if (request.rowHidden && request.rowHidden(i)) continue;
        if (named && !names.passes(fileNameOf(r.path))) continue;
        out.push_back({i, r.path});
    }
    return out;
}

ListSearchResult findNextListedFile(const RowTable& table, const ListSearchRequest& request) {
    ListSearchResult result;
    const PreparedCriteria prepared = prepareFindCriteria(request.criteria, request.record.options.keepAllRejected);
    if (prepared.mainValue.empty() && prepared.otherValues.empty()) {
        result.refused = true;
        return result;
    }
    const size_t first = firstRowToSearch(request.currentRow, request.lastShownRow);
    result.startedAtTop = first == 0;
    SizeDateTest sizeDate(request.record, request.today);
    const int64_t maxBytes = request.record.options.maxBytes > 0 ? roundMaxBytes(request.record.options.maxBytes) : 0;
    for (const ListSearchRow& row : rowsToSearch(table, request, first)) {
        if (request.stopRequested && request.stopRequested()) {
            result.stopped = true;
            return result;
        }
        if (sizeDate.active()) {
            const std::optional<FoundItem> item = statItem(row.path);
            if (!item || item->isDirectory || !sizeDate.passes(*item)) continue;
        }
        ++result.filesSearched;
        SearchRange range;
        if (maxBytes > 0) range.endByte = maxBytes + 1;
        range.beforeLength = range.afterLength = request.contextBytes;
        SearchHooks hooks;
        hooks.stopRequested = request.stopRequested;
        hooks.rejected = request.rejected;
        hooks.keepAllRejected = request.record.options.keepAllRejected;
        const SearchOutcome o = findInFile(prepared, row.path, range, hooks);
        if (o.interrupted) {
            result.stopped = true;
            return result;
        }
        if (!o.found) continue;
        result.found = true;
        result.row = row.row;
        result.path = row.path;
        result.hit = o.hit;
        result.lastFound = {o.hit.value, o.hit.byteNumber};
        return result;
    }
    return result;
}

std::string listSearchCaption(const FindCriteria& c, FindSearchMode mode) {
    const std::string_view where = mode == FindSearchMode::CurrentListNamed ? kLookInNamedListed : kLookInAllListed;
    return "Find File in " + std::string(where) + " Containing >>" +
           criteriaAsText(c.text, c.exclude, c.matchCase, c.wholeWord, c.complex, kSectionFindContaining) + "<<";
}

std::string foundStatusText(const std::string& fileName, const LastFound& found) {
    return "Found in File: " + fileName + " // " + found.value + " // Byte: " + std::to_string(found.byteNumber);
}

std::string stoppedStatusText(std::string_view fileSearchStatement) {
    return "Stopped. Find Files Containing Text. Search Criteria: " + std::string(fileSearchStatement) + " // " +
           "not found";
}

}  // namespace tav
