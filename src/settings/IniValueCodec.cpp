#include "settings/IniValueCodec.h"

namespace tav {

namespace {
const std::string kNbsp2 = "\xC2\xA0\xC2\xA0";

bool startsWith(std::string_view s, std::string_view p) { return s.substr(0, p.size()) == p; }
bool endsWith(std::string_view s, std::string_view p) {
    return s.size() >= p.size() && s.substr(s.size() - p.size()) == p;
}
}  // namespace

const std::string kMarkerCrlf = kNbsp2 + "CRLF.";
const std::string kMarkerQuote = kNbsp2 + "quote.";
const std::string kMarkerBlank = kNbsp2 + "<< less two.";

const char* const kWarnCrlf =
    "Warning. Data contains two consecutive characters with ansi code 160,160 followed by";
const char* const kWarnQuote =
    "Warning. Data starts or ends with two consecutive characters with ansi code 160,160 followed by";
const char* const kWarnBlank =
    "Warning. Data ends with two consecutive characters with ansi code 160,160 followed by";
const char* const kWarnControls =
    "Warning. Value to be written to ini file contains special character(s) that cannot be written to an "
    "ini file using Windows functions (with hex code 00 to 0D). These characters will be replaced with spaces.";

std::string decodeIniValue(std::string_view stored) {
    std::string v(stored);
    if (v.find(kNbsp2) == std::string::npos) return v;
    for (size_t pos = v.find(kMarkerCrlf); pos != std::string::npos; pos = v.find(kMarkerCrlf, pos + 2))
        v.replace(pos, kMarkerCrlf.size(), "\r\n");
    if (startsWith(v, kMarkerQuote)) v.replace(0, kMarkerQuote.size(), "\"");
    if (endsWith(v, kMarkerQuote)) v.replace(v.size() - kMarkerQuote.size(), kMarkerQuote.size(), "\"");
    if (endsWith(v, kMarkerBlank)) v.erase(v.size() - kMarkerBlank.size());
    return v;
}

std::string encodeIniValue(std::string_view value) {
    std::string v;
    v.reserve(value.size() + 16);
    for (size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\r' && i + 1 < value.size() && value[i + 1] == '\n') {
            v += kMarkerCrlf;
            ++i;
        } else {
            v += value[i];
        }
    }
    if (!v.empty() && v.front() == '"') v.replace(0, 1, kMarkerQuote);
    if (!v.empty() && v.back() == '"') v.replace(v.size() - 1, 1, kMarkerQuote);
    if (!v.empty() && v.back() == ' ') v += kMarkerBlank;
    return v;
}

bool blankOutControls(std::string& value) {
    bool any = false;
    for (char& c : value) {
        if (static_cast<unsigned char>(c) <= 13) {
            c = ' ';
            any = true;
        }
    }
    return any;
}

MarkerWarnings markerWarnings(std::string_view value) {
    MarkerWarnings w;
    if (value.find(kNbsp2) == std::string_view::npos) return w;
    w.crlf = value.find(kMarkerCrlf) != std::string_view::npos;
    w.quote = startsWith(value, kMarkerQuote) || endsWith(value, kMarkerQuote);
    w.blank = endsWith(value, kMarkerBlank);
    return w;
}

}  // namespace tav
