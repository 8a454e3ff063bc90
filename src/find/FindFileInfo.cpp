#include "find/FindFileInfo.h"

#include "dialogs/MessageBuilder.h"
#include "find/CriteriaText.h"

namespace tav {

namespace {

std::string displayForm(const FindCriteria& c) {
    return criteriaAsText(c.text, c.exclude, c.matchCase, c.wholeWord, c.complex, kSectionFindContaining);
}

}  // namespace

std::vector<std::string> searchDescriptionLines(const FindCriteria& criteria, const FileFindRecord& record,
                                                std::string_view lookIn) {
    std::vector<std::string> lines{"Search Criteria:", std::string(80, '=')};
    if (!criteria.text.empty()) lines.push_back("Find: >>" + displayForm(criteria) + "<<");
    const std::string statement = fileFindAsText(record, lookIn, "\n");
    for (size_t at = 0; at <= statement.size();) {
        size_t end = statement.find('\n', at);
        if (end == std::string::npos) end = statement.size();
        if (end > at) lines.push_back(statement.substr(at, end - at));
        at = end + 1;
    }
    for (const char* line : {"", "NB:", "Files will be listed here only when",
                             "a. satisfy Named (e.g. *.txt), Size and Date criteria",
                             "b. are rejected due to complex criteria.", "",
                             "Files processed before Show Detail was pressed are not listed."})
        lines.emplace_back(line);
    return lines;
}

FindFileInfo findFileInfo(const FindCriteria& criteria, const FileFindRecord& record, std::string_view lookIn,
                          const RejectedList& rejected) {
    FindFileInfo info;
    std::string message = "Find: >>" + displayForm(criteria) + "<<\r" + fileFindAsText(record, lookIn, "\r");
    std::string buttons;
    MBAddButton("&OK", buttons, true);
    MessageRequest& r = info.request;
    if (!rejected.lines().empty()) {
        message += "\rFound Values Rejected due to Complex Criteria:";
        info.showDetailButton = MBAddButton("S&how Detail", buttons, false);
        MBAddCtl("ListBox", "7000|3200", "", r, true);
        for (const std::string& line : rejected.lines()) MBAddListItem(line, -1, r);
        if (!record.options.keepAllRejected)
            MBAddCtl("Label", "", std::string("!!! List includes ONLY rejected items from Last file or files after \"") +
                                      "S&how Detail" + "\" pressed.\rCheck \"" +
                                      "&Save detail of all found values rejected" +
                                      "\" and find again to list all (See Options from Enter Find Criteria screen).",
                     r);
    }
    r.message = message;
    r.buttons = buttons;
    r.title = "- Criteria For Current List";
    return info;
}

FileFindRecord recordAfterDirectorySearch(FileFindRecord record) {
    record.mode = FindSearchMode::CurrentListAll;
    return record;
}

}  // namespace tav
