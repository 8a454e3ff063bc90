// The message box as the user meets it: buttons pressed by mouse, Enter,
// Esc and accelerator keys; buttons in centred lines; controls edited and
// their results read back from the request; keys that hide the box; and a
// prompt asked from a worker thread while the UI thread keeps running.
#include <QtTest>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <atomic>
#include <map>
#include <thread>

#include "dialogs/MessageBoxState.h"
#include "dialogs/MessageBuilder.h"
#include "dialogs/PictureTable.h"
#include "ui/MessageBoxDialog.h"
#include "ui/QtMessageHost.h"

using namespace tav;
using tav::ui::MessageBoxDialog;

namespace {

MessageRequest request(const std::string& message, const std::string& buttons, const std::string& options = {}) {
    return makeRequest(message, buttons, options);
}

// Shows the box and waits until it has the keyboard.
bool showActive(MessageBoxDialog& box) {
    box.show();
    box.activateWindow();
    return QTest::qWaitForWindowActive(&box);
}

// A key as the user types it: to the widget that has the focus.
void type(MessageBoxDialog& box, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* target = QApplication::focusWidget();
    QTest::keyClick(target ? target : &box, key, modifiers);
}

MessageBoxDialog* openBox() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<MessageBoxDialog*>(w); box && box->isVisible()) return box;
    return nullptr;
}

void keepPicture(QWidget& w, const QString& name) {
    // TAVELO_SHOTS=DIR keeps a picture of the box for a person to look at.
    if (qEnvironmentVariableIsSet("TAVELO_SHOTS")) w.grab().save(qEnvironmentVariable("TAVELO_SHOTS") + "/" + name);
}

}  // namespace

class MessageBoxTest : public QObject {
    Q_OBJECT
private slots:
    void init() { resetMbState(); }
    void clickPressesThatButton();
    void enterPressesTheDefaultButton();
    void enterOnAFocusedButtonPressesThatButton();
    void enterInATextBoxPressesTheDefaultButton();
    void textBoxSelectionFollowsItsSpec();
    void escPressesTheEscButton();
    void textButtonsWithoutEscIgnoreEscAndTheCloseBox();
    void escOptionNamesTheButtonForEscAndTheCloseBox();
    void acceleratorKeyWithoutAltPressesTheButton();
    void doubledAmpersandIsNoAccelerator();
    void typingInATextBoxIsNoAccelerator();
    void fourteenButtonsThreeALineMakeFiveCentredLines();
    void messageSitsBesideTheIconAndButtonsBelow();
    void messageKeepsAmpersandsAndUnderlinesTheMarkedLetter();
    void setPicShowsThePictureOfItsSlotAndFreesIt();
    void titleFollowsTheTitleRule();
    void textBoxEditIsWrittenBack();
    void multiLineTextBoxEditIsWrittenBack();
    void checkBoxAndOptionButtonsAreWrittenBack();
    void labelMarkerMovesTheFocusToTheNextControl();
    void listBoxMultiSelectIsWrittenToLists();
    void listBoxWithNothingSelectedGivesMinusOne();
    void singleListBoxGivesItsListIndex();
    void comboBoxGivesTextAndIndex();
    void gridStartsFromItsValueAndGivesTheSelectionBack();
    void gridScrollPlaceAndColumnsSelectedAtTheStart();
    void commandButtonInTheBoxPressesItsNumber();
    void doubleClickOnAListPressesItsButtonAfterTheClick();
    void doubleClickShowsTheItemTextByDefault();
    void enterOnAListRunsItsEnterAction();
    void anyKeyHidesReturnsMinusTwoWithTheKey();
    void keyHidesOnlyForThatKey();
    void controlWithWidthKeepsItAndSharedRowDividesTheRest();
    void hostOnTheUiThreadRunsModallyAndSetsTheCodes();
    void promptFromAWorkerIsAnsweredWhileTheUiRuns();
    void workerGetsNoAnswerWhenTheWindowGoesAway();
    void noShowReturnsAtOnce();
    void abandonedBoxNoLongerWritesToTheRequest();
};

