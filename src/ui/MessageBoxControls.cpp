#include "ui/MessageBoxControls.h"

#include <QApplication>
#include <QCheckBox>
#include <QFontDatabase>
#include <QComboBox>
#include <QFrame>
#include <QHeaderView>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableWidget>
#include <algorithm>
#include <cmath>

#include "core/ListText.h"
#include "dialogs/MessageOptions.h"

namespace tav::ui {

namespace {

QString qs(const std::string& s) { return QString::fromStdString(s); }

constexpr const char* kScrollPlace = "tavScrollPlace";

// The font name that stands for the fixed font.

bool inFixedFont(const ControlSpec& spec) { return spec.fontName() == kFixedFontName; }

// A control's font: fields 3 to 6 over the box's font; "-FIXFONT-" is the
// fixed font at the box's size. A font that cannot be had leaves the box's font.
QFont controlFont(const ControlSpec& spec, QFont base) {
    if (inFixedFont(spec)) {
        QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        if (base.pointSizeF() > 0) fixed.setPointSizeF(base.pointSizeF());
        fixed.setBold(base.bold());
        fixed.setItalic(base.italic());
        base = fixed;
    } else if (!spec.fontName().empty()) {
        base.setFamily(qs(spec.fontName()));
    }
    if (spec.bold()) base.setBold(true);
    if (spec.italic()) base.setItalic(true);
    if (auto size = spec.fontSize()) base.setPointSize(*size);
    return base;
}


// The numbers of a grid value "row|col|rowSel|colSel|topRow|leftCol"; -1 for
// a missing one.
std::vector<int> gridNumbers(const std::string& value) {
    std::vector<int> out;
    for (const std::string& item : splitItems(value))
        out.push_back(isNumericText(item) ? static_cast<int>(std::lround(optionNumber(item))) : -1);
    out.resize(6, -1);
    return out;
}

Qt::Alignment gridAlignment(int code) {
    Qt::Alignment horizontal = code >= 6 && code <= 8 ? Qt::AlignRight
                               : code >= 3 && code <= 5 ? Qt::AlignHCenter
                                                        : Qt::AlignLeft;
    Qt::Alignment vertical = code < 0 || code > 8 ? Qt::AlignVCenter
                             : code % 3 == 0      ? Qt::AlignTop
                             : code % 3 == 2      ? Qt::AlignBottom
                                                  : Qt::AlignVCenter;
    return horizontal | vertical;
}

QWidget* makeGrid(const ControlSpec& spec, int index, const std::vector<std::string>& list, QWidget* parent,
                  const TwipsToPixels& px) {
    auto* grid = new QTableWidget(parent);
    grid->setObjectName(QString("fGrid(%1)").arg(index));
    grid->horizontalHeader()->hide();
    grid->verticalHeader()->hide();
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionMode(QAbstractItemView::ContiguousSelection);
    grid->setSelectionBehavior(QAbstractItemView::SelectItems);
    grid->setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
    grid->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    size_t rows = list.size() > 1 ? list.size() - 1 : 0;
    if (spec.rowsToFill() > 0) rows = std::min(rows, static_cast<size_t>(spec.rowsToFill()));
    std::vector<QStringList> cells;
    int columns = 0;
    for (size_t r = 1; r <= rows; ++r) {
        cells.push_back(qs(list[r]).split('\t'));
        columns = std::max(columns, static_cast<int>(cells.back().size()));
    }
    grid->setRowCount(static_cast<int>(cells.size()));
    grid->setColumnCount(columns);
    const int fixedRows = std::min(spec.fixedRows(), grid->rowCount());
    const int fixedColumns = std::min(spec.fixedColumns(), columns);
    const std::vector<int> alignments = spec.columnAlignments();
    QFont fixedFont = grid->font();
    fixedFont.setBold(true);
    for (int r = 0; r < grid->rowCount(); ++r) {
        for (int col = 0; col < columns; ++col) {
            const QStringList& row = cells[static_cast<size_t>(r)];
            auto* item = new QTableWidgetItem(col < row.size() ? row[col] : QString());
            if (static_cast<size_t>(col) < alignments.size())
                item->setTextAlignment(gridAlignment(alignments[static_cast<size_t>(col)]));
            if (r < fixedRows || col < fixedColumns) {
                item->setFlags(Qt::ItemIsEnabled);
                item->setBackground(parent->palette().button());
                item->setFont(fixedFont);
            }
            grid->setItem(r, col, item);
        }
    }
    const std::vector<int> widths = spec.columnWidths();
    for (int col = 0; col < columns; ++col) {
        if (static_cast<size_t>(col) < widths.size() && widths[static_cast<size_t>(col)] >= 0)
            grid->setColumnWidth(col, px(widths[static_cast<size_t>(col)]));
        else
            grid->resizeColumnToContents(col);
    }
    if (auto bars = spec.scrollBars()) {
        grid->setHorizontalScrollBarPolicy(*bars == 1 || *bars == 3 ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
        grid->setVerticalScrollBarPolicy(*bars == 2 || *bars == 3 ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    }
    if (auto lines = spec.gridLines(); lines && *lines == 0) grid->setShowGrid(false);

    // The start: the value's selection and scroll place, or columns a to b.
    const std::vector<int> n = gridNumbers(list.empty() ? std::string() : list[0]);
    auto inRows = [&](int r) { return std::clamp(r, 0, std::max(0, grid->rowCount() - 1)); };
    auto inColumns = [&](int col) { return std::clamp(col, 0, std::max(0, columns - 1)); };
    if (grid->rowCount() > 0 && columns > 0) {
        if (auto range = spec.initialColumns()) {
            const int top = inRows(fixedRows);
            grid->setCurrentCell(top, inColumns(range->first), QItemSelectionModel::NoUpdate);
            grid->setRangeSelected(QTableWidgetSelectionRange(top, inColumns(range->first), grid->rowCount() - 1,
                                                              inColumns(range->second)), true);
        } else if (n[0] >= 0 && n[1] >= 0) {
            const int row = inRows(n[0]);
            const int col = inColumns(n[1]);
            const int rowSel = n[2] >= 0 ? inRows(n[2]) : row;
            const int colSel = n[3] >= 0 ? inColumns(n[3]) : col;
            grid->setCurrentCell(row, col, QItemSelectionModel::NoUpdate);
            grid->setRangeSelected(QTableWidgetSelectionRange(std::min(row, rowSel), std::min(col, colSel),
                                                              std::max(row, rowSel), std::max(col, colSel)), true);
        }
        // The scroll place is set once the box is shown and the grid has its size.
        grid->setProperty(kScrollPlace, QPoint(n[5] >= 0 ? inColumns(n[5]) : 0, n[4] >= 0 ? inRows(n[4]) : 0));
    }
    return grid;
}

}  // namespace

QFont messageBoxFont(const std::string& name, double size, bool bold, bool italic) {
    QFont font = QApplication::font();
    if (name == kFixedFontName) font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    else if (!name.empty()) font.setFamily(qs(name));
    if (size > 0) font.setPointSizeF(size);
    font.setBold(bold);
    font.setItalic(italic);
    return font;
}

QFont messageBoxFont(const MessageBoxFormat& format) {
    return messageBoxFont(format.fontName, format.size, format.bold, format.italic);
}

MessageBoxFormat messageBoxFormatOf(const QFont& font) {
    MessageBoxFormat format;
    const bool fixed = font.family() == QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    format.fontName = fixed ? std::string(kFixedFontName) : font.family().toStdString();
    format.size = font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
    format.bold = font.bold();
    format.italic = font.italic();
    return format;
}

QPixmap boxPicture(const std::any& stored) {
    if (auto* p = std::any_cast<QPixmap>(&stored)) return *p;
    if (auto* i = std::any_cast<QImage>(&stored)) return QPixmap::fromImage(*i);
    if (auto* c = std::any_cast<QIcon>(&stored)) return c->pixmap(32, 32);
    if (auto* f = std::any_cast<QString>(&stored)) return QPixmap(*f);
    if (auto* f = std::any_cast<std::string>(&stored)) return QPixmap(qs(*f));
    return {};
}


int messageBoxKeyCode(int qtKey) {
    if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)) return qtKey;
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24) return 112 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab: case Qt::Key_Backtab: return 9;
    case Qt::Key_Return: case Qt::Key_Enter: return 13;
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Pause: return 19;
    case Qt::Key_CapsLock: return 20;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    case Qt::Key_Plus: return 187;
    case Qt::Key_Comma: return 188;
    case Qt::Key_Minus: return 189;
    case Qt::Key_Period: return 190;
    default: break;
    }
    return qtKey > 0 && qtKey < 256 ? qtKey : 0;
}

