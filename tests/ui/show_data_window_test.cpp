// The popup text window as the user meets it: a file comes up in it at
// once, a second show reuses the open popup where it stands, Esc closes it,
// keys go to the File List window that opened it and give a notice once that
// window is gone, a cell's text shows read-only, and the standard sizes are
// kept in the INI file. A sparse file of several gigabytes opens at its end.
#include <QtTest>

#include <QAction>
#include <QPlainTextEdit>
#include <QPointer>
#include <filesystem>
#include <fstream>
#include <memory>

#include "settings/IniStore.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "ui/ShowDataOwner.h"
#include "ui/ShowDataWindow.h"
#include "ui/TextSectionView.h"
#include "viewer/TextBlockCache.h"

using namespace tav;
using tav::ui::ShowDataWindow;
using tav::ui::ShowKind;
using Role = ShowDataWindow::Role;

Q_DECLARE_METATYPE(tav::ui::ShowDataWindow::Role)

namespace {

std::string numberedLines(int count) {
    std::string s;
    for (int i = 1; i <= count; ++i) s += QString("line %1\n").arg(i, 6, 10, QChar('0')).toStdString();
    return s;
}

// A File List window as the popup sees it: it records what reaches it.
class FakeListWindow : public QWidget, public ui::ShowDataOwner {
public:
    void popupTextShown(const QString& path) override { shown << path; }
    bool popupKey(QKeyEvent* event) override {
        keys << event->key();
        return true;
    }
    QStringList shown;
    QList<int> keys;
};

void shoot(QWidget& w, const QString& name) {
    // TAVELO_SHOTS=DIR keeps a picture of the popup for a person to look at.
    if (!qEnvironmentVariableIsSet("TAVELO_SHOTS")) return;
    QTest::qWait(50);
    const QString file = qEnvironmentVariable("TAVELO_SHOTS") + "/" + name + ".png";
    QVERIFY2(w.grab().save(file), qPrintable(file));
}

}  // namespace

class ShowDataWindowTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void fileComesUpInThePopupAtOnce();
    void statusTitleIsCutToTheOptionLength_data();
    void statusTitleIsCutToTheOptionLength();
    void plainKindShowsTheTextWithoutMarkup();
    void hexKindOpensTheHexDisplayNotThePopup();
    void hexDumpOfThePopupIsOfTheSelectionElseTheFile();
    void openPopupIsReusedWhereItStands();
    void escClosesThePopup_data();
    void escClosesThePopup();
    void keysGoToTheListWindowUntilItIsGone();
    void cellTextShowsReadOnlyInItsOwnPopup();
    void standardSizeIsSavedAndUsed_data();
    void standardSizeIsSavedAndUsed();
    void sparseFileOfGigabytesOpensAtItsEnd();

private:
    ShowDataWindow* popup(Role role = Role::ShowData) {
        return ShowDataWindow::instance(role, *cache_, *host_, *ini_);
    }

    std::unique_ptr<tavtest::TempDir> dir_;
    std::unique_ptr<ProfileService> service_;
    std::unique_ptr<tavtest::ScriptedHost> host_;
    std::unique_ptr<IniStore> ini_;
    std::unique_ptr<TextBlockCache> cache_;
};

void ShowDataWindowTest::init() {
    dir_ = std::make_unique<tavtest::TempDir>();
    service_ = std::make_unique<ProfileService>();
    host_ = std::make_unique<tavtest::ScriptedHost>();
    ini_ = std::make_unique<IniStore>(*service_, host_.get());
    ini_->setDataDir(dir_->str());
    ini_->setRoleFile(IniRole::Main, ini_->qualify("Tavelo.ini"));
    ini_->missingDefault = kMissingEmpty;
    cache_ = std::make_unique<TextBlockCache>();
}

void ShowDataWindowTest::cleanup() {
    for (Role role : {Role::ShowData, Role::ShowCell})
        if (ShowDataWindow* open = ShowDataWindow::openPopup(role)) delete open;
    QVERIFY(!ShowDataWindow::openPopup(Role::ShowData));
    cache_.reset();
    ini_.reset();
    host_.reset();
    service_.reset();
    dir_.reset();
}

