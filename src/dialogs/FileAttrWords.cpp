#include "dialogs/FileAttrWords.h"

namespace tav {

std::string AttrWords(unsigned attributes) {
    std::string out;
    auto add = [&out](const char* word) {
        if (!out.empty()) out += ", ";
        out += word;
    };
    if (attributes & kAttrHidden) add("Hidden");
    if (attributes & kAttrSystem) add("System");
    if (attributes & kAttrReadOnly) add("Read Only");
    return out;
}

std::string AttrLetters(unsigned attributes) {
    std::string out;
    if (attributes & kAttrArchive) out += 'a';
    if (attributes & kAttrHidden) out += 'h';
    if (attributes & kAttrSystem) out += 's';
    if (attributes & kAttrReadOnly) out += 'r';
    return out;
}

}  // namespace tav
