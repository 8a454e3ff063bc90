#include "frame/WindowStore.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <set>

#include "core/ListText.h"
#include "frame/SectionLists.h"
#include "settings/IniStore.h"

namespace tav {

namespace {

using sections::BatchScope;
using sections::holds;
using sections::isSectionNameEntry;
using sections::listItems;
using sections::sameName;
using sections::startsFolded;


constexpr std::string_view kSplitPrefix = "SplitEntry.";
constexpr WindowPart kParts[] = {WindowPart::Window, WindowPart::Cols, WindowPart::Selections,
                                 WindowPart::Formats};

// Sets `noWrite` for its lifetime and puts the former value back.
class NoWriteScope {
public:
    explicit NoWriteScope(IniStore& ini) : ini_(ini), kept_(ini.noWrite) { ini_.noWrite = true; }
    ~NoWriteScope() { ini_.noWrite = kept_; }
    NoWriteScope(const NoWriteScope&) = delete;
    NoWriteScope& operator=(const NoWriteScope&) = delete;

private:
    IniStore& ini_;
    bool kept_;
};

// The entry a stored name stands for: a split value is stored as a count
// "SplitEntry.<entry>" and pieces "SplitEntry.<n>.<entry>".
std::string entryOfStoredName(std::string_view name) {
    if (!startsFolded(name, kSplitPrefix)) return std::string(name);
    std::string_view rest = name.substr(kSplitPrefix.size());
    size_t digits = 0;
    while (digits < rest.size() && std::isdigit(static_cast<unsigned char>(rest[digits]))) ++digits;
    if (digits > 0 && digits < rest.size() && rest[digits] == '.') return {};  // a piece
    return std::string(rest);
}

}  // namespace

WindowStore::WindowStore(IniStore& ini) : ini_(ini) {}

// ---- loading ---------------------------------------------------------------

std::vector<std::string> WindowStore::entryNamesOf(const std::string& section) {
    std::vector<std::string> files{ini_.pathOf(section, kAutoFile)};
    const std::string& spec = ini_.roleFile(routeSection(section));
    if (spec.rfind(">>", 0) == 0) {
        const size_t n = static_cast<size_t>(std::atoi(spec.c_str() + 2));
        if (n > 0 && n < ini_.altLists().size())
            for (std::string& alt : listItems(ini_.altLists()[n])) files.push_back(std::move(alt));
    }
    std::set<std::string, CaseLess> seen;
    std::vector<std::string> names;
    for (const std::string& file : files) {
        for (const std::string& stored : ini_.service().entryNames(file, section)) {
            std::string name = entryOfStoredName(stored);
            if (!name.empty() && seen.insert(name).second) names.push_back(std::move(name));
        }
    }
    return names;
}

bool WindowStore::load(const std::string& windowSection, WindowState& out) {
    out = WindowState{};
    if (windowSection.empty()) return false;
    NoWriteScope quiet(ini_);
    WindowSections& s = out.sections;
    s.window = windowSection;
    s.cols = ini_.mode(kMissingEmpty).get(windowSection, kLastColsEntry);
    s.selections = ini_.mode(kMissingEmpty).get(windowSection, kLastSelectionsEntry);
    s.formats = ini_.mode(kMissingEmpty).get(windowSection, kLastFormatsEntry);
    if (s.cols.empty() && s.selections.empty() && s.formats.empty()) {
        out = WindowState{};
        return false;
    }
    for (const WindowEntry& e : windowEntries()) {
        const std::string& section = s.of(e.part);
        if (section.empty()) continue;  // stays at the built-in value
        out.set(e.name, ini_.mode(kMissingEmpty).get(section, e.name));
    }
    // Entries the table does not know go with their section: the window's
    // key definitions, further grid properties.
    for (WindowPart part : kParts) {
        const std::string& section = s.of(part);
        if (section.empty()) continue;
        for (const std::string& name : entryNamesOf(section)) {
            if (findWindowEntry(name)) continue;
            if (part == WindowPart::Window && isSectionNameEntry(name)) continue;
            out.setIn(part, name, ini_.mode(kMissingEmpty).get(section, name));
        }
    }
    return true;
}

// ---- saving ----------------------------------------------------------------

void WindowStore::put(WindowState& window, std::string_view entry, std::string value) {
    window.set(entry, value);
    const std::string& section = window.sections.of(window.partOf(entry));
    if (section.empty()) return;
    const WindowEntry* e = findWindowEntry(entry);
    ini_.put(section, e ? e->name : entry, value);
}

void WindowStore::putKey(WindowState& window, std::string_view keyAndDigit, std::string value) {
    window.put(keyAndDigit, std::move(value));
    const WindowEntry* e = WindowState::entryOfKey(keyAndDigit);
    if (!e) {
        // The Top List kinds share one entry.
        if (keyAndDigit.size() == 3 && keyAndDigit[2] == '1' && topListLetter(keyAndDigit.substr(0, 2)))
            e = findWindowEntry("Top List ID showing");
        if (!e) return;
    }
    const std::string& section = window.sections.of(e->part);
    if (!section.empty()) ini_.put(section, e->name, window.value(e->name));
}

void WindowStore::saveAll(const WindowState& window) {
    const WindowSections& s = window.sections;
    if (s.window.empty()) return;
    BatchScope batch(ini_);
    ini_.put(s.window, kLastColsEntry, s.cols);
    ini_.put(s.window, kLastSelectionsEntry, s.selections);
    ini_.put(s.window, kLastFormatsEntry, s.formats);
    for (const WindowEntry& e : windowEntries()) {
        const std::string& section = s.of(e.part);
        if (!section.empty()) ini_.put(section, e.name, window.value(e.name));
    }
    for (const auto& [name, value] : window.values()) {
        if (findWindowEntry(name) || isSectionNameEntry(name)) continue;
        const std::string& section = s.of(window.partOf(name));
        if (!section.empty()) ini_.put(section, name, value);
    }
}

// ---- index lists -----------------------------------------------------------

std::string WindowStore::readIndex(std::string_view entry) {
    return ini_.mode(kMissingEmpty).get(kWindowsIndexSection, entry);
}

std::vector<std::string> WindowStore::currentWindows() { return listItems(readIndex(kCurrentWindowsEntry)); }

std::vector<std::string> WindowStore::sectionsOnFile() { return listItems(readIndex(kSectionsOnFileEntry)); }

std::string WindowStore::lastUnloaded() { return readIndex(kLastUnloadedEntry); }

void WindowStore::addCurrent(const std::string& windowSection) {
    std::vector<std::string> items = currentWindows();
    if (windowSection.empty() || holds(items, windowSection)) return;
    items.push_back(windowSection);
    ini_.put(kWindowsIndexSection, kCurrentWindowsEntry, joinList(items));
}

void WindowStore::removeCurrent(const std::string& windowSection) {
    std::vector<std::string> items = currentWindows();
    const auto kept = std::remove_if(items.begin(), items.end(),
                                     [&](const std::string& s) { return sameName(s, windowSection); });
    if (kept == items.end()) return;
    items.erase(kept, items.end());
    ini_.put(kWindowsIndexSection, kCurrentWindowsEntry, joinList(items));
}

void WindowStore::addOnFile(const std::string& windowSection) {
    std::vector<std::string> items = sectionsOnFile();
    if (windowSection.empty() || holds(items, windowSection)) return;
    items.push_back(windowSection);
    ini_.put(kWindowsIndexSection, kSectionsOnFileEntry, joinList(items));
}

void WindowStore::setLastUnloaded(const std::string& windowSection) {
    ini_.put(kWindowsIndexSection, kLastUnloadedEntry, windowSection);
}

void WindowStore::windowClosed(const std::string& windowSection, bool closedAlone) {
    if (closedAlone) removeCurrent(windowSection);
    setLastUnloaded(windowSection);
}

// ---- removing ----------------------------------------------------------------

void WindowStore::eraseWindow(const std::string& windowSection) {
    if (windowSection.empty()) return;
    std::vector<std::string> others;
    for (std::string_view entry : {kLastColsEntry, kLastSelectionsEntry, kLastFormatsEntry}) {
        std::string name = ini_.mode(kMissingEmpty).get(windowSection, entry);
        if (!name.empty()) others.push_back(std::move(name));
    }
    // A window section that is gone still leaves its fellows, named like it.
    if (others.empty() && startsFolded(windowSection, "--W")) {
        for (char letter : {'C', 'S', 'F'}) {
            std::string name = windowSection;
            name[2] = letter;
            others.push_back(std::move(name));
        }
    }
    const std::string path = ini_.pathOf(windowSection, kAutoFile);
    BatchScope batch(ini_);
    for (const std::string& section : others)
        if (ini_.service().hasSection(ini_.pathOf(section, kAutoFile), section)) ini_.eraseSection(section);
    if (ini_.service().hasSection(path, windowSection)) ini_.eraseSection(windowSection);
}

int WindowStore::removeLeftovers() {
    const std::vector<std::string> onFile = sectionsOnFile();
    const std::vector<std::string> current = currentWindows();
    const std::string last = lastUnloaded();
    std::vector<std::string> kept;
    int removed = 0;
    for (const std::string& section : onFile) {
        if (holds(current, section) || sameName(section, last)) {
            kept.push_back(section);
            continue;
        }
        eraseWindow(section);
        ++removed;
    }
    if (removed > 0) ini_.put(kWindowsIndexSection, kSectionsOnFileEntry, joinList(kept));
    return removed;
}

// ---- new windows -------------------------------------------------------------

WindowState WindowStore::makeNewWindow(const std::string& sourceSection, double secondsSinceMidnight,
                                       bool* fromDefaults) {
    WindowState window;
    const bool loaded = load(sourceSection, window);
    if (!loaded) window = WindowState{};
    if (fromDefaults) *fromDefaults = !loaded;
    // The source's own sections stay as they are; what the new names held
    // before (a run that ended badly) goes.
    const WindowSections fresh = newWindowSections(secondsSinceMidnight);
    if (!sameName(fresh.window, sourceSection)) eraseWindow(fresh.window);
    window.sections = fresh;
    saveAll(window);
    addCurrent(fresh.window);
    addOnFile(fresh.window);
    return window;
}

}  // namespace tav
