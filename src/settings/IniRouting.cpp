#include "settings/IniRouting.h"

#include "settings/ProfileFile.h"

namespace tav {

namespace {
bool startsWithFolded(std::string_view s, std::string_view prefix) {
    return s.size() >= prefix.size() && foldName(s.substr(0, prefix.size())) == foldName(prefix);
}
bool equalsFolded(std::string_view a, std::string_view b) {
    return a.size() == b.size() && foldName(a) == foldName(b);
}
template <size_t N>
bool oneOf(std::string_view s, const std::string_view (&names)[N]) {
    for (auto n : names)
        if (equalsFolded(s, n)) return true;
    return false;
}
}  // namespace

IniRole routeSection(std::string_view section) {
    static const std::string_view mainNames[] = {"Main", "Timeouts", "File Copy/Move/Delete", "SelectDir Fonts",
                                                 "Keys", "Description WindowTypes", "StatsDB", "MB formats",
                                                 "TBLParam"};
    static const std::string_view xparam[] = {"Actions", "Select File Type/start value"};
    static const std::string_view cols[] = {"Column Specs", "Options", "Last Col Width", "Last Col Align"};
    static const std::string_view asso[] = {"Associations/Default Actions", "Associations DDE defs"};
    static const std::string_view hef[] = {"List Files", "List Found Text", "Mixed BigLines", "Mixed SmallLines",
                                           "Menu spmi windowType"};

    if (section.substr(0, 2) == "--") return IniRole::Currwin;
    if (equalsFolded(section, "Tips")) return IniRole::Tips;
    if (oneOf(section, mainNames)) return IniRole::Main;
    if (oneOf(section, xparam)) return IniRole::XParam;
    if (oneOf(section, cols)) return IniRole::Cols;
    if (equalsFolded(section, "Skip Plain Text")) return IniRole::SkipText;
    if (equalsFolded(section, "Windows sections")) return IniRole::Currwin;
    if (oneOf(section, asso)) return IniRole::Asso;
    if (equalsFolded(section, "Organise")) return IniRole::QMove;
    if (oneOf(section, hef) || startsWithFolded(section, "HTML detail screen. Open Selected File Menu Item "))
        return IniRole::Hef;
    return IniRole::Main;
}

std::string_view roleEntry(IniRole role) {
    switch (role) {
        case IniRole::XParam: return "PAFN XParamIni";
        case IniRole::Currwin: return "PAFN CurrwinIni";
        case IniRole::Asso: return "PAFN AssoIni";
        case IniRole::QMove: return "PAFN QMoveIni";
        case IniRole::Cols: return "PAFN ColsIni";
        case IniRole::SkipText: return "PAFN SkipTextIni";
        case IniRole::Tips: return "PAFN Tips";
        case IniRole::Hef: return "HEFini";
        default: return "";
    }
}

}  // namespace tav
