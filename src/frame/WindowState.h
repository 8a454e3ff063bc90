#pragma once
// The state of one File List window as its four sections hold it: the
// section names, the value of every entry, and the menu states behind the
// two-character keys. Other windows and forms read and write it by key:
// get("LM1") is the checked flag of `LM`, get(".9") the list spec.
//
// Lives on the UI thread. A job gets what it needs from it before it starts.
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tav {

// The four sections of a window.
enum class WindowPart { Window, Cols, Selections, Formats };

struct WindowSections {
    std::string window;      // "--W <timer>"
    std::string cols;        // "--C <timer>"
    std::string selections;  // "--S <timer>"
    std::string formats;     // "--F <timer>"
    bool empty() const { return window.empty(); }
    const std::string& of(WindowPart part) const;
    std::string& of(WindowPart part) { return const_cast<std::string&>(std::as_const(*this).of(part)); }
};

// Names for a new window: the timer value (seconds since midnight, as
// single-precision text) with a blank in front, after "--W", "--C", "--S"
// and "--F".
WindowSections newWindowSections(double secondsSinceMidnight);

// One entry of a window's sections.
struct WindowEntry {
    std::string_view name;     // as stored, odd spellings included
    std::string_view key;      // window key ("LM", ".9", "wB" ...); empty if none
    WindowPart part;
    std::string_view factory;  // the value of a window built from nothing
    bool menuFlag = false;     // the key is a menu state; the value is its checked flag (-1/0)
};

// Every entry of the four sections, in the order a whole save writes them.
const std::vector<WindowEntry>& windowEntries();
// By entry name or by key, ignoring case for names; nullptr if unknown.
const WindowEntry* findWindowEntry(std::string_view nameOrKey);

// The entries of the window section that name the other three.
inline constexpr std::string_view kLastColsEntry = "Last Cols section";
inline constexpr std::string_view kLastSelectionsEntry = "Last Selections section";
inline constexpr std::string_view kLastFormatsEntry = "Last Formats section";

// The keys of the window-level exchange, in their order of reading.
const std::vector<std::string_view>& windowKeys();
// The menu keys of the Top List kinds and the letter `Top List ID showing`
// holds for each: "VI" f, "VH" p, "Vw" s, "Vx" w, "Vy" l, "Vz" r; 0 if none.
char topListLetter(std::string_view key);

// The record behind a menu key: digit 1 checked, 2 enabled, 3 allowed by the
// list kind, 4 its text.
struct MnuState {
    bool checked = false;
    bool enabled = true;
    bool allowed = true;
    std::string text;
};

struct CaseLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};

class WindowState {
public:
    WindowSections sections;

    // The value of an entry by name; the factory value of the table when the
    // window has none; empty for an entry the table does not know. The three
    // entries that name the other sections read and set `sections`.
    std::string value(std::string_view entry) const;
    bool flag(std::string_view entry) const;  // false only for "", "0", "False"
    long long number(std::string_view entry, long long fallback = 0) const;
    bool has(std::string_view entry) const;
    // In memory only; the store writes it (WindowStore::put).
    void set(std::string_view entry, std::string value);
    // An entry the table does not know (key definitions, grid properties),
    // kept with the section it was found in.
    void setIn(WindowPart part, std::string_view entry, std::string value);
    // The section an entry belongs to: the table's, the one it was found in,
    // else the window section.
    WindowPart partOf(std::string_view entry) const;
    // The entry a key reads and writes ("LM1" -> "Multi Dirs"); nullptr if none.
    static const WindowEntry* entryOfKey(std::string_view keyAndDigit);

    // The menu state of a key. For a key with an entry of its own, checked
    // follows that entry's value.
    MnuState menu(std::string_view key) const;
    void setMenu(std::string_view key, const MnuState& state);

    // The exchange by key: a menu key followed by a digit 1-4, or a value key
    // (".9", ".b", ...). A menu key with no digit, or a digit it lacks,
    // raises error 9710. Values of flags are "-1" and "0".
    std::string get(std::string_view keyAndDigit) const;
    void put(std::string_view keyAndDigit, std::string value);

    // Values by entry name, as loaded or set.
    const std::map<std::string, std::string, CaseLess>& values() const { return values_; }
    // Values of keys that have no entry in the sections (live for the run).
    const std::map<std::string, std::string, CaseLess>& keyValues() const { return keyValues_; }

private:
    std::map<std::string, std::string, CaseLess> values_;
    std::map<std::string, std::string, CaseLess> keyValues_;
    std::map<std::string, MnuState, CaseLess> menus_;
    std::map<std::string, WindowPart, CaseLess> extraParts_;
};

}  // namespace tav
