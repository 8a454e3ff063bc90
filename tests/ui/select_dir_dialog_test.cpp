// The directory selection dialog and the file types dialog, offscreen, with
// prompts answered by a script.
#include <QtTest>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QListView>
#include <QListWidget>
#include <QPushButton>

#include "filelist/ListSpecEdit.h"
#include "settings/IniStore.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "ui/DirectoryTree.h"
#include "ui/FileTypesDialog.h"
#include "ui/SelectDirDialog.h"

using namespace tav;
using tav::ui::FileTypesDialog;
using tav::ui::SelectDirDialog;

namespace {

const char* kTypes = "{*;All files}|{*.htm|*.html;Web pages}|{*.txt;Text files}";

// A data directory with its INI file, and a tree of directories to pick.
struct Fixture {
    Fixture() : ini(service, &host) {
        ini.setDataDir(dir.str());
        ini.setRoleFile(IniRole::Main, ini.qualify("Tavelo.ini"));
        ini.setRoleFile(IniRole::Cols, ini.qualify("TavCols.ini"));
        ini.put("File Types", "Select File Type/start value", kTypes);
        ini.put("Main", "Width SelectDirForm", "9000");
        dir.write("tree/a/one.txt", "1");
        dir.write("tree/b/two.htm", "2");
    }
    QString path(const char* relative) const { return QString::fromStdString((dir / relative).string()) + "/"; }
    std::string text(const char* relative) const { return path(relative).toStdString(); }

    tavtest::TempDir dir;
    ProfileService service;
    tavtest::ScriptedHost host;
    IniStore ini;
};

void click(QWidget* dialog, const char* name) {
    auto* b = dialog->findChild<QPushButton*>(name);
    QVERIFY2(b, name);
    QVERIFY2(b->isEnabled(), name);
    b->click();
}

}  // namespace

class SelectDirDialogTest : public QObject {
    Q_OBJECT
private slots:
    void controlsCarryTheirCaptions();
    void addingADirectoryTwiceGivesThePrompt();
    void addWithNothingChosenOrNoTypeAsks();
    void selectedFilesAreAddedAsNamedFiles();
    void setTypeAndSubdirsChangeTheSelectedDirectories();
    void removeThenOkWithAnEmptyListIsRefused();
    void applyHandsOverTheListAndOkCloses();
    void cancelKeepsTheLastApplied();
    void keysAddAndRemoveAndEnterInATypeBoxStays();
    void widthIsKeptInMain();
    void fileTypesOkWithNothingSelectedAsks();
    void fileTypesOkHandsOverTypeAndSwitches();
    void newFileTypeIsAskedAndStored();
    void knownTypesFlipFormAndCanBeChosen();
    void treeInMultipleModePicksDirectories();
};

void SelectDirDialogTest::controlsCarryTheirCaptions() {
    Fixture f;
    SelectDirDialog d(ListSelection{}, f.host, f.ini);
    QCOMPARE(d.windowTitle(), QString(" - [Select Directories/Files]"));
    const std::pair<const char*, const char*> buttons[] = {
        {"fAddDir", "&Add Dir"},        {"fAddFile", "Add Fi&le"},     {"fAddWith", "Add wit&h type && subdirs"},
        {"fChangeType", "Set &Type"},   {"fInclSubDirs", "Set Su&bdirs"}, {"fDelDir", "R&emove "},
        {"fClearList", "&New List"},    {"fEnterFileType", "Enter Ty&pe"}, {"fOK", "&OK"},
        {"fCancel", "&Cancel"},         {"fApply", "Appl&y (F5)"},
    };
    for (const auto& [name, caption] : buttons) {
        auto* b = d.findChild<QPushButton*>(name);
        QVERIFY2(b, name);
        QCOMPARE(b->text(), QString(caption));
    }
    const std::pair<const char*, const char*> checks[] = {
        {"fIncSubdirscheck", "Include &Subdirs"},
        {"fMultiDirCheck", "&Multiple Directories"},
        {"fReadFilescheck", "&AutoRefresh File List"},
        {"fNewWindowcheck", "New window"},
    };
    for (const auto& [name, caption] : checks) {
        auto* c = d.findChild<QCheckBox*>(name);
        QVERIFY2(c, name);
        QCOMPARE(c->text(), QString(caption));
    }
    QVERIFY(d.findChild<ui::DirectoryTree*>("fSelectDir"));
    QVERIFY(d.findChild<QComboBox*>("fFileTypecombo"));
    QCOMPARE(d.findChild<QComboBox*>("fSetFTCombo")->count(), 3);
}

