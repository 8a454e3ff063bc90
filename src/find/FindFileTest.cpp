#include "find/FindFileTest.h"

#include "content/DisplayText.h"
#include "content/Tidy.h"
#include "filelist/ColumnTypes.h"
#include "find/FeedingFileBytes.h"
#include "find/FileSearch.h"

namespace tav {

std::vector<int> foundColumnsFor(const FindOptions& options) {
    std::vector<int> out;
    if (options.showFoundValue) out.push_back(col::FoundValue);
    if (options.showFoundAt) out.push_back(col::FoundAt);
    if (options.showFoundText) out.push_back(col::FoundText);
    return out;
}

namespace {

bool isContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

// The bytes of a UTF-8 character cut by the edge of a found text are left
// out, so that they do not show as stray characters.
void trimCutCharacters(std::string_view& text, int64_t& start, int64_t& end) {
    size_t lead = 0;
    while (lead < 3 && lead < text.size() && isContinuation(static_cast<unsigned char>(text[lead]))) ++lead;
    text.remove_prefix(lead);
    start += static_cast<int64_t>(lead);
    // The last lead byte and the continuation bytes behind it.
    size_t i = text.size(), tail = 0;
    while (i > 0 && tail < 3 && isContinuation(static_cast<unsigned char>(text[i - 1]))) {
        --i;
        ++tail;
    }
    if (i == 0) return;
    const auto c = static_cast<unsigned char>(text[i - 1]);
    const size_t need = c >= 0xF0 && c < 0xF8 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
    if (c >= 0xC0 && tail < need) {
        text.remove_suffix(tail + 1);
        end -= static_cast<int64_t>(tail + 1);
    }
}

}  // namespace

std::string foundTextCell(std::string_view text, int64_t start, int64_t end) {
    trimCutCharacters(text, start, end);
    return tidyCell(toDisplayText(text), kFoundTextLength) + std::string(kTidyLineEnd) + "[Bytes " + std::to_string(start) +
           " to " + std::to_string(end) + "]";
}

FindFileTest::FindFileTest(const FindCriteria& criteria, const FileFindRecord& record, int64_t today)
    : prepared_(prepareFindCriteria(criteria, record.options.keepAllRejected)),
      hasText_(!prepared_.mainValue.empty() || !prepared_.otherValues.empty()),
      maxBytes_(record.options.maxBytes > 0 ? roundMaxBytes(record.options.maxBytes) : 0),
      keepAllRejected_(record.options.keepAllRejected),
      sizeDate_(record, today) {}

bool FindFileTest::passesEntry(const FoundItem& item) {
    if (item.isDirectory) return false;
    return sizeDate_.passes(item);
}

FileVerdict FindFileTest::testContent(const std::string& path, std::int64_t size, const ContentFeed& feed,
                                      const std::function<bool()>& stop) const {
    (void)size;
    FileVerdict verdict;
    FeedingFileBytes file(path, feed);
    if (!file.open()) {
        verdict.keep = false;
        verdict.error = file.error();
        return verdict;
    }
    SearchRange range;
    if (maxBytes_ > 0) range.endByte = maxBytes_ + 1;
    range.beforeLength = range.afterLength = kFoundTextContext;
    RejectedList rejected;  // this file's; merged into the run's list by settle
    SearchHooks hooks;
    hooks.stopRequested = stop;
    hooks.rejected = &rejected;
    hooks.heading = "File: " + path;
    hooks.keepAllRejected = true;
    const SearchOutcome o = searchBytes(prepared_, file, range, hooks, [](const FoundHit&) { return false; });
    // The first line is the file's heading.
    for (size_t i = 1; i < rejected.lines().size(); ++i) verdict.notes.push_back(rejected.lines()[i]);
    if (o.interrupted) {
        verdict.stopped = true;
        return verdict;
    }
    if (!o.error.empty()) {
        verdict.keep = false;
        verdict.error = o.error;
        return verdict;
    }
    verdict.keep = o.found;
    if (o.found) {
        verdict.found.value = toDisplayText(o.hit.value);
        verdict.found.byteNumber = std::to_string(o.hit.byteNumber);
        verdict.found.text = foundTextCell(o.hit.text, o.hit.textStart, o.hit.textEnd);
    }
    if (!file.feedRest(stop)) {
        if (stop && stop()) {
            verdict.stopped = true;
        } else if (!file.error().empty()) {
            verdict.keep = false;
            verdict.error = file.error();
        }
    }
    return verdict;
}

bool FindFileTest::settle(const FoundItem& item, FileVerdict& verdict) {
    const std::string heading = "File: " + item.path();
    for (const std::string& text : verdict.notes) rejected_.add(heading, text, keepAllRejected_, rejectedShowing_);
    if (!verdict.keep || !verdict.error.empty()) return true;
    ++filesFound_;
    return onHit ? onHit(item, verdict) : true;
}

}  // namespace tav
