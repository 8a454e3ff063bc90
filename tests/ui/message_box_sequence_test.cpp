// The sequence and lines prompts on screen: the sequence box stays up
// through its steps and shows the moved items in its place; the lines box
// comes back with one more line and the focus on it.
#include <QtTest>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <atomic>
#include <thread>

#include "dialogs/MessageShortcuts.h"
#include "ui/MessageBoxDialog.h"
#include "ui/QtMessageHost.h"

using namespace tav;
using tav::ui::MessageBoxDialog;

namespace {

std::vector<MessageBoxDialog*> openBoxes() {
    std::vector<MessageBoxDialog*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<MessageBoxDialog*>(w); box && box->isVisible()) out.push_back(box);
    return out;
}

QStringList itemsOf(MessageBoxDialog* box) {
    QStringList out;
    auto* list = qobject_cast<QListWidget*>(box->control(1));
    for (int i = 0; list && i < list->count(); ++i) out << list->item(i)->text();
    return out;
}

}  // namespace

class MessageBoxSequenceTest : public QObject {
    Q_OBJECT
private slots:
    void sequenceBoxStaysUpThroughItsSteps();
    void linesBoxComesBackWithTheNewLineFocused();
};

void MessageBoxSequenceTest::sequenceBoxStaysUpThroughItsSteps() {
    ui::QtMessageHost host;
    std::vector<std::string> items = {"Name", "Size", "Date"};
    std::atomic<int> result{-1};
    std::thread worker([&] { result = MBSequence(host, "Columns", "", items) ? 1 : 0; });

    QTRY_COMPARE(openBoxes().size(), size_t{1});
    QPointer<MessageBoxDialog> first = openBoxes().front();
    QVERIFY(first->windowTitle().endsWith(" Sequence for Columns"));
    first->move(first->pos() + QPoint(29, 31));
    const QPoint place = first->pos();
    qobject_cast<QListWidget*>(first->control(1))->setCurrentRow(2);
    QTest::mouseClick(first->button(1), Qt::LeftButton);  // Up

    // The step shows the box again in its place, with Date moved up.
    QTRY_VERIFY(first.isNull());
    QTRY_COMPARE(openBoxes().size(), size_t{1});
    QPointer<MessageBoxDialog> second = openBoxes().front();
    QCOMPARE(itemsOf(second), (QStringList{"Name", "Date", "Size"}));
    QCOMPARE(qobject_cast<QListWidget*>(second->control(1))->currentRow(), 1);
    QCOMPARE(second->pos(), place);
    QCOMPARE(second->focusWidget(), second->button(1));
    QCOMPARE(result.load(), -1);

    // Alt+W is "Do&wn": Date goes back down.
    QTest::keyClick(second->button(1), 'w', Qt::AltModifier);
    QTRY_VERIFY(second.isNull());
    QTRY_COMPARE(openBoxes().size(), size_t{1});
    MessageBoxDialog* third = openBoxes().front();
    QCOMPARE(itemsOf(third), (QStringList{"Name", "Size", "Date"}));
    qobject_cast<QListWidget*>(third->control(1))->setCurrentRow(0);
    QTest::mouseClick(third->button(2), Qt::LeftButton);  // Name down
    QTRY_VERIFY(openBoxes().size() == 1 && openBoxes().front() != third);
    QCOMPARE(itemsOf(openBoxes().front()), (QStringList{"Size", "Name", "Date"}));
    QTest::mouseClick(openBoxes().front()->button(3), Qt::LeftButton);  // OK

    QTRY_COMPARE(result.load(), 1);
    worker.join();
    QCOMPARE(items, (std::vector<std::string>{"Size", "Name", "Date"}));
    QTRY_VERIFY(openBoxes().empty());
    QVERIFY(!host.keptBox());

    // Esc is Cancel: the order stays and the box goes.
    result = -1;
    std::thread again([&] { result = MBSequence(host, "Columns", "", items) ? 1 : 0; });
    QTRY_COMPARE(openBoxes().size(), size_t{1});
    QTest::mouseClick(openBoxes().front()->button(2), Qt::LeftButton);
    QTRY_VERIFY(openBoxes().size() == 1 && itemsOf(openBoxes().front()).first() == "Name");
    QTest::keyClick(openBoxes().front(), Qt::Key_Escape);
    QTRY_COMPARE(result.load(), 0);
    again.join();
    QCOMPARE(items, (std::vector<std::string>{"Size", "Name", "Date"}));
    QTRY_VERIFY(openBoxes().empty());
}

void MessageBoxSequenceTest::linesBoxComesBackWithTheNewLineFocused() {
    ui::QtMessageHost host;
    std::vector<std::string> lines = {"first"};
    std::atomic<int> result{-1};
    std::thread worker([&] { result = MBLines(host, lines, "Lines") ? 1 : 0; });

    QTRY_COMPARE(openBoxes().size(), size_t{1});
    MessageBoxDialog* box = openBoxes().front();
    QVERIFY(QTest::qWaitForWindowActive(box));
    QCOMPARE(QApplication::focusWidget(), box->control(1));
    QTest::keyClick(box->control(1), Qt::Key_End);
    QTest::keyClicks(box->control(1), " line");
    QTest::keyClick(box->control(1), 'a', Qt::AltModifier);  // "&Add Line"

    QTRY_VERIFY(openBoxes().size() == 1 && openBoxes().front()->control(2));
    box = openBoxes().front();
    QVERIFY(QTest::qWaitForWindowActive(box));
    QCOMPARE(qobject_cast<QLineEdit*>(box->control(1))->text(), QString("first line"));
    QCOMPARE(QApplication::focusWidget(), box->control(2));
    QTest::keyClicks(box->control(2), "second");
    QTest::mouseClick(box->button(1), Qt::LeftButton);

    QTRY_COMPARE(result.load(), 1);
    worker.join();
    QCOMPARE(lines, (std::vector<std::string>{"first line", "second"}));
    QTRY_VERIFY(openBoxes().empty());
}

QTEST_MAIN(MessageBoxSequenceTest)
#include "message_box_sequence_test.moc"
