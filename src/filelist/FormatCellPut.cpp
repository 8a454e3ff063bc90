#include "filelist/FormatCellPut.h"

#include <array>
#include <functional>

#include "filelist/FormatColumnMask.h"
#include "filelist/FormatValueText.h"

namespace tav {

namespace {
// A list repeats its values (dates of one day, common sizes): the last
// results of each thread are remembered by value and mask.
struct Remembered {
    std::string mask, value, result;
    bool used = false;
};

std::string through(std::string_view value, std::string_view mask) {
    thread_local std::array<Remembered, 1024> memo;
    const size_t h = std::hash<std::string_view>{}(value) * 31 + std::hash<std::string_view>{}(mask);
    Remembered& slot = memo[h % memo.size()];
    if (slot.used && slot.value == value && slot.mask == mask) return slot.result;
    FormatResult r = formatValueText(value, mask);
    slot.value.assign(value);
    slot.mask.assign(mask);
    slot.result = r.ok() ? std::move(r.text) : std::string(value);
    slot.used = true;
    return slot.result;
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
