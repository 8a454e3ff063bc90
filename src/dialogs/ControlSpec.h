#pragma once
// One control of a message box, read from its stored entry
// "<Type>|~~|f1|~~|f2|~~|...". A Type with a leading "_" shares the row with
// the control before it.
//
// OptionButton and CheckBox carry their caption in front of the numbered
// fields: "CheckBox|~~|Keep Backup Copy in Rec&ycled dir|~~|<f1>|~~|...",
// written "Keep Backup Copy in Rec&ycled dir||||||". Their Values entry holds
// the state. Every other control's caption or text is its Values entry (or
// for list controls, row 0 of its Lists column).
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

enum class ControlKind {
    TextBox,
    Label,
    OptionButton,
    CheckBox,
    ListBox,
    ComboBox,
    Grid,
    CommandButton,
    Shape,
    JustAddHeight,           // marker: adds field 2 (or a line gap) to the running position
    AddButtonsBeforeRest,    // marker: the button rows go here
    Unknown,
};

ControlKind controlKindOf(std::string_view type);  // with or without the leading "_"

// ListBox, ComboBox and Grid keep their value and items in the Lists column.
bool isListKind(ControlKind kind);
bool isListType(std::string_view type);

// The action of a double click (field 9) or Enter (field 19) on a list.
enum class ListAction { PressButton, Nothing, ShowText, OpenLink };
struct ListActionSpec {
    ListAction action = ListAction::Nothing;
    int button = 0;  // for PressButton
};

struct ControlSpec {
    std::string type;      // without the leading "_"
    ControlKind kind = ControlKind::Unknown;
    bool sharesRow = false;
    std::string caption;   // OptionButton and CheckBox only
    std::vector<std::string> fields;  // fields[n] is field n; fields[0] is empty

    // Raw field n ("" beyond the end: the control's default).
    std::string field(int n) const;
    std::optional<int> intField(int n) const;          // empty: none
    bool boolField(int n, bool fallback = false) const;  // empty: fallback

    // Fields 1 to 6, common to all controls. A width or height of 0 or less
    // means the designed size, so it comes back as none.
    std::optional<int> width() const;
    std::optional<int> height() const;
    bool bold() const { return boolField(3); }
    bool italic() const { return boolField(4); }
    std::optional<int> fontSize() const;
    std::string fontName() const { return field(6); }
    bool firstFocus() const { return kind != ControlKind::Label && boolField(7); }

    // TextBox
    bool selectAll() const { return kind == ControlKind::TextBox && boolField(8); }
    bool multiLine() const { return kind == ControlKind::TextBox && boolField(10); }
    std::optional<int> selStart() const { return intField(11); }
    std::optional<int> selLength() const { return intField(12); }
    // TextBox, OptionButton, CheckBox
    bool enabled() const { return boolField(13, true); }
    // TextBox, Label, OptionButton, CheckBox
    std::optional<int> borderStyle() const { return intField(9); }

    // ListBox, ComboBox, Grid
    int rowsToFill() const;                  // field 8; 0: all
    ListActionSpec doubleClickAction() const;  // field 9, default "show text"
    ListActionSpec enterAction() const;        // field 19, default nothing
    int multiSelect() const;                 // ListBox field 10: 0, 1 or 2
    int comboStyle() const;                  // ComboBox field 10

    // Grid
    int fixedRows() const;                   // field 10
    int fixedColumns() const;                // field 11, already less the one added
    std::vector<int> columnWidths() const;   // field 12
    std::vector<int> columnAlignments() const;  // field 13
    std::optional<int> scrollBars() const { return intField(14); }
    std::optional<int> gridLines() const { return intField(15); }
    bool userSort() const { return boolField(16); }
    // Fields 17 and 18: columns a to b selected at the start.
    std::optional<std::pair<int, int>> initialColumns() const;

    // JustAddHeight
    std::optional<int> addHeight() const { return intField(2); }
};

ControlSpec parseControlSpec(std::string_view stored);

}  // namespace tav
