#pragma once
// The main window's menu bar, made from the menu catalogue: one QMenu a menu
// or submenu, one QAction an item, separators where the catalogue has them.
// A triggered item goes to the dispatch as a menu click with its code.
//
// Before a menu shows, its items take their visible, enabled and checked
// state from the dispatch's provider (the active File List window), by the
// dispatch's rules: an item without a caption is hidden, and a command that
// needs a File List window is disabled while none is open. Inside a pump
// (events off) a menu does not open: it is shut, and the owner is told so
// that it can queue "Enable Menus".
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tav {
class MenuDispatch;
class MenuStateProvider;
class MenuTree;
}  // namespace tav

namespace tav::ui {

class MenuBarBuilder : public QObject {
    Q_OBJECT
public:
    MenuBarBuilder(MenuTree& tree, MenuDispatch& dispatch, QObject* parent = nullptr);

    // Fills the bar with the catalogue's menus, replacing the ones this
    // builder made before (after an array has grown or shrunk).
    void build(QMenuBar* bar);
    void rebuild() { build(bar_); }

    // Sets captions and state of every item from the provider (the
    // dispatch's own provider when none is given).
    void refresh(const MenuStateProvider* provider = nullptr);

    // The action of a code (a submenu's menu action for a menu); nullptr if none.
    QAction* action(std::string_view code) const;
    QMenu* menu(std::string_view code) const;

    // The key bound to a code, shown behind its caption after a tab (empty:
    // none). Read at each refresh, so a change of keys shows at once.
    void setKeyTextSource(std::function<std::string(const std::string& code)> source) { keyText_ = std::move(source); }

    // "Enable Menus": the menus shut inside a pump open again.
    void enableMenus();
    // Called when a menu was shut because events are off.
    void setMenusShutHandler(std::function<void()> handler) { shut_ = std::move(handler); }

private:
    void fill(QMenu* menu, const std::string& parentCode);
    // The items below a menu, submenus included.
    void refreshMenu(const std::string& menuCode);
    void refreshAction(QAction* action, const std::string& code);
    void aboutToShow(QMenu* menu, const std::string& code, bool topLevel);

    MenuTree& tree_;
    MenuDispatch& dispatch_;
    QPointer<QMenuBar> bar_;
    std::vector<QPointer<QMenu>> topMenus_;
    std::map<std::string, QPointer<QAction>> actions_;
    std::map<std::string, QPointer<QMenu>> menus_;
    std::set<std::string> shutMenus_;  // top menus shut inside a pump
    std::function<void()> shut_;
    std::function<std::string(const std::string&)> keyText_;
};

}  // namespace tav::ui
