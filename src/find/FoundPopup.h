#pragma once
// The popup of a directory search at each file with a hit (with "Show
// Popup/Request Action - each file" on): where the value was found, the
// text around it with the value selected, and the choices that steer the
// rest of the run. F4 does what "Find &Next File (F4)" does and F2 what
// "Select Nex&t Value (F2)" does; the host maps the keys.
#include <string>
#include <string_view>

#include "core/MessageRequest.h"
#include "find/FileSearch.h"

namespace tav {

inline constexpr int kFoundPopupNextFileKey = 115;   // F4
inline constexpr int kFoundPopupNextValueKey = 113;  // F2

enum class FoundPopupChoice { NextFile, NextValue, ListAll, EditCriteria, Legend, Stop };

struct FoundPopup {
    MessageRequest request;
    int nextFile = 0, nextValue = 0, listAll = 0, editCriteria = 0, legend = 0, stop = 0;  // button numbers
    int textBox = 0;  // the Values index of the text around the hit
    // What a button (or -2, a key that hid the box: Stop) means.
    FoundPopupChoice choice(int button) const;
};

// The popup for `hit` (its found text and range as the search gave them).
// `onlyOneValue`: a further search from the hit found nothing, so there is
// no next value to select.
FoundPopup foundPopup(std::string_view fileSearchStatement, const FoundHit& hit, bool onlyOneValue);

}  // namespace tav
