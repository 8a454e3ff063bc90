#pragma once
// The list of hits rejected by complex criteria, shown on request. Each
// file gets a heading line "^^ File: <path> ^^" and its reject texts below.
// Not thread-safe: the search that owns it writes it, and a display reads
// it only after the search or through its own lock.
#include <string>
#include <string_view>
#include <vector>

namespace tav {

class RejectedList {
public:
    // Adds one reject text under `heading`. A new heading (or an empty
    // list) clears the list first unless every file is kept or the list is
    // showing; a blank line then separates it from what stays.
    void add(std::string_view heading, std::string_view rejectText, bool keepAll, bool showing = false);
    void clear();
    const std::vector<std::string>& lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
    std::string lastHeading_;
};

}  // namespace tav
