#pragma once
// Helpers shared by the code that keeps windows and saved sets in INI
// sections: names compared as the INI files compare them (case ignored),
// the stored `|` lists of section names, and a batch of writes.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/ListText.h"
#include "frame/WindowState.h"
#include "settings/IniStore.h"

namespace tav::sections {

// Section and entry names are the same whatever their case.
inline bool sameName(std::string_view a, std::string_view b) { return !CaseLess{}(a, b) && !CaseLess{}(b, a); }

inline bool startsFolded(std::string_view s, std::string_view prefix) {
    return s.size() >= prefix.size() && sameName(s.substr(0, prefix.size()), prefix);
}

// The window section's entries that name its three other sections.
inline bool isSectionNameEntry(std::string_view name) {
    return sameName(name, kLastColsEntry) || sameName(name, kLastSelectionsEntry) || sameName(name, kLastFormatsEntry);
}

// The elements of a stored list, without empty ones.
inline std::vector<std::string> listItems(const std::string& text) {
    std::vector<std::string> items;
    for (std::string& s : splitItems(text))
        if (!s.empty()) items.push_back(std::move(s));
    return items;
}

inline bool holds(const std::vector<std::string>& items, std::string_view name) {
    return std::any_of(items.begin(), items.end(), [&](const std::string& s) { return sameName(s, name); });
}

// Changes between construction and end reach each file in one replacement.
class BatchScope {
public:
    explicit BatchScope(IniStore& ini) : ini_(ini) { ini_.service().beginBatch(); }
    ~BatchScope() { ini_.service().endBatch(); }
    BatchScope(const BatchScope&) = delete;
    BatchScope& operator=(const BatchScope&) = delete;

private:
    IniStore& ini_;
};

}  // namespace tav::sections
