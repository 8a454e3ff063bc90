#pragma once
// What a window says about a Find Files Containing Text search: the
// description of a directory search in the rejected list panel while it
// runs, the box of "Show Find File Info For Current List" (`OC`), and the
// file find record a directory search leaves on its window.
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"
#include "find/FileFindRecord.h"
#include "find/FindCriteria.h"
#include "find/RejectedList.h"

namespace tav {

// The lines the rejected list panel starts with when a directory search
// begins: the criteria, the statement of the search, and what will be
// listed there.
std::vector<std::string> searchDescriptionLines(const FindCriteria& criteria, const FileFindRecord& record,
                                                std::string_view lookIn);

struct FindFileInfo {
    MessageRequest request;
    int showDetailButton = 0;  // the number of "S&how Detail", 0 when there is no rejected list
};

// `OC`: the criteria of the current list and, when there are any, the
// values rejected by complex criteria.
FindFileInfo findFileInfo(const FindCriteria& criteria, const FileFindRecord& record, std::string_view lookIn,
                          const RejectedList& rejected);

// After a directory search the window's record names the list just made,
// so that the next search continues in it.
FileFindRecord recordAfterDirectorySearch(FileFindRecord record);

}  // namespace tav
