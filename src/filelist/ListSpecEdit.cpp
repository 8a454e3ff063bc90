#include "filelist/ListSpecEdit.h"

#include <algorithm>

#include "core/ListText.h"
#include "core/TextTrim.h"

namespace tav {

namespace {

constexpr char kCR = '\r';

std::string folded(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

bool sameFolded(std::string_view a, std::string_view b) { return a.size() == b.size() && folded(a) == folded(b); }

std::string_view rightTrimmed(std::string_view s) {
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

}  // namespace

namespace selectprompt {
std::string nothingToChange() {
    return std::string("First Select Directories to change and then try again.") + kCR +
           "NB. File Specifications will not be changed by this function.";
}
std::string alreadyExists(std::string_view line) {
    return std::string("Already exists in List of Directories and files.") + kCR + std::string(line) + kCR +
           " not added.";
}
}  // namespace selectprompt

std::vector<std::string> listSpecEntries(std::string_view spec) {
    std::vector<std::string> out;
    const std::string_view t = trimBlanks(spec);
    if (t.empty() || t == "{}") return out;
    for (std::string& item : splitItems(t))
        if (!trimBlanks(item).empty()) out.push_back(std::move(item));
    return out;
}

std::string listSpecText(const std::vector<std::string>& entries) {
    const bool holdsBrackets = std::any_of(entries.begin(), entries.end(), [](const std::string& e) {
        return e.find('{') != std::string::npos || e.find('}') != std::string::npos;
    });
    if (holdsBrackets) return joinList(entries);  // escaped by the list codes
    std::string out;
    for (const std::string& e : entries) {
        if (!out.empty()) out += '|';
        out += '{' + e + '}';
    }
    return out;
}

bool listSpecEmpty(std::string_view spec) { return listSpecEntries(spec).empty(); }

bool listSpecHolds(std::string_view spec, std::string_view entry) {
    const std::string_view e = rightTrimmed(entry);
    for (const std::string& held : listSpecEntries(spec))
        if (sameFolded(rightTrimmed(held), e)) return true;
    return false;
}

ListSpecChange AddToListSpec(std::string& spec, std::string_view entry) {
    ListSpecChange result;
    const std::string e(rightTrimmed(entry));
    if (trimBlanks(e).empty()) return result;
    std::vector<std::string> entries = listSpecEntries(spec);
    const std::string key = folded(e);
    auto at = entries.end();
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        const std::string held = folded(rightTrimmed(*it));
        if (held == key) {
            result.prompt = selectprompt::alreadyExists(e);
            return result;
        }
        if (at == entries.end() && held > key) at = it;
    }
    entries.insert(at, e);
    spec = listSpecText(entries);
    result.changed = true;
    result.status = std::string(kAddedToListSpec) + e;
    return result;
}

ListSpecChange RemoveFromListSpec(std::string& spec, std::string_view entry) {
    ListSpecChange result;
    const std::string_view e = rightTrimmed(entry);
    std::vector<std::string> entries = listSpecEntries(spec);
    auto it = std::find_if(entries.begin(), entries.end(),
                           [&](const std::string& held) { return sameFolded(rightTrimmed(held), e); });
    if (it == entries.end()) return result;
    result.status = std::string(kRemovedFromListSpec) + *it;
    entries.erase(it);
    spec = listSpecText(entries);
    result.changed = true;
    return result;
}

std::vector<std::string> listSpecDirectories(std::string_view spec) {
    std::vector<std::string> out;
    for (const std::string& entry : listSpecEntries(spec)) {
        if (isFileSpecification(entry)) continue;
        std::string path = splitListLine(entry).path;
        const bool known = std::any_of(out.begin(), out.end(), [&](const std::string& d) { return sameFolded(d, path); });
        if (!known) out.push_back(std::move(path));
    }
    return out;
}

ListSpecChange RemoveDirectoryFromListSpec(std::string& spec, std::string_view directory) {
    ListSpecChange result;
    const std::string_view dir = rightTrimmed(directory);
    for (const std::string& entry : listSpecEntries(spec)) {
        if (isFileSpecification(entry) || !sameFolded(splitListLine(entry).path, dir)) continue;
        ListSpecChange one = RemoveFromListSpec(spec, entry);
        if (!one.changed) continue;
        result.changed = true;
        result.status = std::move(one.status);
    }
    return result;
}

ListLine splitListLine(std::string_view line) {
    ListLine l;
    const std::size_t at = line.find(" <");
    l.path = std::string(rightTrimmed(line.substr(0, at)));
    if (at == std::string_view::npos) return l;
    l.mark = std::string(rightTrimmed(line.substr(at)));
    std::string_view inner = std::string_view(l.mark).substr(2);
    if (!inner.empty() && inner.back() == '>') inner.remove_suffix(1);
    inner = rightTrimmed(inner);
    if (!inner.empty() && (inner.back() == '+' || inner.back() == '-')) {
        l.hasSubdirsMark = true;
        l.subdirs = inner.back() == '+';
        inner.remove_suffix(1);
    }
    l.type = std::string(trimBlanks(inner));
    return l;
}

bool isFileSpecification(std::string_view line) {
    const ListLine l = splitListLine(line);
    const std::size_t slash = l.path.rfind('/');
    const std::string_view file =
        slash == std::string::npos ? std::string_view(l.path) : std::string_view(l.path).substr(slash + 1);
    return file.find('*') != std::string_view::npos || !trimBlanks(file).empty();
}

bool isSettableLine(std::string_view line) {
    return line != kDuplicateRemoved && !trimBlanks(line).empty() && !isFileSpecification(line);
}

std::string lineWithMark(std::string_view path, std::string_view type, bool subdirs) {
    return std::string(rightTrimmed(path)) + " <" + std::string(trimBlanks(type)) + (subdirs ? "+" : "-") + ">";
}

std::string lineWithType(std::string_view line, std::string_view type, bool subdirsWhenUnmarked) {
    const ListLine l = splitListLine(line);
    return lineWithMark(l.path, type, l.hasSubdirsMark ? l.subdirs : subdirsWhenUnmarked);
}

std::string lineWithSubdirs(std::string_view line, bool subdirs, std::string_view typeWhenUnmarked) {
    const ListLine l = splitListLine(line);
    return lineWithMark(l.path, l.mark.empty() ? typeWhenUnmarked : std::string_view(l.type), subdirs);
}

ListSpecLines::ListSpecLines(std::string_view spec) { reset(spec); }

void ListSpecLines::reset(std::string_view spec) {
    spec_ = listSpecText(listSpecEntries(spec));
    rebuildLines();
}

void ListSpecLines::rebuildLines() { lines_ = listSpecEntries(spec_); }

void ListSpecLines::rebuildSpec() {
    std::vector<std::string> entries;
    for (const std::string& line : lines_)
        if (line != kDuplicateRemoved && !trimBlanks(line).empty()) entries.push_back(line);
    spec_ = listSpecText(entries);
}

LineEdit ListSpecLines::add(std::string_view entry) {
    LineEdit edit;
    ListSpecChange change = AddToListSpec(spec_, entry);
    edit.prompt = std::move(change.prompt);
    edit.status = std::move(change.status);
    edit.changed = change.changed;
    if (change.changed) rebuildLines();
    return edit;
}

std::vector<LineEdit> ListSpecLines::addAll(const std::vector<std::string>& entries) {
    std::vector<LineEdit> out;
    out.reserve(entries.size());
    for (const std::string& e : entries) out.push_back(add(e));
    return out;
}

LineEdit ListSpecLines::addWith(std::string_view directory, std::string_view type, bool subdirs) {
    LineEdit edit;
    if (trimBlanks(directory).empty()) {
        edit.prompt = selectprompt::kNoDirToAddWith;
        return edit;
    }
    if (trimBlanks(type).empty()) {
        edit.prompt = selectprompt::kNoTypeChosen;
        return edit;
    }
    return add(lineWithMark(directory, type, subdirs));
}

LineEdit ListSpecLines::remove(const std::vector<int>& rows) {
    LineEdit edit;
    std::vector<int> sorted = rows;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    std::vector<std::string> kept;
    std::size_t next = 0;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const bool chosen = next < sorted.size() && sorted[next] == static_cast<int>(i);
        if (chosen) ++next;
        if (!chosen) {
            kept.push_back(lines_[i]);
            continue;
        }
        edit.changed = true;
        if (lines_[i] == kDuplicateRemoved) continue;  // no part of the list spec
        std::string spec = spec_;
        ListSpecChange change = RemoveFromListSpec(spec, lines_[i]);
        if (!change.changed) {
            edit.prompt = selectprompt::kCouldNotDelete;
            kept.push_back(lines_[i]);
            continue;
        }
        spec_ = std::move(spec);
        edit.status = std::move(change.status);
    }
    lines_ = std::move(kept);
    rebuildSpec();
    return edit;
}

template <typename Change>
LineEdit ListSpecLines::setRows(const std::vector<int>& rows, std::string_view type, Change change) {
    LineEdit edit;
    std::vector<int> fit;
    for (int r : rows)
        if (r >= 0 && r < static_cast<int>(lines_.size()) && isSettableLine(lines_[r])) fit.push_back(r);
    if (fit.empty()) {
        edit.prompt = selectprompt::nothingToChange();
        return edit;
    }
    if (trimBlanks(type).empty()) {
        edit.prompt = selectprompt::kNoTypeChosen;
        return edit;
    }
    for (int r : fit) {
        const std::string changed = change(lines_[r]);
        bool duplicate = false;
        for (std::size_t i = 0; i < lines_.size(); ++i)
            if (static_cast<int>(i) != r && sameFolded(lines_[i], changed)) duplicate = true;
        if (changed == lines_[r]) continue;
        lines_[r] = duplicate ? std::string(kDuplicateRemoved) : changed;
        edit.changed = true;
    }
    rebuildSpec();
    return edit;
}

LineEdit ListSpecLines::setType(const std::vector<int>& rows, std::string_view type, bool subdirsWhenUnmarked) {
    return setRows(rows, type,
                   [&](const std::string& line) { return lineWithType(line, type, subdirsWhenUnmarked); });
}

LineEdit ListSpecLines::setSubdirs(const std::vector<int>& rows, bool subdirs, std::string_view typeWhenUnmarked) {
    return setRows(rows, typeWhenUnmarked,
                   [&](const std::string& line) { return lineWithSubdirs(line, subdirs, typeWhenUnmarked); });
}

void ListSpecLines::clear() {
    spec_.clear();
    lines_.clear();
}

std::string ListSpecLines::okPrompt() const { return empty() ? std::string(selectprompt::kEmptyListOnOk) : ""; }

}  // namespace tav
