#pragma once
// The find criteria record: one string of eight fields joined by a backquote.
//   0 text to find, 1 exclude text, 2 match case, 3 whole word,
//   4 complex criteria string, 5 word character ranges, 6 find switches,
//   7 escape flag.
// A backquote inside fields 0..6 is stored as a substitute sequence; the
// substitute is written at the head of field 6, ahead of the switches (so
// that the switches survive), and field 7 is set.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

inline constexpr std::string_view kDefaultWordRanges = "[48-57]-[65-90]-[97-122]";

// Section names a criteria value belongs to.
inline constexpr std::string_view kSectionFileList = "fFDgrid";
inline constexpr std::string_view kSectionTopList = "fTopList";
inline constexpr std::string_view kSectionDirs = "fSelectDir";
inline constexpr std::string_view kSectionText = "fText";
inline constexpr std::string_view kSectionFindContaining = "Find Containing";

inline constexpr std::string_view kComplexPartsNote =
    "NB Only parts of Complex Criteria allowed for File List search will be used.";

struct FindCriteria {
    std::string text;        // as typed, never altered
    std::string exclude;     // the simple exclusion
    bool matchCase = false;
    bool wholeWord = false;
    std::string complex;     // complex criteria string, empty for none
    std::string wordRanges = std::string(kDefaultWordRanges);
    std::string switches;    // find switches list

    bool ignoreCase() const { return !matchCase; }
    bool operator==(const FindCriteria&) const = default;
};

// Reads a record. Missing fields read empty; an empty field 5 reads as the
// default ranges. In the sections without lines (file list, Top List, tree)
// the complex string keeps only its values to find and exclude values.
FindCriteria parseFindCriteria(std::string_view record, std::string_view section = {});
// The inverse.
std::string buildFindCriteria(const FindCriteria& c);

// True for the sections that use only part of complex criteria.
bool sectionHasNoLines(std::string_view section);
// The dialog's note when `complex` holds parts the section will not use;
// empty otherwise.
std::string complexPartsNote(std::string_view section, std::string_view complex);

// The value handed to the list maker for a file search: the maximum bytes
// to search in a file (below 1: the whole file), "|", the criteria record.
std::string buildListSearchValue(int64_t maxBytes, std::string_view record);
// The inverse; `maxBytes` below 1 reads as 0 (no limit).
void parseListSearchValue(std::string_view value, int64_t& maxBytes, std::string& record);

// Word character ranges "[a-b]-[c-d]...": whether byte code c lies in one.
struct WordRange {
    int low = 0, high = -1;
    bool operator==(const WordRange&) const = default;
};
std::vector<WordRange> parseWordRanges(std::string_view text);

}  // namespace tav
