#include "filelist/FormatCellPut.h"

#include "filelist/FormatColumnMask.h"
#include "filelist/FormatValueText.h"

namespace tav {

namespace {
std::string through(std::string_view value, std::string_view mask) {
    FormatResult r = formatValueText(value, mask);
    return r.ok() ? std::move(r.text) : std::string(value);
}
}  // namespace

CellTexts formatCellTexts(std::string_view value, std::string_view displayMask, std::string_view keyMask,
                          bool keyMayGrow) {
    CellTexts cell;
    cell.keyMask = std::string(keyMask);
    if (!keyMask.empty()) {
        if (keyMayGrow && value.size() > keyMask.size()) {
            cell.keyMask = grownKeyMask(keyMask, value);
            cell.keyGrew = true;
        }
        cell.key = through(value, cell.keyMask);
    }
    cell.display = displayMask.empty() ? std::string(value) : through(value, displayMask);
    return cell;
}

std::string displayFromKey(std::string_view key, std::string_view displayMask) {
    return displayMask.empty() ? std::string(key) : through(key, displayMask);
}

}  // namespace tav
