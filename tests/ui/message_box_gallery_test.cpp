// The sample boxes of the gallery open, fit on the screen and answer, from
// the UI thread and from a worker thread, and the gallery logs the answers.
#include <QtTest>

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>

#include "ui/MessageBoxControls.h"
#include "ui/MessageBoxDialog.h"
#include "ui/MessageBoxGallery.h"

using namespace tav;
using tav::ui::MessageBoxDialog;
using tav::ui::MessageBoxGallery;

namespace {

// With TAVELO_SHOTS set, a picture of the box in that folder: on a real X
// server the pixels the screen shows, elsewhere the box painted by itself.
void saveShot(QWidget* box, const QString& name) {
    if (!qEnvironmentVariableIsSet("TAVELO_SHOTS")) return;
    if (!QTest::qWaitForWindowExposed(box)) return;
    QTest::qWait(150);
    QPixmap shot;
    if (QGuiApplication::platformName() == "xcb") {
        const QRect frame = box->frameGeometry();
        shot = box->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
    } else {
        shot = box->grab();
    }
    QString file = name.toLower();
    file.replace(QRegularExpression("[^a-z0-9]+"), "-");
    shot.save(qEnvironmentVariable("TAVELO_SHOTS") + "/box-" + file + ".png");
}

// Every widget of the box's content lies inside the box, right and bottom.
bool insideTheBox(const MessageBoxDialog& box, QString* what) {
    for (QWidget* w : box.area()->widget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (w->isHidden()) continue;
        const QRect r(w->mapTo(&box, QPoint(0, 0)), w->size());
        if (r.right() >= box.width() || r.bottom() >= box.height() || r.left() < 0 || r.top() < 0) {
            *what = w->objectName();
            return false;
        }
    }
    return true;
}

MessageBoxDialog* openBox() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<MessageBoxDialog*>(w); box && box->isVisible()) return box;
    return nullptr;
}

}  // namespace

class MessageBoxGalleryTest : public QObject {
    Q_OBJECT
private slots:
    void everySampleFitsOnTheScreen_data();
    void everySampleFitsOnTheScreen();
    void validationPanelFitsTheBox();
    void samplesAnswerAndTheAnswerIsLogged();
};

void MessageBoxGalleryTest::everySampleFitsOnTheScreen_data() {
    QTest::addColumn<double>("points");
    QTest::addColumn<bool>("bold");
    QTest::newRow("designed font") << 0.0 << false;
    QTest::newRow("large bold font") << 13.0 << true;
}

void MessageBoxGalleryTest::everySampleFitsOnTheScreen() {
    QFETCH(double, points);
    QFETCH(bool, bold);
    const QFont font = ui::messageBoxFont("", points, bold, false);
    const int screenWidth = QGuiApplication::primaryScreen()->availableGeometry().width();
    for (const QString& name : MessageBoxGallery::sampleNames()) {
        MessageRequest r = MessageBoxGallery::sample(name);
        MessageBoxDialog box(r, "Tavelo", "Main", nullptr, points > 0 ? &font : nullptr);
        box.show();
        QVERIFY2(box.buttonCount() >= 1, qPrintable(name));
        QVERIFY2(box.width() <= screenWidth, qPrintable(name));
        for (int i = 1; i <= box.buttonCount(); ++i) {
            QVERIFY2(box.button(i)->isVisible(), qPrintable(name));
            const QRect b(box.button(i)->mapTo(&box, QPoint(0, 0)), box.button(i)->size());
            QVERIFY2(b.right() < box.width(), qPrintable(name));
            QVERIFY2(b.bottom() < box.height(), qPrintable(name));
        }
        QString what;
        if (box.area()->widget()->height() <= box.area()->viewport()->height())  // nothing scrolled away
            QVERIFY2(insideTheBox(box, &what), qPrintable(name + ": " + what));
        saveShot(&box, name + (points > 0 ? " large" : ""));
    }
}

void MessageBoxGalleryTest::validationPanelFitsTheBox() {
    MessageRequest r = MessageBoxGallery::sample("Input");
    r.options += "NoHide|";
    MessageBoxDialog box(r, "Tavelo", "Main");
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.pressButton(1);
    box.rearm(r, "The name \"old name.txt\" is taken.\rChoose another name, or press Cancel to keep the file "
                 "as it is.");
    QVERIFY(box.validationShown());
    auto* panel = box.findChild<QWidget*>("fValiPic");
    QVERIFY(panel);
    QVERIFY(box.rect().contains(panel->geometry()));
    auto* label = box.findChild<QWidget*>("fValiLabel");
    auto* ok = box.findChild<QWidget*>("fValiButton");
    QVERIFY(panel->rect().contains(label->geometry()));
    QVERIFY(panel->rect().contains(ok->geometry()));
    QVERIFY(label->geometry().bottom() < ok->geometry().top());
    saveShot(&box, "validation panel");
}

void MessageBoxGalleryTest::samplesAnswerAndTheAnswerIsLogged() {
    MessageBoxGallery gallery;
    gallery.show();
    QTimer::singleShot(0, [] {
        QTRY_VERIFY(openBox() != nullptr);
        QTest::mouseClick(openBox()->button(2), Qt::LeftButton);
    });
    gallery.run("Yes No Cancel", false);
    QVERIFY(gallery.log().contains("Yes No Cancel: answer 2"));

    gallery.run("Input", true);
    QTRY_VERIFY(openBox() != nullptr);
    QTest::mouseClick(openBox()->button(1), Qt::LeftButton);
    QTRY_VERIFY(gallery.log().contains("Input (worker): answer 1"));
    QVERIFY(gallery.log().contains("value 1 = old name.txt"));

    // A prompt call with steps: Size up, then OK.
    gallery.runPrompt("Sequence of columns", true);
    QTRY_VERIFY(openBox() != nullptr);
    MessageBoxDialog* first = openBox();
    qobject_cast<QListWidget*>(first->control(1))->setCurrentRow(1);
    QTest::mouseClick(first->button(1), Qt::LeftButton);
    QTRY_VERIFY(openBox() != nullptr && openBox() != first);
    saveShot(openBox(), "sequence after up");
    QTest::mouseClick(openBox()->button(3), Qt::LeftButton);
    QTRY_VERIFY(gallery.log().contains("Sequence of columns: OK, Size | Name | Date | Title (worker)"));

    // Two points larger with the format key, then OK: one answer.
    gallery.run("Options and check", true);
    QTRY_VERIFY(openBox() != nullptr);
    MessageBoxDialog* before = openBox();
    const double points = before->font().pointSizeF();
    QTest::keyClick(before->button(1), 'I', Qt::ShiftModifier | Qt::AltModifier);
    QTRY_VERIFY(openBox() != nullptr && openBox() != before);
    MessageBoxDialog* middle = openBox();
    QTest::keyClick(middle->button(1), 'I', Qt::ShiftModifier | Qt::AltModifier);
    QTRY_VERIFY(openBox() != nullptr && openBox() != middle);
    QCOMPARE(openBox()->font().pointSizeF(), points + 2);
    saveShot(openBox(), "options and check two points larger");
    QTest::mouseClick(openBox()->button(1), Qt::LeftButton);
    QTRY_VERIFY(gallery.log().contains("Options and check (worker): answer 1"));
    QCOMPARE(gallery.log().count("Options and check (worker)"), 1);
}

QTEST_MAIN(MessageBoxGalleryTest)
#include "message_box_gallery_test.moc"