void MessageBoxTest::clickPressesThatButton() {
    MessageRequest r = request("Replace the file?", "&Yes|&No|&Cancel");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QCOMPARE(box.buttonCount(), 3);
    QCOMPARE(box.button(2)->text(), QString("&No"));
    QTest::mouseClick(box.button(2), Qt::LeftButton);
    QCOMPARE(box.answer(), 2);
    QCOMPARE(box.result(), 2);
    QVERIFY(!box.isVisible());
}

void MessageBoxTest::enterPressesTheDefaultButton() {
    MessageRequest r = request("Go on?", "&Yes|&No|&Cancel", "DfltButton=2|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QVERIFY(box.button(2)->isDefault());
    type(box, Qt::Key_Return);
    QCOMPARE(box.answer(), 2);

    MessageRequest flags = request("Go on?", "3", "512");  // 512: button 3 is the default
    MessageBoxDialog second(flags, "Tavelo", "Main");
    QVERIFY(showActive(second));
    type(second, Qt::Key_Enter);
    QCOMPARE(second.answer(), 3);
}

void MessageBoxTest::enterOnAFocusedButtonPressesThatButton() {
    MessageRequest r = request("Go on?", "3");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QCOMPARE(QApplication::focusWidget(), box.button(1));
    type(box, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), box.button(2));
    type(box, Qt::Key_Return);
    QCOMPARE(box.answer(), 2);
}

void MessageBoxTest::enterInATextBoxPressesTheDefaultButton() {
    MessageRequest r = request("Name:", "&OK|&Cancel");
    int text = MBAddCtl("TextBox", "3000||||||-1", "abc", r, true);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QCOMPARE(QApplication::focusWidget(), box.control(text));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QTest::keyClicks(QApplication::focusWidget(), "d");
    type(box, Qt::Key_Return);
    QCOMPARE(box.answer(), 1);
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(text)]), QString("abcd"));
}

