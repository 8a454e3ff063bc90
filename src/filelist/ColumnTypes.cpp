#include "filelist/ColumnTypes.h"

#include <charconv>

#include "core/ListText.h"

namespace tav {

namespace {

constexpr std::array<std::string_view, kStdColTypes> kCaptions = {
    "FilePath",      "FileName",       "Type",
    "Size",          "No.",            "",
    "Date",          "Time",           "Attrib",
    "Icons/Images",  "Title",          "Found Value",
    "Fnd At Byte No", "Found Text",    "",
    "FirstNBytes",   "LastNBytes",     "Created Date",
    "Created Time",  "Last read Date", "Last read Time",
    "FirstNBytesPlainText", "LastNBytesPlainText", "HTMLTags",
    "MetaTags",      "WWWAddresses",   "MailAddresses",
};

bool sameIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'A' && x <= 'Z') x = static_cast<char>(x - 'A' + 'a');
        if (y >= 'A' && y <= 'Z') y = static_cast<char>(y - 'A' + 'a');
        if (x != y) return false;
    }
    return true;
}

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

void fill(std::array<std::string, kStdColTypes>& out, std::string_view list) {
    std::vector<std::string> items = splitItems(list);
    for (int i = 0; i < kStdColTypes; ++i)
        out[static_cast<std::size_t>(i)] = i < static_cast<int>(items.size()) ? std::string(trimmed(items[static_cast<std::size_t>(i)])) : std::string();
}

}  // namespace

std::string_view colTypeCaption(int colType) {
    if (colType < 0 || colType >= kStdColTypes) return {};
    return kCaptions[static_cast<std::size_t>(colType)];
}

int colTypeFromName(std::string_view name) {
    name = trimmed(name);
    if (name.empty()) return -1;
    int n = -1;
    const char* end = name.data() + name.size();
    auto [p, ec] = std::from_chars(name.data(), end, n);
    if (ec == std::errc() && p == end) return n >= 0 && n < kStdColTypes && n != 14 ? n : -1;
    for (int i = 0; i < kStdColTypes; ++i)
        if (!kCaptions[static_cast<std::size_t>(i)].empty() && sameIgnoringCase(kCaptions[static_cast<std::size_t>(i)], name))
            return i;
    return -1;
}

ColumnSpecs parseColumnSpecs(std::string_view formats, std::string_view dataTypes) {
    ColumnSpecs specs;
    fill(specs.formats, formats);
    fill(specs.dataTypes, dataTypes);
    return specs;
}

const ColumnSpecs& factoryColumnSpecs() {
    static const ColumnSpecs specs = parseColumnSpecs(
        "|||Sz4Win|||Dt4Win|Tm4Win||||||||||Dt4Win|Tm4Win|Dt4Win|Tm4Win||||||",
        "|||N|N||D|T|||||N|||||D|T|D|T||||||");
    return specs;
}

}  // namespace tav
