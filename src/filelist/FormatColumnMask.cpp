#include "filelist/FormatColumnMask.h"

#include "filelist/FormatDateMask.h"
#include "filelist/FormatNumberMask.h"
#include "filelist/FormatReadNumber.h"

namespace tav {

std::string keyMaskForDataType(std::string_view dataType) {
    if (dataType.empty()) return {};
    switch (dataType[0]) {
        case 'D': return std::string(kDateKeyMask);
        case 'T': return std::string(kTimeKeyMask);
        case 'N': {
            const double length = ReadNumber(dataType.substr(1));
            const int zeros = length >= 1 && length <= 255 ? static_cast<int>(length) : kDefaultNumberKeyLength;
            return std::string(zeros, '0');
        }
        default: return {};
    }
}

bool keyMaskMayGrow(std::string_view dataType) { return !dataType.empty() && dataType[0] == 'N'; }

std::string displayMaskFor(std::string_view formatValue, const WindowFormats& window) {
    if (formatValue == kWindowDateMask) return window.date;
    if (formatValue == kWindowTimeMask) return window.time;
    if (formatValue == kWindowSizeMask) return window.size;
    return std::string(formatValue);
}

std::string grownKeyMask(std::string_view mask, std::string_view value) {
    if (mask.empty() || value.size() <= mask.size()) return std::string(mask);
    return std::string(value.size() - mask.size(), mask.back()) + std::string(mask);
}

std::string dateKey(const CivilDateTime& value) { return formatDateTime(value, kDateKeyMask).text; }

std::string timeKey(const CivilDateTime& value) { return formatDateTime(value, kTimeKeyMask).text; }

std::string numberKey(std::int64_t value, std::string_view mask) { return formatNumber(value, mask).text; }

}  // namespace tav
