#include "dialogs/MessageBoxFormat.h"

#include "settings/IniStore.h"

namespace tav {

std::optional<MessageBoxFormat> readMessageBoxFormat(IniStore& ini) {
    MessageBoxFormat format;
    format.fontName = ini.mode(kMissingEmpty).get(kMessageBoxFormats, "MB all Fontname");
    if (format.fontName.empty()) return std::nullopt;
    const double size = ini.mode(kMissingEmpty).getNum(kMessageBoxFormats, "MB all Size");
    format.size = size > 0 ? size : 8;
    format.bold = ini.mode(kMissingEmpty).getBool(kMessageBoxFormats, "MB all Bold");
    format.italic = ini.mode(kMissingEmpty).getBool(kMessageBoxFormats, "MB all Italic");
    return format;
}

void writeMessageBoxFormat(IniStore& ini, const MessageBoxFormat& format) {
    ini.put(kMessageBoxFormats, "MB all Fontname", format.fontName);
    ini.putNumber(kMessageBoxFormats, "MB all Size", format.size);
    ini.put(kMessageBoxFormats, "MB all Bold", format.bold ? "-1" : "0");
    ini.put(kMessageBoxFormats, "MB all Italic", format.italic ? "-1" : "0");
}

}  // namespace tav