void SelectDirDialogTest::addingADirectoryTwiceGivesThePrompt() {
    Fixture f;
    SelectDirDialog d(ListSelection{}, f.host, f.ini);
    d.chooseDirectory(f.path("tree/a"));
    QCOMPARE(d.chosenDirectory(), f.path("tree/a"));
    click(&d, "fAddDir");
    QVERIFY(f.host.asked().empty());
    QCOMPARE(d.lines().spec(), "{" + f.text("tree/a") + "}");
    QCOMPARE(d.lastStatus(), "Added to list of dirs/files to read: " + f.path("tree/a"));

    // The same directory in other letters is the same entry.
    d.chooseDirectory(f.path("tree/a").toUpper());
    click(&d, "fAddDir");
    QCOMPARE(f.host.messages().size(), std::size_t(1));
    QCOMPARE(f.host.messages()[0], selectprompt::alreadyExists(f.path("tree/a").toUpper().toStdString()));
    QCOMPARE(d.findChild<QListWidget*>("fDirsLB")->count(), 1);
}

void SelectDirDialogTest::addWithNothingChosenOrNoTypeAsks() {
    Fixture f;
    SelectDirDialog d(ListSelection{}, f.host, f.ini);
    d.chooseDirectory("");
    click(&d, "fAddDir");
    click(&d, "fAddWith");
    click(&d, "fAddFile");
    d.chooseDirectory(f.path("tree/b"));
    d.findChild<QComboBox*>("fSetFTCombo")->setEditText("");
    click(&d, "fAddWith");
    const std::vector<std::string> expected = {
        std::string(selectprompt::kNoDirToAdd), std::string(selectprompt::kNoDirToAddWith),
        std::string(selectprompt::kNoFilesToAdd), std::string(selectprompt::kNoTypeChosen)};
    QCOMPARE(f.host.messages(), expected);
    QVERIFY(d.lines().lines().empty());
}

void SelectDirDialogTest::selectedFilesAreAddedAsNamedFiles() {
    Fixture f;
    f.dir.write("tree/a/two.txt", "2");
    SelectDirDialog d(ListSelection{}, f.host, f.ini);
    d.show();
    d.chooseDirectory(f.path("tree/a"));
    auto* files = d.findChild<QListView*>("fSelectFile");
    QVERIFY(files);
    QTRY_COMPARE(files->model()->rowCount(files->rootIndex()), 2);  // read in the background
    files->selectAll();
    click(&d, "fAddFile");
    const std::string a = f.text("tree/a");
    QCOMPARE(d.lines().spec(), "{" + a + "one.txt}|{" + a + "two.txt}");
    QVERIFY(f.host.asked().empty());
    // Named files are no directories to set.
    d.selectLines({0, 1});
    d.findChild<QComboBox*>("fSetFTCombo")->setEditText("*.htm");
    click(&d, "fChangeType");
    QCOMPARE(f.host.messages(), std::vector<std::string>{selectprompt::nothingToChange()});
}

