// Saved sets on a File List window of the running program: a Selections
// set saved from the window and got back into it reports the column change
// line by line and restores the columns live; the menu codes reach the
// active window and Cancel of the real box leaves "cancelled.".
#include <QtTest>

#include <QAbstractButton>
#include <QApplication>
#include <memory>

#include "frame/SavedSets.h"
#include "frame/WindowStore.h"
#include "settings/IniStore.h"
#include "support/ScriptedHost.h"
#include "support/AppRun.h"
#include "support/NextBoxAnswer.h"
#include "support/TempDir.h"
#include "ui/AppCommands.h"
#include "ui/AppContext.h"
#include "ui/FileListWindow.h"
#include "ui/MainWindow.h"
#include "ui/MessageBoxDialog.h"
#include "ui/SavedSetCommands.h"

using namespace tav;

namespace {

using Run = tavtest::AppRun;

using tavtest::answerNextBox;

}  // namespace

class SavedSetsCommandsTest : public QObject {
    Q_OBJECT
private slots:
    void selectionsGoAndComeBack();
    void menuCodesReachTheActiveWindow();
};

void SavedSetsCommandsTest::selectionsGoAndComeBack() {
    tavtest::TempDir dir;
    Run run((dir / "data").string());
    ui::FileListWindow* w = run.active();
    QVERIFY(w);
    IniStore& ini = run.context.ini();
    tavtest::ScriptedHost host;

    w->save("Last Col List", "1|3");
    host.answerWith([](MessageRequest& r) {
        r.values[1] = "Mine";
        return 1;
    });
    SavedSetResult r = ui::runSavedSetCommand(*w, ini, host, SavedKind::Selections, ui::SavedSetAction::SaveAs);
    QVERIFY(r.done);
    QCOMPARE(w->results().last(), QStringLiteral(">> Mine << done."));
    QCOMPARE(w->state().get("-2"), std::string("Mine"));

    w->save("Last Col List", "1|6");
    host.answerWith([](MessageRequest& req) {
        const auto& items = req.lists[1];
        for (size_t i = 1; i < items.size(); ++i)
            if (items[i] == "Mine") req.lists[1][0] = std::to_string(i - 1);
        return 1;
    });
    const int before = w->results().size();
    r = ui::runSavedSetCommand(*w, ini, host, SavedKind::Selections, ui::SavedSetAction::Get);
    QVERIFY(r.done);
    const QStringList added = w->results().mid(before);
    QCOMPARE(added, (QStringList{"Displayed Columns Changed.", "Old Columns: FileName, Date",
                                 "New Columns: FileName, Size", "[Selected for next read: FileName, Size]",
                                 ">> Mine << done."}));
    QCOMPARE(w->state().value("Last Col List"), std::string("1|3"));
    WindowState onFile;
    QVERIFY(w->store().load(w->section(), onFile));
    QCOMPARE(onFile.value("Last Col List"), std::string("1|3"));
}

void SavedSetsCommandsTest::menuCodesReachTheActiveWindow() {
    tavtest::TempDir dir;
    Run run((dir / "data").string());
    ui::FileListWindow* w = run.active();
    QVERIFY(w);
    ui::installSavedSetCommands(run.window->commands()->dispatch(), *run.window, run.context);
    answerNextBox("Cancel");
    QVERIFY(run.window->commands()->run("LG_Fmt"));
    QCOMPARE(w->results().last(), QStringLiteral("cancelled."));
}

QTEST_MAIN(SavedSetsCommandsTest)
#include "saved_sets_commands_test.moc"
