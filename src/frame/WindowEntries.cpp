// The entries of a File List window's four sections, with the key each is
// exchanged by and the value of a window built from nothing (the window of
// the factory data set).
#include <cctype>

#include "frame/WindowState.h"

namespace tav {

namespace {

using P = WindowPart;

constexpr bool kFlag = true;

const std::vector<WindowEntry> kEntries = {
    // window section
    {"Seperate copy menus", "SH", P::Window, "0", kFlag},
    {"New Window", ".k", P::Window, "0"},
    {"Read Files", "OF", P::Window, "-1", kFlag},
    {"No sort after change dir", "OP", P::Window, "0", kFlag},
    {"Dbl Clcik refresh", "OC", P::Window, "0", kFlag},
    {"Auto read text", "OX", P::Window, "-1", kFlag},
    {"Show file as (auto read/alt-up+dn)", "", P::Window, "Plain"},
    {"Multi Dirs", "LM", P::Window, "0", kFlag},
    {"Resize Show cell form", "O2", P::Window, "0", kFlag},
    {"Right Button Seq files", "OR", P::Window, "0", kFlag},
    {"WTYPE", ".4", P::Window, "F"},
    {"Status Bar_ONOFF", "wB", P::Window, "-1", kFlag},
    {"Status Bar DDERRLIST", "wE", P::Window, "0", kFlag},
    {"Status Bar_DDFILELIST", "wL", P::Window, "0", kFlag},
    {"Status Bar_DDSTATUS", "wS", P::Window, "-1", kFlag},
    {"Status Bar_PROGRESS", "wP", P::Window, "-1", kFlag},
    {"Status Bar_SELCOUNT", "wC", P::Window, "-1", kFlag},
    {"Status Bar_SELBYTES", "wY", P::Window, "-1", kFlag},
    {"Status Bar_BUTTONS", "wU", P::Window, "-1", kFlag},
    {"List Dir Width", "", P::Window, "3000"},
    {"Text Frame height", "", P::Window, "2500"},
    {"Top List height", "", P::Window, "1800"},
    {"Top List ID showing", "", P::Window, "f"},
    {"Last Txt PAFN", "", P::Window, ""},
    {"Dirs in 8.3 format", "", P::Window, "0"},
    {"Lastsel ele on HAform", "", P::Window, ""},
    {"Lastsel Attr on HAform", "", P::Window, ""},
    // last columns
    {"Last Col List", "", P::Cols, "4|1|2|3|6|7|0"},
    {"Column Widths", "", P::Cols, "600|3000|800|1300|1300|1100|4500"},
    {"Column Alignments", "", P::Cols, "7|1|1|7|7|7|1"},
    {"Fixed Cols", "", P::Cols, "0"},
    {"Sort Case Sensitive", "VC", P::Cols, "0", kFlag},
    {"Sort Ascending", "VS", P::Cols, "-1", kFlag},
    {"Sort col Index", "SO", P::Cols, "0|1"},
    {"First Part Only", ".q", P::Cols, "0"},
    {"First Part Bytes", ".r", P::Cols, "10000"},
    {"Bytes from start raw text", ".m", P::Cols, "200"},
    {"Bytes from start plain text", ".o", P::Cols, "200"},
    {"Bytes from end raw text", ".n", P::Cols, "200"},
    {"Bytes from end plain text", ".p", P::Cols, "200"},
    {"List Seperator", ".l", P::Cols, ","},
    {"Include html end tags", ".s", P::Cols, "0"},
    {"Col Options", "", P::Cols, ""},
    // last selections
    {"Last Dir", ".9", P::Selections, "{~/}"},
    {"Sub Dirs", "LD", P::Selections, "0", kFlag},
    {"Last FileType", ".b", P::Selections, "*"},
    {"Last Start Option", ".c", P::Selections, "*"},
    {"Include system", ".d", P::Selections, "0"},
    {"Include Hidden", ".e", P::Selections, "0"},
    {"List Dirs", ".f", P::Selections, "-1"},
    {"Fixed Rows", "", P::Selections, "1"},
    {"Row heights", "", P::Selections, ""},
    {"Show Text on listhtm", "VT", P::Selections, "-1", kFlag},
    {"Show Tree on listhtm", "VR", P::Selections, "-1", kFlag},
    {"Show Top List on Listhtm", "VL", P::Selections, "-1", kFlag},
    // last formats
    {"Date Format", ".1", P::Formats, "dd mmm yyyy"},
    {"Time format", ".2", P::Formats, "hh:nn:ss"},
    {"Size format", ".3", P::Formats, "#,##0"},
    {"Grid Separation Lines", "", P::Formats, "1"},
    {"Grid Fontname", "", P::Formats, "Sans Serif"},
    {"Grid Size", "", P::Formats, "9"},
    {"Grid Bold", "", P::Formats, "0"},
    {"Grid Italic", "", P::Formats, "0"},
    {"Select dir Fontname", "", P::Formats, "Sans Serif"},
    {"Select dir Size", "", P::Formats, "9"},
    {"Select dir Bold", "", P::Formats, "0"},
    {"Select dir Italic", "", P::Formats, "0"},
    {"Showdataform.Text Fontname", "", P::Formats, "Monospace"},
    {"Showdataform.Text Size", "", P::Formats, "10"},
    {"Showdataform.Text Bold", "", P::Formats, "0"},
    {"Showdataform.Text Italic", "", P::Formats, "0"},
};

bool equalFolded(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

}  // namespace

const std::vector<WindowEntry>& windowEntries() { return kEntries; }

const WindowEntry* findWindowEntry(std::string_view nameOrKey) {
    // Keys are two characters and exact ("Vw" is not "VW"); names are longer.
    const bool isKey = nameOrKey.size() <= 2;
    for (const WindowEntry& e : kEntries) {
        if (isKey ? (!e.key.empty() && e.key == nameOrKey) : equalFolded(e.name, nameOrKey)) return &e;
    }
    return nullptr;
}

const std::vector<std::string_view>& windowKeys() {
    static const std::vector<std::string_view> keys = {
        "SH", "OL", "OT", "OF", "OX", "OC", "OP", "FU", "OR", "O1", "O2", "LM", "LD", "VN", "VT", "VR",
        "VL", "VI", "VH", "Vw", "Vx", "Vy", "Vz", "VC", "VS", "LP", "Va", "S#", "H#", "F#", "E#", "L#",
        "V#", "I#", "FL", "LA", "LG", "LS", "L.", "RS", "VV", "V1", "FS", "wB", "wE", "wL", "wS", "wP",
        "wC", "wY", "wU", ".4", ".1", ".2", ".3", ".6", ".9", ".a", ".5", ".7", ".8", ".g", ".b", ".c",
        ".d", ".e", ".f", ".i", ".j", ".k", ".l", ".m", ".n", ".o", ".p", ".q", ".r", ".s", ".t"};
    return keys;
}

char topListLetter(std::string_view key) {
    static const std::pair<std::string_view, char> kinds[] = {{"VI", 'f'}, {"VH", 'p'}, {"Vw", 's'},
                                                              {"Vx", 'w'}, {"Vy", 'l'}, {"Vz", 'r'}};
    for (const auto& [k, letter] : kinds)
        if (k == key) return letter;
    return 0;
}

}  // namespace tav
