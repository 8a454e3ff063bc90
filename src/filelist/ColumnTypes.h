#pragma once
// The standard columns, known by their ColType number 0 to 26, and what the
// `Column Specs` section says of them: a display format and a data type per
// ColType. Numbers from 27 are user columns, valid within one run.
#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

inline constexpr int kStdColTypes = 27;
inline constexpr int kFirstUserColType = 27;

namespace col {
inline constexpr int FilePath = 0, FileName = 1, Type = 2, Size = 3, Number = 4, Icon = 5, Date = 6,
                     Time = 7, Attrib = 8, Images = 9, Title = 10, FoundValue = 11, FoundAt = 12,
                     FoundText = 13, FirstBytes = 15, LastBytes = 16, CreatedDate = 17, CreatedTime = 18,
                     ReadDate = 19, ReadTime = 20, FirstPlain = 21, LastPlain = 22, HtmlTags = 23,
                     MetaTags = 24, Www = 25, Mail = 26;
}

// The fixed caption of a standard ColType; empty for 5, 14 and any other.
std::string_view colTypeCaption(int colType);

// A ColType named by its number or by its caption (case ignored); -1 if
// neither. 14 is no column.
int colTypeFromName(std::string_view name);

// Entries of section `Column Specs`.
inline constexpr std::string_view kColumnSpecsSection = "Column Specs";
inline constexpr std::string_view kStdFormatsEntry = "Formats for stdcols by ColType";
inline constexpr std::string_view kStdDataTypesEntry = "Data Types for stdcols by ColType";

struct ColumnSpecs {
    std::array<std::string, kStdColTypes> formats;    // display format per ColType
    std::array<std::string, kStdColTypes> dataTypes;  // data type per ColType
};

// The two `|` lists, cut or padded to 27 elements.
ColumnSpecs parseColumnSpecs(std::string_view formats, std::string_view dataTypes);

// The set the system ships with: dates, times and sizes in the window's
// masks, with date, time and numeric keys for them and for No.
const ColumnSpecs& factoryColumnSpecs();

}  // namespace tav