void SelectDirDialogTest::setTypeAndSubdirsChangeTheSelectedDirectories() {
    Fixture f;
    ListSelection start;
    start.listSpec = "{" + f.text("tree/a") + "}|{" + f.text("tree/b") + "*.htm}";
    SelectDirDialog d(start, f.host, f.ini);
    auto* type = d.findChild<QComboBox*>("fSetFTCombo");
    auto* subdirs = d.findChild<QCheckBox*>("fSetIncludeSubdirscheck");

    type->setCurrentIndex(1);  // "*.htm|*.html"
    d.selectLines({0});
    click(&d, "fChangeType");
    QCOMPARE(d.lines().lines()[0], f.text("tree/a") + " <*.htm|*.html->");
    subdirs->setChecked(true);
    click(&d, "fInclSubDirs");
    QCOMPARE(d.lines().lines()[0], f.text("tree/a") + " <*.htm|*.html+>");
    QVERIFY(f.host.asked().empty());

    // A file specification alone is left as it is, with the prompt.
    d.selectLines({1});
    click(&d, "fInclSubDirs");
    QCOMPARE(f.host.messages().back(), selectprompt::nothingToChange());
    QCOMPARE(d.lines().lines()[1], f.text("tree/b") + "*.htm");
}

void SelectDirDialogTest::removeThenOkWithAnEmptyListIsRefused() {
    Fixture f;
    ListSelection start;
    start.listSpec = "{" + f.text("tree/a") + "}";
    SelectDirDialog d(start, f.host, f.ini);
    d.show();
    int handed = 0;
    connect(&d, &SelectDirDialog::applied, this, [&](const ListSelection&) { ++handed; });
    d.selectLines({0});
    click(&d, "fDelDir");
    QVERIFY(d.lines().empty());
    QCOMPARE(d.lastStatus(), "Removed from list of dirs/files to read: " + f.path("tree/a"));
    click(&d, "fOK");
    QCOMPARE(f.host.messages().back(), std::string(selectprompt::kEmptyListOnOk));
    QVERIFY(d.isVisible());
    QCOMPARE(handed, 0);
    QCOMPARE(d.result(), 0);
}

void SelectDirDialogTest::applyHandsOverTheListAndOkCloses() {
    Fixture f;
    ListSelection start;
    start.defaultType = "*.txt";
    SelectDirDialog d(start, f.host, f.ini);
    d.show();
    std::vector<ListSelection> handed;
    connect(&d, &SelectDirDialog::applied, this, [&](const ListSelection& s) { handed.push_back(s); });
    d.chooseDirectory(f.path("tree/b"));
    click(&d, "fAddDir");
    d.chooseDirectory(f.path("tree/a"));
    click(&d, "fAddDir");
    d.findChild<QCheckBox*>("fIncSubdirscheck")->setChecked(true);
    click(&d, "fApply");
    QCOMPARE(handed.size(), std::size_t(1));
    QCOMPARE(handed[0].listSpec, "{" + f.text("tree/a") + "}|{" + f.text("tree/b") + "}");
    QCOMPARE(handed[0].defaultType, std::string("*.txt"));
    QVERIFY(handed[0].includeSubdirs);
    QVERIFY(d.isVisible());

    // F5 is Apply too; OK hands over once more and closes.
    d.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&d));
    QTest::keyClick(d.focusWidget() ? d.focusWidget() : &d, Qt::Key_F5);
    QCOMPARE(handed.size(), std::size_t(2));
    click(&d, "fOK");
    QCOMPARE(handed.size(), std::size_t(3));
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QVERIFY(f.host.asked().empty());
}

void SelectDirDialogTest::cancelKeepsTheLastApplied() {
    Fixture f;
    ListSelection start;
    start.listSpec = "{" + f.text("tree/a") + "}";
    SelectDirDialog d(start, f.host, f.ini);
    click(&d, "fClearList");
    QVERIFY(d.lines().lines().empty());
    click(&d, "fCancel");
    QCOMPARE(d.result(), int(QDialog::Rejected));
    QCOMPARE(d.lastApplied().listSpec, start.listSpec);
}

