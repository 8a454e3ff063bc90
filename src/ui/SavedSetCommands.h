#pragma once
// The commands of saved Windows, Selections and Formats on the active File
// List window: FA, F_Save, FG (Window), LA_Sel, LV_Sel, LG_Sel (Selections),
// LA_Fmt, LV_Fmt, LG_Fmt (Formats).
#include <functional>
#include <string>

#include "frame/MenuDispatch.h"
#include "frame/SavedSets.h"

namespace tav {
class IniStore;
}

namespace tav::ui {

class AppContext;
class FileListWindow;
class MainWindow;

// What a command does: save as, save (overwrite) or get.
enum class SavedSetAction { SaveAs, Save, Get };

// Runs one command on a window, asking through `host`: the status lines go
// to its results list; after a get the window shows its state again.
// `countUse` counts the use of the set (none: not counted).
SavedSetResult runSavedSetCommand(FileListWindow& window, IniStore& ini, MessageHost& host, SavedKind kind,
                                  SavedSetAction action, const SavedUseCounter& countUse = {});

// Registers the nine handlers on the dispatch.
void installSavedSetCommands(MenuDispatch& dispatch, MainWindow& main, AppContext& app);

}  // namespace tav::ui