int messageBoxShiftMask(Qt::KeyboardModifiers modifiers) {
    int mask = 0;
    if (modifiers & Qt::ShiftModifier) mask |= 1;
    if (modifiers & Qt::ControlModifier) mask |= 2;
    if (modifiers & Qt::AltModifier) mask |= 4;
    return mask;
}

QString messageRichText(const std::string& message) {
    QString text = qs(message);
    QString out = "<span style=\"white-space:pre-wrap\">";
    for (qsizetype i = 0; i < text.size(); ++i) {
        QChar c = text[i];
        if (text.mid(i, 6) == "#H160#") {
            i += 6;
            if (i >= text.size()) break;
            qsizetype n = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
            out += "<u>" + text.mid(i, n).toHtmlEscaped() + "</u>";
            i += n - 1;
        } else if (c == '\r') {
            if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
            out += "<br>";
        } else if (c == '\n') {
            out += "<br>";
        } else {
            out += QString(c).toHtmlEscaped();
        }
    }
    return out + "</span>";
}

QWidget* makeBoxControl(const ControlSpec& spec, int index, const std::string& value,
                        const std::vector<std::string>& list, QWidget* parent, const TwipsToPixels& px) {
    const QString name = QString("(%1)").arg(index);
    QWidget* w = nullptr;
    switch (spec.kind) {
    case ControlKind::TextBox: {
        if (spec.multiLine()) {
            auto* edit = new QPlainTextEdit(parent);
            edit->setObjectName("fTextBoxM" + name);
            edit->setPlainText(qs(value));
            edit->setTabChangesFocus(true);
            // Text in the fixed font is laid out in columns (a hex dump):
            // its lines are not wrapped.
            if (inFixedFont(spec)) edit->setLineWrapMode(QPlainTextEdit::NoWrap);
            w = edit;
        } else {
            auto* edit = new QLineEdit(qs(value), parent);
            edit->setObjectName("fTextBox" + name);
            w = edit;
        }
        if (auto border = spec.borderStyle(); border && *border == 0) {
            if (auto* frame = qobject_cast<QFrame*>(w)) frame->setFrameShape(QFrame::NoFrame);
            if (auto* line = qobject_cast<QLineEdit*>(w)) line->setFrame(false);
        }
        w->setEnabled(spec.enabled());
        applyTextSelection(spec, w);
        break;
    }
    case ControlKind::Label: {
        auto* label = new QLabel(parent);
        label->setObjectName("fLabel" + name);
        label->setTextFormat(Qt::RichText);
        label->setWordWrap(true);
        label->setText(messageRichText(value));
        if (auto border = spec.borderStyle(); border && *border == 1) label->setFrameShape(QFrame::Box);
        w = label;
        break;
    }
    case ControlKind::CheckBox: {
        auto* box = new QCheckBox(qs(spec.caption), parent);
        box->setObjectName("fCheck" + name);
        box->setChecked(textIsTrue(value));
        box->setEnabled(spec.enabled());
        w = box;
        break;
    }
    case ControlKind::OptionButton: {
        auto* option = new QRadioButton(qs(spec.caption), parent);
        option->setObjectName("fOption" + name);
        option->setChecked(textIsTrue(value));
        option->setEnabled(spec.enabled());
        w = option;
        break;
    }
    case ControlKind::ListBox: {
        auto* lb = new QListWidget(parent);
        const int multi = spec.multiSelect();
        lb->setObjectName((multi ? QString("fLBMulti%1").arg(multi) : QString("fListBox")) + name);
        lb->setSelectionMode(multi == 0   ? QAbstractItemView::SingleSelection
                             : multi == 1 ? QAbstractItemView::MultiSelection
                                          : QAbstractItemView::ExtendedSelection);
        size_t rows = list.size() > 1 ? list.size() - 1 : 0;
        if (spec.rowsToFill() > 0) rows = std::min(rows, static_cast<size_t>(spec.rowsToFill()));
        for (size_t r = 1; r <= rows; ++r) lb->addItem(qs(list[r]));
        const std::string initial = list.empty() ? std::string() : list[0];
        bool first = true;
        for (const std::string& item : splitItems(initial)) {
            if (!isNumericText(item)) continue;
            int row = static_cast<int>(std::lround(optionNumber(item)));
            if (row < 0 || row >= lb->count()) continue;
            if (first) lb->setCurrentRow(row, QItemSelectionModel::NoUpdate);
            lb->item(row)->setSelected(true);
            first = false;
            if (multi == 0) break;
        }
        w = lb;
        break;
    }
    case ControlKind::ComboBox: {
        auto* cb = new QComboBox(parent);
        cb->setObjectName((spec.comboStyle() == 0 ? QString("fComboBoxstyle0") : QString("fComboBox")) + name);
        cb->setEditable(spec.comboStyle() == 0);
        if (cb->isEditable()) cb->setInsertPolicy(QComboBox::NoInsert);
        size_t rows = list.size() > 1 ? list.size() - 1 : 0;
        if (spec.rowsToFill() > 0) rows = std::min(rows, static_cast<size_t>(spec.rowsToFill()));
        for (size_t r = 1; r <= rows; ++r) cb->addItem(qs(list[r]));
        const std::string initial = list.empty() ? std::string() : list[0];
        if (initial.starts_with("CBtxt")) {
            QString text = qs(initial.substr(5));
            int found = cb->findText(text, Qt::MatchExactly);
            cb->setCurrentIndex(found);
            if (cb->isEditable()) cb->setEditText(text);
        } else if (isNumericText(initial)) {
            int row = static_cast<int>(std::lround(optionNumber(initial)));
            cb->setCurrentIndex(row >= 0 && row < cb->count() ? row : -1);
        } else {
            cb->setCurrentIndex(-1);
        }
        w = cb;
        break;
    }
    case ControlKind::CommandButton: {
        auto* b = new QPushButton(qs(value), parent);
        b->setObjectName("fButton" + name);
        b->setAutoDefault(false);
        w = b;
        break;
    }
    case ControlKind::Shape: {
        auto* line = new QFrame(parent);
        line->setObjectName("fShape" + name);
        line->setFrameShape(QFrame::HLine);
        line->setFrameShadow(QFrame::Sunken);
        w = line;
        break;
    }
    case ControlKind::Grid:
        w = makeGrid(spec, index, list, parent, px);
        break;
    case ControlKind::JustAddHeight:
    case ControlKind::AddButtonsBeforeRest:
    case ControlKind::Unknown:
        return nullptr;
    }
    QFont f = controlFont(spec, w->font());
    if (f != w->font()) w->setFont(f);
    return w;
}