void MessageBoxTest::textBoxSelectionFollowsItsSpec() {
    MessageRequest r = request("Name:", "1");
    int plain = MBAddCtl("TextBox", "3000||||||-1", "name", r, true);
    int all = MBAddCtl("TextBox", "3000|||||||-1", "all", r);
    int part = MBAddCtl("TextBox", "3000||||||||||1|2", "abcdef", r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QCOMPARE(QApplication::focusWidget(), box.control(plain));
    QTest::keyClicks(box.control(plain), "x");  // the caret starts at the front
    QCOMPARE(qobject_cast<QLineEdit*>(box.control(plain))->text(), QString("xname"));
    QCOMPARE(qobject_cast<QLineEdit*>(box.control(all))->selectedText(), QString("all"));
    QCOMPARE(qobject_cast<QLineEdit*>(box.control(part))->selectedText(), QString("bc"));
}

void MessageBoxTest::escPressesTheEscButton() {
    MessageRequest r = request("Save?", "3");  // Yes, No, Cancel: Esc is Cancel
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    type(box, Qt::Key_Escape);
    QCOMPARE(box.answer(), 3);
    QVERIFY(!box.isVisible());
}

void MessageBoxTest::textButtonsWithoutEscIgnoreEscAndTheCloseBox() {
    MessageRequest r = request("Pick one", "&Left|&Right");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    type(box, Qt::Key_Escape);
    QCOMPARE(box.answer(), 0);
    QVERIFY(!box.close());
    QVERIFY(box.isVisible());
    QCOMPARE(box.answer(), 0);
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(box.answer(), 1);
}

void MessageBoxTest::escOptionNamesTheButtonForEscAndTheCloseBox() {
    MessageRequest r = request("Pick one", "&Left|&Middle|&Right", "Esc=2|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    box.close();
    QCOMPARE(box.answer(), 2);
    QVERIFY(!box.isVisible());

    MessageBoxDialog again(r, "Tavelo", "Main");
    QVERIFY(showActive(again));
    type(again, Qt::Key_Escape);
    QCOMPARE(again.answer(), 2);
}

void MessageBoxTest::acceleratorKeyWithoutAltPressesTheButton() {
    MessageRequest r = request("Delete?", "&Yes|&No|Yes to &All");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    type(box, Qt::Key_A);
    QCOMPARE(box.answer(), 3);

    MessageBoxDialog upper(r, "Tavelo", "Main");
    QVERIFY(showActive(upper));
    type(upper, Qt::Key_N, Qt::ShiftModifier);
    QCOMPARE(upper.answer(), 2);

    MessageBoxDialog alt(r, "Tavelo", "Main");
    QVERIFY(showActive(alt));
    type(alt, Qt::Key_N, Qt::AltModifier);  // the button's own shortcut: an animated click
    QTRY_COMPARE(alt.answer(), 2);
}

void MessageBoxTest::doubledAmpersandIsNoAccelerator() {
    MessageRequest r = request("Which?", "Save && &Quit|&Discard");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    type(box, Qt::Key_S);  // "&&" is no marker, so S presses nothing
    QCOMPARE(box.answer(), 0);
    QVERIFY(box.isVisible());
    type(box, Qt::Key_Q);
    QCOMPARE(box.answer(), 1);
}

void MessageBoxTest::typingInATextBoxIsNoAccelerator() {
    MessageRequest r = request("Name:", "&OK|&Cancel");
    int text = MBAddCtl("TextBox", "3000||||||-1", "", r, true);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QTest::keyClicks(QApplication::focusWidget(), "octo");
    QCOMPARE(box.answer(), 0);
    QCOMPARE(qobject_cast<QLineEdit*>(box.control(text))->text(), QString("octo"));
    type(box, Qt::Key_C, Qt::AltModifier);  // with Alt the accelerator counts
    QTRY_COMPARE(box.answer(), 2);
}

void MessageBoxTest::fourteenButtonsThreeALineMakeFiveCentredLines() {
    std::string buttons;
    for (int i = 1; i <= 14; ++i) MBAddButton("Button " + std::to_string(i), buttons, i == 1);
    MessageRequest r = request("Choose a button", buttons, "MBButtspec.MaxBpl=3|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    std::map<int, std::vector<QPushButton*>> lines;
    for (int i = 1; i <= 14; ++i) {
        QVERIFY(box.button(i)->isVisible());
        lines[box.button(i)->y()].push_back(box.button(i));
    }
    QCOMPARE(lines.size(), size_t{5});
    std::vector<size_t> counts;
    int number = 1;
    int lastTop = -1;
    for (const auto& [top, line] : lines) {
        QVERIFY(top > lastTop);
        lastTop = top;
        counts.push_back(line.size());
        for (QPushButton* b : line) QCOMPARE(b, box.button(number++));  // in list order
        const int left = line.front()->geometry().left();
        const int right = box.width() - line.back()->geometry().right() - 1;
        QVERIFY2(std::abs(left - right) <= 1, qPrintable(QString("left %1 right %2").arg(left).arg(right)));
    }
    QCOMPARE(counts, (std::vector<size_t>{3, 3, 3, 3, 2}));
    // All buttons of a box have one width.
    for (int i = 2; i <= 14; ++i) QCOMPARE(box.button(i)->width(), box.button(1)->width());
    QVERIFY(box.button(14)->geometry().bottom() < box.height());
    keepPicture(box, "message-box-14-buttons.png");
}

void MessageBoxTest::messageSitsBesideTheIconAndButtonsBelow() {
    MessageRequest r = request("The file is read-only.\rReplace it anyway?", "4", "48");
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QLabel* icon = box.iconLabel();
    QLabel* msg = box.messageLabel();
    QVERIFY(icon->isVisible());
    QVERIFY(!icon->pixmap().isNull());
    QVERIFY(msg->geometry().left() > icon->geometry().right());
    QCOMPARE(msg->geometry().top(), icon->geometry().top());
    const int below = std::max(icon->geometry().bottom(), msg->geometry().bottom());
    QVERIFY(box.button(1)->geometry().top() > below);
    QCOMPARE(box.button(1)->y(), box.button(2)->y());
    QVERIFY(msg->text().contains("Replace it anyway?"));
    QVERIFY(box.width() <= box.screen()->availableGeometry().width());
    keepPicture(box, "message-box-icon.png");

    MessageRequest plain = request("No picture", "0", "1");
    MessageBoxDialog second(plain, "Tavelo", "Main");
    second.show();
    QVERIFY(!second.iconLabel()->isVisible());
    QCOMPARE(second.messageLabel()->x(), second.px(120));
}

void MessageBoxTest::messageKeepsAmpersandsAndUnderlinesTheMarkedLetter() {
    MessageRequest r = request("Copy & move: #H160#files", "0");
    MessageBoxDialog box(r, "Tavelo", "Main");
    const QString text = box.messageLabel()->text();
    QVERIFY(text.contains("Copy &amp; move"));
    QVERIFY(text.contains("<u>f</u>iles"));
    QVERIFY(!text.contains("#H160#"));
}

void MessageBoxTest::setPicShowsThePictureOfItsSlotAndFreesIt() {
    QPixmap picture(48, 20);
    picture.fill(Qt::red);
    const int slot = PictureTable::shared().put(picture);
    const int used = PictureTable::shared().used();
    MessageRequest r = request("With a picture", "0", "SetPic=" + std::to_string(slot) + "|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(box.iconLabel()->isVisible());
    QCOMPARE(box.iconLabel()->pixmap().size(), QSize(48, 20));
    QVERIFY(box.messageLabel()->x() > box.iconLabel()->geometry().right());
    QCOMPARE(PictureTable::shared().used(), used - 1);
}

void MessageBoxTest::titleFollowsTheTitleRule() {
    MessageRequest r = request("x", "0");
    r.title = "- [Rename]";
    QCOMPARE(MessageBoxDialog(r, "Tavelo", "Main").windowTitle(), QString("Tavelo - [Rename]"));
    r.title = "";
    QCOMPARE(MessageBoxDialog(r, "", "Main").windowTitle(), QString("Main"));
    r.title = "Own";
    QCOMPARE(MessageBoxDialog(r, "Tavelo", "Main").windowTitle(), QString("Own"));
}

void MessageBoxTest::textBoxEditIsWrittenBack() {
    MessageRequest r = request("New name:", "1");
    int text = MBAddCtl("TextBox", "10000||||||", "old.txt", r, true);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* edit = qobject_cast<QLineEdit*>(box.control(text));
    QVERIFY(edit);
    QCOMPARE(edit->text(), QString("old.txt"));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, "new name.txt");
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(box.answer(), 1);
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(text)]), QString("new name.txt"));
}

