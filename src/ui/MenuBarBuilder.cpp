#include "ui/MenuBarBuilder.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "frame/MenuDispatch.h"
#include "frame/MenuTree.h"

namespace tav::ui {

namespace {
QString text(const std::string& s) { return QString::fromStdString(s); }

// Swaps the dispatch's provider for the length of a refresh.
class ProviderScope {
public:
    ProviderScope(MenuDispatch& dispatch, const MenuStateProvider* provider)
        : dispatch_(dispatch), saved_(dispatch.provider()) {
        if (provider) dispatch_.setProvider(provider);
    }
    ~ProviderScope() { dispatch_.setProvider(saved_); }

private:
    MenuDispatch& dispatch_;
    const MenuStateProvider* saved_;
};
}  // namespace

MenuBarBuilder::MenuBarBuilder(MenuTree& tree, MenuDispatch& dispatch, QObject* parent)
    : QObject(parent), tree_(tree), dispatch_(dispatch) {}

void MenuBarBuilder::build(QMenuBar* bar) {
    for (QPointer<QMenu>& m : topMenus_) {
        if (!m) continue;
        if (bar_) bar_->removeAction(m->menuAction());
        delete m;
    }
    topMenus_.clear();
    shutMenus_.clear();
    actions_.clear();
    menus_.clear();
    bar_ = bar;
    if (!bar) return;
    for (const MenuItem* top : tree_.topMenus()) {
        auto* menu = new QMenu(text(top->caption), bar);
        menu->setObjectName(text("fMnu_" + top->name));
        bar->addMenu(menu);
        topMenus_.emplace_back(menu);
        menus_[top->code] = menu;
        actions_[top->code] = menu->menuAction();
        fill(menu, top->code);
        const std::string code = top->code;
        connect(menu, &QMenu::aboutToShow, this, [this, menu, code] { aboutToShow(menu, code, true); });
    }
    refresh();
}

void MenuBarBuilder::fill(QMenu* menu, const std::string& parentCode) {
    for (const MenuItem* item : tree_.children(parentCode)) {
        if (item->separator) {
            QAction* sep = menu->addSeparator();
            if (!item->code.empty()) actions_[item->code] = sep;
            continue;
        }
        if (!tree_.children(item->code).empty()) {
            QMenu* sub = menu->addMenu(text(item->caption));
            sub->setObjectName(text("fMnu_" + item->name));
            menus_[item->code] = sub;
            actions_[item->code] = sub->menuAction();
            fill(sub, item->code);
            const std::string code = item->code;
            connect(sub, &QMenu::aboutToShow, this, [this, sub, code] { aboutToShow(sub, code, false); });
            continue;
        }
        QAction* action = menu->addAction(text(item->caption));
        action->setObjectName(text("fMnu_" + item->name + (item->member() ? "_" + std::to_string(item->index) : "")));
        actions_[item->code] = action;
        const std::string code = item->code;
        connect(action, &QAction::triggered, this, [this, code] { dispatch_.menuClick(code); });
    }
}

void MenuBarBuilder::aboutToShow(QMenu* menu, const std::string& code, bool topLevel) {
    const MenuStateProvider* provider = dispatch_.provider();
    if (topLevel && provider && provider->eventsOff()) {
        // Inside a pump: the menu stays shut until "Enable Menus".
        shutMenus_.insert(code);
        menu->menuAction()->setEnabled(false);
        if (shut_) shut_();
        QMetaObject::invokeMethod(menu, &QMenu::close, Qt::QueuedConnection);
        return;
    }
    refreshMenu(code);
}

void MenuBarBuilder::refreshAction(QAction* action, const std::string& code) {
    const MenuItem* item = tree_.find(code);
    if (!item || !action) return;
    const MenuItemState state = dispatch_.stateOf(*item);
    if (!item->separator) {
        const std::string key = keyText_ && !item->topLevel() ? keyText_(code) : std::string();
        action->setText(text(key.empty() ? item->caption : item->caption + "\t" + key));
    }
    action->setVisible(state.visible);
    if (item->separator) return;
    action->setEnabled(dispatch_.shownEnabled(*item) && !shutMenus_.count(code));
    action->setCheckable(state.checked);
    action->setChecked(state.checked);
}

void MenuBarBuilder::refreshMenu(const std::string& menuCode) {
    for (const MenuItem* item : tree_.children(menuCode)) {
        if (item->code.empty()) continue;  // a plain separator
        refreshAction(action(item->code), item->code);
        if (menus_.count(item->code)) refreshMenu(item->code);
    }
}

void MenuBarBuilder::refresh(const MenuStateProvider* provider) {
    ProviderScope scope(dispatch_, provider);
    for (auto& [code, action] : actions_) refreshAction(action, code);
}

QAction* MenuBarBuilder::action(std::string_view code) const {
    auto it = actions_.find(upperCode(code));
    return it == actions_.end() ? nullptr : it->second.data();
}

QMenu* MenuBarBuilder::menu(std::string_view code) const {
    auto it = menus_.find(upperCode(code));
    return it == menus_.end() ? nullptr : it->second.data();
}

void MenuBarBuilder::enableMenus() {
    shutMenus_.clear();
    refresh();
}

}  // namespace tav::ui
