#pragma once
// What a File List window lists, as the selection dialogs edit it: the list
// spec and the defaults that an entry without a type or mark takes. The
// window fills it from its data items and stores it back after Apply or OK.
#include <string>

namespace tav {

struct ListSelection {
    std::string listSpec;          // `.9`
    std::string defaultType = "*"; // `.b` "Last FileType"
    bool includeSubdirs = false;   // menu state `LD` ("Sub Dirs")
    bool multiDirs = false;        // menu state `LM` ("Multi Dirs")
    bool autoRefresh = false;      // menu state `OF` ("Read Files")
    bool showHidden = false;       // `.d` (kept under "Include system")
    bool showSystem = false;       // `.e` (kept under "Include Hidden")
    bool showDirectories = true;   // `.f` ("List Dirs")
    bool newWindow = false;        // the result goes to a new window

    bool operator==(const ListSelection&) const = default;
};

}  // namespace tav
