#include "dialogs/MessageText.h"

#include <cctype>

namespace tav {

namespace {

constexpr std::string_view kMarker = "#H160#";

}  // namespace

std::string resolveTitle(std::string_view title, std::string_view appMessageTitle,
                         std::string_view mainWindowCaption) {
    if (title.starts_with("-")) return std::string(appMessageTitle) + " " + std::string(title);
    if (!title.empty()) return std::string(title);
    if (!appMessageTitle.empty()) return std::string(appMessageTitle);
    return std::string(mainWindowCaption);
}

std::string captionText(std::string_view caption) {
    std::string out;
    for (size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && i + 1 < caption.size()) {
            out += caption[++i];  // "&&" gives one "&", "&x" gives "x"
            continue;
        }
        if (caption[i] != '&') out += caption[i];
    }
    return out;
}

char acceleratorOf(std::string_view caption) {
    for (size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        if (caption[i + 1] == '&') {
            ++i;
            continue;
        }
        unsigned char c = static_cast<unsigned char>(caption[i + 1]);
        if (c < 32 || c > 127) return 0;
        return static_cast<char>(std::tolower(c));
    }
    return 0;
}

std::string messagePlainText(std::string_view message) {
    std::string out;
    for (size_t i = 0; i < message.size(); ++i) {
        if (message.substr(i, kMarker.size()) == kMarker) {
            i += kMarker.size() - 1;
            continue;
        }
        char c = message[i];
        if (c == '\r') {
            out += '\n';
            if (i + 1 < message.size() && message[i + 1] == '\n') ++i;
            continue;
        }
        out += c;
    }
    return out;
}

std::string messageLabelText(std::string_view message) {
    std::string out;
    for (size_t i = 0; i < message.size(); ++i) {
        if (message.substr(i, kMarker.size()) == kMarker) {
            out += '&';
            i += kMarker.size() - 1;
            continue;
        }
        if (message[i] == '&') out += '&';
        out += message[i];
    }
    return out;
}

}  // namespace tav