void MessageBoxTest::multiLineTextBoxEditIsWrittenBack() {
    MessageRequest r = request("Lines:", "1");
    int text = MBAddCtl("TextBox", "4000|1500||||||||-1", "one", r, true);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* edit = qobject_cast<QPlainTextEdit*>(box.control(text));
    QVERIFY(edit);
    edit->setFocus();
    edit->moveCursor(QTextCursor::End);
    QTest::keyClick(edit, Qt::Key_Return);  // a new line, not the default button
    QTest::keyClicks(edit, "two");
    QCOMPARE(box.answer(), 0);
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(text)]), QString("one\ntwo"));
}

void MessageBoxTest::checkBoxAndOptionButtonsAreWrittenBack() {
    MessageRequest r = request("Copy how?", "1");
    int chosen = 0;
    MBAddCtl("Label", "", "Mode:", r, true);
    std::string group = MBAddOptionGroup("&Copy|&Move|&Link", 1, &chosen, r);
    int check = MBAddCtl("CheckBox", "Keep &backup||||||", "0", r);
    const int copy = chosen;
    const int move = copy + 1;
    const int link = copy + 2;
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QVERIFY(qobject_cast<QRadioButton*>(box.control(copy))->isChecked());
    QVERIFY(!qobject_cast<QCheckBox*>(box.control(check))->isChecked());
    QTest::mouseClick(box.control(link), Qt::LeftButton, {}, QPoint(5, box.control(link)->height() / 2));
    QVERIFY(qobject_cast<QRadioButton*>(box.control(link))->isChecked());
    box.button(1)->setFocus();
    type(box, Qt::Key_M);  // accelerator sets the option
    type(box, Qt::Key_B);  // and toggles the check
    QCOMPARE(box.answer(), 0);
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(copy)]), QString("0"));
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(move)]), QString("-1"));
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(link)]), QString("0"));
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(check)]), QString("-1"));
    QCOMPARE(QString::fromStdString(group), QString("%1|%2|%3").arg(copy).arg(move).arg(link));
}

