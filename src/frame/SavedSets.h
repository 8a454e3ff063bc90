#pragma once
// Saved Windows, Selections and Formats: a window's state copied under a
// name to a section of LH_saved.ini, and a saved set copied back into a
// window. Section "Main" of that file keeps the names of each kind; a name
// is unique across all kinds.
//
//   kind        menu codes (as, save, get)   list               key  use letter
//   Window      FA, F_Save, FG               saved fmts/selns   -4   w
//   Selections  LA_Sel, LV_Sel, LG_Sel       Saved Selections   -2   l
//   Formats     LA_Fmt, LV_Fmt, LG_Fmt       Saved Formats      -3   r
//
// A saved Selections set holds the columns with their sort and the
// selection entries; a saved Formats set the format entries; a saved Window
// all of a window's entries with its key definitions. What a get changes is
// written to the window's own sections at once.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"

namespace tav {

class IniStore;
class WindowState;
class WindowStore;

enum class SavedKind { Window, Selections, Formats };

inline constexpr std::string_view kSavedFileName = "LH_saved.ini";
inline constexpr std::string_view kSavedIndexSection = "Main";
inline constexpr std::string_view kAllSavedNamesEntry = "All Saved sectionnames";
inline constexpr std::string_view kSavedWindowsEntry = "saved fmts/selns";
inline constexpr std::string_view kSavedSelectionsEntry = "Saved Selections";
inline constexpr std::string_view kSavedFormatsEntry = "Saved Formats";

inline constexpr std::string_view kSavedCancelled = "cancelled.";
inline constexpr std::string_view kSavedGetCaption = "Select Saved Selections/Formats to load and press OK to continue";
inline constexpr std::string_view kSavedGetListSize = "5000|7000";
inline constexpr std::string_view kSavedDifferentDir =
    "Saved Selections Loaded with different Directory to that for which FileList now shown.";
inline constexpr std::string_view kSavedColumnOrderError =
    "Error in saved list format. Column sequence cannot be set correctly.";
// The bus command that makes the key definitions of a got Window take effect.
inline constexpr std::string_view kKeysAfterGetCommand = "DoKysAftGet";

// The index entry of "Main" that lists a kind's names.
std::string_view savedListEntry(SavedKind kind);
// The window key that holds the name of the set in use: "-4", "-2", "-3".
std::string_view savedNameKey(SavedKind kind);
// The window key set when a set is saved: "FS", "L.", "RS".
std::string_view savedFlagKey(SavedKind kind);
// The letter of the use count: 'w', 'l', 'r'.
char savedUseLetter(SavedKind kind);

// Counts one use of a saved set (the usage statistics); none: not counted.
using SavedUseCounter = std::function<void(char letter, const std::string& name)>;

// What a saved-set command works on.
struct SavedSetContext {
    WindowState& window;
    WindowStore& store;   // live saving of the window's sections
    IniStore& ini;
    MessageHost& host;
    std::string file;     // LH_saved.ini: ini.qualify(kSavedFileName)
    SavedUseCounter countUse;
};

// What a command did, for the window's status lines.
struct SavedSetResult {
    bool done = false;                 // a set was saved or got
    std::string name;                  // its name
    std::vector<std::string> results;  // lines for the results list, in order
    bool selectionsChanged = false;    // a get changed what is listed or shown: re-apply
    bool keysAfterGet = false;         // queue kKeysAfterGetCommand on the window's bus
};

// Save as: asks for a new name (again while the name is in use), writes the
// set under it and stores the name in the window's key.
SavedSetResult SaveWindowAs(SavedSetContext& ctx);
SavedSetResult SaveSelectionsAs(SavedSetContext& ctx);
SavedSetResult SaveFormatsAs(SavedSetContext& ctx);

// Save: overwrites the set named in the window's key after confirmation;
// with no name, as "save as".
SavedSetResult SaveWindow(SavedSetContext& ctx);
SavedSetResult SaveSelections(SavedSetContext& ctx);
SavedSetResult SaveFormats(SavedSetContext& ctx);

// Get: offers the saved names of the kind (for a Window: every saved name)
// and copies the one chosen into the window.
SavedSetResult GetSavedWindow(SavedSetContext& ctx);
SavedSetResult GetSavedSelections(SavedSetContext& ctx);
SavedSetResult GetSavedFormats(SavedSetContext& ctx);

// The kind-generic forms of the above.
SavedSetResult saveSetAs(SavedSetContext& ctx, SavedKind kind);
SavedSetResult saveSet(SavedSetContext& ctx, SavedKind kind);
SavedSetResult getSavedSet(SavedSetContext& ctx, SavedKind kind);

// The names of a saved kind, from section "Main".
std::vector<std::string> savedNames(IniStore& ini, const std::string& file, SavedKind kind);
// Every saved name of all kinds.
std::vector<std::string> allSavedNames(IniStore& ini, const std::string& file);

// The prompt of an overwrite of `name`: title and message lines.
MessageRequest overwriteRequest(SavedKind kind, const std::string& name);

// The lines for the results list after the shown columns changed from
// `oldList` to `newList` (stored column lists); none when they are the same.
std::vector<std::string> columnChangeLines(const std::string& oldList, const std::string& newList);
// True when every element of a stored column list names a column.
bool columnListFits(const std::string& list);

}  // namespace tav
