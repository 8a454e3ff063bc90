#pragma once
// Texts removed from plain text: each entry has a start text and an end
// text, and what lies from a start text through its end text is left out.
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tav {

struct SkipEntry {
    std::string name;
    std::string startText;
    std::string endText;
};

class SkipList {
public:
    SkipList() = default;
    explicit SkipList(std::vector<SkipEntry> entries);

    bool empty() const { return entries_.empty(); }
    const std::vector<SkipEntry>& entries() const { return entries_; }

    // Streaming filter over the pieces of plain text of one file. `skipping`
    // carries the entry whose end text is awaited (-1: none) from piece to
    // piece. The kept text is appended to `out`.
    void filter(std::string_view piece, int& skipping, std::string& out) const;

private:
    std::vector<SkipEntry> entries_;
};

// The section `Skip Plain Text` as (entry, value) pairs: its entry
// `Plain Text Remove - Entry List` names the entries, each holding
// start text|end text. Entries that are missing or lack an end text are left
// out and named in `problems` when given.
SkipList loadSkipList(const std::vector<std::pair<std::string, std::string>>& section,
                      std::vector<std::string>* problems = nullptr);

}  // namespace tav
