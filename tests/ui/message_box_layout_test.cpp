// Where the message box puts things: measures in proportion to an eight
// point font, the options that move the buttons and the controls, the
// markers in the control list, fixed sizes and the screen as the limit.
#include <QtTest>

#include <QApplication>
#include <QCheckBox>
#include <QFontDatabase>
#include <QScrollArea>
#include <QScrollBar>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include "dialogs/MessageBuilder.h"
#include "ui/MessageBoxControls.h"
#include "ui/MessageBoxDialog.h"
#include "ui/QtMessageHost.h"

using namespace tav;
using tav::ui::MessageBoxDialog;

namespace {

MessageRequest request(const std::string& message, const std::string& buttons, const std::string& options = {}) {
    return makeRequest(message, buttons, options);
}

int screenWidth() { return QGuiApplication::primaryScreen()->availableGeometry().width(); }

}  // namespace

class MessageBoxLayoutTest : public QObject {
    Q_OBJECT
private slots:
    void measuresFollowTheFontSize();
    void userFontScalesTheBox();
    void fixFontNameGivesTheFixedFont();
    void gapsOptionSetsTheButtonGaps();
    void buttonsNextToIconStartUnderTheIcon();
    void buttonsUnderTextOnlyCentreUnderTheMessage();
    void controlsUnderMessageStartAtTheMargin();
    void controlsStandBesideTheIconOtherwise();
    void addButtonsMarkerPutsTheButtonsBetweenControls();
    void justAddHeightAddsItsHeight();
    void fixedWidthAndHeight();
    void topLeftOptionPlacesTheBox();
    void defaultAndMinWidthIsTheLeastWidth();
    void longWordNeverPassesTheScreen();
    void longMessageStopsAtTwoThirdsOfTheScreen();
    void zeroWidthFieldIsTheDesignedWidth();
    void rowsOfDifferentHeightCentreTheirControls();
    void focusGoesToTheControlWithFieldSevenThenFocBut();
    void boxTallerThanTheScreenScrollsItsControls();
    void buttonsAtBottomStayInSightWhenTheControlsScroll();
};

void MessageBoxLayoutTest::measuresFollowTheFontSize() {
    MessageRequest r = request("Size", "0");
    MessageBoxDialog small(r, "Tavelo", "Main");
    QFont font = small.font();
    font.setPointSizeF(8);
    small.setFont(font);
    const double dpi = small.logicalDpiY();
    QCOMPARE(small.px(1440), qRound(dpi));  // eight points: one inch is one inch
    font.setPointSizeF(16);
    small.setFont(font);
    QCOMPARE(small.px(1440), qRound(dpi * 2));
}

void MessageBoxLayoutTest::userFontScalesTheBox() {
    MessageRequest r = request("Scaled", "&OK|&Cancel");
    const QFont small = ui::messageBoxFont("", 8, false, false);
    const QFont large = ui::messageBoxFont("", 16, true, true);
    MessageBoxDialog a(r, "Tavelo", "Main", nullptr, &small);
    MessageBoxDialog b(r, "Tavelo", "Main", nullptr, &large);
    QVERIFY(b.font().bold());
    QVERIFY(b.font().italic());
    QCOMPARE(b.px(120), 2 * a.px(120));
    QCOMPARE(b.messageLabel()->x(), 2 * a.messageLabel()->x());
    QVERIFY(b.button(1)->width() > a.button(1)->width());
    QCOMPARE(b.button(2)->x() - b.button(1)->geometry().right() - 1, b.px(120));

    // The host hands its font to the boxes it asks.
    ui::QtMessageHost host;
    host.setBoxFont(large);
    double seen = 0;
    QTimer::singleShot(0, [&seen] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* box = qobject_cast<MessageBoxDialog*>(w); box && box->isVisible()) {
                seen = box->font().pointSizeF();
                box->pressButton(1);
            }
    });
    QCOMPARE(host.show(r), 1);
    QCOMPARE(seen, 16.0);
}