void MessageBoxTest::labelMarkerMovesTheFocusToTheNextControl() {
    MessageRequest r = request("", "1");
    MBAddCtl("Label", "2000", "Number of files [n]:", r, true);
    int text = MBAddCtl("_TextBox", "2000|||||||", "10", r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    box.button(2)->setFocus();
    type(box, Qt::Key_N);
    QCOMPARE(QApplication::focusWidget(), box.control(text));
    QCOMPARE(box.answer(), 0);
    // Label and text box share one row.
    QVERIFY(box.control(text)->x() > box.control(1)->geometry().right());
}

void MessageBoxTest::listBoxMultiSelectIsWrittenToLists() {
    MessageRequest r = request("Pick files", "1");
    int list = MBAddCtl("ListBox", "3000|1500||||||||1", "0|2", r, true);
    for (const char* item : {"a.txt", "b.txt", "c.txt", "d.txt"}) MBAddListItem(item, -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* lb = qobject_cast<QListWidget*>(box.control(list));
    QVERIFY(lb);
    QCOMPARE(lb->count(), 4);
    QVERIFY(lb->item(0)->isSelected());
    QVERIFY(!lb->item(1)->isSelected());
    QVERIFY(lb->item(2)->isSelected());
    QTest::mouseClick(lb->viewport(), Qt::LeftButton, {}, lb->visualItemRect(lb->item(3)).center());
    QTest::mouseClick(lb->viewport(), Qt::LeftButton, {}, lb->visualItemRect(lb->item(0)).center());
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(list)][0]), QString("2|3"));
    QCOMPARE(r.lists[static_cast<size_t>(list)].size(), size_t{5});  // the items stay
}

void MessageBoxTest::listBoxWithNothingSelectedGivesMinusOne() {
    MessageRequest r = request("Pick files", "1");
    int list = MBAddCtl("ListBox", "3000|1500||||||||2", "", r, true);
    MBAddListItem("a", -1, r);
    MBAddListItem("b", -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(list)][0]), QString("-1"));
}

void MessageBoxTest::singleListBoxGivesItsListIndex() {
    MessageRequest r = request("Pick one", "1");
    int list = MBAddCtl("ListBox", "3000|1500", "1", r, true);
    for (const char* item : {"x", "y", "z"}) MBAddListItem(item, -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* lb = qobject_cast<QListWidget*>(box.control(list));
    QCOMPARE(lb->currentRow(), 1);
    QTest::mouseClick(lb->viewport(), Qt::LeftButton, {}, lb->visualItemRect(lb->item(2)).center());
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(list)][0]), QString("2"));
}

void MessageBoxTest::comboBoxGivesTextAndIndex() {
    MessageRequest r = request("Format", "1");
    int combo = MBAddCtl("ComboBox", "3000", "CBtxt*.htm", r, true);
    for (const char* item : {"*.txt", "*.htm", "*.*"}) MBAddListItem(item, -1, r);
    int fixed = MBAddCtl("ComboBox", "3000|||||||||2", "2", r);
    for (const char* item : {"one", "two", "three"}) MBAddListItem(item, -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* cb = qobject_cast<QComboBox*>(box.control(combo));
    QVERIFY(cb->isEditable());
    QCOMPARE(cb->currentText(), QString("*.htm"));
    QCOMPARE(cb->currentIndex(), 1);
    auto* list = qobject_cast<QComboBox*>(box.control(fixed));
    QVERIFY(!list->isEditable());
    QCOMPARE(list->currentText(), QString("three"));
    cb->lineEdit()->setFocus();
    cb->lineEdit()->selectAll();
    QTest::keyClicks(cb->lineEdit(), "*.ini");
    list->setCurrentIndex(0);
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(combo)][0]), QString("*.ini|-1"));
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(fixed)][0]), QString("one|0"));
}

