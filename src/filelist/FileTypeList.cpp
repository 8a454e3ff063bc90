#include "filelist/FileTypeList.h"

#include <algorithm>

#include "core/ListText.h"
#include "core/TextTrim.h"
#include "dialogs/MessageBuilder.h"
#include "settings/IniStore.h"

namespace tav {

namespace {

constexpr char kCR = '\r';
constexpr int kOkButton = 1;  // of the standard buttons "&OK|&Cancel"

std::string folded(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

NamedFileType trimmedType(NamedFileType t) {
    t.types = std::string(trimBlanks(t.types));
    t.name = std::string(trimBlanks(t.name));
    return t;
}

}  // namespace

FileTypeList FileTypeList::parse(std::string_view value) {
    FileTypeList list;
    std::string_view v = trimBlanks(value);
    if (!v.empty() && v.front() == '=') v = trimBlanks(v.substr(1));
    if (v.empty()) return list;
    for (const std::string& element : splitItems(v)) {
        const std::size_t semi = element.find(';');
        NamedFileType t;
        t.types = element.substr(0, semi);
        if (semi != std::string::npos) t.name = element.substr(semi + 1);
        t = trimmedType(std::move(t));
        if (!t.types.empty()) list.items_.push_back(std::move(t));
    }
    return list;
}

std::string FileTypeList::text() const {
    std::vector<std::string> elements;
    bool holdsBrackets = false;
    for (const NamedFileType& t : items_) {
        elements.push_back(t.types + ";" + t.name);
        holdsBrackets = holdsBrackets || elements.back().find_first_of("{}") != std::string::npos;
    }
    if (holdsBrackets) return joinList(elements);
    std::string out;
    for (const std::string& e : elements) {
        if (!out.empty()) out += '|';
        out += '{' + e + '}';
    }
    return out;
}

int FileTypeList::find(std::string_view types) const {
    const std::string key = folded(trimBlanks(types));
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (folded(items_[i].types) == key) return static_cast<int>(i);
    return -1;
}

bool FileTypeList::add(NamedFileType type) {
    type = trimmedType(std::move(type));
    if (type.types.empty()) return false;
    items_.push_back(std::move(type));
    return true;
}

bool FileTypeList::replace(std::size_t i, NamedFileType type) {
    type = trimmedType(std::move(type));
    if (i >= items_.size() || type.types.empty()) return false;
    items_[i] = std::move(type);
    return true;
}

bool FileTypeList::remove(std::size_t i) {
    if (i >= items_.size()) return false;
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(i));
    return true;
}

bool FileTypeList::move(std::size_t from, std::size_t to) {
    if (from >= items_.size() || to >= items_.size()) return false;
    NamedFileType t = std::move(items_[from]);
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(from));
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(to), std::move(t));
    return true;
}

bool FileTypeList::reorder(const std::vector<std::size_t>& order) {
    if (order.size() != items_.size()) return false;
    std::vector<bool> seen(items_.size(), false);
    for (std::size_t i : order) {
        if (i >= items_.size() || seen[i]) return false;
        seen[i] = true;
    }
    std::vector<NamedFileType> out;
    out.reserve(items_.size());
    for (std::size_t i : order) out.push_back(items_[i]);
    items_ = std::move(out);
    return true;
}

std::string FileTypeList::displayLine(std::size_t i) const {
    if (i >= items_.size()) return {};
    const NamedFileType& t = items_[i];
    return t.name.empty() ? t.types : t.name + " - " + t.types;
}

FileTypeList readFileTypes(IniStore& ini) {
    std::string value = ini.mode(kMissingEmpty).get(kFileTypesSection, kFileTypesEntry);
    // Older data files keep the list the other way round: section named after the entry.
    if (trimBlanks(value).empty()) value = ini.mode(kMissingEmpty).get(kFileTypesEntry, kFileTypesSection);
    return FileTypeList::parse(value);
}

void writeFileTypes(IniStore& ini, const FileTypeList& list) {
    ini.put(kFileTypesSection, kFileTypesEntry, list.text());
}

bool askFileType(MessageHost& host, NamedFileType& type, std::string_view title) {
    MessageRequest ask;
    ask.message = std::string("Enter Name for file type and as many file type specifications as required (in "
                              "format *.htm).") +
                  kCR + "Example *.htm will list all files of type htm.";
    ask.buttons = "1";
    ask.title = std::string(title);
    MBAddCtl("Label", "", kFileTypeNameLabel, ask, true);
    const int name = MBAddCtl("TextBox", "10000||||||-1", type.name, ask);
    MBAddCtl("Label", "", kFileTypeSpecLabel, ask);
    const int types = MBAddCtl("TextBox", "10000||||||", type.types, ask);
    if (host.show(ask) != kOkButton) return false;
    NamedFileType entered = trimmedType({ask.values[types], ask.values[name]});
    if (entered.types.empty()) return false;
    type = std::move(entered);
    return true;
}

std::string fileTypeStatus(std::string_view type, bool showHidden, bool showSystem) {
    std::string s = " - done. New Type: ";
    s += type;
    s += showHidden ? ", show Hidden files" : ", hide Hidden files";
    s += showSystem ? ", show System files." : ", hide System files.";
    return s;
}

}  // namespace tav
