// The sample boxes of the gallery open, fit on the screen and answer, from
// the UI thread and from a worker thread, and the gallery logs the answers.
#include <QtTest>

#include <QApplication>
#include <QPushButton>

#include "ui/MessageBoxDialog.h"
#include "ui/MessageBoxGallery.h"

using namespace tav;
using tav::ui::MessageBoxDialog;
using tav::ui::MessageBoxGallery;

namespace {

MessageBoxDialog* openBox() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<MessageBoxDialog*>(w); box && box->isVisible()) return box;
    return nullptr;
}

}  // namespace

class MessageBoxGalleryTest : public QObject {
    Q_OBJECT
private slots:
    void everySampleFitsOnTheScreen();
    void samplesAnswerAndTheAnswerIsLogged();
};

void MessageBoxGalleryTest::everySampleFitsOnTheScreen() {
    const int screenWidth = QGuiApplication::primaryScreen()->availableGeometry().width();
    for (const QString& name : MessageBoxGallery::sampleNames()) {
        MessageRequest r = MessageBoxGallery::sample(name);
        MessageBoxDialog box(r, "Tavelo", "Main");
        box.show();
        QVERIFY2(box.buttonCount() >= 1, qPrintable(name));
        QVERIFY2(box.width() <= screenWidth, qPrintable(name));
        for (int i = 1; i <= box.buttonCount(); ++i) {
            QVERIFY2(box.button(i)->isVisible(), qPrintable(name));
            QVERIFY2(box.button(i)->geometry().right() < box.width(), qPrintable(name));
            QVERIFY2(box.button(i)->geometry().bottom() < box.height(), qPrintable(name));
        }
        if (qEnvironmentVariableIsSet("TAVELO_SHOTS"))
            box.grab().save(qEnvironmentVariable("TAVELO_SHOTS") + "/gallery-" + QString(name).replace(' ', '-') + ".png");
    }
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
}

QTEST_MAIN(MessageBoxGalleryTest)
#include "message_box_gallery_test.moc"