void ShowDataWindowTest::fileComesUpInThePopupAtOnce() {
    const QString path = QString::fromStdString(dir_->write("notes.txt", numberedLines(50000)).string());
    FakeListWindow list;
    ShowDataWindow* w = popup();
    w->setOwner(&list, &list);
    QVERIFY(w->showFile(path, ShowKind::Raw, "Notes"));
    QVERIFY(w->isVisible());
    QVERIFY(QTest::qWaitForWindowExposed(w));
    QCOMPARE(w->objectName(), QString("ShowData"));
    const QStringList lines = w->textView()->shownLines();
    QVERIFY(lines.size() > 5);
    QCOMPARE(lines.front(), QString("line 000001"));
    QCOMPARE(w->statusText(), QString("Raw text from Notes"));
    QCOMPARE(w->shown().pafn, path.toStdString());
    // The window that opened it keeps the file as its last text.
    QCOMPARE(list.shown, QStringList{path});
    // Only one block of the file was read for the first screen.
    QVERIFY(cache_->text().size() <= 10000);
    QVERIFY(host_->asked().empty());
}

void ShowDataWindowTest::statusTitleIsCutToTheOptionLength_data() {
    QTest::addColumn<QString>("maxLength");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("status");
    QTest::newRow("cut") << "6" << "A long title" << "Raw text from A long";
    QTest::newRow("short enough") << "60" << "A long title" << "Raw text from A long title";
    QTest::newRow("no title: the name") << "60" << "" << "Raw text from <path>";
}

void ShowDataWindowTest::statusTitleIsCutToTheOptionLength() {
    QFETCH(QString, maxLength);
    QFETCH(QString, title);
    QFETCH(QString, status);
    ini_->put("Main", "Text - max len title in status bar", maxLength.toStdString());
    const QString path = QString::fromStdString(dir_->write("t.txt", "text\n").string());
    ShowDataWindow* w = popup();
    QVERIFY(w->showFile(path, ShowKind::Raw, title));
    QCOMPARE(w->statusText(), QString(status).replace("<path>", path));
}

void ShowDataWindowTest::plainKindShowsTheTextWithoutMarkup() {
    const QString path = QString::fromStdString(
        dir_->write("page.htm", "<html><head><title>Page</title></head><body><p>Hello <b>there</b></p></body></html>")
            .string());
    ShowDataWindow* w = popup();
    QVERIFY(w->showFile(path, ShowKind::Plain, "Page"));
    const QString all = w->textView()->shownLines().join('\n');
    QVERIFY2(all.contains("Hello"), qPrintable(all));
    QVERIFY2(!all.contains("<b>"), qPrintable(all));
    QCOMPARE(w->statusText(), QString("Plain text from Page"));
}

void ShowDataWindowTest::hexKindOpensTheHexDisplayNotThePopup() {
    const QString path = QString::fromStdString(dir_->write("b.bin", std::string("AB\0\t", 4)).string());
    ShowDataWindow* w = popup();
    QVERIFY(w->showFile(path, ShowKind::Hex));
    QVERIFY(!w->isVisible());
    QCOMPARE(host_->asked().size(), size_t{1});
    const MessageRequest& r = host_->asked().front();
    QCOMPARE(r.title, std::string("- Cell Contents|Hex Dump"));
    QVERIFY(QString::fromStdString(r.values.at(2)).contains("41 42 00 09"));

    // A file that cannot be read gives the reader's message.
    host_->clear();
    QVERIFY(!w->showFile(path + "-gone", ShowKind::Hex));
    QCOMPARE(host_->asked().size(), size_t{1});
    QVERIFY(host_->asked().front().message.find("-gone") != std::string::npos);
}

void ShowDataWindowTest::hexDumpOfThePopupIsOfTheSelectionElseTheFile() {
    const QString page = QString::fromStdString(dir_->write("p.htm", "<p>Hi there</p>").string());
    const QString empty = QString::fromStdString(dir_->write("empty.txt", "").string());
    ShowDataWindow* w = popup();
    auto* om = w->findChild<QAction*>("OM");
    QVERIFY(om);
    QCOMPARE(om->text(), QString("Show Hex Du&mp for File"));
    auto lastDump = [this] { return QString::fromStdString(host_->asked().back().values.at(2)); };

    // Plain text without a selection: the file's own bytes, markup and all.
    QVERIFY(w->showFile(page, ShowKind::Plain));
    om->trigger();
    QVERIFY2(lastDump().contains("3C 70 3E 48 69"), qPrintable(lastDump()));
    // With a selection: the selected bytes of the text shown.
    w->textView()->view().setSelection(1, 3);
    om->trigger();
    QCOMPARE(host_->asked().back().values.at(1), std::string("Hi"));
    // An empty file: an empty dump, not the notice that stands for it.
    QVERIFY(w->showFile(empty, ShowKind::Raw));
    QCOMPARE(w->textView()->shownLines(), QStringList{"<empty file>"});
    om->trigger();
    QCOMPARE(host_->asked().back().message, empty.toStdString() + "\rBytes 1 to 0");
    QVERIFY(lastDump().isEmpty());
}

