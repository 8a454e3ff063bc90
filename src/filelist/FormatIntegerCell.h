#pragma once
// Cells of whole numbers: sizes, row numbers and their keys. The long way
// writes the number as text, reads it back and puts it through the mask;
// the plain masks of sizes and keys (`#,##0`, `#`, `0000000000000000`) are
// written straight from the value, with the same text.
#include <cstdint>
#include <string>
#include <string_view>

namespace tav {

// The plain masks: `#` and `0` placeholders with `,` between them for
// thousands, ending in a placeholder. True and the text in `out` for such a
// mask and a value of 0 or more; false otherwise, `out` left as it was.
bool plainIntegerMaskText(std::int64_t value, std::string_view mask, std::string& out);

// The cell of a value under a display or key mask: the same text as the
// value's digits put through the mask (`displayFromKey`).
std::string integerCell(std::int64_t value, std::string_view mask);

// A mask read once for all the cells of a column.
class IntegerCellMask {
public:
    IntegerCellMask() = default;
    explicit IntegerCellMask(std::string_view mask);
    // The same text as integerCell(value, mask).
    std::string cell(std::int64_t value) const;

private:
    std::string mask_;
    bool plain_ = false;
    bool grouping_ = false;
    std::size_t zeroRun_ = 0;
};

}  // namespace tav
