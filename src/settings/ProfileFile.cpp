#include "settings/ProfileFile.h"

#include "core/Utf8.h"

namespace tav {

namespace {
#ifdef _WIN32
constexpr std::string_view kEol = "\r\n";
#else
constexpr std::string_view kEol = "\n";
#endif

std::string_view trim(std::string_view s) {
    size_t b = 0, e = s.size();
    while (b < e && (s[b] == ' ' || s[b] == '\t')) ++b;
    while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t')) --e;
    return s.substr(b, e - b);
}

std::string key(std::string_view section, std::string_view entry) {
    std::string k = foldName(section);
    k += '\x01';
    k += foldName(entry);
    return k;
}
}  // namespace

std::string foldName(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

ProfileFile ProfileFile::parse(std::string_view raw) {
    std::string text = toUtf8(raw);
    std::string_view all = text;
    if (all.substr(0, 3) == "\xEF\xBB\xBF") all.remove_prefix(3);
    ProfileFile f;
    f.sections_.push_back(Section{});
    size_t pos = 0;
    while (pos < all.size()) {
        size_t end = all.find('\n', pos);
        std::string_view line = all.substr(pos, end == std::string_view::npos ? all.size() - pos : end - pos);
        pos = end == std::string_view::npos ? all.size() : end + 1;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        std::string_view t = trim(line);
        if (!t.empty() && t.front() == '[') {
            size_t close = t.find(']');
            Section s;
            s.name = std::string(trim(t.substr(1, close == std::string_view::npos ? t.size() - 1 : close - 1)));
            s.hasHeader = true;
            f.sections_.push_back(std::move(s));
            continue;
        }
        Line l;
        size_t eq = t.find('=');
        if (!t.empty() && t.front() != ';' && eq != std::string_view::npos && eq > 0) {
            l.isEntry = true;
            l.key = std::string(trim(t.substr(0, eq)));
            l.value = std::string(trim(t.substr(eq + 1)));
        } else {
            l.text = std::string(line);
        }
        f.sections_.back().lines.push_back(std::move(l));
    }
    f.reindex();
    return f;
}

void ProfileFile::reindex() {
    index_.clear();
    sectionIndex_.clear();
    for (size_t si = 0; si < sections_.size(); ++si) {
        const Section& s = sections_[si];
        if (!s.hasHeader) continue;
        sectionIndex_.emplace(foldName(s.name), si);
        for (size_t li = 0; li < s.lines.size(); ++li)
            if (s.lines[li].isEntry) index_.emplace(key(s.name, s.lines[li].key), std::make_pair(si, li));
    }
}

ProfileFile::Section* ProfileFile::findSection(std::string_view name) {
    auto it = sectionIndex_.find(foldName(name));
    return it == sectionIndex_.end() ? nullptr : &sections_[it->second];
}

const ProfileFile::Section* ProfileFile::findSection(std::string_view name) const {
    auto it = sectionIndex_.find(foldName(name));
    return it == sectionIndex_.end() ? nullptr : &sections_[it->second];
}

const std::string* ProfileFile::find(std::string_view section, std::string_view entry) const {
    auto it = index_.find(key(section, entry));
    if (it == index_.end()) return nullptr;
    return &sections_[it->second.first].lines[it->second.second].value;
}

bool ProfileFile::hasSection(std::string_view section) const { return findSection(section) != nullptr; }

void ProfileFile::set(std::string_view section, std::string_view entry, std::string_view value) {
    auto it = index_.find(key(section, entry));
    if (it != index_.end()) {
        sections_[it->second.first].lines[it->second.second].value = std::string(value);
        return;
    }
    Section* s = findSection(section);
    if (!s) {
        Section ns;
        ns.name = std::string(section);
        ns.hasHeader = true;
        sections_.push_back(std::move(ns));
        s = &sections_.back();
        sectionIndex_.emplace(foldName(section), sections_.size() - 1);
    }
    // A new entry goes behind the section's last entry, before trailing blank lines.
    size_t at = s->lines.size();
    while (at > 0 && !s->lines[at - 1].isEntry && trim(s->lines[at - 1].text).empty()) --at;
    Line l;
    l.isEntry = true;
    l.key = std::string(entry);
    l.value = std::string(value);
    s->lines.insert(s->lines.begin() + static_cast<long>(at), std::move(l));
    reindex();
}

bool ProfileFile::erase(std::string_view section, std::string_view entry) {
    Section* s = findSection(section);
    if (!s) return false;
    std::string k = foldName(entry);
    bool any = false;
    for (size_t i = s->lines.size(); i-- > 0;) {
        if (s->lines[i].isEntry && foldName(s->lines[i].key) == k) {
            s->lines.erase(s->lines.begin() + static_cast<long>(i));
            any = true;
        }
    }
    if (any) reindex();
    return any;
}

bool ProfileFile::eraseSection(std::string_view section) {
    std::string k = foldName(section);
    bool any = false;
    for (size_t i = sections_.size(); i-- > 0;) {
        if (sections_[i].hasHeader && foldName(sections_[i].name) == k) {
            sections_.erase(sections_.begin() + static_cast<long>(i));
            any = true;
        }
    }
    if (any) reindex();
    return any;
}

std::vector<std::string> ProfileFile::sectionNames() const {
    std::vector<std::string> names;
    for (const Section& s : sections_)
        if (s.hasHeader) names.push_back(s.name);
    return names;
}

std::vector<std::string> ProfileFile::entryNames(std::string_view section) const {
    std::vector<std::string> names;
    if (const Section* s = findSection(section))
        for (const Line& l : s->lines)
            if (l.isEntry) names.push_back(l.key);
    return names;
}

std::string ProfileFile::serialize() const {
    std::string out;
    out.reserve(serializedSize());
    for (const Section& s : sections_) {
        if (s.hasHeader) {
            out += "[" + s.name + "]";
            out += kEol;
        }
        for (const Line& l : s.lines) {
            if (l.isEntry) {
                out += l.key;
                out += '=';
                out += l.value;
            } else {
                out += l.text;
            }
            out += kEol;
        }
    }
    return out;
}

size_t ProfileFile::serializedSize() const {
    size_t n = 0;
    for (const Section& s : sections_) {
        if (s.hasHeader) n += s.name.size() + 2 + kEol.size();
        for (const Line& l : s.lines) n += (l.isEntry ? l.key.size() + 1 + l.value.size() : l.text.size()) + kEol.size();
    }
    return n;
}

}  // namespace tav