void ShowDataWindowTest::openPopupIsReusedWhereItStands() {
    const QString first = QString::fromStdString(dir_->write("one.txt", "first file\n").string());
    const QString second = QString::fromStdString(dir_->write("two.txt", "second file\n").string());
    QPointer<ShowDataWindow> w = popup();
    QVERIFY(w->showFile(first));
    w->resize(500, 300);
    QCOMPARE(ShowDataWindow::openPopup(Role::ShowData), w.data());

    ShowDataWindow* again = popup();
    QCOMPARE(again, w.data());
    QVERIFY(again->showFile(second));
    QCOMPARE(again->size(), QSize(500, 300));
    QCOMPARE(again->textView()->shownLines().front(), QString("second file"));

    // A closed popup is gone; the next show makes a new one at the standard size.
    w->close();
    QTRY_VERIFY(w.isNull());
    QVERIFY(!ShowDataWindow::openPopup(Role::ShowData));
    ShowDataWindow* fresh = popup();
    QCOMPARE(fresh->size(), fresh->standardSize());
}

void ShowDataWindowTest::escClosesThePopup_data() {
    QTest::addColumn<Role>("role");
    QTest::newRow("file") << Role::ShowData;
    QTest::newRow("cell") << Role::ShowCell;
}

void ShowDataWindowTest::escClosesThePopup() {
    QFETCH(Role, role);
    const QString path = QString::fromStdString(dir_->write("e.txt", numberedLines(100)).string());
    FakeListWindow list;
    QPointer<ShowDataWindow> w = popup(role);
    w->setOwner(&list, &list);
    if (role == Role::ShowData) QVERIFY(w->showFile(path));
    else w->showCell("cell text", "Row 1");
    QWidget* view = role == Role::ShowData ? static_cast<QWidget*>(w->textView()) : w->cellView();
    QTest::keyClick(view, Qt::Key_F5);
    QCOMPARE(list.keys, QList<int>{Qt::Key_F5});
    QTest::keyClick(view, Qt::Key_Escape);
    QTRY_VERIFY(w.isNull());
    QCOMPARE(list.keys, QList<int>{Qt::Key_F5});  // Esc belongs to the popup
    QVERIFY(host_->asked().empty());
}

