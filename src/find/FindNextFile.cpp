#include "find/FindNextFile.h"

#include "find/FileFindRecord.h"
#include "find/FindCriteria.h"
#include "find/FindFileInfo.h"

namespace tav {

FindNextPlan planFindNext(std::string_view criteriaRecord, std::string_view fileFindRecord, bool afterDialog) {
    FindNextPlan plan;
    if (fileFindRecord.empty()) return plan;
    const FindCriteria criteria = parseFindCriteria(criteriaRecord, kSectionFindContaining);
    const FileFindRecord record = parseFileFindRecord(fileFindRecord);
    if (criteria.text.empty() && !afterDialog) return plan;
    if (record.mode == FindSearchMode::Directories) {
        if (criteria.text.empty() && !record.hasNamePattern() && !record.hasSizeCriteria() &&
            !record.hasDateCriteria())
            return plan;
        plan.step = FindNextStep::ListDirectories;
        plan.listSearchValue = buildListSearchValue(record.options.maxBytes, criteriaRecord);
        plan.listFileFind = std::string(fileFindRecord);
        plan.windowRecord = buildFileFindRecord(recordAfterDirectorySearch(record));
        return plan;
    }
    if (criteria.text.empty()) return plan;
    plan.step = FindNextStep::SearchCurrentList;
    return plan;
}

std::unique_ptr<FindFileTest> fileTestFromWindow(std::string_view listSearchValue, std::string_view listFileFind,
                                                 int64_t today) {
    if (listSearchValue.empty()) return nullptr;
    int64_t maxBytes = 0;
    std::string record;
    parseListSearchValue(listSearchValue, maxBytes, record);
    FileFindRecord fileFind = parseFileFindRecord(listFileFind);
    fileFind.options.maxBytes = maxBytes;
    return std::make_unique<FindFileTest>(parseFindCriteria(record, kSectionFindContaining), fileFind, today);
}

}  // namespace tav
