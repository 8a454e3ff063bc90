#pragma once
// The windows of the current windows INI: loading a window from its four
// sections, live saving of each change, the index lists of section
// "Windows sections", the clean-up of leftovers at start, new windows.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/WindowState.h"

namespace tav {

class IniStore;

inline constexpr std::string_view kWindowsIndexSection = "Windows sections";
inline constexpr std::string_view kSectionsOnFileEntry = "List of sections on ini file";
inline constexpr std::string_view kCurrentWindowsEntry = "List of sections for current windows";
inline constexpr std::string_view kLastUnloadedEntry =
    "Last window unloaded (used for new window when no listhtm current)";

class WindowStore {
public:
    explicit WindowStore(IniStore& ini);

    // Reads a window section and the three it names into `out` (missing
    // entries read as empty; nothing is written while loading). False when
    // the section is not usable: it does not exist, or names no other sections.
    bool load(const std::string& windowSection, WindowState& out);

    // Live saving: sets the entry in memory and writes it to its section now.
    void put(WindowState& window, std::string_view entry, std::string value);
    // The same by window key ("LM1", ".9"): a key with an entry of the
    // sections writes that entry; other keys live for the run only.
    void putKey(WindowState& window, std::string_view keyAndDigit, std::string value);
    // Writes every entry of the four sections (a new window, a saved copy).
    void saveAll(const WindowState& window);

    // The index lists.
    std::vector<std::string> currentWindows();
    std::vector<std::string> sectionsOnFile();
    std::string lastUnloaded();
    void addCurrent(const std::string& windowSection);     // unique, at the end
    void removeCurrent(const std::string& windowSection);
    void addOnFile(const std::string& windowSection);      // unique
    void setLastUnloaded(const std::string& windowSection);
    // A window's close: one closed alone (its control menu, or by code)
    // leaves the current list; one closed with the main window stays on it
    // and comes back. Either way it becomes the last unloaded window, and
    // its sections stay on file.
    void windowClosed(const std::string& windowSection, bool closedAlone);

    // Start-up: each section on file that is neither current nor the last
    // unloaded one is deleted with its three others; the list on file is
    // written back without them. Returns how many went.
    int removeLeftovers();
    // Deletes a window section and the three it names.
    void eraseWindow(const std::string& windowSection);

    // A new window: the state of `sourceSection` (empty or not loadable: the
    // built-in defaults, and *fromDefaults is set), under new names made from
    // the timer value, written whole and added to both index lists.
    WindowState makeNewWindow(const std::string& sourceSection, double secondsSinceMidnight,
                              bool* fromDefaults = nullptr);

    IniStore& ini() { return ini_; }

private:
    std::string readIndex(std::string_view entry);
    // The entries stored in a section, in the main file and its alternates.
    std::vector<std::string> entryNamesOf(const std::string& section);

    IniStore& ini_;
};

// What `LoadFileListWindows` did.
struct WindowLoadResult {
    int loaded = 0;          // windows that came up
    bool recovered = false;  // the factory copy replaced the current windows file
    bool failed = false;     // no window at all: the failure message is due
};

// Brings back the windows of the last run: the current list (the first
// window gets `first` true), else the last unloaded window, else the
// factory copy `factoryCopy` copied over the current windows file and both
// tried again. `makeWindow` creates one window from its section and says
// whether it loaded.
WindowLoadResult LoadFileListWindows(WindowStore& store, const std::string& factoryCopy,
                                     const std::function<bool(const std::string& section, bool first)>& makeWindow);

// The message shown when no window could be loaded, for a program called `appName`.
std::string windowLoadFailureMessage(std::string_view appName);

}  // namespace tav
