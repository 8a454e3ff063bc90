#pragma once
// Which INI file holds a section, for the automatic file specification "::*".
#include <string_view>

namespace tav {

// The files that the start-up locates, each held as a file specification.
enum class IniRole { Main, XParam, Currwin, Asso, QMove, Cols, SkipText, Tips, Hef, Count };

inline constexpr std::string_view kAutoFile = "::*";

// The role whose file holds `section`.
IniRole routeSection(std::string_view section);

// The "PAFN ..." entry of section "Main" that names a role's file (empty for Main).
std::string_view roleEntry(IniRole role);

}  // namespace tav
