#pragma once
// The one way a command runs or describes itself by its menu code: a menu
// click, a defined key, a popup entry and a queued command all end in
// DoMnuKeys. GetCaptionMnu gives a code's caption record:
//
//   caption|n1|n2|visible|enabled|parent caption|group caption
//
// with the caption as stored (its "&" marks kept), the caller's two numbers
// (-1 when none), visible and enabled as -1/0, and the group: the top menu's
// caption, or for an item below a submenu the menu and the submenu joined by
// " + ". A code is compared in upper case. `name::item` names an item of the
// Window Type menus `1`, `2`, `3` by caption.
//
// The handlers are registered by code; the live visible/enabled/checked state
// of the items comes from a provider (the active File List window's menu
// states). Prompts go through the MessageHost.
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "core/MessageRequest.h"
#include "frame/MenuTree.h"

namespace tav {

inline constexpr std::string_view kNotDefinedCaption = "Not defined at present";
inline constexpr std::string_view kOtherWindowTypeRecord = "z Other Window Type|0|0|0|0||z not currently used";

struct MenuItemState {
    bool visible = true;
    bool enabled = true;
    bool checked = false;
};

// The live state of the menu items: the UI reads it from the active window.
class MenuStateProvider {
public:
    virtual ~MenuStateProvider() = default;
    // The state of one item (without its parents). `own` is the item's state
    // as designed; items the window does not govern keep it.
    virtual MenuItemState itemState(const MenuItem& item, MenuItemState own) const { return own; }
    virtual bool hasFileListWindow() const = 0;
    // `gEventsOff`: inside a pump no menu acts.
    virtual bool eventsOff() const { return false; }
};

// What a handler is given.
struct MenuCall {
    std::string code;     // upper case, as matched: "FM", "AZZ(5)", "FONT_HILITE"
    int arrayIndex = -1;  // an array member's index; else -1
    int argument = -1;    // the caller's index (`LF|-1` gives -1; none: -1)
};
using MenuHandler = std::function<void(const MenuCall&)>;

enum class MnuMode { DoMnuKeys, GetCaptionMnu };

class MenuDispatch {
public:
    MenuDispatch(MenuTree& tree, MessageHost& host);

    // No provider: every item as designed, and a File List window counts as present.
    void setProvider(const MenuStateProvider* provider) { provider_ = provider; }
    const MenuStateProvider* provider() const { return provider_; }
    // The handler of a code, or of every member when given an array's code ("AZZ").
    void setHandler(std::string_view code, MenuHandler handler);

    // Mode DoMnuKeys: runs the item's handler if the item is visible and
    // enabled (or `force`), asking for a File List window first when the
    // command needs one and none is open; answers "". Mode GetCaptionMnu:
    // the caption record. An unknown code changes nothing and answers "".
    std::string DoMnuKeys(std::string_view code, MnuMode mode, int index = -1, bool force = false);
    std::string GetCaptionMnu(std::string_view code, int first = -1, int second = -1);

    // A click on a menu item: nothing at all while events are off; else
    // `gLastMnuCode` is set and the command runs. True if its handler ran.
    bool menuClick(std::string_view code);
    const std::string& lastMnuCode() const { return lastMnuCode_; }

    // Every code: the fixed list, then `caption::item|` for each Window Type
    // menu with a caption and for each of its items ("|09(0)|09(1)|...").
    std::string AllMnuKeys() const;

    // The main bus commands "DoMnuKeys" and "GetCaptionMnu" (tag `code|n`)
    // and "AllMnuKeys": the answer; nullopt for any other caption.
    std::optional<std::string> busCommand(std::string_view caption, std::string_view tag);

    // An item's live state, its parents included: visible only if they all
    // are, and likewise enabled.
    MenuItemState stateOf(const MenuItem& item) const;
    // Enabled as the menu bar shows it: also off for a command that needs a
    // File List window while none is open.
    bool shownEnabled(const MenuItem& item) const;

    // The prompt for a command that needs a File List window. offerNew: asks
    // whether to create one now, and OK runs `WW`; else tells where the
    // commands are. True if OK asked for a new window.
    bool RequireFileListWindow(bool offerNew = true);

    const MenuTree& tree() const { return tree_; }

private:
    // An item by code, plain or dynamic; sets *otherType for a dynamic code
    // whose Window Type menu is not there.
    const MenuItem* resolve(const std::string& code, bool* otherType) const;
    std::string record(const MenuItem& item, int first, int second) const;
    std::string groupCaption(const MenuItem& item) const;
    MenuItemState ownState(const MenuItem& item) const;
    bool hasWindow() const { return !provider_ || provider_->hasFileListWindow(); }
    // Mode DoMnuKeys on an upper-case code; true if a handler ran.
    bool execute(const std::string& code, int index, bool force);
    bool run(const std::string& code, const MenuHandler* handler, int arrayIndex, int argument);
    const MenuHandler* handlerFor(const std::string& code, const std::string& array) const;

    MenuTree& tree_;
    MessageHost& host_;
    const MenuStateProvider* provider_ = nullptr;
    std::map<std::string, MenuHandler> handlers_;
    std::string lastMnuCode_;
};

}  // namespace tav
