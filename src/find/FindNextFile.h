#pragma once
// The driver of Find Files Containing Text as the window runs it: what `OT`
// (Find Next File) does with the window's criteria (`=a`) and file find
// record (`=b`), the values a directory search hands the list maker (`=c`,
// `=d`), and the test the list maker builds back from them.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "find/FindFileTest.h"

namespace tav {

enum class FindNextStep {
    OpenDialog,         // no earlier search, or no text for a current list: as `OX`
    ListDirectories,    // a new list, made by the list maker with the search
    SearchCurrentList,  // Find Next File over the rows of the list
};

struct FindNextPlan {
    FindNextStep step = FindNextStep::OpenDialog;
    // ListDirectories: the window values to set before the list is made.
    std::string listSearchValue;  // `=c`: maximum bytes, "|", the criteria record
    std::string listFileFind;     // `=d`: the file find record
    std::string windowRecord;     // `=b` afterwards: search mode 1, the rest as it was
};

// `OT`: with `=b` empty, or no text to find in `=a`, the dialog; otherwise
// the search in the mode of `=b`. Right after the dialog (`afterDialog`) a
// directory search needs no text: it may go by name, size and date alone.
FindNextPlan planFindNext(std::string_view criteriaRecord, std::string_view fileFindRecord, bool afterDialog = false);

// The test of a directory search from the window values `=c` and `=d`;
// null when `=c` is empty (a plain refresh).
std::unique_ptr<FindFileTest> fileTestFromWindow(std::string_view listSearchValue, std::string_view listFileFind,
                                                 int64_t today);

}  // namespace tav