void SelectDirDialogTest::keysAddAndRemoveAndEnterInATypeBoxStays() {
    Fixture f;
    SelectDirDialog d(ListSelection{}, f.host, f.ini);
    d.show();
    d.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&d));
    d.chooseDirectory(f.path("tree/a"));
    d.tree()->setFocus();
    QTest::keyClick(d.tree(), Qt::Key_Return);
    QCOMPARE(d.lines().spec(), "{" + f.text("tree/a") + "}");

    auto* type = d.findChild<QComboBox*>("fSetFTCombo");
    type->setFocus();
    QTest::keyClicks(type, "*.md");
    QTest::keyClick(type, Qt::Key_Return);
    QVERIFY(d.isVisible());
    QCOMPARE(type->currentText(), QString("*.md"));

    auto* list = d.findChild<QListWidget*>("fDirsLB");
    list->setFocus();
    d.selectLines({0});
    QTest::keyClick(list, Qt::Key_Delete);
    QVERIFY(d.lines().empty());
    QVERIFY(f.host.asked().empty());

    // Enter on a button presses it.
    auto* addDir = d.findChild<QPushButton*>("fAddDir");
    addDir->setFocus();
    QTest::keyClick(addDir, Qt::Key_Return);
    QCOMPARE(d.lines().lines().size(), std::size_t(1));
}

void SelectDirDialogTest::widthIsKeptInMain() {
    Fixture f;
    {
        SelectDirDialog d(ListSelection{}, f.host, f.ini);
        QCOMPARE(d.width(), 600);
        d.resize(700, d.height());
        click(&d, "fCancel");
    }
    QCOMPARE(f.ini.getInt("Main", "Width SelectDirForm"), 700 * 15);
}

void SelectDirDialogTest::fileTypesOkWithNothingSelectedAsks() {
    Fixture f;
    ListSelection start;
    start.defaultType = "*.none";  // not a named type: nothing selected
    FileTypesDialog d(start, f.host, f.ini);
    d.show();
    QCOMPARE(d.windowTitle(), QString("- [Select File Types]"));
    QCOMPARE(d.currentType(), -1);
    click(&d, "fOK");
    QCOMPARE(f.host.messages(), std::vector<std::string>{"First Select File Type."});
    QVERIFY(d.isVisible());
    click(&d, "fEditType");
    QCOMPARE(f.host.messages().size(), std::size_t(2));
}

void SelectDirDialogTest::fileTypesOkHandsOverTypeAndSwitches() {
    Fixture f;
    ListSelection start;
    start.defaultType = "*.TXT";
    FileTypesDialog d(start, f.host, f.ini);
    QCOMPARE(d.currentType(), 2);
    std::vector<ListSelection> handed;
    connect(&d, &FileTypesDialog::applied, this, [&](const ListSelection& s) { handed.push_back(s); });
    const std::pair<const char*, const char*> checks[] = {
        {"fHiddenCheck", "Show &Hidden Files"},
        {"fSystemCheck", "Show Syste&m Files"},
        {"fSubdirsCheck", "Include &Subdirs"},
        {"fDirsCheck", "Show Di&rectories"},
    };
    for (const auto& [name, caption] : checks) QCOMPARE(d.findChild<QCheckBox*>(name)->text(), QString(caption));
    d.selectType(1);
    d.findChild<QCheckBox*>("fHiddenCheck")->setChecked(true);
    click(&d, "fOK");
    QCOMPARE(handed.size(), std::size_t(1));
    QCOMPARE(handed[0].defaultType, std::string("*.htm|*.html"));
    QVERIFY(handed[0].showHidden);
    QVERIFY(!handed[0].showSystem);
    QCOMPARE(d.statusText(), QString(" - done. New Type: *.htm|*.html, show Hidden files, hide System files."));
    QCOMPARE(d.result(), int(QDialog::Accepted));
}

