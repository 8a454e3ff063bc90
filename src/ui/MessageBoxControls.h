#pragma once
// The controls of a message box made from their specifications, their
// results read back, and the texts, pictures and key codes the box uses.
//
// Threads: UI thread only.
#include <QFont>
#include <QPixmap>
#include <QString>
#include <QWidget>
#include <any>
#include <functional>
#include <string>
#include <vector>

#include "dialogs/ControlSpec.h"
#include "dialogs/MessageBoxFormat.h"

namespace tav::ui {

// Pixels for a measure in twips, at the box's font.
using TwipsToPixels = std::function<int(double)>;

// The widget of one control, with its start value: value is its Values
// entry, list its Lists column (row 0 the value of a list control, rows 1 on
// its items). index names the widget ("fTextBox(3)"). Markers and unknown
// types give nullptr. A Grid's rows are the rows of its Lists column with the
// cells separated by tabs; its fixed rows and columns count in its row and
// column numbers.
QWidget* makeBoxControl(const ControlSpec& spec, int index, const std::string& value,
                        const std::vector<std::string>& list, QWidget* parent, const TwipsToPixels& px);

// The selection of a text box from its spec: all (field 8), SelStart and
// SelLength (fields 11 and 12), else the caret at the front.
void applyTextSelection(const ControlSpec& spec, QWidget* textBox);

// A grid's start scroll place, once it is shown with its size.
void applyGridScrollPlace(QWidget* grid);

// The result a list control writes to row 0 of its Lists column: a
// ListBox's ListIndex, or for multi-select the "|" list of selected indices
// ("-1" for none); a ComboBox's text and ListIndex; a Grid's
// "row|col|rowSel|colSel|topRow|leftCol".
std::string listControlResult(const ControlSpec& spec, QWidget* widget);

// The message box font of the user's format (the "MB formats" entries): the
// name "-FIXFONT-" is the fixed font, an empty name the application's font;
// a size of 0 or less keeps the size.
QFont messageBoxFont(const std::string& name, double size, bool bold, bool italic);
QFont messageBoxFont(const MessageBoxFormat& format);
// The format to store for a font: the fixed font's family is "-FIXFONT-".
MessageBoxFormat messageBoxFormatOf(const QFont& font);

// The message (or a Label's caption) as rich text: "&" stays, "#H160#"
// underlines the character behind it, line breaks are kept.
QString messageRichText(const std::string& message);

// A picture from the picture table: a QPixmap, QImage or QIcon, or the name
// of an image file (std::string or QString). Null for anything else.
QPixmap boxPicture(const std::any& stored);

// The key code and shift mask of a Qt key, as the key system counts them
// (letters and digits are their upper-case characters, F1 is 112, Esc 27;
// shift mask: 1 Shift, 2 Ctrl, 4 Alt).
int messageBoxKeyCode(int qtKey);
int messageBoxShiftMask(Qt::KeyboardModifiers modifiers);

}  // namespace tav::ui
