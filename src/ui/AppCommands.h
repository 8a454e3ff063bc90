#pragma once
// The commands of the main window by menu code: the menu catalogue, the
// dispatch with a handler for each command that exists so far, and the
// menu state read from the active File List window.
#include <QObject>
#include <memory>
#include <string>

#include "frame/MenuDispatch.h"
#include "frame/MenuTree.h"

class QMenuBar;

namespace tav::ui {

class AppContext;
class MainWindow;
class MenuBarBuilder;
class FileListWindow;

class AppCommands : public QObject, public MenuStateProvider {
    Q_OBJECT
public:
    AppCommands(MainWindow& main, AppContext& app);
    ~AppCommands() override;

    void install(QMenuBar* bar);
    // Runs a command by code, as a menu click would.
    bool run(std::string_view code);
    MenuDispatch& dispatch() { return dispatch_; }
    MenuTree& tree() { return tree_; }
    MenuBarBuilder* builder() const { return builder_.get(); }
    // The Window menu's list of open windows, after a change of windows.
    void windowsChanged();

    // MenuStateProvider
    MenuItemState itemState(const MenuItem& item, MenuItemState own) const override;
    bool hasFileListWindow() const override;

private:
    void registerHandlers();
    // A handler that runs on the active File List window.
    void onWindow(std::string_view code, std::function<void(FileListWindow&, const MenuCall&)> body);

    MainWindow& main_;
    AppContext& app_;
    MenuTree tree_;
    MenuDispatch dispatch_;
    std::unique_ptr<MenuBarBuilder> builder_;
};

// The window key whose checked flag a menu item shows; empty if none.
std::string_view checkedKeyOfMenuCode(std::string_view code);

}  // namespace tav::ui
