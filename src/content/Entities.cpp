#include "content/Entities.h"

#include <array>
#include <cstring>

#include "content/DisplayText.h"

namespace tav {

namespace {

// Stands for '&' while references are decoded, so that a decoded "&amp;"
// does not start another reference. Every such character ends up as '&',
// a real one in the text too.
constexpr char32_t kAmpHolder = 161;

struct NamedRef {
    const char* name;
    char32_t code;
};

// Looked up after lower-casing the name.
constexpr std::array<NamedRef, 14> kLowerNames = {{{"nbsp", 32},
                                                   {"quot", 34},
                                                   {"amp", kAmpHolder},
                                                   {"copy", 169},
                                                   {"reg", 174},
                                                   {"lt", '<'},
                                                   {"gt", '>'},
                                                   {"pound", 163},
                                                   {"frac14", 188},
                                                   {"frac12", 189},
                                                   {"frac34", 190},
                                                   {"acute", 97},
                                                   {"eth", 208},
                                                   {"", kAmpHolder}}};

// Looked up exactly as written.
constexpr std::array<NamedRef, 46> kExactNames = {{
    {"auml", 228},   {"euml", 235},   {"iuml", 239},   {"ouml", 246},   {"uuml", 252},
    {"Auml", 196},   {"Euml", 203},   {"Iuml", 207},   {"Ouml", 214},   {"Uuml", 220},
    {"Agrave", 192}, {"Aacute", 193}, {"Acirc", 194},  {"Atilde", 195}, {"Egrave", 200},
    {"Eacute", 201}, {"Ecirc", 202},  {"Igrave", 204}, {"Iacute", 205}, {"Icirc", 206},
    {"Ograve", 210}, {"Oacute", 211}, {"Ocirc", 212},  {"Otilde", 213}, {"Ugrave", 217},
    {"Uacute", 218}, {"Ucirc", 219},  {"agrave", 224}, {"aacute", 225}, {"acirc", 226},
    {"atilde", 227}, {"egrave", 232}, {"eacute", 233}, {"ecirc", 234},  {"igrave", 236},
    {"iacute", 237}, {"icirc", 238},  {"ograve", 242}, {"oacute", 243}, {"ocirc", 244},
    {"otilde", 245}, {"ugrave", 249}, {"uacute", 250}, {"ucirc", 251},  {"ntilde", 241},
    {"Ntilde", 209},
}};

// The leading number of text: blanks, an optional sign, digits. Returns the
// characters it took (0 when there are no digits) and its value.
std::size_t readLeadingNumber(std::string_view s, long long& value) {
    std::size_t i = 0;
    while (i < s.size() && s[i] == ' ') ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) negative = s[i++] == '-';
    const std::size_t digitsFrom = i;
    long long v = 0;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') {
        if (v < 100000000000LL) v = v * 10 + (s[i] - '0');
        ++i;
    }
    if (i == digitsFrom) {
        value = 0;
        return 0;
    }
    value = negative ? -v : v;
    return i;
}

bool lookUp(std::string_view name, char32_t& code) {
    std::string lower(name);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    for (const NamedRef& r : kLowerNames)
        if (lower == r.name) {
            code = r.code;
            return true;
        }
    for (const NamedRef& r : kExactNames)
        if (name == r.name) {
            code = r.code;
            return true;
        }
    return false;
}

// Step 1: numeric references.
std::string decodeNumeric(std::string_view text, std::vector<std::string>* problems) {
    std::string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    while (true) {
        const std::size_t at = text.find("&#", pos);
        if (at == std::string_view::npos || at + 2 >= text.size()) break;
        long long value = 0;
        const std::string_view behind = text.substr(at + 2);
        const std::size_t numberLength = readLeadingNumber(behind, value);
        if (value < 0 || value > 255) {
            if (problems) {
                problems->push_back("&# followed by >>" + std::string(behind.substr(0, 20)) +
                                    "<< found. This is invalid. Should be follwed by numeric value 0-255");
            }
            value = 32;
        }
        out.append(text.substr(pos, at - pos));
        appendUtf8(out, static_cast<char32_t>(value));
        // The reference ends one character behind the number: its ';'.
        pos = at + 2 + numberLength + 1;
        if (pos > text.size()) pos = text.size();
    }
    out.append(text.substr(pos));
    return out;
}

// Step 2: named references.
std::string decodeNamed(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t pos = 0;    // first character not yet copied
    std::size_t from = 0;   // where the next search starts
    while (true) {
        const std::size_t amp = text.find('&', from);
        if (amp == std::string_view::npos) break;
        const std::size_t semi = text.find(';', amp + 1);
        if (semi == std::string_view::npos) break;
        const std::string_view name = text.substr(amp + 1, semi - amp - 1);
        if (name.size() > 10 || name.find('&') != std::string_view::npos) {
            from = amp + 1;
            continue;
        }
        out.append(text.substr(pos, amp - pos));
        char32_t code = 0;
        if (lookUp(name, code)) {
            appendUtf8(out, code);
        } else {
            out.append("???").append(name).append("???");
        }
        pos = from = semi + 1;
    }
    out.append(text.substr(pos));
    return out;
}

}  // namespace

std::string DecodeEntities(std::string_view text, std::vector<std::string>* problems) {
    if (text.find('&') == std::string_view::npos && text.find("\xC2\xA1") == std::string_view::npos)
        return std::string(text);
    std::string s = decodeNamed(decodeNumeric(text, problems));
    // Step 3: every character 161 becomes '&'.
    std::string out;
    out.reserve(s.size());
    std::size_t pos = 0;
    while (true) {
        const std::size_t at = s.find("\xC2\xA1", pos);
        if (at == std::string::npos) break;
        out.append(s, pos, at - pos);
        out.push_back('&');
        pos = at + 2;
    }
    out.append(s, pos, std::string::npos);
    return out;
}

std::string EscapeCell(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t start = i;
        const char32_t c = nextCodePoint(text, i);
        if ((c >= 32 && c <= 126) || c >= 160) {
            out.append(text.substr(start, i - start));
        } else {
            out.append("&#").append(std::to_string(static_cast<unsigned long>(c)));
        }
    }
    return out;
}

}  // namespace tav
