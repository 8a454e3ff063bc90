#include "filelist/MultiDirsToggle.h"

#include "core/TextTrim.h"
#include "filelist/ListSpecEdit.h"

namespace tav {

MultiDirsToggle ToggleMultiDirs(const MultiDirsState& current, bool treeActive, std::string_view treeDirectory) {
    MultiDirsToggle out;
    out.state = current;
    out.state.multiDirs = !current.multiDirs;
    if (out.state.multiDirs) {
        out.state.listSelected = false;
        out.state.autoRefresh = false;
        return out;
    }
    out.state.listSelected = true;
    const std::string_view dir = trimBlanks(treeDirectory);
    if (treeActive && !dir.empty()) {
        const std::string spec = listSpecText({std::string(dir)});
        out.listSpecChanged = spec != current.listSpec;
        out.state.listSpec = spec;
    }
    return out;
}

}  // namespace tav