void MessageBoxTest::gridStartsFromItsValueAndGivesTheSelectionBack() {
    MessageRequest r = request("Columns", "1");
    // Field 10: one fixed row; field 12: column widths; field 13: alignments.
    int grid = MBAddCtl("Grid", "5000|2000||||||||1||{1500|1000|900}|{1|4|7}", "1|0|2|1|0|0", r, true);
    for (const char* row : {"Name\tSize\tDate", "a.txt\t10\t2024", "b.txt\t20\t2025", "c.txt\t30\t2026"})
        MBAddListItem(row, -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* table = qobject_cast<QTableWidget*>(box.control(grid));
    QVERIFY(table);
    QCOMPARE(table->rowCount(), 4);
    QCOMPARE(table->columnCount(), 3);
    QCOMPARE(table->item(2, 1)->text(), QString("20"));
    QCOMPARE(table->columnWidth(0), box.px(1500));
    QCOMPARE(table->item(1, 2)->textAlignment(), int(Qt::AlignRight | Qt::AlignVCenter));
    QVERIFY(!(table->item(0, 0)->flags() & Qt::ItemIsSelectable));  // the fixed row
    QCOMPARE(table->currentRow(), 1);
    QVERIFY(table->item(2, 1)->isSelected());
    QVERIFY(!table->item(3, 0)->isSelected());
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(grid)][0]), QString("1|0|2|1|0|0"));

    MessageBoxDialog again(r, "Tavelo", "Main");
    QVERIFY(showActive(again));
    table = qobject_cast<QTableWidget*>(again.control(grid));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualItemRect(table->item(3, 2)).center());
    QTest::mouseClick(again.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(grid)][0]), QString("3|2|3|2|0|0"));
}

void MessageBoxTest::gridScrollPlaceAndColumnsSelectedAtTheStart() {
    MessageRequest r = request("Many rows", "1");
    int grid = MBAddCtl("Grid", "3000|1200", "5|0|5|0|10|0", r, true);
    for (int i = 0; i < 40; ++i) MBAddListItem("row " + std::to_string(i) + "\tx", -1, r);
    int columns = MBAddCtl("Grid", "3000|1200||||||||1|||||||-1|1_1", "", r);
    for (const char* row : {"h1\th2\th3", "a\tb\tc", "d\te\tf"}) MBAddListItem(row, -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* table = qobject_cast<QTableWidget*>(box.control(grid));
    QCOMPARE(table->rowAt(0), 10);
    auto* second = qobject_cast<QTableWidget*>(box.control(columns));
    QVERIFY(second->item(1, 1)->isSelected());
    QVERIFY(second->item(2, 1)->isSelected());
    QVERIFY(!second->item(1, 0)->isSelected());
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(grid)][0]), QString("5|0|5|0|10|0"));
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(columns)][0]), QString("1|1|2|1|0|0"));
}

void MessageBoxTest::commandButtonInTheBoxPressesItsNumber() {
    MessageRequest r = request("Sequence", "&OK|&Cancel");
    MBAddCtl("TextBox", "3000", "", r, true);
    std::string numbers = MBAddButtons(true, "", "&Up|Do&wn", r);
    const int up = std::stoi(numbers.substr(0, numbers.find('|')));
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* button = qobject_cast<QPushButton*>(box.control(up));
    QVERIFY(button);
    QCOMPARE(button->text(), QString("&Up"));
    QCOMPARE(button->width(), box.button(1)->width());  // one width for all buttons of a box
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(box.answer(), up);
}

