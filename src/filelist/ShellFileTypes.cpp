#include "filelist/ShellFileTypes.h"

#include <algorithm>
#include <set>

namespace tav {

namespace {

std::string folded(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

bool usable(const std::string& pattern) {
    return !pattern.empty() && pattern.find_first_of("|;{}") == std::string::npos;
}

bool lessFolded(const NamedFileType& a, const NamedFileType& b, bool byTypes) {
    const std::string x = folded(byTypes ? a.types : a.name), y = folded(byTypes ? b.types : b.name);
    return x != y ? x < y : (byTypes ? a.name < b.name : a.types < b.types);
}

}  // namespace

FileTypeList shellFileTypes(const std::vector<KnownFileType>& known, bool separate) {
    std::vector<NamedFileType> out;
    std::set<std::string> seen;
    for (const KnownFileType& k : known) {
        std::string joined;
        for (const std::string& p : k.patterns) {
            if (!usable(p)) continue;
            if (separate) {
                if (seen.insert(folded(p)).second) out.push_back({p, k.name});
                continue;
            }
            if (!joined.empty()) joined += '|';
            joined += p;
        }
        if (!separate && !joined.empty()) out.push_back({joined, k.name});
    }
    std::stable_sort(out.begin(), out.end(),
                     [separate](const NamedFileType& a, const NamedFileType& b) { return lessFolded(a, b, separate); });
    return FileTypeList(std::move(out));
}

std::string_view shellTypesButtonCaption(bool separate) {
    return separate ? "Combine File Ty&pes" : "Seperate File Ty&pes";
}

}  // namespace tav
