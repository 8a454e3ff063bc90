// The NoHide cycle: a press answers while the box stays on screen; the next
// call with NoHide shows its validation text on a panel with "OK" and waits
// for the next press in the same box; a call without NoHide removes it.
#include <QtTest>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <atomic>
#include <thread>

#include "dialogs/MessageBuilder.h"
#include "ui/MessageBoxDialog.h"
#include "ui/QtMessageHost.h"

using namespace tav;
using tav::ui::MessageBoxDialog;

namespace {

MessageRequest nameRequest(const std::string& options) {
    MessageRequest r{"New name:", std::string(1, '1'), options, {}, {}, {}, {}};
    MBAddCtl("TextBox", "3000||||||-1", "", r, true);
    return r;
}

std::vector<MessageBoxDialog*> openBoxes() {
    std::vector<MessageBoxDialog*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<MessageBoxDialog*>(w); box && box->isVisible()) out.push_back(box);
    return out;
}

QLineEdit* nameEdit(MessageBoxDialog* box) { return qobject_cast<QLineEdit*>(box->control(1)); }

// Once the event loop runs: the first button of the one box that shows.
void pressFirstButtonLater() {
    QTimer::singleShot(0, [] {
        QTRY_COMPARE(openBoxes().size(), size_t{1});
        QTest::mouseClick(openBoxes().front()->button(1), Qt::LeftButton);
    });
}

}  // namespace

class MessageBoxNoHideTest : public QObject {
    Q_OBJECT
private slots:
    void pressAnswersAndTheBoxStays();
    void validationPanelShowsTheTextAndGivesTheFocusBack();
    void hostKeepsTheBoxBetweenCallsOnTheUiThread();
    void hostKeepsTheBoxBetweenCallsFromAWorker();
    void secondInstanceRebuildsTheKeptBoxInItsPlace();
    void secondInstanceShowsTheValidationText();
    void removeOthersTakesTheBoxesOfOtherHosts();
    void aBoxNotShownEndsTheCycle();
};