void ShowDataWindowTest::keysGoToTheListWindowUntilItIsGone() {
    const QString path = QString::fromStdString(dir_->write("k.txt", numberedLines(5000)).string());
    auto* list = new FakeListWindow;
    ShowDataWindow* w = popup();
    w->setOwner(list, list);
    QVERIFY(w->showFile(path));
    QVERIFY(QTest::qWaitForWindowExposed(w));
    QTest::keyClick(w->textView(), Qt::Key_F5);
    QTest::keyClick(w->textView(), Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(list->keys, (QList<int>{Qt::Key_F5, Qt::Key_Down}));
    QVERIFY(!w->ownerGone());

    delete list;
    QVERIFY(w->ownerGone());
    QTest::keyClick(w->textView(), Qt::Key_F5);
    QCOMPARE(host_->messages(), std::vector<std::string>{ShowDataWindow::kOwnerGone});
    // The view's own keys still move the text, without the notice.
    const QString top = w->textView()->shownLines().front();
    QTest::keyClick(w->textView(), Qt::Key_PageDown);
    QVERIFY(w->textView()->shownLines().front() != top);
    QTest::keyClick(w->textView(), Qt::Key_Shift);
    QCOMPARE(host_->asked().size(), size_t{1});
    // And Esc still closes it.
    QPointer<ShowDataWindow> guard(w);
    QTest::keyClick(w->textView(), Qt::Key_Escape);
    QTRY_VERIFY(guard.isNull());
}

void ShowDataWindowTest::cellTextShowsReadOnlyInItsOwnPopup() {
    const QString path = QString::fromStdString(dir_->write("c.txt", "file text\n").string());
    ShowDataWindow* file = popup();
    QVERIFY(file->showFile(path));
    ShowDataWindow* cell = popup(Role::ShowCell);
    QVERIFY(cell != file);
    QCOMPARE(cell->objectName(), QString("ShowCell"));
    QVERIFY(!cell->textView());
    cell->showCell("First line of the cell\nSecond line, é", "Title of row 3");
    QVERIFY(cell->isVisible());
    QCOMPARE(cell->cellView()->toPlainText(), QString("First line of the cell\nSecond line, é"));
    QVERIFY(cell->cellView()->isReadOnly());
    QCOMPARE(cell->windowTitle(), QString("Title of row 3"));
    QCOMPARE(ShowDataWindow::openPopup(Role::ShowCell), cell);
    QCOMPARE(popup(Role::ShowCell), cell);
    // A second cell goes to the same popup.
    cell->showCell("Other", "Row 4");
    QCOMPARE(cell->cellView()->toPlainText(), QString("Other"));
    // Its option is its own entry.
    auto* filled = cell->findChild<QAction*>("MaximisedToFilled");
    QVERIFY(filled);
    QCOMPARE(filled->text(), QString("Popup eve&n when maximised (Show Cell)."));
    filled->trigger();
    QCOMPARE(ini_->get("Main", "Cell maximised to filled"), std::string("-1"));
    QCOMPARE(ini_->get("Main", "File maximised to filled"), std::string());
}

void ShowDataWindowTest::standardSizeIsSavedAndUsed_data() {
    QTest::addColumn<Role>("role");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("widthEntry");
    QTest::addColumn<QString>("heightEntry");
    QTest::addColumn<QSize>("factorySize");
    QTest::newRow("file") << Role::ShowData << "Set Std Size Show Te&xt" << "Std Size Show File Width"
                          << "Std Size Show File Height" << QSize(600, 433);
    QTest::newRow("cell") << Role::ShowCell << "Set Std Size Show Cel&l" << "Std Size Show Cell Width"
                          << "Std Size Show Cell Height" << QSize(400, 266);
}

void ShowDataWindowTest::standardSizeIsSavedAndUsed() {
    QFETCH(Role, role);
    QFETCH(QString, caption);
    QFETCH(QString, widthEntry);
    QFETCH(QString, heightEntry);
    QFETCH(QSize, factorySize);
    // Without entries: the sizes of a fresh data directory (twips, 15 a pixel).
    QPointer<ShowDataWindow> w = popup(role);
    QCOMPARE(w->size(), factorySize);

    w->resize(640, 480);
    auto* set = w->findChild<QAction*>("SetStdSize");
    QVERIFY(set);
    QCOMPARE(set->text(), caption);
    set->trigger();
    QCOMPARE(ini_->get("Main", widthEntry.toStdString()), std::string("9600"));
    QCOMPARE(ini_->get("Main", heightEntry.toStdString()), std::string("7200"));
    // The other role's size is not touched.
    const std::string other = role == Role::ShowData ? "Std Size Show Cell Width" : "Std Size Show File Width";
    QCOMPARE(ini_->get("Main", other), std::string());

    // A new popup comes up at it, and EQZ brings a moved one back to it.
    w->close();
    QTRY_VERIFY(w.isNull());
    ShowDataWindow* fresh = popup(role);
    QCOMPARE(fresh->size(), QSize(640, 480));
    fresh->resize(300, 200);
    fresh->findChild<QAction*>("EQZ")->trigger();
    QCOMPARE(fresh->size(), QSize(640, 480));
}

void ShowDataWindowTest::sparseFileOfGigabytesOpensAtItsEnd() {
    // Three gigabytes of holes and some text behind them: nothing but the
    // blocks on screen is read.
    const std::filesystem::path big = *dir_ / "big-sparse.log";
    { std::ofstream(big, std::ios::binary) << ""; }
    constexpr int64_t kHoles = int64_t{3} << 30;
    std::error_code ec;
    std::filesystem::resize_file(big, static_cast<uintmax_t>(kHoles), ec);
    if (ec) QSKIP("no sparse files here");
    std::string tail = "\n";
    for (int i = 1; i <= 12; ++i)
        tail += QString("Entry %1 at the end of a file of three gigabytes\n").arg(i, 2, 10, QChar('0')).toStdString();
    tail += "The last line.";
    { std::ofstream(big, std::ios::binary | std::ios::app) << tail; }

    ShowDataWindow* w = popup();
    w->resize(760, 460);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(w->showFile(QString::fromStdString(big.string()), ShowKind::Raw, "big-sparse.log"));
    QVERIFY(QTest::qWaitForWindowExposed(w));
    QTest::keyClick(w->textView(), Qt::Key_End, Qt::ControlModifier);
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    const QStringList lines = w->textView()->shownLines();
    QCOMPARE(lines.back(), QString("The last line."));
    QVERIFY(lines.contains("Entry 12 at the end of a file of three gigabytes"));
    QCOMPARE(w->textView()->view().fileLength(), kHoles + static_cast<int64_t>(tail.size()));
    QVERIFY(w->textView()->scrollBar()->value() >= 9999);
    shoot(*w, "popup-bigfile-end");
}

QTEST_MAIN(ShowDataWindowTest)
#include "show_data_window_test.moc"
