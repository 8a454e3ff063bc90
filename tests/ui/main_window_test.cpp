// The desktop program starts on a fresh data directory, shows its main
// window, and keeps the window's place for the next start.
#include <QtTest>

#include <QMdiArea>

#include "settings/IniStore.h"
#include "support/TempDir.h"
#include "ui/AppContext.h"
#include "ui/MainWindow.h"

using namespace tav;

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void firstStartMakesTheDataDirectoryAndShowsTheWelcome();
    void placeIsKeptForTheNextStart();
};

void MainWindowTest::firstStartMakesTheDataDirectoryAndShowsTheWelcome() {
    tavtest::TempDir dir;
    const std::string data = (dir / "data").string();
    {
        ui::AppContext context;
        QVERIFY(context.open(data, ""));
        QVERIFY(context.files().firstRun);
        QVERIFY(QFile::exists(QString::fromStdString(data + "/Tavelo.ini")));
        QVERIFY(QFile::exists(QString::fromStdString(data + "/param/sucurrwin.ini")));
        ui::MainWindow window(context);
        window.show();
        window.showTextFile(QString::fromStdString(data + "/welcome.txt"), "Welcome");
        QCOMPARE(window.objectName(), QString("HTMLanalform"));
        QCOMPARE(window.mdiArea()->subWindowList().size(), 1);
        // TAVELO_SHOTS=DIR keeps a picture of the window for a person to look at.
        if (qEnvironmentVariableIsSet("TAVELO_SHOTS")) {
            window.resize(1000, 640);
            QTest::qWait(50);
            window.grab().save(qEnvironmentVariable("TAVELO_SHOTS") + "/main-window.png");
        }
    }
    ui::AppContext again;
    QVERIFY(again.open(data, ""));
    QVERIFY(!again.files().firstRun);
}

void MainWindowTest::placeIsKeptForTheNextStart() {
    tavtest::TempDir dir;
    const std::string data = (dir / "data").string();
    {
        ui::AppContext context;
        QVERIFY(context.open(data, ""));
        ui::MainWindow window(context);
        window.show();
        window.resize(720, 480);
        window.close();
        QCOMPARE(QString::fromStdString(context.ini().get("Main", "MDI WIN STATE")), QString("0"));
    }
    ui::AppContext context;
    QVERIFY(context.open(data, ""));
    ui::MainWindow window(context);
    QCOMPARE(window.size(), QSize(720, 480));
}

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
