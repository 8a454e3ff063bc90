#pragma once
// The named file types offered when choosing what a window lists: a "|"
// list of "{types;name}" elements, where types is one pattern or several in
// "|" form:
//   {*;All files}|{*.htm|*.html;Web pages}
// Kept in section "File Types", entry "Select File Type/start value", and
// read and written whole.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"

namespace tav {

class IniStore;

inline constexpr std::string_view kFileTypesSection = "File Types";
inline constexpr std::string_view kFileTypesEntry = "Select File Type/start value";

struct NamedFileType {
    std::string types;  // "*.htm|*.html"
    std::string name;   // "Web pages"
    bool operator==(const NamedFileType&) const = default;
};

class FileTypeList {
public:
    FileTypeList() = default;
    explicit FileTypeList(std::vector<NamedFileType> items) : items_(std::move(items)) {}

    // The stored value; a leading "=" is allowed. Elements without types are dropped.
    static FileTypeList parse(std::string_view value);
    // The stored value: every element in "{ }".
    std::string text() const;

    const std::vector<NamedFileType>& items() const { return items_; }
    std::size_t size() const { return items_.size(); }
    bool empty() const { return items_.empty(); }
    const NamedFileType& operator[](std::size_t i) const { return items_[i]; }

    // The first element whose types equal `types`, case ignored; -1 if none.
    int find(std::string_view types) const;

    // Adds at the end; false (and no change) for an element without types.
    bool add(NamedFileType type);
    // Replaces element i; false for an index out of range or no types.
    bool replace(std::size_t i, NamedFileType type);
    bool remove(std::size_t i);
    // Moves element `from` to position `to`; false when either is out of range.
    bool move(std::size_t from, std::size_t to);
    // Puts the elements in the order of `order`, each an index into the list
    // as it stands; false (no change) unless it is a permutation.
    bool reorder(const std::vector<std::size_t>& order);

    // The line a list shows for element i: "name - types".
    std::string displayLine(std::size_t i) const;

    bool operator==(const FileTypeList&) const = default;

private:
    std::vector<NamedFileType> items_;
};

// Read from and written to the INI store (missing: an empty list).
FileTypeList readFileTypes(IniStore& ini);
void writeFileTypes(IniStore& ini, const FileTypeList& list);

// The prompt of a new or changed type: the name and the type specifications
// in two text boxes. `type` holds the values shown first and, on OK, what
// was entered (trimmed). False for Cancel or empty type specifications.
inline constexpr std::string_view kFileTypeNameLabel = "Name [n]:";
inline constexpr std::string_view kFileTypeSpecLabel = "File Type Specifications [p]:";
bool askFileType(MessageHost& host, NamedFileType& type, std::string_view title);

// The status line after the file types dialog's OK: " - done. New Type: *.htm,
// show Hidden files, hide System files."
std::string fileTypeStatus(std::string_view type, bool showHidden, bool showSystem);

inline constexpr std::string_view kNoFileTypeChosen = "First Select File Type.";

}  // namespace tav
