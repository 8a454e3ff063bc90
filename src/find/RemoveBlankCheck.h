#pragma once
// The check of "remove blank" before a search: with the option `Show Raw
// remove blank` on, the text reader changes line breaks and blanks, so a
// value to find that holds a carriage return or line feed, or ends in
// spaces, would never be found. Such values are named in a prompt; OK goes
// on with the option switched off, Cancel stops the search. In a section
// search the line lists are named too.
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"
#include "find/FindCriteria.h"

namespace tav {

// The value with every character below 32 (and 127) written &#nn.
std::string withCharacterCodes(std::string_view value);

// The lines naming what cannot be searched with the option on: the text to
// find first, then each further value; in a section search then the first
// value of each line list in use (exclude line start, exclude same line,
// include line start, include same line).
std::vector<std::string> removeBlankProblems(const FindCriteria& criteria, bool sectionSearch);

struct RemoveBlankOutcome {
    bool goOn = true;        // false: Cancel, nothing happens
    bool switchOff = false;  // the caller writes `Show Raw remove blank` off
};

// Without the option, or with nothing to name, goes on with no prompt.
RemoveBlankOutcome checkRemoveBlank(const FindCriteria& criteria, bool removeBlankOn, bool sectionSearch,
                                    MessageHost& host);

}  // namespace tav
