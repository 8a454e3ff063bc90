#include "find/FoundPopupRun.h"

#include "dialogs/MessageBuilder.h"
#include "find/ComplexCriteria.h"
#include "find/CriteriaText.h"
#include "find/FileSearch.h"
#include "find/FoundPopup.h"
#include "find/ListSearch.h"

namespace tav {

MessageRequest findLegendRequest() {
    const Legend& legend = findLegend();
    MessageRequest r;
    for (const std::string& line : legend.heading) r.message += (r.message.empty() ? "" : "\r") + line;
    MBAddCtl("Grid", std::to_string(legend.boxWidth) + "|" + std::to_string(legend.boxHeight), "", r, true);
    for (const auto& [left, right] : legend.rows) MBAddListItem(left + "\t" + right, -1, r);
    r.buttons = "0";
    return r;
}

FoundPopupRun::FoundPopupRun(const FindCriteria& criteria, std::string statement, MessageHost& host)
    : prepared_(prepareFindCriteria(criteria)), statement_(std::move(statement)), host_(host) {}

bool FoundPopupRun::atHit(const FoundItem& item, const FileVerdict& verdict) {
    if (stopped_) return false;
    if (listAll_) return true;
    SearchRange range;
    range.startByte = leadingNumber(verdict.found.byteNumber);
    range.beforeLength = range.afterLength = kPopupContextBytes;
    SearchOutcome o = findInFile(prepared_, item.path(), range);
    if (!o.found) return true;  // the file changed since the search
    FoundHit hit = o.hit;
    bool onlyOne = false;
    for (;;) {
        if (status) status(foundStatusText(item.name, {hit.value, hit.byteNumber}));
        FoundPopup popup = foundPopup(statement_, hit, onlyOne);
        switch (popup.choice(host_.show(popup.request))) {
            case FoundPopupChoice::NextFile:
                return true;
            case FoundPopupChoice::NextValue:
                range.startByte = hit.byteNumber + 1;
                o = findInFile(prepared_, item.path(), range);
                if (o.found)
                    hit = o.hit;
                else
                    onlyOne = true;
                break;
            case FoundPopupChoice::ListAll:
                listAll_ = true;
                return true;
            case FoundPopupChoice::EditCriteria:
                editCriteria_ = true;
                stopped_ = true;
                return false;
            case FoundPopupChoice::Legend: {
                MessageRequest legend = findLegendRequest();
                host_.show(legend);
                break;
            }
            case FoundPopupChoice::Stop:
                stopped_ = true;
                return false;
        }
    }
}

}  // namespace tav
