#pragma once
// The file find record: a "|" list, numbered from 1, of what a Find Files
// Containing Text search looks for beside the text: where to look, sizes,
// dates and the file name pattern (field 15 and all behind it, so that a
// pattern may hold "|").
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "find/FindOptions.h"

namespace tav {

enum class FindSearchMode { Directories = 0, CurrentListAll = 1, CurrentListNamed = 2 };

struct DateRange {
    bool on = false;
    std::optional<int64_t> from, to;  // whole day numbers, empty when open
    bool operator==(const DateRange&) const = default;
};

struct FileFindRecord {
    FindSearchMode mode = FindSearchMode::Directories;  // 1
    FindOptions options;                                // 2 ("|" written "_")
    int64_t minSize = 0;                                // 3, 0 for none
    int64_t maxSize = 0;                                // 4, 0 for none
    bool modifiedToday = false;                         // 5
    DateRange modified;                                 // 6, 7, 8
    DateRange created;                                  // 9, 10, 11
    DateRange accessed;                                 // 12, 13, 14
    std::string pattern = "*";                          // 15 onward

    // "*", "*.*" and an empty pattern all mean: any name.
    bool hasNamePattern() const;
    bool hasDateCriteria() const { return modifiedToday || modified.on || created.on || accessed.on; }
    bool hasSizeCriteria() const { return minSize > 0 || maxSize > 0; }
    bool operator==(const FileFindRecord&) const = default;
};

FileFindRecord parseFileFindRecord(std::string_view text);
std::string buildFileFindRecord(const FileFindRecord& r);

}  // namespace tav