void SelectDirDialogTest::newFileTypeIsAskedAndStored() {
    Fixture f;
    FileTypesDialog d(ListSelection{}, f.host, f.ini);
    f.host.answerWith([](MessageRequest& r) {
        r.values[2] = "Markdown";
        r.values[4] = "*.md";
        return 1;
    });
    click(&d, "fNewType");
    QCOMPARE(d.types().size(), std::size_t(4));
    QCOMPARE(d.currentType(), 3);
    QCOMPARE(f.host.asked()[0].values[1], std::string("Name [n]:"));
    // Written with OK, not before.
    QCOMPARE(f.ini.get("File Types", "Select File Type/start value"), std::string(kTypes));
    click(&d, "fOK");
    QCOMPARE(f.ini.get("File Types", "Select File Type/start value"), std::string(kTypes) + "|{*.md;Markdown}");
}

void SelectDirDialogTest::knownTypesFlipFormAndCanBeChosen() {
    Fixture f;
    FileTypesDialog d(ListSelection{}, f.host, f.ini);
    auto* flip = d.findChild<QPushButton*>("fShellTypesButton");
    QVERIFY(flip);
    QCOMPARE(flip->text(), QString("Seperate File Ty&pes"));
    const std::size_t combined = d.shellTypes().size();
    if (combined == 0) QSKIP("the platform knows no file types");
    click(&d, "fShellTypesButton");
    QCOMPARE(flip->text(), QString("Combine File Ty&pes"));
    QCOMPARE(f.ini.get("Options", "Seperate FTList"), std::string("-1"));
    QVERIFY(d.shellTypes().size() >= combined);

    std::vector<ListSelection> handed;
    connect(&d, &FileTypesDialog::applied, this, [&](const ListSelection& s) { handed.push_back(s); });
    d.selectShellType(0);
    QCOMPARE(d.currentType(), -1);  // one choice at a time
    click(&d, "fApply");
    QCOMPARE(handed.size(), std::size_t(1));
    QCOMPARE(handed[0].defaultType, d.shellTypes()[0].types);
    d.selectType(0);
    QCOMPARE(d.currentShellType(), -1);
}

void SelectDirDialogTest::treeInMultipleModePicksDirectories() {
    Fixture f;
    ui::DirectoryTree tree;
    tree.show();
    QStringList added, removed, chosen;
    connect(&tree, &ui::DirectoryTree::addRequested, this, [&](const QString& p) { added << p; });
    connect(&tree, &ui::DirectoryTree::removeRequested, this, [&](const QString& p) { removed << p; });
    connect(&tree, &ui::DirectoryTree::directoryChosen, this, [&](const QString& p) { chosen << p; });
    tree.showDirectory(f.path("tree/a"));
    QCOMPARE(tree.currentDirectory(), f.path("tree/a"));
    QVERIFY(chosen.isEmpty());  // no signal for a move by the program

    tree.setMultiDirs(true);
    tree.setMarkedDirs({f.path("tree/b")});
    tree.setFocus();
    QTest::keyClick(&tree, Qt::Key_Space);
    QCOMPARE(added, QStringList{f.path("tree/a")});
    QVERIFY(tree.isMarked(f.path("tree/a")));
    QTest::keyClick(&tree, Qt::Key_Delete);
    QCOMPARE(removed, QStringList{f.path("tree/a")});
    QCOMPARE(tree.markedDirs(), QStringList{f.path("tree/b")});

    // Back in single mode a move chooses the directory.
    tree.setMultiDirs(false);
    auto* model = qobject_cast<QFileSystemModel*>(tree.model());
    QVERIFY(model);
    tree.setCurrentIndex(model->index(QDir::cleanPath(f.path("tree/b"))));
    QCOMPARE(chosen, QStringList{f.path("tree/b")});
}

QTEST_MAIN(SelectDirDialogTest)
#include "select_dir_dialog_test.moc"