void MessageBoxTest::doubleClickOnAListPressesItsButtonAfterTheClick() {
    MessageRequest r = request("Open which?", "&Open|&Cancel");
    int list = MBAddCtl("ListBox", "3000|1500|||||||1", "0", r, true);  // field 9: button 1
    for (const char* item : {"first", "second"}) MBAddListItem(item, -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* lb = qobject_cast<QListWidget*>(box.control(list));
    const QPoint second = lb->visualItemRect(lb->item(1)).center();
    QTest::mouseClick(lb->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(lb->viewport(), Qt::LeftButton, {}, second);
    QCOMPARE(box.answer(), 0);  // the press waits for the list's own handling
    QTRY_COMPARE(box.answer(), 1);
    QCOMPARE(QString::fromStdString(r.lists[static_cast<size_t>(list)][0]), QString("1"));
}

void MessageBoxTest::doubleClickShowsTheItemTextByDefault() {
    MessageRequest r = request("Lines", "0");
    int list = MBAddCtl("ListBox", "3000|1500", "", r, true);
    MBAddListItem("C:\\Data\\long line.txt", -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    auto* lb = qobject_cast<QListWidget*>(box.control(list));
    const QPoint first = lb->visualItemRect(lb->item(0)).center();
    QTest::mouseClick(lb->viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(lb->viewport(), Qt::LeftButton, {}, first);
    MessageBoxDialog* shown = box.findChild<MessageBoxDialog*>();
    QVERIFY(shown);
    QTRY_VERIFY(shown->isVisible());
    QVERIFY(shown->messageLabel()->text().contains("long line.txt"));
    QCOMPARE(box.answer(), 0);
    QTest::mouseClick(shown->button(1), Qt::LeftButton);
    QVERIFY(box.isVisible());
}

void MessageBoxTest::enterOnAListRunsItsEnterAction() {
    MessageRequest r = request("Pick", "&Keep|&Take|&Drop");
    std::string spec = "3000|1500|||||-1||||||||||||2";  // field 7: focus, field 19: button 2
    int list = MBAddCtl("ListBox", spec, "0", r, true);
    MBAddListItem("one", -1, r);
    int plain = MBAddCtl("ListBox", "3000|1500", "0", r);
    MBAddListItem("two", -1, r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    QCOMPARE(QApplication::focusWidget(), box.control(list));
    type(box, Qt::Key_Return);
    QTRY_COMPARE(box.answer(), 2);

    MessageBoxDialog second(r, "Tavelo", "Main");
    QVERIFY(showActive(second));
    second.control(plain)->setFocus();
    type(second, Qt::Key_Return);  // no Enter action: the default button
    QCOMPARE(second.answer(), 1);
}

void MessageBoxTest::anyKeyHidesReturnsMinusTwoWithTheKey() {
    MessageRequest r = request("Press any key", "0", "Any Key Hides|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    type(box, Qt::Key_Q, Qt::ControlModifier);
    QCOMPARE(box.answer(), -2);
    QCOMPARE(box.result(), -2);
    QVERIFY(!box.isVisible());
    QVERIFY2(QString::fromStdString(r.values[0]).startsWith("81|2|"), r.values[0].c_str());

    // Even a button's own Alt shortcut hides the box.
    MessageRequest yes = request("Press any key", "4", "Any Key Hides|");
    MessageBoxDialog second(yes, "Tavelo", "Main");
    QVERIFY(showActive(second));
    type(second, Qt::Key_Y, Qt::AltModifier);
    QCOMPARE(second.answer(), -2);
    QTest::qWait(150);  // no animated click follows
    QCOMPARE(second.answer(), -2);
    QVERIFY(QString::fromStdString(yes.values[0]).startsWith("89|4|"));
}

void MessageBoxTest::keyHidesOnlyForThatKey() {
    MessageRequest r = request("F2 or Shift+F3", "&OK", "{KeyHides=113|0}|{KeyHides=114|1}|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    type(box, Qt::Key_F3);
    QCOMPARE(box.answer(), 0);
    type(box, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(box.answer(), -2);
    QVERIFY(QString::fromStdString(r.values[0]).startsWith("114|1|"));
}

void MessageBoxTest::controlWithWidthKeepsItAndSharedRowDividesTheRest() {
    MessageRequest r = request("Row", "1", "Default and Min Width=8000|");
    int label = MBAddCtl("Label", "", "Find:", r, true);
    int first = MBAddCtl("_TextBox", "", "", r);
    int second = MBAddCtl("_TextBox", "", "", r);
    int wide = MBAddCtl("TextBox", "2000", "", r);
    int huge = MBAddCtl("TextBox", "90000", "", r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QCOMPARE(box.width(), box.px(8000));
    QCOMPARE(box.control(wide)->width(), box.px(2000));
    // A width beyond the box stops at the right margin of the control area.
    QCOMPARE(box.control(huge)->geometry().right() + 1, box.width() - box.px(240));
    QCOMPARE(box.control(first)->width(), box.control(second)->width());
    QCOMPARE(box.control(first)->y(), box.control(second)->y());
    QVERIFY(box.control(first)->x() > box.control(label)->geometry().right());
    QVERIFY(box.control(wide)->y() > box.control(first)->geometry().bottom());
    QVERIFY(box.control(huge)->y() > box.control(wide)->geometry().bottom());
    QVERIFY(box.button(1)->y() > box.control(huge)->geometry().bottom());
    keepPicture(box, "message-box-rows.png");
}

void MessageBoxTest::hostOnTheUiThreadRunsModallyAndSetsTheCodes() {
    ui::QtMessageHost host;
    MessageRequest r = request("Go on?", "1");
    bool pressed = false;
    QTimer::singleShot(0, [&] {
        QTRY_VERIFY(openBox() != nullptr);
        QTest::mouseClick(openBox()->button(2), Qt::LeftButton);
        pressed = true;
    });
    QCOMPARE(host.show(r), 2);
    QVERIFY(pressed);
    QCOMPARE(mbState().cancelCode, 2);
    QVERIFY(openBox() == nullptr);
}

void MessageBoxTest::promptFromAWorkerIsAnsweredWhileTheUiRuns() {
    ui::QtMessageHost host;
    MessageRequest r = request("Overwrite?", "5");  // Retry, Cancel
    int text = MBAddCtl("TextBox", "3000", "draft", r, true);
    std::atomic<bool> done{false};
    int answer = 0;
    int workerCancel = 0;
    int workerRetry = 0;
    std::thread worker([&] {
        answer = host.show(r);
        workerCancel = mbState().cancelCode;
        workerRetry = mbState().retryCode;
        done = true;
    });
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] { ++ticks; });
    ticker.start(5);
    QTRY_VERIFY(openBox() != nullptr);
    MessageBoxDialog* box = openBox();
    const int before = ticks;
    QTest::qWait(60);
    QVERIFY(ticks > before);  // the UI thread keeps running while the worker waits
    QVERIFY(!done);
    auto* edit = qobject_cast<QLineEdit*>(box->control(text));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, "final");
    QTimer::singleShot(10, [box] { QTest::mouseClick(box->button(2), Qt::LeftButton); });
    QTRY_VERIFY(done.load());
    worker.join();
    QCOMPARE(answer, 2);
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(text)]), QString("final"));
    QCOMPARE(workerCancel, 2);
    QCOMPARE(workerRetry, 1);
    QCOMPARE(mbState().cancelCode, 0);  // the UI thread's own state is untouched
    QTRY_VERIFY(openBox() == nullptr);
}

void MessageBoxTest::workerGetsNoAnswerWhenTheWindowGoesAway() {
    auto* window = new QWidget;
    window->show();
    ui::QtMessageHost host(window);
    MessageRequest r = request("Still there?", "4");
    MBAddCtl("TextBox", "3000", "untouched", r, true);
    std::atomic<bool> done{false};
    int answer = -99;
    std::thread worker([&] {
        answer = host.show(r);
        done = true;
    });
    QTRY_VERIFY(window->findChild<MessageBoxDialog*>() != nullptr);
    QVERIFY(window->findChild<MessageBoxDialog*>()->isVisible());
    delete window;
    QTRY_VERIFY(done.load());
    worker.join();
    QCOMPARE(answer, ui::QtMessageHost::kNoAnswer);
    QCOMPARE(QString::fromStdString(r.values[1]), QString("untouched"));
}

void MessageBoxTest::noShowReturnsAtOnce() {
    ui::QtMessageHost host;
    MessageRequest r = request("Sizing only", "1", "No show|");
    QCOMPARE(host.show(r), ui::QtMessageHost::kNoAnswer);
    QVERIFY(openBox() == nullptr);
}

void MessageBoxTest::abandonedBoxNoLongerWritesToTheRequest() {
    MessageRequest r = request("Name", "1");
    int text = MBAddCtl("TextBox", "3000", "kept", r, true);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(showActive(box));
    qobject_cast<QLineEdit*>(box.control(text))->setText("changed");
    box.abandon();
    QVERIFY(!box.isVisible());
    box.pressButton(1);
    QCOMPARE(box.answer(), 0);
    QCOMPARE(QString::fromStdString(r.values[static_cast<size_t>(text)]), QString("kept"));
}

QTEST_MAIN(MessageBoxTest)
#include "message_box_test.moc"
