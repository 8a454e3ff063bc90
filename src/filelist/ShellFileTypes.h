#pragma once
// The file types the platform knows, offered beside the named types in two
// forms: combined, one element for each kind of file with all its patterns
// ("*.htm|*.html;HTML document"), or separate, one element for each pattern
// ("*.htm;HTML document"). The form is the setting "Seperate FTList" of
// section "Options".
#include <string>
#include <string_view>
#include <vector>

#include "filelist/FileTypeList.h"

namespace tav {

inline constexpr std::string_view kSeperateFTListSection = "Options";
inline constexpr std::string_view kSeperateFTListEntry = "Seperate FTList";

struct KnownFileType {
    std::vector<std::string> patterns;  // "*.htm", "*.html"
    std::string name;                   // "HTML document"
};

// Combined: by name, case ignored; types without a usable pattern are left
// out. Separate: by pattern, case ignored, each pattern once, named after
// the first type that holds it. Patterns holding "|", ";", "{" or "}" are
// not usable.
FileTypeList shellFileTypes(const std::vector<KnownFileType>& known, bool separate);

// The caption of the button that flips the form: it names the other form.
std::string_view shellTypesButtonCaption(bool separate);

}  // namespace tav
