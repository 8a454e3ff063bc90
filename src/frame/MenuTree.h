#pragma once
// The menu catalogue of the main window as a table: every item with its code,
// caption (with its "&" access mark), parent and place; the separators; the
// arrays with their bounds; the Window Type menus `1`, `2`, `3`; and the codes
// that have no menu item (fixed caption records, key function codes).
//
// A code is the item's control name without "fMnu_", in upper case, with an
// array member's index in brackets: `FM`, `F_SAVE`, `AZZ(4)`, `VSORT(0)`.
// Codes are compared in upper case.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

// Heads the second list of codes; never a command.
inline constexpr std::string_view kDummySplitCode = "Dummy add split at end list";
// Heads the right-click-only actions in a listing of the codes.
inline constexpr std::string_view kRightClickOnlyHeader = "Actions not on menus/Only on Right click menus:,0,0|-1|-1";

struct MenuItem {
    std::string code;      // upper case; "AZZ(4)" for a member; empty for a separator
    std::string name;      // the control name without "fMnu_", as written ("F_Save", "VSort")
    std::string caption;   // with its "&" mark; "-" for a separator
    std::string parent;    // the parent's code; empty for a top-level menu
    std::string array;     // an array member: the array's code ("AZZ"); else empty
    int index = -1;        // an array member's index; else -1
    bool separator = false;
    bool visible = true;       // its own visibility, as designed
    bool needsFileList = true; // runs only with a File List window present

    bool topLevel() const { return parent.empty(); }
    bool member() const { return index >= 0; }
};

// A code with no menu item and its fixed caption record.
struct FixedCode {
    std::string code;     // as written ("Font_Hilite", "84c")
    std::string caption;  // field 1 of the record
    std::string group;    // field 7 of the record
    bool keyFunction = false;  // a key function code of the second list
};

// The code of a text, upper case; "" stays "".
std::string upperCode(std::string_view code);
// "AZZ(4)" -> {"AZZ", 4}; nullopt for a code without an index.
std::optional<std::pair<std::string, int>> splitArrayCode(std::string_view code);

class MenuTree {
public:
    // The catalogue of the main window.
    static MenuTree standard();

    // Every item in menu order (parents before their children).
    const std::vector<MenuItem>& items() const { return items_; }
    // An item by code, in any case; nullptr if there is none.
    const MenuItem* find(std::string_view code) const;
    // The items directly below a parent, in order (separators included).
    std::vector<const MenuItem*> children(std::string_view parentCode) const;
    std::vector<const MenuItem*> topMenus() const;
    // The top-level menu an item lies in (itself for a top-level menu).
    const MenuItem* topMenuOf(const MenuItem& item) const;
    // The parents of an item, nearest first.
    std::vector<const MenuItem*> parentsOf(const MenuItem& item) const;

    // Arrays: bounds at design time; LCZ, 1Z, 2Z, 3Z grow at run time.
    bool isArray(std::string_view arrayCode) const;
    bool growsAtRunTime(std::string_view arrayCode) const;
    std::vector<const MenuItem*> members(std::string_view arrayCode) const;

    // Run-time changes of the menu controls.
    bool setCaption(std::string_view code, std::string caption);
    bool setVisible(std::string_view code, bool visible);
    // Loads a member of a growing array (and any missing below it), placed
    // after the array's last member. Returns the member; nullptr if the array
    // does not grow.
    const MenuItem* addMember(std::string_view arrayCode, int index);
    // Unloads the members from `index` up (never member 0).
    void removeMembersFrom(std::string_view arrayCode, int index);

    // The codes without a menu item, in list order (first list, then the key
    // function codes of the second).
    const std::vector<FixedCode>& fixedCodes() const { return fixed_; }
    const FixedCode* findFixed(std::string_view code) const;

    // The fixed list of every code, in the order the command list gives
    // them: the arrays, the menu items, the codes without an item, then
    // kDummySplitCode heading the key function codes. The Window Type menus
    // are not in it; they come by caption (`name::item`).
    std::vector<std::string> fixedList() const;

private:
    friend class MenuTreeBuilder;
    MenuItem* findMutable(std::string_view code);
    std::vector<MenuItem> items_;
    std::vector<FixedCode> fixed_;
};

}  // namespace tav
