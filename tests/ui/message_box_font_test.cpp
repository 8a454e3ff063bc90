// The box's font changed with a format key: the box closes with the font
// code, the host builds the same box again in the new font, in its place,
// with what the user had entered, remembers the font in "MB formats", and
// the caller sees only the final press.
#include <QtTest>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <atomic>
#include <thread>

#include "dialogs/MessageBoxFormat.h"
#include "dialogs/MessageBuilder.h"
#include "settings/IniStore.h"
#include "settings/ProfileService.h"
#include "support/TempDir.h"
#include "ui/MessageBoxControls.h"
#include "ui/MessageBoxDialog.h"
#include "ui/QtMessageHost.h"

using namespace tav;
using tav::ui::MessageBoxDialog;

namespace {

MessageBoxDialog* openBox() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<MessageBoxDialog*>(w); box && box->isVisible()) return box;
    return nullptr;
}

// A box with a text box, a list, a combo box and a check box.
MessageRequest formRequest(const std::string& options = {}) {
    MessageRequest r{"Settings:", "1", options, {}, {}, {}, {}};
    MBAddCtl("TextBox", "3000||||||-1", "", r, true);
    const int list = MBAddCtl("ListBox", "2000|1000", "0", r);
    for (const char* item : {"one", "two", "three"}) MBAddListItem(item, -1, r, list);
    const int combo = MBAddCtl("ComboBox", "2000", "0", r);
    for (const char* item : {"red", "green"}) MBAddListItem(item, -1, r, combo);
    MBAddCtl("CheckBox", "&Keep||||||", "0", r);
    return r;
}

void shiftAlt(QWidget* w, char key) {
    QTest::keyClick(w, key, Qt::ShiftModifier | Qt::AltModifier);
}

double pointsOf(const QWidget* w) { return w->font().pointSizeF(); }

}  // namespace

class MessageBoxFontTest : public QObject {
    Q_OBJECT
private slots:
    void formatKeyRebuildsTheBoxWithTheEntriesInItsPlace();
    void theNewFontIsRememberedAndUsedByTheNextBox();
    void aWorkerSeesOnlyTheFinalPress();
    void aKeptBoxStaysKeptInTheNewFont();
};

void MessageBoxFontTest::formatKeyRebuildsTheBoxWithTheEntriesInItsPlace() {
    ui::QtMessageHost host;
    host.setBoxFont(ui::messageBoxFont("", 9, false, false));
    MessageRequest r = formRequest();
    QPointer<MessageBoxDialog> first;
    MessageBoxDialog* second = nullptr;
    QPoint place;
    double before = 0;
    QTimer::singleShot(0, [&] {
        QTRY_VERIFY(openBox());
        first = openBox();
        first->move(first->pos() + QPoint(41, 17));
        place = first->pos();
        before = pointsOf(first->button(1));
        auto* text = qobject_cast<QLineEdit*>(first->control(1));
        QTest::keyClicks(text, "draft");
        qobject_cast<QListWidget*>(first->control(2))->setCurrentRow(2);
        qobject_cast<QComboBox*>(first->control(3))->setCurrentIndex(1);
        static_cast<QAbstractButton*>(first->control(4))->setChecked(true);
        shiftAlt(text, 'I');
        QTRY_VERIFY(openBox() && openBox() != first.data());
        second = openBox();
        QCOMPARE(pointsOf(second->button(1)), before + 1);
        QCOMPARE(second->pos(), place);
        QCOMPARE(second->focusWidget(), second->control(1));
        QCOMPARE(qobject_cast<QLineEdit*>(second->control(1))->text(), QString("draft"));
        QCOMPARE(qobject_cast<QListWidget*>(second->control(2))->currentRow(), 2);
        QCOMPARE(qobject_cast<QComboBox*>(second->control(3))->currentText(), QString("green"));
        QVERIFY(static_cast<QAbstractButton*>(second->control(4))->isChecked());
        // Smaller again, then the press.
        shiftAlt(second->control(1), 'D');
        QTRY_VERIFY(openBox() && openBox() != second);
        QCOMPARE(pointsOf(openBox()->button(1)), before);
        QTest::mouseClick(openBox()->button(1), Qt::LeftButton);
    });
    QCOMPARE(host.show(r), 1);
    QTRY_VERIFY(first.isNull());
    QTRY_VERIFY(!openBox());
    QCOMPARE(QString::fromStdString(r.values[1]), QString("draft"));
    QCOMPARE(QString::fromStdString(r.lists[2][0]), QString("2"));
    QCOMPARE(QString::fromStdString(r.lists[3][0]), QString("green|1"));
    QCOMPARE(QString::fromStdString(r.values[4]), QString("-1"));
}

