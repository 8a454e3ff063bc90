#include "frame/MenuDispatch.h"

#include "core/ListText.h"
#include "dialogs/MessageShortcuts.h"
#include "dialogs/MessageText.h"
#include "settings/IniNumbers.h"

namespace tav {

namespace {
const char* flagText(bool on) { return on ? "-1" : "0"; }

constexpr std::string_view kWindowTypeMenus[] = {"1", "2", "3"};

std::string joinLines(std::initializer_list<std::string> lines) {
    std::string out;
    for (const std::string& l : lines) {
        if (!out.empty()) out += '\r';
        out += l;
    }
    return out;
}
}  // namespace

MenuDispatch::MenuDispatch(MenuTree& tree, MessageHost& host) : tree_(tree), host_(host) {}

void MenuDispatch::setHandler(std::string_view code, MenuHandler handler) {
    handlers_[upperCode(code)] = std::move(handler);
}

const MenuHandler* MenuDispatch::handlerFor(const std::string& code, const std::string& array) const {
    auto it = handlers_.find(code);
    if (it == handlers_.end() && !array.empty()) it = handlers_.find(array);
    return it == handlers_.end() || !it->second ? nullptr : &it->second;
}

MenuItemState MenuDispatch::ownState(const MenuItem& item) const {
    MenuItemState own;
    // An item that has no caption yet (an array member not loaded with one,
    // a Window Type menu of another type) is not shown.
    own.visible = item.visible && (item.separator || !item.caption.empty());
    return provider_ ? provider_->itemState(item, own) : own;
}

MenuItemState MenuDispatch::stateOf(const MenuItem& item) const {
    MenuItemState state = ownState(item);
    for (const MenuItem* p : tree_.parentsOf(item)) {
        const MenuItemState ps = ownState(*p);
        state.visible = state.visible && ps.visible;
        state.enabled = state.enabled && ps.enabled;
    }
    return state;
}

bool MenuDispatch::shownEnabled(const MenuItem& item) const {
    return stateOf(item).enabled && (!item.needsFileList || hasWindow());
}

std::string MenuDispatch::groupCaption(const MenuItem& item) const {
    const MenuItem* top = tree_.topMenuOf(item);
    std::string group = captionText(top->caption);
    const MenuItem* parent = tree_.find(item.parent);
    if (parent && parent != top) group += " + " + captionText(parent->caption);
    return group;
}

std::string MenuDispatch::record(const MenuItem& item, int first, int second) const {
    const MenuItemState state = stateOf(item);
    const MenuItem* parent = tree_.find(item.parent);
    return item.caption + "|" + std::to_string(first) + "|" + std::to_string(second) + "|" + flagText(state.visible) +
           "|" + flagText(state.enabled) + "|" + (parent ? parent->caption : std::string()) + "|" + groupCaption(item);
}

const MenuItem* MenuDispatch::resolve(const std::string& code, bool* otherType) const {
    const size_t split = code.find("::");
    if (split == std::string::npos) return tree_.find(code);
    const std::string name = code.substr(0, split);
    const std::string itemName = code.substr(split + 2);
    for (std::string_view n : kWindowTypeMenus) {
        const MenuItem* menu = tree_.find(n);
        if (!menu || menu->caption.empty() || upperCode(menu->caption) != name) continue;
        if (itemName.empty()) return menu;
        for (const MenuItem* child : tree_.children(n))
            if (!child->separator && !child->caption.empty() && upperCode(child->caption) == itemName) return child;
    }
    *otherType = true;
    return nullptr;
}

std::string MenuDispatch::DoMnuKeys(std::string_view code, MnuMode mode, int index, bool force) {
    const std::string up = upperCode(code);
    if (mode == MnuMode::DoMnuKeys) {
        execute(up, index, force);
        return {};
    }
    if (up == upperCode(kDummySplitCode)) return {};
    bool otherType = false;
    if (const MenuItem* item = resolve(up, &otherType)) return record(*item, index, -1);
    if (otherType) return std::string(kOtherWindowTypeRecord);
    // A member that is not loaded, of an array that is.
    if (auto member = splitArrayCode(up)) {
        auto members = tree_.members(member->first);
        if (!members.empty()) return std::string(kNotDefinedCaption) + "|0|0|0|0||" + groupCaption(*members.front());
    }
    if (const FixedCode* fixed = tree_.findFixed(up)) return fixed->caption + "|-1|-1|-1|-1||" + fixed->group;
    return {};
}

bool MenuDispatch::execute(const std::string& up, int index, bool force) {
    if (up == upperCode(kDummySplitCode)) return false;  // never a command
    bool otherType = false;
    if (const MenuItem* item = resolve(up, &otherType)) {
        if (item->separator) return false;
        const MenuItemState state = stateOf(*item);
        if (!force && !(state.visible && state.enabled)) return false;  // ignored silently
        if (item->needsFileList && !hasWindow()) {
            RequireFileListWindow(true);
            return false;
        }
        return run(item->code, handlerFor(item->code, item->array), item->index, index);
    }
    if (otherType || splitArrayCode(up)) return false;
    if (tree_.findFixed(up)) return run(up, handlerFor(up, {}), -1, index);
    return false;
}

std::string MenuDispatch::GetCaptionMnu(std::string_view code, int first, int second) {
    const std::string up = upperCode(code);
    bool otherType = false;
    if (up != upperCode(kDummySplitCode))
        if (const MenuItem* item = resolve(up, &otherType)) return record(*item, first, second);
    return DoMnuKeys(code, MnuMode::GetCaptionMnu, first);
}

bool MenuDispatch::run(const std::string& code, const MenuHandler* handler, int arrayIndex, int argument) {
    if (!handler) return false;
    (*handler)(MenuCall{code, arrayIndex, argument});
    return true;
}

bool MenuDispatch::menuClick(std::string_view code) {
    if (provider_ && provider_->eventsOff()) return false;
    lastMnuCode_ = upperCode(code);
    return execute(lastMnuCode_, -1, false);
}

std::string MenuDispatch::AllMnuKeys() const {
    std::string out = "|";
    for (const std::string& code : tree_.fixedList()) out += code + "|";
    for (std::string_view n : kWindowTypeMenus) {
        const MenuItem* menu = tree_.find(n);
        if (!menu || menu->caption.empty()) continue;
        out += menu->caption + "::|";
        for (const MenuItem* child : tree_.children(n))
            if (!child->separator && !child->caption.empty()) out += menu->caption + "::" + child->caption + "|";
    }
    return out;
}

std::optional<std::string> MenuDispatch::busCommand(std::string_view caption, std::string_view tag) {
    if (caption == "AllMnuKeys") return AllMnuKeys();
    const bool run = caption == "DoMnuKeys";
    if (!run && caption != "GetCaptionMnu") return std::nullopt;
    const std::string code = listElement(tag, 1);
    const int number = static_cast<int>(numberAtStart(listElement(tag, 2)).value_or(-1));
    return DoMnuKeys(code, run ? MnuMode::DoMnuKeys : MnuMode::GetCaptionMnu, number);
}

bool MenuDispatch::RequireFileListWindow(bool offerNew) {
    const std::string first = "This function requires a File List window.";
    const std::string second = "There is no File List window.";
    if (offerNew) {
        const int answer = MBSimple(host_,
                                    joinLines({first, second, "Do You wish to create a new window now?",
                                               "Press OK to Create a new window now. Press Cancel to stop."}),
                                    "1");
        if (answer != 1) return false;
        DoMnuKeys("WW", MnuMode::DoMnuKeys);
        return true;
    }
    const MenuItem* ww = tree_.find("WW");
    const MenuItem* fg = tree_.find("FG");
    const std::string wwCaption = ww ? captionText(ww->caption) : std::string();
    const std::string fgCaption = fg ? captionText(fg->caption) : std::string();
    const std::string menuCaption = ww ? captionText(tree_.topMenuOf(*ww)->caption) : std::string();
    MBOk(host_, joinLines({first, second,
                           "Use menu item \"" + wwCaption + "\" or \"" + fgCaption + "\" on " + menuCaption +
                               " menu to create a new window.",
                           "Press OK to continue."}));
    return false;
}

}  // namespace tav
