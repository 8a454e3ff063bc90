#pragma once
// The checks that new window formats pass before they are taken, and the
// texts of the formats prompt. Lines of a message are joined with CR.
#include <cstdint>
#include <string>
#include <string_view>

#include "filelist/FormatWindowMasks.h"

namespace tav {

// The size that tests a size mask.
inline constexpr std::int64_t kSizeTestValue = 12341234123456;

// The formats prompt.
inline constexpr std::string_view kEnterFormatsMessage =
    "Enter new formats and press OK to reformat data.\rPress Cancel to keep existing formats.";
inline constexpr std::string_view kEnterFormatsTitle = "- [Enter Formats]";
inline constexpr std::string_view kDateFormatLabel = "Date Format [a]:";
inline constexpr std::string_view kTimeFormatLabel = "Time Format [t]:";
inline constexpr std::string_view kSizeFormatLabel = "FileSize Format [z]:";
inline constexpr std::string_view kReformatProgressText = "Update Grid with new formats";

// True if the totals can be read back from Size cells in this mask: the
// test size, put through the mask and then through `#`, reads back with the
// number reader as the same value. Any failure counts as not reversible.
bool SizeFormatIsReversible(std::string_view mask);

// Empty if the mask applies to its test value, else the message to show.
std::string dateFormatProblem(std::string_view mask);  // applied to 29 December 2000
std::string timeFormatProblem(std::string_view mask);  // applied to 23:44:01
std::string sizeFormatProblem(std::string_view mask);  // applied to the test size

// The Yes/No question for a size mask that passes but is not reversible:
// Yes keeps it (and the window shows no byte totals), No edits again.
std::string sizeNotReversiblePrompt(std::string_view mask);

struct FormatsVerdict {
    enum class Field { None, Date, Time, Size };
    Field failed = Field::None;      // the first mask that does not apply
    std::string message;             // its message
    bool sizeReversible = true;      // false: ask sizeNotReversiblePrompt
};

// The checks of the formats prompt, in order: date, time, size, then
// reversibility of the size mask.
FormatsVerdict checkEditedFormats(const WindowFormats& formats);

}  // namespace tav
