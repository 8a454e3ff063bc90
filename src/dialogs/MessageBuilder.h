#pragma once
// Building a message box request: buttons, controls, list items, groups.
// A caller keeps the numbers these return in variables and compares the
// result of the box against them, never against literal numbers:
//     std::string buttons;
//     int iYes = MBAddButton("&Yes", buttons, true);
//     int iNo = MBAddButton("&No", buttons, false);
#include <string>
#include <string_view>

#include "core/MessageRequest.h"

namespace tav {

// Appends a caption to a "|" button list and returns its number (from 1).
// first: the list starts afresh.
int MBAddButton(std::string_view caption, std::string& list, bool first);

// Appends a control and returns its index into request.values (from 1).
// first: the control arrays are emptied first. The spec may be given
// written ("6000|2000|||||") or stored (through MBSpec); it is stored as
// "<Type>|~~|<Spec>". For ListBox, ComboBox and Grid (also with a leading
// "_") the value goes to row 0 of the control's Lists column and its Values
// entry stays empty. An empty type raises AppError 9710.
int MBAddCtl(std::string_view type, std::string_view spec, std::string_view value,
             MessageRequest& request, bool first = false);

// Adds an item to a list control's Lists column (items are rows 1 on; row 0
// is the value). position -1: behind the last item; else the item number it
// takes. control -1: the last control added. Returns the item's row.
// A control that is no list control raises AppError 9712.
int MBAddListItem(std::string_view text, int position, MessageRequest& request, int control = -1);

// A row of CommandButtons inside the control area, one for each caption of
// the "|" list. firstInRow: the first button opens a new row (otherwise it
// shares the row of the control before). newArrays: the control arrays are
// emptied first. Returns the "|"-joined indices of the buttons.
std::string MBAddButtons(bool firstInRow, std::string_view spec, std::string_view captions,
                         MessageRequest& request, bool newArrays = false);

// A group of OptionButtons (or CheckBoxes, type "CheckBox") from one "|" list
// of captions, each on its own row unless oneRow. chosen: the number (from 1)
// of the caption that starts ticked, 0 for none. chosenIndex receives the
// Values index of that control (0 when none). Returns the "|"-joined indices.
std::string MBAddOptionGroup(std::string_view captions, int chosen, int* chosenIndex,
                             MessageRequest& request, std::string_view type = "OptionButton",
                             std::string_view spec = {}, bool newArrays = false, bool oneRow = false);

}  // namespace tav