void MessageBoxLayoutTest::fixFontNameGivesTheFixedFont() {
    const QFont fixed = ui::messageBoxFont("-FIXFONT-", 10, false, false);
    QCOMPARE(fixed.family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    QCOMPARE(fixed.pointSizeF(), 10.0);
    QCOMPARE(ui::messageBoxFont("", 0, false, false).pointSizeF(), QApplication::font().pointSizeF());
}

void MessageBoxLayoutTest::gapsOptionSetsTheButtonGaps() {
    MessageRequest r = request("Gaps", "&A|&B|&C", "{Buttons gap/gap betw lines=600|300|900}|MBButtspec.MaxBpl=2|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QCOMPARE(box.button(2)->x() - box.button(1)->geometry().right() - 1, box.px(600));
    QCOMPARE(box.button(3)->y() - box.button(1)->geometry().bottom() - 1, box.px(300));
    QCOMPARE(box.button(1)->y() - box.messageLabel()->geometry().bottom() - 1, box.px(900));
    // Defaults: 240 above the buttons without controls, 120 with them.
    MessageRequest plain = request("Gaps", "1");
    MessageBoxDialog second(plain, "Tavelo", "Main");
    QCOMPARE(second.button(1)->y() - second.messageLabel()->geometry().bottom() - 1, second.px(240));
    QCOMPARE(second.button(2)->x() - second.button(1)->geometry().right() - 1, second.px(120));
    MBAddCtl("TextBox", "2000", "", plain, true);
    MessageBoxDialog third(plain, "Tavelo", "Main");
    QCOMPARE(third.button(1)->y() - third.control(1)->geometry().bottom() - 1, third.px(120));
}

void MessageBoxLayoutTest::buttonsNextToIconStartUnderTheIcon() {
    std::string text = "One\rTwo\rThree\rFour\rFive\rSix\rSeven";
    MessageRequest r = request(text, "4", "48|BNextToIcon|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(box.messageLabel()->geometry().bottom() > box.iconLabel()->geometry().bottom());
    QCOMPARE(box.button(1)->y(), box.iconLabel()->geometry().bottom() + 1 + box.px(240));
    MessageRequest normal = request(text, "4", "48");
    MessageBoxDialog second(normal, "Tavelo", "Main");
    QVERIFY(second.button(1)->y() > second.messageLabel()->geometry().bottom());
}

void MessageBoxLayoutTest::buttonsUnderTextOnlyCentreUnderTheMessage() {
    MessageRequest r = request("A message that is long enough to make the box wide", "&OK", "64|BUnderTextOnly|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    const QRect msg = box.messageLabel()->geometry();
    const QRect ok = box.button(1)->geometry();
    const int areaLeft = msg.left();
    const int areaRight = box.width() - box.px(120);
    QVERIFY(std::abs((ok.left() - areaLeft) - (areaRight - ok.right() - 1)) <= 1);
    QVERIFY(ok.top() > msg.bottom());
}

void MessageBoxLayoutTest::controlsUnderMessageStartAtTheMargin() {
    MessageRequest r = request("Name:", "1", "64|Controls under msg|");
    int text = MBAddCtl("TextBox", "3000", "", r, true);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QCOMPARE(box.control(text)->x(), box.px(120));
    const int below = std::max(box.iconLabel()->geometry().bottom(), box.messageLabel()->geometry().bottom());
    QCOMPARE(box.control(text)->y(), below + 1 + box.px(60));
}

void MessageBoxLayoutTest::controlsStandBesideTheIconOtherwise() {
    MessageRequest r = request("Name:", "1", "64|");
    int text = MBAddCtl("TextBox", "3000", "", r, true);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QCOMPARE(box.control(text)->x(), box.messageLabel()->x());
    QVERIFY(box.control(text)->x() > box.iconLabel()->geometry().right());
    // Without a message the rows start at the top margin.
    MessageRequest empty = request("", "1");
    MBAddCtl("TextBox", "3000", "", empty, true);
    MessageBoxDialog second(empty, "Tavelo", "Main");
    QVERIFY(!second.messageLabel()->isVisibleTo(&second));
    QVERIFY(second.control(1)->y() <= second.px(120) + second.px(285));
}

void MessageBoxLayoutTest::addButtonsMarkerPutsTheButtonsBetweenControls() {
    MessageRequest r = request("Split", "1");
    int above = MBAddCtl("TextBox", "3000", "", r, true);
    MBAddCtl("AddButtons before RestCtls", "", "", r);
    int below = MBAddCtl("TextBox", "3000", "", r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(box.button(1)->y() > box.control(above)->geometry().bottom());
    QVERIFY(box.control(below)->y() > box.button(1)->geometry().bottom());
    // Buttons At Bottom: the marker is passed over.
    r.options = "Buttons At Bottom|";
    MessageBoxDialog second(r, "Tavelo", "Main");
    QVERIFY(second.button(1)->y() > second.control(below)->geometry().bottom());
}

void MessageBoxLayoutTest::justAddHeightAddsItsHeight() {
    MessageRequest r = request("Space", "1");
    int first = MBAddCtl("TextBox", "3000|300", "", r, true);
    MBAddCtl("JustAddHeight", "|600", "", r);
    int second = MBAddCtl("TextBox", "3000|300", "", r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    const int rowHeight = std::max(box.px(285), box.px(300));
    QCOMPARE(box.control(second)->y() - box.control(first)->y(), rowHeight + box.px(600));
}

void MessageBoxLayoutTest::fixedWidthAndHeight() {
    MessageRequest r = request("Fixed", "1", "Fixed Width=6000|{Fixed Height=3000|0}|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QCOMPARE(box.width(), box.px(6000));
    QCOMPARE(box.height(), box.px(3000));
}

void MessageBoxLayoutTest::topLeftOptionPlacesTheBox() {
    QWidget window;
    window.setGeometry(300, 200, 400, 300);
    window.show();
    MessageRequest r = request("Here", "0", "{Top, left of form=1500|3000}|");
    MessageBoxDialog box(r, "Tavelo", "Main", &window);
    box.show();
    const double dpi = box.logicalDpiY();
    QCOMPARE(box.pos(), QPoint(qRound(3000 / 1440.0 * dpi), qRound(1500 / 1440.0 * dpi)));
}

void MessageBoxLayoutTest::defaultAndMinWidthIsTheLeastWidth() {
    MessageRequest r = request("Hi", "0", "Default and Min Width=7000|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QCOMPARE(box.width(), box.px(7000));
    MessageRequest plain = request("Hi", "0");
    MessageBoxDialog second(plain, "Tavelo", "Main");
    QVERIFY(second.width() < box.px(7000));
}

void MessageBoxLayoutTest::longWordNeverPassesTheScreen() {
    MessageRequest r = request(std::string(600, 'W'), "0");
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(box.width() <= screenWidth());
    QVERIFY(box.messageLabel()->geometry().right() < box.width());
    QVERIFY(box.button(1)->geometry().right() < box.width());
}

void MessageBoxLayoutTest::longMessageStopsAtTwoThirdsOfTheScreen() {
    std::string text;
    for (int i = 0; i < 40; ++i) text += "many short words ";
    MessageRequest r = request(text, "0");
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(box.width() <= screenWidth() * 2 / 3);
    QVERIFY(box.width() >= screenWidth() * 2 / 3 - 2);
    QVERIFY(box.messageLabel()->height() > box.messageLabel()->fontMetrics().lineSpacing() * 2);
}

void MessageBoxLayoutTest::zeroWidthFieldIsTheDesignedWidth() {
    MessageRequest r = request("Designed", "1");
    int zero = MBAddCtl("TextBox", "0", "", r, true);
    int empty = MBAddCtl("TextBox", "", "", r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    QVERIFY(box.control(zero)->width() > box.px(1000));
    QCOMPARE(box.control(zero)->width(), box.control(empty)->width());
}

void MessageBoxLayoutTest::rowsOfDifferentHeightCentreTheirControls() {
    MessageRequest r = request("Row", "1");
    int label = MBAddCtl("Label", "", "Notes:", r, true);
    int notes = MBAddCtl("_TextBox", "3000|1200||||||||-1", "", r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    const QRect l = box.control(label)->geometry();
    const QRect n = box.control(notes)->geometry();
    QCOMPARE(n.height(), box.px(1200));
    QVERIFY(std::abs(l.center().y() - n.center().y()) <= 1);
}

void MessageBoxLayoutTest::focusGoesToTheControlWithFieldSevenThenFocBut() {
    MessageRequest r = request("Focus", "3", "FocBut=2|");
    MBAddCtl("TextBox", "3000", "", r, true);
    int second = MBAddCtl("TextBox", "3000||||||-1", "", r);
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QCOMPARE(QApplication::focusWidget(), box.control(second));

    MessageRequest buttons = request("Focus", "3", "FocBut=2|");
    MessageBoxDialog third(buttons, "Tavelo", "Main");
    third.show();
    QVERIFY(QTest::qWaitForWindowActive(&third));
    QCOMPARE(QApplication::focusWidget(), third.button(2));
    QVERIFY(third.button(1)->isDefault());
}

namespace {

MessageRequest tallRequest(const std::string& options) {
    MessageRequest r = request("Many choices", "&OK|&Cancel", options);
    for (int i = 0; i < 80; ++i) MBAddCtl("CheckBox", "Choice " + std::to_string(i) + "||||||", "0", r, i == 0);
    return r;
}

int screenHeight() { return QGuiApplication::primaryScreen()->availableGeometry().height(); }

}  // namespace

void MessageBoxLayoutTest::boxTallerThanTheScreenScrollsItsControls() {
    MessageRequest r = tallRequest("Esc=2|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QVERIFY(box.height() < screenHeight());
    QVERIFY(box.area()->verticalScrollBar()->maximum() > 0);
    QVERIFY(box.area()->verticalScrollBar()->isVisible());
    QVERIFY(box.area()->viewport()->width() >= box.control(1)->geometry().right());
    if (qEnvironmentVariableIsSet("TAVELO_SHOTS"))
        box.grab().save(qEnvironmentVariable("TAVELO_SHOTS") + "/message-box-tall.png");
    // The last choice and the buttons are reached by scrolling.
    QWidget* last = box.control(80);
    QVERIFY(last->geometry().bottom() > box.area()->viewport()->height());
    box.area()->ensureWidgetVisible(last);
    QVERIFY(last->mapTo(&box, QPoint(0, 0)).y() < box.height());
    // Keys still reach the box through the scrolling area.
    box.control(80)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QVERIFY(qobject_cast<QCheckBox*>(box.control(80))->isChecked());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QCOMPARE(box.answer(), 2);
    QCOMPARE(QString::fromStdString(r.values[80]), QString("-1"));
}

void MessageBoxLayoutTest::buttonsAtBottomStayInSightWhenTheControlsScroll() {
    MessageRequest r = tallRequest("Buttons At Bottom|");
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QVERIFY(box.height() < screenHeight());
    QVERIFY(box.area()->verticalScrollBar()->maximum() > 0);
    for (int i = 1; i <= 2; ++i) {
        const QRect b(box.button(i)->mapTo(&box, QPoint(0, 0)), box.button(i)->size());
        QVERIFY(box.rect().contains(b));
        QVERIFY(b.top() >= box.area()->geometry().bottom());
    }
    QVERIFY(box.button(1)->isDefault());
    box.area()->verticalScrollBar()->setValue(box.area()->verticalScrollBar()->maximum());
    QTest::mouseClick(box.button(1), Qt::LeftButton);
    QCOMPARE(box.answer(), 1);
}

QTEST_MAIN(MessageBoxLayoutTest)
#include "message_box_layout_test.moc"
