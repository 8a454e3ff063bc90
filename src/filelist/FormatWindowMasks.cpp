#include "filelist/FormatWindowMasks.h"

namespace tav {

WindowFormats readWindowFormats(const std::function<std::string(std::string_view entry)>& get) {
    WindowFormats formats;
    auto take = [&get](std::string_view entry, std::string& mask) {
        std::string value = get(entry);
        if (!value.empty()) mask = std::move(value);
    };
    take(kDateFormatEntry, formats.date);
    take(kTimeFormatEntry, formats.time);
    take(kSizeFormatEntry, formats.size);
    return formats;
}

void writeWindowFormats(const WindowFormats& formats,
                        const std::function<void(std::string_view entry, const std::string& value)>& put) {
    put(kDateFormatEntry, formats.date);
    put(kTimeFormatEntry, formats.time);
    put(kSizeFormatEntry, formats.size);
}

}  // namespace tav