void applyTextSelection(const ControlSpec& spec, QWidget* w) {
    if (auto* edit = qobject_cast<QPlainTextEdit*>(w)) {
        const int size = static_cast<int>(edit->toPlainText().size());
        QTextCursor cursor = edit->textCursor();
        if (spec.selectAll()) {
            cursor.select(QTextCursor::Document);
        } else {
            const int start = std::clamp(spec.selStart().value_or(0), 0, size);
            cursor.setPosition(start);
            cursor.setPosition(std::clamp(start + spec.selLength().value_or(0), 0, size), QTextCursor::KeepAnchor);
        }
        edit->setTextCursor(cursor);
    } else if (auto* line = qobject_cast<QLineEdit*>(w)) {
        const int size = static_cast<int>(line->text().size());
        if (spec.selectAll()) {
            line->selectAll();
        } else {
            const int start = std::clamp(spec.selStart().value_or(0), 0, size);
            const int length = std::clamp(spec.selLength().value_or(0), 0, size - start);
            if (length > 0) line->setSelection(start, length);
            else line->setCursorPosition(start);
        }
    }
}

void applyGridScrollPlace(QWidget* widget) {
    if (auto* grid = qobject_cast<QTableWidget*>(widget)) {
        const QPoint place = grid->property(kScrollPlace).toPoint();
        grid->horizontalScrollBar()->setValue(place.x());
        grid->verticalScrollBar()->setValue(place.y());
    }
}

