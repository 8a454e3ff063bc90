#include "ui/SavedSetCommands.h"

#include <QString>
#include <QStringList>

#include "settings/IniStore.h"
#include "ui/AppContext.h"
#include "ui/BusTimer.h"
#include "ui/FileListWindow.h"
#include "ui/MainWindow.h"

namespace tav::ui {

namespace {

struct SavedSetCode {
    const char* code;
    SavedKind kind;
    SavedSetAction action;
};

constexpr SavedSetCode kCodes[] = {
    {"FA", SavedKind::Window, SavedSetAction::SaveAs},
    {"F_Save", SavedKind::Window, SavedSetAction::Save},
    {"FG", SavedKind::Window, SavedSetAction::Get},
    {"LA_Sel", SavedKind::Selections, SavedSetAction::SaveAs},
    {"LV_Sel", SavedKind::Selections, SavedSetAction::Save},
    {"LG_Sel", SavedKind::Selections, SavedSetAction::Get},
    {"LA_Fmt", SavedKind::Formats, SavedSetAction::SaveAs},
    {"LV_Fmt", SavedKind::Formats, SavedSetAction::Save},
    {"LG_Fmt", SavedKind::Formats, SavedSetAction::Get},
};

}  // namespace

SavedSetResult runSavedSetCommand(FileListWindow& window, IniStore& ini, MessageHost& host, SavedKind kind,
                                  SavedSetAction action, const SavedUseCounter& countUse) {
    SavedSetContext ctx{window.state(), window.store(), ini, host, ini.qualify(std::string(kSavedFileName)),
                        countUse};
    SavedSetResult result;
    switch (action) {
        case SavedSetAction::SaveAs: result = saveSetAs(ctx, kind); break;
        case SavedSetAction::Save: result = saveSet(ctx, kind); break;
        case SavedSetAction::Get: result = getSavedSet(ctx, kind); break;
    }
    // The results list shows one line an item; a message of several lines
    // is split at its CRs.
    for (const std::string& line : result.results)
        for (const QString& piece : QString::fromStdString(line).split(QLatin1Char('\r')))
            window.addResult(piece);
    if (result.selectionsChanged) window.applySelection(window.listSelection());
    if (result.keysAfterGet && window.bus()) window.bus()->queue(kKeysAfterGetCommand);
    return result;
}

void installSavedSetCommands(MenuDispatch& dispatch, MainWindow& main, AppContext& app) {
    for (const SavedSetCode& c : kCodes) {
        dispatch.setHandler(c.code, [&main, &app, kind = c.kind, action = c.action](const MenuCall&) {
            FileListWindow* window = main.activeListWindow();
            if (!window) return;
            // The use of a saved set is not counted until the usage statistics exist.
            runSavedSetCommand(*window, app.ini(), app.host(), kind, action);
            main.refreshStatus();
        });
    }
}

}  // namespace tav::ui
