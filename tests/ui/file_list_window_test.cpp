// The application as a user meets it: Tavelo starts on a temporary data
// directory with its factory window, F5 lists a directory with rows coming
// in live, Stop acts at once, two-column sorts and BLUE selections work,
// and a restart, orderly or not, brings back the same windows.
#include <QtTest>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSplitter>
#include <QTableView>
#include <fstream>
#include <memory>

#include "frame/WindowStore.h"
#include "settings/IniStore.h"
#include "support/AppRun.h"
#include "support/NextBoxAnswer.h"
#include "support/TempDir.h"
#include "ui/AppCommands.h"
#include "ui/AppContext.h"
#include "ui/FileListWindow.h"
#include "ui/ListGridView.h"
#include "ui/ListSection.h"
#include "ui/MainWindow.h"
#include "ui/MessageBoxDialog.h"
#include "ui/ShowDataWindow.h"
#include "ui/StatusPieces.h"
#include "ui/TextSectionView.h"

using namespace tav;

namespace {

void writeFile(const std::filesystem::path& path, const std::string& bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

using Run = tavtest::AppRun;

bool waitForRefresh(ui::FileListWindow* w, int ms = 20000) {
    return QTest::qWaitFor([w] { return !w->refreshing(); }, ms);
}

// The window lists the files (not the directories) of one directory.
void listFilesOf(ui::FileListWindow* w, const std::filesystem::path& dir) {
    w->save("Last Dir", "{" + dir.string() + "/}");
    w->save("List Dirs", "0");
}

using tavtest::answerNextBox;

}  // namespace

class FileListWindowTest : public QObject {
    Q_OBJECT
private slots:
    void startsWithTheFactoryWindowAndRefreshesWithF5();
    void stopActsAtOnceAndKeepsTheRowsListed();
    void sortsByTwoColumnsAndCountsBlueRows();
    void aVeryLargeSelectionAsksFirst();
    void theTextSectionFollowsTheCursor();
    void menuCommandsReachTheActiveWindow();
    void barsMoveByKeysAndToggle();
    void windowsComeBackAfterARestart();
    void windowsComeBackAfterACrash();
    void aDamagedWindowsFileIsReplacedByTheFactoryCopy();
};

void FileListWindowTest::startsWithTheFactoryWindowAndRefreshesWithF5() {
    tavtest::TempDir dir;
    writeFile(dir / "tree/a.txt", "alpha");
    writeFile(dir / "tree/b.htm", "<title>Bee</title>");
    writeFile(dir / "tree/c.txt", "gamma gamma");
    Run run((dir / "data").string());
    QVERIFY(run.window);
    QCOMPARE(run.window->listWindows().size(), 1);
    ui::FileListWindow* w = run.active();
    QVERIFY(w);
    QCOMPARE(w->objectName(), QString("LHform"));
    w->save("Last Dir", "{" + (dir / "tree").string() + "/}");
    w->list()->view()->setFocus();
    QTest::keyClick(w->list()->view(), Qt::Key_F5);
    QVERIFY(waitForRefresh(w));
    QCOMPARE(w->list()->rowCount(), 3);
    QVERIFY(w->caption().contains("tree"));
    QVERIFY(run.window->statusPieces()->progressText().contains("3"));
    if (qEnvironmentVariableIsSet("TAVELO_SHOTS")) {
        QTest::qWait(50);
        run.window->grab().save(qEnvironmentVariable("TAVELO_SHOTS") + "/file-list-window.png");
    }
}

void FileListWindowTest::stopActsAtOnceAndKeepsTheRowsListed() {
    tavtest::TempDir dir;
    for (int d = 0; d < 40; ++d)
        for (int f = 0; f < 500; ++f) writeFile(dir / "big" / std::to_string(d) / (std::to_string(f) + ".txt"), "x");
    Run run((dir / "data").string());
    ui::FileListWindow* w = run.active();
    QVERIFY(w);
    w->save("Last Dir", "{" + (dir / "big").string() + "/}");
    w->save("Sub Dirs", "-1");
    w->refresh();
    QVERIFY(w->refreshing());
    QTest::qWait(30);
    QElapsedTimer clock;
    clock.start();
    QTest::keyClick(w->list()->view(), Qt::Key_Escape);
    QVERIFY(waitForRefresh(w, 2000));
    QVERIFY(clock.elapsed() < 1000);
    QVERIFY(w->list()->rowCount() < 20000);
    QVERIFY(w->caption().contains("ncomplete") || w->progressText().contains("incomplete"));
}

void FileListWindowTest::sortsByTwoColumnsAndCountsBlueRows() {
    tavtest::TempDir dir;
    writeFile(dir / "t/b.txt", "1");
    writeFile(dir / "t/a.txt", "22");
    writeFile(dir / "t/c.htm", "333");
    writeFile(dir / "t/a.htm", "4444");
    Run run((dir / "data").string());
    ui::FileListWindow* w = run.active();
    QVERIFY(w);
    listFilesOf(w, dir / "t");
    w->refresh();
    QVERIFY(waitForRefresh(w));
    QCOMPARE(w->list()->rowCount(), 4);
    // Type, then name.
    w->list()->sortBy({2, 1});
    QStringList names;
    for (int r = 0; r < 4; ++r) names << w->list()->cell(r, 1) + "/" + w->list()->cell(r, 2);
    QCOMPARE(names, QStringList({"a/htm", "c/htm", "a/txt", "b/txt"}));
    QCOMPARE(QString::fromStdString(w->state().value("Sort col Index")), QString("2|1"));
    // The sort order comes back with the window.
    w->list()->markRows({0, 2});
    QCOMPARE(w->list()->selectedFiles(), 2);
    QCOMPARE(w->list()->selectedBytes(), 4 + 2);
    QVERIFY(w->selectedText().contains("2"));
}

void FileListWindowTest::aVeryLargeSelectionAsksFirst() {
    tavtest::TempDir dir;
    for (int i = 0; i < 5; ++i) writeFile(dir / "t" / (std::to_string(i) + ".txt"), "abc");
    const std::string data = (dir / "data").string();
    {
        ui::AppContext context;
        QVERIFY(context.open(data, ""));
        context.ini().put("Main", "EN_SELWNGWHENCntRowGT", "3");
    }
    Run run(data);
    ui::FileListWindow* w = run.active();
    QVERIFY(w);
    listFilesOf(w, dir / "t");
    w->refresh();
    QVERIFY(waitForRefresh(w));
    QCOMPARE(w->list()->rowCount(), 5);
    QString seen;
    answerNextBox("No", &seen);
    QTest::keyClick(w->list()->view(), Qt::Key_A, Qt::ControlModifier);
    QVERIFY(seen.contains("You have selected a very large number of files."));
    QCOMPARE(w->list()->selectedFiles(), 0);
    answerNextBox("Yes");
    QTest::keyClick(w->list()->view(), Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(w->list()->selectedFiles(), 5);
    QCOMPARE(w->list()->selectedBytes(), 15);
}

void FileListWindowTest::theTextSectionFollowsTheCursor() {
    tavtest::TempDir dir;
    writeFile(dir / "t/a.txt", "first file");
    writeFile(dir / "t/b.txt", "second file");
    const std::string data = (dir / "data").string();
    {
        Run run(data);
        ui::FileListWindow* w = run.active();
        QVERIFY(w);
        listFilesOf(w, dir / "t");
        w->save("Show file as (auto read/alt-up+dn)", "Raw");
        w->refresh();
        QVERIFY(waitForRefresh(w));
        // With AutoRefresh Text on, the row under the cursor shows.
        QVERIFY(w->state().flag("Auto read text"));
        QTRY_VERIFY(w->textView()->shownLines().join("").contains("first file"));
        QTest::keyClick(w->list()->view(), Qt::Key_Down);
        QTRY_VERIFY(w->textView()->shownLines().join("").contains("second file"));
        QCOMPARE(QString::fromStdString(w->state().value("Last Txt PAFN")),
                 QString::fromStdString((dir / "t/b.txt").string()));
        // Without it, Alt+Up steps to the file before and shows it.
        w->toggleKey("OX");
        QVERIFY(!w->state().flag("Auto read text"));
        QTest::keyClick(w->list()->view(), Qt::Key_Up, Qt::AltModifier);
        QTRY_VERIFY(w->textView()->shownLines().join("").contains("first file"));
        run.window->close();
    }
    // The next start shows the same file again.
    Run again(data);
    again.window->showStartTexts(false);
    QVERIFY(again.active()->textView()->shownLines().join("").contains("first file"));
}

void FileListWindowTest::menuCommandsReachTheActiveWindow() {
    tavtest::TempDir dir;
    writeFile(dir / "t/a.txt", "shown in the popup");
    Run run((dir / "data").string());
    ui::FileListWindow* w = run.active();
    QVERIFY(w);
    listFilesOf(w, dir / "t");
    ui::AppCommands* commands = run.window->commands();
    QVERIFY(commands->run("EE"));
    QVERIFY(waitForRefresh(w));
    QCOMPARE(w->list()->rowCount(), 1);
    // Show Unformatted Text opens the popup on the current file.
    QVERIFY(commands->run("OU"));
    ui::ShowDataWindow* popup = ui::ShowDataWindow::openPopup(ui::ShowDataWindow::Role::ShowData);
    QVERIFY(popup);
    QTRY_VERIFY(popup->isVisible());
    popup->close();
    // The section switches are saved as they change.
    QVERIFY(w->sectionShown("VL"));
    QVERIFY(commands->run("VL"));
    QVERIFY(!w->sectionShown("VL"));
    QCOMPARE(QString::fromStdString(run.context.ini().get(w->state().sections.selections, "Show Top List on Listhtm")),
             QString("0"));
    // Sort by File Type goes by way of the window's bus.
    QVERIFY(commands->run("VSORT(2)"));
    QTRY_COMPARE(QString::fromStdString(w->state().value("Sort col Index")), QString("2"));
    // New and Window list: the new window becomes active, item 2 of the list.
    QVERIFY(commands->run("WW"));
    QCOMPARE(run.window->listWindows().size(), 2);
    QVERIFY(run.active() != w);
    QVERIFY(commands->run("09(0)"));
    QCOMPARE(run.active(), w);
    // With no window left, a command that needs one asks first.
    for (ui::FileListWindow* each : run.window->listWindows())
        qobject_cast<QMdiSubWindow*>(each->parentWidget())->close();
    QTRY_COMPARE(run.window->listWindows().size(), 0);
    QString seen;
    answerNextBox("Cancel", &seen);
    commands->run("EE");
    QVERIFY(seen.contains("This function requires a File List window."));
    QCOMPARE(run.window->listWindows().size(), 0);
}

void FileListWindowTest::barsMoveByKeysAndToggle() {
    tavtest::TempDir dir;
    Run run((dir / "data").string());
    ui::FileListWindow* w = run.active();
    QVERIFY(w);
    QTest::qWait(20);
    auto* lower = w->findChild<QSplitter*>("fSepPic_DirFiles");
    QVERIFY(lower);
    const int before = w->listDirWidth();
    lower->handle(1)->setFocus();
    QTest::keyClick(lower->handle(1), Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(w->listDirWidth(), before + 360);
    QTest::keyClick(lower->handle(1), Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(w->listDirWidth(), before + 320);
    // Up and Down do not move the left column's bar.
    QTest::keyClick(lower->handle(1), Qt::Key_Up);
    QCOMPARE(w->listDirWidth(), before + 320);
    // The toggle goes to the farther of the two saved positions.
    run.context.ini().put("Main", "% tree", "10|50");
    w->toggleBar(tav::Bar::DirFiles);
    const int total = w->width() * 15;
    const int p1 = total * 10 / 100, p2 = total * 50 / 100;
    QVERIFY(std::abs(w->listDirWidth() - p1) <= 15 || std::abs(w->listDirWidth() - p2) <= 15);
    const int first = w->listDirWidth();
    w->toggleBar(tav::Bar::DirFiles);
    QVERIFY(w->listDirWidth() != first);
    // Saved as it moves: the next start has it.
    QCOMPARE(QString::fromStdString(run.context.ini().get(w->section(), "List Dir Width")),
             QString::number(w->listDirWidth()));
}

void FileListWindowTest::windowsComeBackAfterARestart() {
    tavtest::TempDir dir;
    const std::string data = (dir / "data").string();
    std::string second;
    {
        Run run(data);
        QVERIFY(run.window);
        ui::FileListWindow* w = run.window->newWindow();
        QVERIFY(w);
        second = w->section();
        w->setListDirWidth(4500);
        w->save("Last Col List", "1|3");
        QCOMPARE(run.window->listWindows().size(), 2);
        run.window->close();
    }
    Run again(data);
    QVERIFY(again.window);
    QCOMPARE(again.window->listWindows().size(), 2);
    ui::FileListWindow* found = nullptr;
    for (ui::FileListWindow* w : again.window->listWindows())
        if (w->section() == second) found = w;
    QVERIFY(found);
    QCOMPARE(found->listDirWidth(), 4500);
    QCOMPARE(QString::fromStdString(found->state().value("Last Col List")), QString("1|3"));
}

void FileListWindowTest::windowsComeBackAfterACrash() {
    tavtest::TempDir dir;
    const std::string data = (dir / "data").string();
    std::string closed;
    {
        Run run(data);
        QVERIFY(run.window);
        ui::FileListWindow* a = run.window->newWindow();
        ui::FileListWindow* b = run.window->newWindow();
        QVERIFY(a && b);
        a->setTextFrameHeight(1500);
        closed = b->section();
        // A window the user closes leaves the list of current windows.
        qobject_cast<QMdiSubWindow*>(b->parentWidget())->close();
        QTest::qWait(10);
        QCOMPARE(run.window->listWindows().size(), 2);
        // No orderly end: the main window goes without its close, as a
        // killed process leaves its files.
        run.window.reset();
    }
    Run again(data);
    QVERIFY(again.window);
    QCOMPARE(again.window->listWindows().size(), 2);
    bool sawHeight = false;
    for (ui::FileListWindow* w : again.window->listWindows()) {
        QVERIFY(w->section() != closed);
        if (w->textFrameHeight() == 1500) sawHeight = true;
    }
    QVERIFY(sawHeight);
    // The closed window was the last one unloaded, so its sections stay.
    QCOMPARE(again.window->windows().lastUnloaded(), closed);
}

void FileListWindowTest::aDamagedWindowsFileIsReplacedByTheFactoryCopy() {
    tavtest::TempDir dir;
    const std::string data = (dir / "data").string();
    {
        Run run(data);
        QVERIFY(run.window);
        run.window->close();
    }
    {
        ui::AppContext context;
        QVERIFY(context.open(data, ""));
        context.ini().put("Windows sections", "List of sections for current windows", "--W nowhere");
        context.ini().put("Windows sections", "Last window unloaded (used for new window when no listhtm current)",
                          "--W gone");
        context.ini().flush();
    }
    Run again(data);
    QVERIFY(again.window);
    QCOMPARE(again.window->listWindows().size(), 1);
    QCOMPARE(again.window->listWindows().front()->section(), std::string("--W 43200"));
}

QTEST_MAIN(FileListWindowTest)
#include "file_list_window_test.moc"
