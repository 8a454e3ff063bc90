#pragma once
// The checks run when "Fi&nd Now" is pressed, in their fixed order. Every
// message goes through the message host; a refusal sends the user back to
// the dialog with the entries as they were, apart from the corrections the
// checks make themselves (an exclude text dropped with no text, a value
// reduced to the highest allowed, Include Subdirs switched on).
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/MessageRequest.h"
#include "find/CriteriaText.h"
#include "find/FileFindRecord.h"

namespace tav {

enum class DateChoice { AllFiles, Today, Modified, Created, Accessed };

// The dialog's entries as typed.
struct FindNowEntries {
    std::string section;      // fFDgrid, fText, Find Containing, ...
    std::string text;
    std::string exclude;
    bool matchCase = false;
    bool complexShown = false;   // the complex criteria block is showing
    // Find Containing only:
    std::string pattern = "*";
    FindSearchMode mode = FindSearchMode::Directories;
    bool minSizeOn = false, maxSizeOn = false;
    std::string minSize, maxSize;   // as typed
    DateChoice dates = DateChoice::AllFiles;
    std::string dateFrom, dateTo;   // as typed
    std::string maxLength;          // maximum bytes to search, as typed in the options
    bool includeSubdirs = false;
    char viewMode = ' ';            // the window's view mode letter
};

using DateParse = std::function<std::optional<int64_t>(std::string_view)>;

// Reads dd/mm/yyyy, d/m/yyyy or yyyy-mm-dd into a day number; nothing else.
std::optional<int64_t> plainDateParse(std::string_view text);

struct FindNowOutcome {
    bool ok = false;          // go on with the search
    std::string message;      // the refusal shown, when not ok
};

// Runs the checks. Questions (too large a size, Include Subdirs) are asked
// through `host`; refusals are shown through it too, with an OK button.
FindNowOutcome checkFindNow(FindNowEntries& e, MessageHost& host, const DateParse& parseDate = plainDateParse,
                            const DateFormat& shortDate = plainDateText);

// True when a name pattern is well formed: every "[" has its "]" and no
// range runs backwards. A pattern may use * ? # [list] [!list].
bool namePatternValid(std::string_view pattern);

}  // namespace tav
