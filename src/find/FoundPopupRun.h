#pragma once
// The popups of a directory search with "Show Popup/Request Action - each
// file" on: at each file with a hit the popup shows the text around it,
// and the user's choice steers the run. "Select Nex&t Value (F2)" searches
// the same file on from the byte behind the hit; "&List All Files" lists
// every further hit without a pause; "&Edit Criteria" and "Sto&p" end the
// run (the list made so far stays); "Le&gend" shows the legend and comes
// back. Hook atHit() in as FindFileTest::onHit.
#include <functional>
#include <string>

#include "core/MessageRequest.h"
#include "filelist/FileTest.h"
#include "find/FindCriteria.h"
#include "find/PreparedCriteria.h"

namespace tav {

// Bytes of text shown either side of the hit in the popup.
inline constexpr int64_t kPopupContextBytes = 500;

// The legend of the criteria display form as a box: its heading lines
// above a grid of two columns, a row "left<TAB>right" each.
MessageRequest findLegendRequest();

class FoundPopupRun {
public:
    // `statement`: the file search statement the popup names.
    FoundPopupRun(const FindCriteria& criteria, std::string statement, MessageHost& host);

    // The status line at each hit shown: "Found in File: ...".
    std::function<void(const std::string& text)> status;

    // At a file with a hit; false ends the run.
    bool atHit(const FoundItem& item, const FileVerdict& verdict);

    bool stopped() const { return stopped_; }            // `FindStopped`
    bool editCriteria() const { return editCriteria_; }  // post `OX` after the run
    bool listingAll() const { return listAll_; }

private:
    PreparedCriteria prepared_;
    std::string statement_;
    MessageHost& host_;
    bool stopped_ = false;
    bool editCriteria_ = false;
    bool listAll_ = false;
};

}  // namespace tav