void MessageBoxFontTest::theNewFontIsRememberedAndUsedByTheNextBox() {
    tavtest::TempDir dir;
    ProfileService service;
    IniStore ini(service);
    ini.setDataDir(dir.str());
    ini.setRoleFile(IniRole::Main, ini.qualify("Tavelo.ini"));
    writeMessageBoxFormat(ini, MessageBoxFormat{"-FIXFONT-", 10, false, false});
    ui::QtMessageHost host;
    host.setFormatStore(&ini);
    host.setBoxFont(ui::messageBoxFont(*readMessageBoxFormat(ini)));

    MessageRequest r{"Bigger, please.", "0", {}, {}, {}, {}, {}};
    QTimer::singleShot(0, [&] {
        QTRY_VERIFY(openBox());
        MessageBoxDialog* first = openBox();
        shiftAlt(first->button(1), 'I');
        QTRY_VERIFY(openBox() && openBox() != first);
        shiftAlt(openBox()->button(1), 'I');
        QTRY_VERIFY(openBox() && openBox()->font().pointSizeF() == 12);
        QTest::keyClick(openBox()->button(1), Qt::Key_Return);
    });
    QCOMPARE(host.show(r), 1);
    const auto stored = readMessageBoxFormat(ini);
    QVERIFY(stored);
    QCOMPARE(QString::fromStdString(stored->fontName), QString("-FIXFONT-"));
    QCOMPARE(stored->size, 12.0);
    QVERIFY(!stored->bold && !stored->italic);
    QCOMPARE(QString::fromStdString(ini.get("MB formats", "MB all Size")), QString("12"));

    MessageRequest next{"Next.", "0", {}, {}, {}, {}, {}};
    QTimer::singleShot(0, [&] {
        QTRY_VERIFY(openBox());
        QCOMPARE(openBox()->font().pointSizeF(), 12.0);
        QTest::keyClick(openBox()->button(1), Qt::Key_Return);
    });
    QCOMPARE(host.show(next), 1);
}

void MessageBoxFontTest::aWorkerSeesOnlyTheFinalPress() {
    ui::QtMessageHost host;
    MessageRequest r = formRequest();
    std::atomic<int> answer{0};
    std::thread worker([&] { answer = host.show(r); });
    QTRY_VERIFY(openBox());
    MessageBoxDialog* first = openBox();
    QTest::keyClicks(first->control(1), "abc");
    shiftAlt(first->control(1), 'I');
    QTRY_VERIFY(openBox() && openBox() != first);
    QCOMPARE(answer.load(), 0);  // still waiting
    QTest::mouseClick(openBox()->button(2), Qt::LeftButton);
    QTRY_COMPARE(answer.load(), 2);
    worker.join();
    QCOMPARE(QString::fromStdString(r.values[1]), QString("abc"));
}

void MessageBoxFontTest::aKeptBoxStaysKeptInTheNewFont() {
    ui::QtMessageHost host;
    MessageRequest r = formRequest("NoHide|");
    QTimer::singleShot(0, [&] {
        QTRY_VERIFY(openBox());
        MessageBoxDialog* first = openBox();
        shiftAlt(first->control(1), 'I');
        QTRY_VERIFY(openBox() && openBox() != first);
        QTest::mouseClick(openBox()->button(1), Qt::LeftButton);
    });
    QCOMPARE(host.show(r), 1);
    QVERIFY(host.keptBox() && host.keptBox()->isVisible());
    host.releaseKept();
    QTRY_VERIFY(!openBox());
}

QTEST_MAIN(MessageBoxFontTest)
#include "message_box_font_test.moc"
