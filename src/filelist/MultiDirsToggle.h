#pragma once
// Switching a window's `Multi Dirs` (`LM`). On: a changed selection in the
// tree no longer lists by itself (`LS` and `OF` go off) and the tree picks
// directories to add or remove. Off: the tree selects one directory again
// (`LS` on); when the tree is the active part of the window, its selected
// directory becomes the whole list spec, which the window then saves.
#include <string>
#include <string_view>

namespace tav {

struct MultiDirsState {
    bool multiDirs = false;     // `LM`
    bool listSelected = true;   // `LS`: the list follows the tree's selection
    bool autoRefresh = false;   // `OF`: a change of selection refreshes at once
    std::string listSpec;       // `.9`
};

struct MultiDirsToggle {
    MultiDirsState state;
    bool listSpecChanged = false;  // the window saves its selection
};

// `treeActive`: the tree is the active part of the window; `treeDirectory`:
// its selected directory (empty when none).
MultiDirsToggle ToggleMultiDirs(const MultiDirsState& current, bool treeActive, std::string_view treeDirectory);

}  // namespace tav