void MessageBoxNoHideTest::pressAnswersAndTheBoxStays() {
    MessageRequest r = nameRequest("NoHide|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QSignalSpy pressed(&box, &MessageBoxDialog::pressed);
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QTest::keyClicks(nameEdit(&box), "draft");
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(pressed.at(0).at(0).toInt(), 1);
    QVERIFY(box.isVisible());
    QCOMPARE(QString::fromStdString(r.values[1]), QString("draft"));
    // Until the caller asks again, further presses go nowhere.
    QTest::mouseClick(box.button(2), Qt::LeftButton);
    QCOMPARE(pressed.count(), 1);
    box.rearm(r, "");
    QTest::mouseClick(box.button(2), Qt::LeftButton);
    QCOMPARE(pressed.count(), 2);
    QCOMPARE(pressed.at(1).at(0).toInt(), 2);
    QVERIFY(box.isVisible());
}

void MessageBoxNoHideTest::validationPanelShowsTheTextAndGivesTheFocusBack() {
    MessageRequest r = nameRequest("NoHide|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QSignalSpy pressed(&box, &MessageBoxDialog::pressed);
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    box.rearm(r, "The name must not be empty.");
    QVERIFY(box.validationShown());
    auto* label = box.findChild<QLabel*>("fValiLabel");
    auto* ok = box.findChild<QPushButton*>("fValiButton");
    QVERIFY(label && ok);
    QCOMPARE(label->text(), QString("The name must not be empty."));
    QCOMPARE(ok->text(), QString("OK"));
    QVERIFY(ok->isDefault());
    QCOMPARE(QApplication::focusWidget(), ok);
    // The box's own buttons and Esc wait behind the panel.
    QTest::mouseClick(box.button(2), Qt::LeftButton);
    QCOMPARE(pressed.count(), 1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!box.validationShown());
    QCOMPARE(pressed.count(), 1);
    QVERIFY(box.button(1)->isDefault());
    QCOMPARE(QApplication::focusWidget(), box.button(1));  // it had the focus before
    // Enter closes the panel too, and the focus goes back to the text box.
    nameEdit(&box)->setFocus();
    box.rearm(r, "Again.");
    QVERIFY(box.validationShown());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(!box.validationShown());
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(QApplication::focusWidget(), nameEdit(&box));
    QTest::keyClicks(nameEdit(&box), "good");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(pressed.count(), 2);
    QCOMPARE(QString::fromStdString(r.values[1]), QString("good"));
}

void MessageBoxNoHideTest::hostKeepsTheBoxBetweenCallsOnTheUiThread() {
    ui::QtMessageHost host;
    MessageRequest r = nameRequest("NoHide|");
    MessageBoxDialog* first = nullptr;
    QTimer::singleShot(0, [&] {
        QTRY_COMPARE(openBoxes().size(), size_t{1});
        first = openBoxes().front();
        QTest::mouseClick(first->button(1), Qt::LeftButton);
    });
    QCOMPARE(host.show(r), 1);
    QVERIFY(first && first->isVisible());
    QCOMPARE(QString::fromStdString(r.values[1]), QString(""));

    // The input is bad: the same box shows why and waits for the next press.
    r.options = "{NoHide=The name must not be empty.|0|0}|";
    QTimer::singleShot(0, [&] {
        QVERIFY(first->validationShown());
        QTest::mouseClick(first->findChild<QPushButton*>("fValiButton"), Qt::LeftButton);
        nameEdit(first)->setText("fine.txt");
        QTest::mouseClick(first->button(1), Qt::LeftButton);
    });
    QCOMPARE(host.show(r), 1);
    QCOMPARE(openBoxes().size(), size_t{1});
    QCOMPARE(openBoxes().front(), first);
    QCOMPARE(QString::fromStdString(r.values[1]), QString("fine.txt"));

    // A request without NoHide removes the kept box.
    MessageRequest done{"Renamed.", std::string(1, '0'), {}, {}, {}, {}, {}};
    QTimer::singleShot(0, [&] {
        QTRY_COMPARE(openBoxes().size(), size_t{1});
        QVERIFY(openBoxes().front() != first);
        QTest::mouseClick(openBoxes().front()->button(1), Qt::LeftButton);
    });
    QCOMPARE(host.show(done), 1);
    QTRY_VERIFY(openBoxes().empty());
}

void MessageBoxNoHideTest::hostKeepsTheBoxBetweenCallsFromAWorker() {
    ui::QtMessageHost host;
    MessageRequest r = nameRequest("NoHide|");
    std::atomic<int> stage{0};
    std::vector<int> answers;
    std::thread worker([&] {
        answers.push_back(host.show(r));
        stage = 1;
        r.options = "{NoHide=Too short.}|";
        answers.push_back(host.show(r));
        stage = 2;
    });
    QTRY_COMPARE(openBoxes().size(), size_t{1});
    MessageBoxDialog* box = openBoxes().front();
    QTest::mouseClick(box->button(2), Qt::LeftButton);
    QTRY_COMPARE(stage.load(), 1);
    QTRY_VERIFY(box->validationShown());
    QVERIFY(box->isVisible());
    QTest::mouseClick(box->findChild<QPushButton*>("fValiButton"), Qt::LeftButton);
    nameEdit(box)->setText("long enough");
    QTest::mouseClick(box->button(1), Qt::LeftButton);
    QTRY_COMPARE(stage.load(), 2);
    worker.join();
    QCOMPARE(answers, (std::vector<int>{2, 1}));
    QCOMPARE(QString::fromStdString(r.values[1]), QString("long enough"));
    QVERIFY(box->isVisible());
    host.releaseKept();
    QTRY_VERIFY(openBoxes().empty());
}

void MessageBoxNoHideTest::secondInstanceRebuildsTheKeptBoxInItsPlace() {
    ui::QtMessageHost host;
    MessageRequest r{"Pick:", "&Up|&OK", "NoHide|", {}, {}, {}, {}};
    const int list = MBAddCtl("ListBox", "", "0", r, true);
    for (const char* item : {"a", "b"}) MBAddListItem(item, -1, r, list);
    QPointer<MessageBoxDialog> first;
    QPoint place;
    QTimer::singleShot(0, [&] {
        QTRY_COMPARE(openBoxes().size(), size_t{1});
        first = openBoxes().front();
        first->move(first->pos() + QPoint(37, 23));
        place = first->pos();
        first->button(1)->setFocus();
        QTest::mouseClick(first->button(1), Qt::LeftButton);
    });
    QCOMPARE(host.show(r), 1);
    QVERIFY(first && first->isVisible());

    // The request changes (the items swap, a line is added): the box is
    // built anew, in the old one's place, and the old one goes.
    r.options = "{NoHide=|0|-1}|";
    r.lists[list] = {"1", "b", "a"};
    MBAddCtl("TextBox", "", "added", r);
    QPointer<MessageBoxDialog> second;
    QTimer::singleShot(0, [&] {
        QTRY_VERIFY(openBoxes().size() == 1 && openBoxes().front() != first.data());
        second = openBoxes().front();
        QCOMPARE(second->focusWidget(), second->button(1));  // the focus stays on the button it was on
        QTest::mouseClick(second->button(2), Qt::LeftButton);
    });
    QCOMPARE(host.show(r), 2);
    QTRY_VERIFY(first.isNull());
    QVERIFY(second && second->isVisible());
    QCOMPARE(host.keptBox(), second.data());
    QCOMPARE(second->pos(), place);
    auto* items = qobject_cast<QListWidget*>(second->control(list));
    QVERIFY(items);
    QCOMPARE(items->item(0)->text(), QString("b"));
    QCOMPARE(items->currentRow(), 1);
    QVERIFY(second->control(2));
    QCOMPARE(QString::fromStdString(r.values[2]), QString("added"));
    host.releaseKept();
    QTRY_VERIFY(openBoxes().empty());
}

void MessageBoxNoHideTest::secondInstanceShowsTheValidationText() {
    ui::QtMessageHost host;
    MessageRequest r = nameRequest("NoHide|");
    pressFirstButtonLater();
    QCOMPARE(host.show(r), 1);
    MessageBoxDialog* first = host.keptBox();
    r.options = "{NoHide=Too short.|0|-1}|";
    QTimer::singleShot(0, [&] {
        QTRY_VERIFY(host.keptBox() && host.keptBox() != first);
        MessageBoxDialog* box = host.keptBox();
        QVERIFY(box->validationShown());
        QCOMPARE(box->findChild<QLabel*>("fValiLabel")->text(), QString("Too short."));
        QTest::mouseClick(box->findChild<QPushButton*>("fValiButton"), Qt::LeftButton);
        QTest::mouseClick(box->button(2), Qt::LeftButton);
    });
    QCOMPARE(host.show(r), 2);
    host.releaseKept();
    QTRY_VERIFY(openBoxes().empty());
}

void MessageBoxNoHideTest::removeOthersTakesTheBoxesOfOtherHosts() {
    ui::QtMessageHost a, b;
    MessageRequest ra = nameRequest("NoHide|");
    MessageRequest rb = nameRequest("NoHide|");
    auto pressTheNewest = [](ui::QtMessageHost& host) {
        QTimer::singleShot(0, [&host] {
            QTRY_VERIFY(host.keptBox() && host.keptBox()->isVisible());
            QTest::mouseClick(host.keptBox()->button(1), Qt::LeftButton);
        });
    };
    pressTheNewest(a);
    QCOMPARE(a.show(ra), 1);
    pressTheNewest(b);
    QCOMPARE(b.show(rb), 1);
    QCOMPARE(openBoxes().size(), size_t{2});
    QPointer<MessageBoxDialog> ofA = a.keptBox();
    MessageBoxDialog* ofB = b.keptBox();

    // Without the flag each host keeps its own box.
    rb.options = "{NoHide=|0|0}|";
    pressTheNewest(b);
    QCOMPARE(b.show(rb), 1);
    QVERIFY(ofA && ofA->isVisible());

    // With it, b's box is shown again alone.
    rb.options = "{NoHide=|-1|0}|";
    pressTheNewest(b);
    QCOMPARE(b.show(rb), 1);
    QTRY_VERIFY(ofA.isNull());
    QCOMPARE(b.keptBox(), ofB);
    QCOMPARE(openBoxes().size(), size_t{1});
    // a starts a new box when it asks again.
    pressTheNewest(a);
    QCOMPARE(a.show(ra), 1);
    QVERIFY(a.keptBox() && a.keptBox() != ofB);
    QCOMPARE(openBoxes().size(), size_t{2});
    a.releaseKept();
    b.releaseKept();
    QTRY_VERIFY(openBoxes().empty());
}

void MessageBoxNoHideTest::aBoxNotShownEndsTheCycle() {
    ui::QtMessageHost host;
    MessageRequest r = nameRequest("NoHide|");
    pressFirstButtonLater();
    QCOMPARE(host.show(r), 1);
    // Not shown, but with NoHide: the kept box stays.
    MessageRequest kept{"", "0", "No show|NoHide|", {}, {}, {}, {}};
    QCOMPARE(host.show(kept), ui::QtMessageHost::kNoAnswer);
    QVERIFY(host.keptBox());
    MessageRequest end{"", "0", "No show|", {}, {}, {}, {}};
    QCOMPARE(host.show(end), ui::QtMessageHost::kNoAnswer);
    QVERIFY(!host.keptBox());
    QTRY_VERIFY(openBoxes().empty());

    // From a worker too.
    MessageRequest again = nameRequest("NoHide|");
    std::atomic<int> stage{0};
    std::thread worker([&] {
        host.show(again);
        stage = 1;
        host.show(end);
        stage = 2;
    });
    QTRY_COMPARE(openBoxes().size(), size_t{1});
    QTest::mouseClick(openBoxes().front()->button(1), Qt::LeftButton);
    QTRY_COMPARE(stage.load(), 2);
    worker.join();
    QTRY_VERIFY(openBoxes().empty());
}

QTEST_MAIN(MessageBoxNoHideTest)
#include "message_box_nohide_test.moc"
