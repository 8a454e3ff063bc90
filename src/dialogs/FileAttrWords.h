#pragma once
// File attributes as words and letters for lists and prompts.
#include <string>

namespace tav {

enum FileAttr : unsigned {
    kAttrReadOnly = 1,
    kAttrHidden = 2,
    kAttrSystem = 4,
    kAttrArchive = 32,
};

// "Hidden", "System", "Read Only", those that are set, joined with ", ".
std::string AttrWords(unsigned attributes);

// "a", "h", "s", "r", those that are set, in that order.
std::string AttrLetters(unsigned attributes);

}  // namespace tav