std::string listControlResult(const ControlSpec& spec, QWidget* widget) {
    if (auto* lb = qobject_cast<QListWidget*>(widget)) {
        if (spec.multiSelect() == 0) {
            const auto selected = lb->selectedItems();
            return std::to_string(selected.isEmpty() ? -1 : lb->row(selected.front()));
        }
        std::vector<int> rows;
        for (int r = 0; r < lb->count(); ++r)
            if (lb->item(r)->isSelected()) rows.push_back(r);
        if (rows.empty()) return "-1";
        std::string out;
        for (size_t k = 0; k < rows.size(); ++k) {
            if (k) out += '|';
            out += std::to_string(rows[k]);
        }
        return out;
    }
    if (auto* grid = qobject_cast<QTableWidget*>(widget)) {
        const int row = grid->currentRow();
        const int col = grid->currentColumn();
        int rowSel = row;
        int colSel = col;
        for (const QTableWidgetSelectionRange& range : grid->selectedRanges()) {
            if (row < range.topRow() || row > range.bottomRow() || col < range.leftColumn() ||
                col > range.rightColumn())
                continue;
            rowSel = row == range.topRow() ? range.bottomRow() : range.topRow();
            colSel = col == range.leftColumn() ? range.rightColumn() : range.leftColumn();
            break;
        }
        const int top = grid->rowAt(0);
        const int left = grid->columnAt(0);
        return std::to_string(row) + "|" + std::to_string(col) + "|" + std::to_string(rowSel) + "|" +
               std::to_string(colSel) + "|" + std::to_string(std::max(top, 0)) + "|" + std::to_string(std::max(left, 0));
    }
    if (auto* cb = qobject_cast<QComboBox*>(widget)) {
        int index = cb->currentIndex();
        if (cb->isEditable() && cb->currentText() != cb->itemText(index)) index = cb->findText(cb->currentText());
        return joinList({cb->currentText().toStdString(), std::to_string(index)});
    }
    return {};
}

}  // namespace tav::ui
