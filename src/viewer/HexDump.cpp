#include "viewer/HexDump.h"

#include <algorithm>
#include <cstdio>

#include "core/Utf8.h"
#include "dialogs/SpecText.h"
#include "viewer/FileBlockReader.h"

namespace tav {

std::vector<std::string> hexDumpLines(std::string_view bytes, int64_t firstByte) {
    static const char* kDigits = "0123456789ABCDEF";
    std::vector<std::string> lines;
    lines.reserve(bytes.size() / kHexBytesPerLine + 1);
    for (size_t at = 0; at < bytes.size(); at += kHexBytesPerLine) {
        const std::string_view row = bytes.substr(at, kHexBytesPerLine);
        char number[32];
        std::snprintf(number, sizeof number, "%10lld: ", static_cast<long long>(firstByte) + static_cast<long long>(at));
        std::string line = number;
        std::string chars;
        for (int i = 0; i < kHexBytesPerLine; ++i) {
            if (i == 8) line += ' ';
            if (static_cast<size_t>(i) < row.size()) {
                const auto c = static_cast<unsigned char>(row[static_cast<size_t>(i)]);
                line += kDigits[c >> 4];
                line += kDigits[c & 15];
                line += ' ';
                chars += (c >= 32 && c <= 126) ? static_cast<char>(c) : '.';
            } else {
                line += "   ";
            }
        }
        line += ' ';
        line += chars;
        lines.push_back(std::move(line));
    }
    return lines;
}

MessageRequest hexDumpRequest(std::string_view bytes, int64_t firstByte, const std::string& name) {
    MessageRequest m;
    const int64_t last = firstByte + static_cast<int64_t>(bytes.size()) - 1;
    m.message = name + "\rBytes " + std::to_string(firstByte) + " to " + std::to_string(last);
    m.buttons = "0";
    m.options = "Esc=1|";
    m.title = "- Cell Contents|Hex Dump";
    std::string text;
    for (const std::string& line : hexDumpLines(bytes, firstByte)) {
        text += line;
        text += "\r\n";
    }
    // Index 0 is the key data; then the text as it reads, and its dump.
    m.ctlSpecs = {"", "TextBox|~~|" + MBSpec("10000|3000||||||||True"),
                  "TextBox|~~|" + MBSpec("10000|6000||||-FIXFONT-||||True")};
    m.values = {"", toUtf8(bytes), text};
    return m;
}

bool hexDumpOfFile(const std::string& path, int64_t firstByte, int64_t count, MessageRequest& request,
                   std::string& error) {
    if (count < 1 || count > kHexDumpLimit) count = kHexDumpLimit;
    FileRead r = readFileBytes(path, firstByte, count);
    if (!r.ok()) {
        error = r.error;
        return false;
    }
    request = hexDumpRequest(r.bytes, std::max<int64_t>(1, firstByte), path);
    return true;
}

}  // namespace tav
