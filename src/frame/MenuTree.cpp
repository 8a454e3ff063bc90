#include "frame/MenuTree.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <initializer_list>
#include <utility>

namespace tav {

std::string upperCode(std::string_view code) {
    std::string out(code);
    for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

std::optional<std::pair<std::string, int>> splitArrayCode(std::string_view code) {
    const size_t open = code.find('(');
    if (open == std::string_view::npos || open == 0 || code.size() < open + 3 || code.back() != ')')
        return std::nullopt;
    const std::string_view digits = code.substr(open + 1, code.size() - open - 2);
    int index = -1;
    auto res = std::from_chars(digits.data(), digits.data() + digits.size(), index);
    if (res.ec != std::errc() || res.ptr != digits.data() + digits.size() || index < 0) return std::nullopt;
    return std::make_pair(upperCode(code.substr(0, open)), index);
}

namespace {
std::string memberCode(std::string_view array, int index) {
    return std::string(array) + "(" + std::to_string(index) + ")";
}

// The key function codes: virtual key code, then `c` ctrl, `a` alt, `s`
// shift, or the words "ctrl" and "alt".
const char* const kKeyFunctionCodes[] = {
    "84",  "84c",  "84ca", "82",   "82c",  "82ca", "76",  "76c",  "76ca", "85",    "87",    "75cs", "78cs",
    "65cs", "86",  "79",   "75",   "89",   "77",   "89ctrl", "77c", "88",  "88c",   "88a",   "88ac", "75c",
    "74c", "86c",  "66c",  "86cs", "71cs", "71ac", "71as", "71D", "38alt", "40alt", "66",    "83c",  "83cs",
    "80"};

std::string keyName(int code) {
    if ((code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9')) return std::string(1, static_cast<char>(code));
    switch (code) {
        case 38: return "Up";
        case 40: return "Down";
        case 37: return "Left";
        case 39: return "Right";
        default: return "Key " + std::to_string(code);
    }
}

// "Ctrl+Alt+T" for "84ca": the shift names, then the key.
std::string keyFunctionCaption(std::string_view code) {
    size_t digits = 0;
    while (digits < code.size() && std::isdigit(static_cast<unsigned char>(code[digits]))) ++digits;
    int key = 0;
    std::from_chars(code.data(), code.data() + digits, key);
    std::string_view flags = code.substr(digits);
    bool shift = false, ctrl = false, alt = false;
    std::string other;
    if (flags == "ctrl") ctrl = true;
    else if (flags == "alt") alt = true;
    else
        for (char f : flags) {
            if (f == 'c') ctrl = true;
            else if (f == 'a') alt = true;
            else if (f == 's') shift = true;
            else other += f;
        }
    std::string text;
    if (shift) text += "Shift+";
    if (ctrl) text += "Ctrl+";
    if (alt) text += "Alt+";
    text += keyName(key);
    if (!other.empty()) text += " (" + other + ")";
    return "Key function " + text;
}

constexpr std::string_view kFontGroup = "Format - Font / Size";
}  // namespace

// Builds the catalogue in menu order: menu() and sub() open a level, end()
// closes it.
class MenuTreeBuilder {
public:
    MenuTree tree;

    void menu(std::string_view name, std::string_view caption) {
        add(name, caption);
        open_.push_back(upperCode(name));
    }
    void sub(std::string_view name, std::string_view caption) {
        add(name, caption);
        open_.push_back(upperCode(name));
    }
    void end() { open_.pop_back(); }
    void item(std::string_view name, std::string_view caption) { add(name, caption); }
    void sep() {
        MenuItem& m = add("", "-");
        m.separator = true;
    }
    // Members lo..hi; captions given for the first ones, in order.
    void array(std::string_view name, int lo, int hi, std::initializer_list<std::string_view> captions = {}) {
        auto caption = captions.begin();
        for (int i = lo; i <= hi; ++i) {
            MenuItem& m = add(memberCode(name, i), caption != captions.end() ? *caption++ : std::string_view());
            m.name = std::string(name);
            m.array = upperCode(name);
            m.index = i;
            if (m.caption == "-") m.separator = true;
        }
    }
    void fixed(std::string_view code, std::string_view caption, std::string_view group) {
        tree.fixed_.push_back({std::string(code), std::string(caption), std::string(group), false});
    }

private:
    MenuItem& add(std::string_view name, std::string_view caption) {
        MenuItem m;
        m.name = std::string(name);
        m.code = upperCode(name);
        m.caption = std::string(caption);
        if (!open_.empty()) m.parent = open_.back();
        tree.items_.push_back(std::move(m));
        return tree.items_.back();
    }
    std::vector<std::string> open_;
};

MenuTree MenuTree::standard() {
    MenuTreeBuilder b;
    b.menu("F", "&File");
    b.item("FM", "&Move");
    b.item("FC", "&Copy");
    b.item("FD", "&Delete");
    b.item("FY", "Delete without &recycle copy");
    b.sep();
    b.item("FN", "Re&name");
    b.item("FT", "Propert&ies");
    b.item("FU", "&Update FileList");
    b.sep();
    b.item("FO", "&Associate");
    b.item("FE", "Create Direc&tory");
    b.sub("FL", "System T&ools");
    b.item("FLH", "Show &Free Space");
    b.item("FLD", "Distribution &space by subdir");
    b.end();
    b.item("F_Save", "&Save Window");
    b.item("FA", "Save &Window As ...");
    b.item("FG", "&Get Saved Window");
    b.sep();
    b.item("FX", "E&xit");
    b.end();

    b.menu("E", "&Edit");
    b.item("IT", "&Text");
    b.item("IR", "T&ree");
    b.item("II", "&List - Files");
    b.sep();
    b.item("ID", "Select &Directories");
    b.item("IB", "Select &By File Type / Start Value");
    b.item("IL", "Select C&olumns");
    b.sub("IS", "Chan&ge Dir Selection");
    b.item("ISA", "&Add selected dir/file");
    b.item("ISE", "&Remove selected Dir/File");
    b.item("ISN", "&New List (Multiple Dir Selection)");
    b.end();
    b.sep();
    b.item("EC", "&Clip");
    b.item("Ea", "Select &All");
    b.item("EF", "&Find");
    b.item("EN", "Find &Next");
    b.item("EP", "Find &Previous");
    b.sep();
    b.item("EO", "Option&s");
    b.sub("ED", "D&efine");
    b.item("EDK", "&Key");
    b.item("EDA", "&Action Menu Item");
    b.item("EDN", "Action Menu Items (&Setup Wizard)");
    b.item("EDL", "Special &Links (Browser for Help etc)");
    b.item("EDS", "Text to Skip when show &Plain Text");
    b.item("EDC", "&Columns");
    b.item("EDQ", "Default Se&quence to check file type associations");
    b.end();
    b.sub("EQ", "&Quick Options");
    b.item("debugNOTdebugISbugfix1", "- do not delete. click EQM 1st in no wor");
    b.item("EQM", "&Multiple Dir Selection");
    b.item("EQS", "Include &SubDirs");
    b.item("EQA", "&AutoRefresh File List");
    b.item("EQR", "S&kip sort after Refresh file List");
    b.item("EQB", "Refresh FileList when &double-click");
    b.sep();
    b.item("EQU", "A&utoRefresh Text (on file list window)");
    b.item("EQZ", "Popup Text - Resi&ze to std size");
    b.sep();
    b.item("EQP", "&Elliptical selection box");
    b.item("EQV", "Right click - Move item in Pla&ylist");
    b.end();
    b.sep();
    b.item("EE", "Refres&h");
    b.item("EI", "Add D&irectory && Refresh");
    b.item("ES", "Refresh Single Director&y");
    b.end();

    b.menu("O", "&Show");
    b.item("OE", "Show C&ell");
    b.item("ON", "Show Plai&n Text");
    b.item("OU", "Show &Unformatted Text");
    b.item("OB", "Show &Bytes/Info for text");
    b.sep();
    b.item("OX", "Find File With Te&xt / By Date / Size");
    b.item("OT", "Find Nex&t File With Text / By ...");
    b.item("OC", "Show Find File Info For &Current List");
    b.sep();
    b.item("OS", "Show HTML &Addresses && Tags");
    b.item("OM", "Show Hex Du&mp for File");
    b.end();

    b.menu("S", "&DartShift");
    b.array("SZ", 0, 10);
    b.item("SH", "S&how all items on Main Menu bar");
    b.sub("SC", "&Change Item From This Set");
    b.array("SC09", 0, 10);
    b.end();
    b.item("SU", "A&utoMake DartShift Sets");
    b.item("SW", "Ne&w DartShift Set");
    b.item("SA", "Save DartShift Set &As ...");
    b.item("SG", "&Get Saved DartShift Set");
    b.end();

    b.menu("A", "&Action");
    b.array("AZZ", 0, 0, {"&Default for file Type"});
    b.array("AZZ", 4, 12,
            {"Not Defined", "Not Defined", "Not Defined", "Not Defined", "Not Defined", "Not Defined", "Not Defined",
             "Not Defined", "Not Defined"});
    b.sep();
    b.sub("AL", "More Actions (&Ctrl)");
    b.array("ALZ", 0, 12);
    b.end();
    b.sub("AS", "More Actions (&Shift)");
    b.array("ASZ", 0, 12);
    b.end();
    b.sub("AH", "More Actions (S&hift-Ctrl)");
    b.array("AHZ", 0, 12);
    b.end();
    b.item("AA", "Select from &Associations");
    b.end();

    b.menu("V", "&View");
    b.item("VT", "&Text");
    b.item("VR", "T&ree");
    b.item("VL", "&List");
    b.sep();
    b.item("VI", "List F&iles");
    b.item("VH", "List Pat&hs");
    b.sub("VV", "List Sa&ved");
    b.item("VVS", "&Sets");
    b.item("VVW", "&Windows");
    b.item("VVL", "Se&lections");
    b.item("VVR", "&Formats");
    b.end();
    b.sep();
    b.array("VSort", 0, 3, {"Sort by &Path", "Sort by File Na&me", "Sort by File T&ype", "Sort by Si&ze"});
    b.sep();
    b.sub("VY", "Sort &by");
    b.array("VYSort", 0, 5, {"&Date/Time", "Path/File &Type", "Path/&Size", "&Path/Date", "&File Type/Size", "-"});
    b.end();
    b.item("VN", "&No Sort ");
    b.item("VU", "Other Sort Se&quence");
    b.sep();
    b.item("VQ", "Sho&w Sort Sequence");
    b.item("VS", "&Sort Ascending");
    b.item("VC", "Sort &Case Sensitive");
    b.item("VM", "Ren&umber Files");
    b.item("VO", "DEBUG: set all timers &off");
    b.item("Debug1", "DEBUG no err hndlg");
    b.end();

    b.menu("L", "Se&lect");
    b.item("LR", "Select &Dirs && Files to list");
    b.item("LB", "Select By File &Type");
    b.item("LL", "Select &Columns");
    b.sub("LC", "&Add/Remove Column");
    b.item("LCE", "&Remove Selected Columns");
    b.array("LCZ", 0, 0);
    b.end();
    b.sep();
    b.item("LM", "&Multiple Dir Selection");
    b.sub("LS", "Change Dir &Selection");
    b.item("LSA", "&Add selected dir/file");
    b.item("LSE", "&Remove selected Dir/File");
    b.item("LSN", "&New List (Multiple Dir Selection)");
    b.end();
    b.sep();
    b.item("LF", "&Font (all parts)");
    b.item("LI", "&Increase Size (all parts)");
    b.item("LD", "D&ecrease Size (all parts)");
    b.item("LP", "Seperation &Lines");
    b.item("LZ", "Date, Time, Si&ze format");
    b.sep();
    b.item("LO", "Col &Width");
    b.sub("LT", "Col Alig&nment");
    b.item("LTL", "&Left");
    b.item("LTC", "&Centre");
    b.item("LTR", "&Right");
    b.end();
    b.sub("LE", "S&plit - Set Col");
    b.item("LEC", "&Current Col");
    b.item("LEA", "&Add column to fixed part");
    b.item("LER", "&Remove column from fixed part");
    b.end();
    b.sep();
    b.item("LH", "Row &Height");
    b.item("LY", "Cop&y Row Height to all Rows");
    b.item("LU", "&Unhide all hidden rows");
    b.sub("LW", "Split - Set R&ow");
    b.item("LWC", "&Current Row");
    b.item("LWA", "&Add row to fixed part");
    b.item("LWR", "&Remove row from fixed part");
    b.end();
    b.sep();
    // More items than free letters: the last few go without a mark.
    b.item("LV_Sel", "Sa&ve Selections/View");
    b.item("LA_Sel", "Save Selections/View As ...");
    b.item("LG_Sel", "&Get Saved Selections/Views");
    b.item("LV_Fmt", "Save Fo&rmats");
    b.item("LA_Fmt", "Save Formats As ...");
    b.item("LG_Fmt", "Get Saved set of Formats");
    b.end();

    b.menu("W", "&Window");
    b.item("WW", "&New");
    b.sep();
    b.item("WG", "Change Window T&ype");
    b.sub("WT", "&Toggle Position");
    b.item("WTT", "&Text - Move with Up/down keys");
    b.item("WTR", "T&ree");
    b.item("WTL", "&List");
    b.sep();
    b.item("WTE", "Text - Save &First Toggle Position");
    b.item("WTX", "Text - Save &Second Toggle Position");
    b.item("WTA", "Tree - S&ave First");
    b.item("WTV", "Tree - Sa&ve Second");
    b.item("WTI", "List - Save F&irst");
    b.item("WTS", "List - Save Se&cond");
    b.end();
    b.sub("WB", "Status &Bar");
    b.item("WBB", "Show Status &Bar");
    b.item("WBR", "Show &DropDown List Now");
    b.sep();
    b.item("WBS", "Show List of &Results (Actions done)");
    b.item("WBD", "Show List of D&irs used for File List");
    b.item("WBE", "Show List of &Errors");
    b.sep();
    b.item("WBP", "Show &Progress Indicator");
    b.item("WBC", "Show &Count Selected Files/Dirs");
    b.item("WBY", "Show B&ytes Selected");
    b.item("WBU", "Show &Stop/Start Buttons");
    b.end();
    b.sep();
    b.item("WC", "&Cascade");
    b.item("WH", "Tile &Horizontal");
    b.item("WV", "Tile &Vertical");
    b.item("WD", "Fill Wi&dth");
    b.item("WE", "Fill H&eight");
    b.item("WF", "&Fill Screen");
    b.sep();
    b.array("09", 0, 10, {"", "", "", "", "", "", "", "", "", "", "&10"});
    b.end();

    b.menu("H", "&Help");
    b.item("HC", "&Contents");
    b.item("HL", "Help for &Last function");
    b.item("HK", "&Keys");
    b.item("HM", "Show Same Help &Again");
    b.sep();
    b.item("HT", "&Tips");
    b.item("HA", "A&bout");
    b.end();

    // The Window Type menus: hidden until a Window Type gives them a caption
    // (an item without a caption is not shown).
    for (const char* n : {"1", "2", "3"}) {
        b.menu(n, "");
        b.array(std::string(n) + "Z", 0, 0);
        b.end();
    }

    // The codes without a menu item. `AS` and `LF` name menu items too, and
    // those answer first.
    b.fixed("Font_Hilite", "Change Font (Current Section)", kFontGroup);
    b.fixed("IncrSize_Hilite", "Increase Font Size (Current Section)", kFontGroup);
    b.fixed("DecrSize_Hilite", "Decrease Font Size (Current Section)", kFontGroup);
    b.fixed("Clip First PAFN", "Clip Path and File Name of First Selected File", "Edit - Clip");
    b.fixed("Clip First Filename", "Clip File Name of First Selected File", "Edit - Clip");
    b.fixed("RClick", "Right Click Menu", "Mouse");
    b.fixed("Shift RClick", "Shift Right Click Menu", "Mouse");
    b.fixed("DblClick", "Double Click", "Mouse");
    b.fixed("NextWindow", "Next Window", "Window");
    b.fixed("PrevWindow", "Previous Window", "Window");
    b.fixed("RN_DIRLIST", "Increase Font Size (Directory List)", kFontGroup);
    b.fixed("RN_TEXT", "Increase Font Size (Text)", kFontGroup);
    b.fixed("RN_FILELIST", "Increase Font Size (File List)", kFontGroup);
    b.fixed("RO_DIRLIST", "Change Font (Directory List)", kFontGroup);
    b.fixed("RO_TEXT", "Change Font (Text)", kFontGroup);
    b.fixed("RE_DIRLIST", "Decrease Font Size (Directory List)", kFontGroup);
    b.fixed("RE_TEXT", "Decrease Font Size (Text)", kFontGroup);
    b.fixed("RE_FILELIST", "Decrease Font Size (File List)", kFontGroup);
    b.fixed("AS", "More Actions (Shift)", "Action");
    b.fixed("AZ", "Action Menu (Right Click)", "Action");
    b.fixed("LF", "Font (all parts)", kFontGroup);
    for (const char* k : kKeyFunctionCodes)
        b.tree.fixed_.push_back({k, keyFunctionCaption(k), "Keys - Special Functions", true});

    MenuTree tree = std::move(b.tree);
    // Commands that work with no File List window: a new or saved window,
    // exit, options, the debug switches and the Help menu; menus and
    // submenus only open.
    for (MenuItem& m : tree.items_) {
        static const char* const kFree[] = {"WW", "FG", "FX", "EO", "VO", "DEBUG1"};
        const bool isParent = std::any_of(tree.items_.begin(), tree.items_.end(),
                                          [&](const MenuItem& o) { return !m.code.empty() && o.parent == m.code; });
        if (m.separator || m.topLevel() || isParent || m.parent == "H" ||
            std::find(std::begin(kFree), std::end(kFree), m.code) != std::end(kFree))
            m.needsFileList = false;
    }
    return tree;
}

const MenuItem* MenuTree::find(std::string_view code) const {
    if (code.empty()) return nullptr;
    const std::string up = upperCode(code);
    for (const MenuItem& m : items_)
        if (m.code == up) return &m;
    return nullptr;
}

MenuItem* MenuTree::findMutable(std::string_view code) { return const_cast<MenuItem*>(std::as_const(*this).find(code)); }

std::vector<const MenuItem*> MenuTree::children(std::string_view parentCode) const {
    const std::string up = upperCode(parentCode);
    std::vector<const MenuItem*> out;
    for (const MenuItem& m : items_)
        if (!m.parent.empty() && m.parent == up) out.push_back(&m);
    return out;
}

std::vector<const MenuItem*> MenuTree::topMenus() const {
    std::vector<const MenuItem*> out;
    for (const MenuItem& m : items_)
        if (m.topLevel()) out.push_back(&m);
    return out;
}

std::vector<const MenuItem*> MenuTree::parentsOf(const MenuItem& item) const {
    std::vector<const MenuItem*> out;
    for (const MenuItem* p = find(item.parent); p; p = find(p->parent)) out.push_back(p);
    return out;
}

const MenuItem* MenuTree::topMenuOf(const MenuItem& item) const {
    auto parents = parentsOf(item);
    return parents.empty() ? &item : parents.back();
}

bool MenuTree::isArray(std::string_view arrayCode) const {
    const std::string up = upperCode(arrayCode);
    return std::any_of(items_.begin(), items_.end(), [&](const MenuItem& m) { return m.array == up; });
}

bool MenuTree::growsAtRunTime(std::string_view arrayCode) const {
    const std::string up = upperCode(arrayCode);
    return up == "LCZ" || up == "1Z" || up == "2Z" || up == "3Z";
}

std::vector<const MenuItem*> MenuTree::members(std::string_view arrayCode) const {
    const std::string up = upperCode(arrayCode);
    std::vector<const MenuItem*> out;
    for (const MenuItem& m : items_)
        if (m.array == up) out.push_back(&m);
    return out;
}

bool MenuTree::setCaption(std::string_view code, std::string caption) {
    MenuItem* m = findMutable(code);
    if (!m || m->separator) return false;
    m->caption = std::move(caption);
    return true;
}

bool MenuTree::setVisible(std::string_view code, bool visible) {
    MenuItem* m = findMutable(code);
    if (!m) return false;
    m->visible = visible;
    return true;
}

const MenuItem* MenuTree::addMember(std::string_view arrayCode, int index) {
    if (!growsAtRunTime(arrayCode) || index < 0) return nullptr;
    const std::string up = upperCode(arrayCode);
    for (;;) {
        auto last = std::find_if(items_.rbegin(), items_.rend(), [&](const MenuItem& m) { return m.array == up; });
        if (last == items_.rend()) return nullptr;
        if (last->index >= index) return find(memberCode(up, index));
        MenuItem m = *last;
        m.index = last->index + 1;
        m.code = memberCode(up, m.index);
        m.caption.clear();
        m.visible = true;
        items_.insert(last.base(), std::move(m));
    }
}

void MenuTree::removeMembersFrom(std::string_view arrayCode, int index) {
    if (!growsAtRunTime(arrayCode)) return;
    const std::string up = upperCode(arrayCode);
    const int from = std::max(index, 1);
    std::erase_if(items_, [&](const MenuItem& m) { return m.array == up && m.index >= from; });
}

const FixedCode* MenuTree::findFixed(std::string_view code) const {
    const std::string up = upperCode(code);
    for (const FixedCode& f : fixed_)
        if (upperCode(f.code) == up) return &f;
    return nullptr;
}

std::vector<std::string> MenuTree::fixedList() const {
    static const char* const kArrayOrder[] = {"09", "SC09", "SZ", "AZZ", "ALZ", "ASZ", "AHZ", "VSORT", "VYSORT", "LCZ"};
    std::vector<std::string> out;
    for (const char* a : kArrayOrder)
        for (const MenuItem* m : members(a)) out.push_back(m->code);
    for (const MenuItem& m : items_) {
        if (m.separator && !m.member()) continue;
        if (m.member()) continue;  // listed with their arrays
        const MenuItem* top = topMenuOf(m);
        if (top->code == "1" || top->code == "2" || top->code == "3") continue;  // by caption only
        out.push_back(m.code);
    }
    for (const FixedCode& f : fixed_) {
        if (f.keyFunction) continue;
        if (find(f.code)) continue;  // a menu item of that code is listed already
        out.push_back(f.code);
    }
    out.emplace_back(kDummySplitCode);
    for (const FixedCode& f : fixed_)
        if (f.keyFunction) out.push_back(f.code);
    return out;
}

}  // namespace tav
