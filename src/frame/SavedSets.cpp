#include "frame/SavedSets.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "core/ListText.h"
#include "frame/SectionLists.h"
#include "core/TextTrim.h"
#include "dialogs/MessageBuilder.h"
#include "dialogs/MessageShortcuts.h"
#include "filelist/ColumnTypes.h"
#include "frame/RefreshSpec.h"
#include "frame/WindowState.h"
#include "frame/WindowStore.h"
#include "settings/IniNumbers.h"
#include "settings/IniStore.h"
#include "settings/ListEdit.h"

namespace tav {

namespace {

using sections::BatchScope;
using sections::holds;
using sections::isSectionNameEntry;
using sections::listItems;
using sections::sameName;
using sections::startsFolded;


constexpr std::string_view kColListEntry = "Last Col List";
constexpr std::string_view kLastDirEntry = "Last Dir";
constexpr std::string_view kSplitPrefix = "SplitEntry.";
constexpr std::string_view kAltPrefix = "AltNo.";
constexpr std::string_view kBadName = "A saved name cannot hold [ or ], nor start with AltNo.";
constexpr SavedKind kKinds[] = {SavedKind::Window, SavedKind::Selections, SavedKind::Formats};

// The parts of a window a kind copies.
// What differs between the three kinds of saved set.
struct KindTexts {
    WindowPart unknownPart;     // where an entry the table does not know goes
    std::string_view word;      // "Window", "Selections", "Formats"
    std::string_view askAs;     // the prompt for a new name
    std::string_view listEntry; // its list of names in "Main"
    std::string_view nameKey;   // the window key of the set in use
    std::string_view flagKey;   // the window key that says one is in use
    char useLetter;             // the letter its uses are counted under
};

const KindTexts& textsOf(SavedKind kind) {
    static const KindTexts window{WindowPart::Window, "Window",
                                  "Enter name under which Selections/Formats will be listed for re-display",
                                  kSavedWindowsEntry, "-4", "FS", 'w'};
    static const KindTexts selections{WindowPart::Selections, "Selections",
                                      "Enter name under which Selections will be listed for re-display",
                                      kSavedSelectionsEntry, "-2", "L.", 'l'};
    static const KindTexts formats{WindowPart::Formats, "Formats",
                                   "Enter name under which formats will be listed for re-display",
                                   kSavedFormatsEntry, "-3", "RS", 'r'};
    switch (kind) {
        case SavedKind::Selections: return selections;
        case SavedKind::Formats: return formats;
        case SavedKind::Window: break;
    }
    return window;
}

bool kindHolds(SavedKind kind, WindowPart part) {
    switch (kind) {
        case SavedKind::Selections: return part == WindowPart::Cols || part == WindowPart::Selections;
        case SavedKind::Formats: return part == WindowPart::Formats;
        case SavedKind::Window: break;
    }
    return true;
}

// The part an entry of a saved section goes to when the table does not know
// it: a Window's key definitions go with the window section.
WindowPart partOfUnknown(SavedKind kind) { return textsOf(kind).unknownPart; }

std::string_view kindWord(SavedKind kind) { return textsOf(kind).word; }

std::string_view askAsText(SavedKind kind) { return textsOf(kind).askAs; }

std::string doneText(const std::string& name) { return ">> " + name + " << " + "done."; }

std::string readIndex(IniStore& ini, const std::string& file, std::string_view entry) {
    return ini.mode(kMissingEmpty).get(kSavedIndexSection, entry, file);
}

// The entry a stored name stands for: a split value is stored as a count
// "SplitEntry.<entry>" and pieces "SplitEntry.<n>.<entry>"; empty for a piece.
std::string entryOfStoredName(std::string_view name) {
    if (!startsFolded(name, kSplitPrefix)) return std::string(name);
    std::string_view rest = name.substr(kSplitPrefix.size());
    size_t digits = 0;
    while (digits < rest.size() && std::isdigit(static_cast<unsigned char>(rest[digits]))) ++digits;
    if (digits > 0 && digits < rest.size() && rest[digits] == '.') return {};
    return std::string(rest);
}

// The entries of a window a kind copies, in the order they are written:
// the selections with their fixed rows, the columns and sort, the formats,
// then the window entries with the key definitions.
std::vector<std::pair<std::string, std::string>> entriesOfKind(const WindowState& window, SavedKind kind) {
    std::vector<std::pair<std::string, std::string>> out;
    for (WindowPart part : {WindowPart::Selections, WindowPart::Cols, WindowPart::Formats, WindowPart::Window}) {
        if (!kindHolds(kind, part)) continue;
        for (const WindowEntry& e : windowEntries())
            if (e.part == part) out.emplace_back(std::string(e.name), window.value(e.name));
        for (const auto& [name, value] : window.values()) {
            if (findWindowEntry(name) || isSectionNameEntry(name)) continue;
            if (window.partOf(name) == part) out.emplace_back(name, value);
        }
    }
    return out;
}

// Writes the set under `name`, replacing what the section held.
void writeSet(SavedSetContext& ctx, SavedKind kind, const std::string& name) {
    const auto entries = entriesOfKind(ctx.window, kind);
    BatchScope batch(ctx.ini);
    if (ctx.ini.service().hasSection(ctx.ini.pathOf(name, ctx.file), name)) ctx.ini.eraseSection(name, ctx.file);
    for (const auto& [entry, value] : entries) ctx.ini.put(name, entry, value, ctx.file);
}

// The saved name in use, kept after a save or a get.
void markInUse(SavedSetContext& ctx, SavedKind kind, const std::string& name, bool saved) {
    ctx.store.putKey(ctx.window, savedNameKey(kind), name);
    if (saved) ctx.store.putKey(ctx.window, std::string(savedFlagKey(kind)) + "1", "-1");
}

void countUse(SavedSetContext& ctx, SavedKind kind, const std::string& name) {
    if (ctx.countUse) ctx.countUse(savedUseLetter(kind), name);
}

// A name for a new set: refused while in use by any kind (or it is the
// index section), asked again. Empty when the user cancels.
std::string askNewName(SavedSetContext& ctx, SavedKind kind) {
    std::string offered;
    while (true) {
        const std::string name(trimBlanks(
            MBInput(ctx.host, askAsText(kind), "- Save " + std::string(kindWord(kind)) + " As", offered)));
        if (name.empty()) return {};
        offered = name;
        if (name.find_first_of("[]") != std::string::npos || startsFolded(name, kAltPrefix)) {
            MBOk(ctx.host, kBadName);
            continue;
        }
        std::string all = readIndex(ctx.ini, ctx.file, kAllSavedNamesEntry);
        // Section names ignore case, so does the test of a name in use.
        if (sameName(name, kSavedIndexSection) || holds(listItems(all), name)) {
            MessageRequest refused = makeRequest(std::string(kItemExists), "0");
            ctx.host.show(refused);
            continue;
        }
        if (!addListItem(all, name, true, &ctx.host)) continue;
        std::string ofKind = readIndex(ctx.ini, ctx.file, savedListEntry(kind));
        addListItem(ofKind, name, true, nullptr);
        BatchScope batch(ctx.ini);
        ctx.ini.put(kSavedIndexSection, kAllSavedNamesEntry, all, ctx.file);
        ctx.ini.put(kSavedIndexSection, savedListEntry(kind), ofKind, ctx.file);
        return name;
    }
}

// A name kept in a window key whose lists lost it is listed again.
void keepListed(SavedSetContext& ctx, SavedKind kind, const std::string& name) {
    std::string all = readIndex(ctx.ini, ctx.file, kAllSavedNamesEntry);
    std::string ofKind = readIndex(ctx.ini, ctx.file, savedListEntry(kind));
    const bool inAll = holds(listItems(all), name);
    const bool inKind = holds(listItems(ofKind), name);
    if (inAll && inKind) return;
    BatchScope batch(ctx.ini);
    if (!inAll && addListItem(all, name, true, nullptr))
        ctx.ini.put(kSavedIndexSection, kAllSavedNamesEntry, all, ctx.file);
    if (!inKind && addListItem(ofKind, name, true, nullptr))
        ctx.ini.put(kSavedIndexSection, savedListEntry(kind), ofKind, ctx.file);
}

// The kind whose list holds a name; `fallback` when none does.
SavedKind kindOfName(IniStore& ini, const std::string& file, const std::string& name, SavedKind fallback) {
    for (SavedKind kind : kKinds)
        if (holds(savedNames(ini, file, kind), name)) return kind;
    return fallback;
}

// Copies the saved section `name` into the window, the parts `kind` holds.
// False when the section is not on file.
bool loadSet(SavedSetContext& ctx, SavedKind kind, const std::string& name) {
    const std::string path = ctx.ini.pathOf(name, ctx.file);
    if (!ctx.ini.service().hasSection(path, name)) return false;
    std::vector<std::pair<std::string, std::string>> found;
    for (const std::string& stored : ctx.ini.service().entryNames(path, name)) {
        std::string entry = entryOfStoredName(stored);
        if (entry.empty() || isSectionNameEntry(entry)) continue;
        std::string value = ctx.ini.mode(kMissingEmpty).get(name, entry, ctx.file);
        found.emplace_back(std::move(entry), std::move(value));
    }
    BatchScope batch(ctx.ini);
    for (auto& [entry, value] : found) {
        const WindowEntry* e = findWindowEntry(entry);
        const WindowPart part = e ? e->part : partOfUnknown(kind);
        if (!kindHolds(kind, part)) continue;
        if (!e) ctx.window.setIn(part, entry, value);
        ctx.store.put(ctx.window, e ? e->name : std::string_view(entry), std::move(value));
    }
    return true;
}

std::string columnsText(const std::string& list) {
    std::vector<std::string> names;
    for (const std::string& item : splitItems(list)) {
        if (startsFolded(item, kUserColPrefix)) {
            names.push_back(item.substr(kUserColPrefix.size()));
            continue;
        }
        const int colType = colTypeFromName(item);
        const std::string_view caption = colTypeCaption(colType);
        names.push_back(caption.empty() ? item : std::string(caption));
    }
    return joinList(names, ", ", kPlainListStyle);
}

}  // namespace

std::string_view savedListEntry(SavedKind kind) { return textsOf(kind).listEntry; }

std::string_view savedNameKey(SavedKind kind) { return textsOf(kind).nameKey; }

std::string_view savedFlagKey(SavedKind kind) { return textsOf(kind).flagKey; }

char savedUseLetter(SavedKind kind) { return textsOf(kind).useLetter; }

std::vector<std::string> savedNames(IniStore& ini, const std::string& file, SavedKind kind) {
    return listItems(readIndex(ini, file, savedListEntry(kind)));
}

std::vector<std::string> allSavedNames(IniStore& ini, const std::string& file) {
    return listItems(readIndex(ini, file, kAllSavedNamesEntry));
}

MessageRequest overwriteRequest(SavedKind kind, const std::string& name) {
    std::string what;
    switch (kind) {
        case SavedKind::Window:
            what = "The current set of Formats AND Selections will be saved and overwrite all existing "
                   "Formats/Selections in set of Formats/Selections saved as >> ";
            break;
        case SavedKind::Selections:
            what = "The current set of Selections will be saved and overwrite all existing Selections in set of "
                   "Selections saved as >> ";
            break;
        case SavedKind::Formats:
            what = "The current set of formats will be saved and overwrite all existing formats in set of formats "
                   "saved as >> ";
            break;
    }
    std::string message = "Are you Sure?\r" + what + name + " <<.\r" +
                          "Press Yes to confirm Save, Press No to cancel.\r" + "Do you wish to save changes Now?";
    return makeRequest(std::move(message), "4", {},
                       "- [Save " + std::string(kindWord(kind)) + " " + name + "]");
}

bool columnListFits(const std::string& list) {
    if (trimBlanks(list).empty()) return true;
    for (const std::string& item : splitItems(list)) {
        if (startsFolded(item, kUserColPrefix)) {
            if (item.size() == kUserColPrefix.size()) return false;
            continue;
        }
        const int colType = colTypeFromName(item);
        if (colType < 0 || colType == 14) return false;
    }
    return true;
}

std::vector<std::string> columnChangeLines(const std::string& oldList, const std::string& newList) {
    if (oldList == newList) return {};
    const std::string shown = columnsText(newList);
    return {"Displayed Columns Changed.\rOld Columns: " + columnsText(oldList) + "\rNew Columns: " + shown,
            "[Selected for next read: " + shown + "]"};
}

namespace {

// The set written under `name`, counted and marked as the one in use.
SavedSetResult storeSet(SavedSetContext& ctx, SavedKind kind, const std::string& name) {
    writeSet(ctx, kind, name);
    countUse(ctx, kind, name);
    markInUse(ctx, kind, name, true);
    SavedSetResult result;
    result.done = true;
    result.name = name;
    result.results.push_back(doneText(name));
    return result;
}

}  // namespace

SavedSetResult saveSetAs(SavedSetContext& ctx, SavedKind kind) {
    const std::string name = askNewName(ctx, kind);
    if (name.empty()) {
        SavedSetResult result;
        result.results.emplace_back(kSavedCancelled);
        return result;
    }
    return storeSet(ctx, kind, name);
}

SavedSetResult saveSet(SavedSetContext& ctx, SavedKind kind) {
    const std::string name = ctx.window.get(savedNameKey(kind));
    if (name.empty()) return saveSetAs(ctx, kind);
    SavedSetResult result;
    MessageRequest ask = overwriteRequest(kind, name);
    const int yes = 1;
    if (ctx.host.show(ask) != yes) {
        result.results.emplace_back(kSavedCancelled);
        return result;
    }
    keepListed(ctx, kind, name);
    return storeSet(ctx, kind, name);
}

SavedSetResult getSavedSet(SavedSetContext& ctx, SavedKind kind) {
    SavedSetResult result;
    const std::vector<std::string> names =
        kind == SavedKind::Window ? allSavedNames(ctx.ini, ctx.file) : savedNames(ctx.ini, ctx.file, kind);

    // The set in use comes selected.
    const std::string current = ctx.window.get(savedNameKey(kind));
    const auto at = std::find_if(names.begin(), names.end(), [&](const std::string& s) { return sameName(s, current); });
    const int selected = names.empty() ? -1 : at == names.end() ? 0 : static_cast<int>(at - names.begin());

    MessageRequest ask = makeRequest(std::string(kSavedGetCaption), "1");
    const int list = MBAddCtl("ListBox", kSavedGetListSize, std::to_string(selected), ask, true);
    for (const std::string& name : names) MBAddListItem(name, -1, ask, list);
    const int ok = 1;
    const int answer = ctx.host.show(ask);
    const int chosen = ask.lists.size() > static_cast<size_t>(list) && !ask.lists[list].empty()
                           ? static_cast<int>(numberAtStart(ask.lists[list][0]).value_or(-1))
                           : -1;
    if (answer != ok || chosen < 0 || chosen >= static_cast<int>(names.size())) {
        result.results.emplace_back(kSavedCancelled);
        return result;
    }
    const std::string& name = names[static_cast<size_t>(chosen)];

    const std::string oldColumns = ctx.window.value(kColListEntry);
    const std::string oldDir = ctx.window.value(kLastDirEntry);
    if (!loadSet(ctx, kind, name)) {
        result.results.push_back(">> " + name + " << not found in " + std::string(kSavedFileName) + ".");
        return result;
    }
    countUse(ctx, kind, name);
    // The name is kept with the kind it was saved as, so that a save writes
    // the same set back.
    const SavedKind savedAs = kind == SavedKind::Window ? kindOfName(ctx.ini, ctx.file, name, kind) : kind;
    markInUse(ctx, savedAs, name, false);

    if (kind != SavedKind::Formats) {
        const std::string newColumns = ctx.window.value(kColListEntry);
        if (!columnListFits(newColumns)) MBOk(ctx.host, kSavedColumnOrderError);
        for (std::string& line : columnChangeLines(oldColumns, newColumns)) result.results.push_back(std::move(line));
        if (ctx.window.value(kLastDirEntry) != oldDir) result.results.emplace_back(kSavedDifferentDir);
    }
    result.done = true;
    result.name = name;
    result.selectionsChanged = true;
    result.keysAfterGet = kind == SavedKind::Window;
    result.results.push_back(doneText(name));
    return result;
}

SavedSetResult SaveWindowAs(SavedSetContext& ctx) { return saveSetAs(ctx, SavedKind::Window); }
SavedSetResult SaveSelectionsAs(SavedSetContext& ctx) { return saveSetAs(ctx, SavedKind::Selections); }
SavedSetResult SaveFormatsAs(SavedSetContext& ctx) { return saveSetAs(ctx, SavedKind::Formats); }
SavedSetResult SaveWindow(SavedSetContext& ctx) { return saveSet(ctx, SavedKind::Window); }
SavedSetResult SaveSelections(SavedSetContext& ctx) { return saveSet(ctx, SavedKind::Selections); }
SavedSetResult SaveFormats(SavedSetContext& ctx) { return saveSet(ctx, SavedKind::Formats); }
SavedSetResult GetSavedWindow(SavedSetContext& ctx) { return getSavedSet(ctx, SavedKind::Window); }
SavedSetResult GetSavedSelections(SavedSetContext& ctx) { return getSavedSet(ctx, SavedKind::Selections); }
SavedSetResult GetSavedFormats(SavedSetContext& ctx) { return getSavedSet(ctx, SavedKind::Formats); }

}  // namespace tav
