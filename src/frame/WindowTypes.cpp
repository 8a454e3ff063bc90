#include "frame/WindowTypes.h"

#include "core/ListText.h"
#include "dialogs/MessageBuilder.h"
#include "frame/WindowStore.h"
#include "settings/IniStore.h"

namespace tav {

namespace {

constexpr int kOkButton = 1;  // of the standard buttons "&OK|&Cancel"
constexpr std::string_view kMultiPrefix = "Multi ";

std::string typeText(IniStore& ini, const std::string& entry) {
    return ini.mode(kMissingEmpty).get(kWindowTypesSection, entry);
}

// An entry of a "Multi t" type, or that of t when the section has none.
std::string multiAware(IniStore& ini, const std::string& prefix, const std::string& type) {
    std::string text = typeText(ini, prefix + type);
    if (text.empty() && type.rfind(kMultiPrefix, 0) == 0)
        text = typeText(ini, prefix + type.substr(kMultiPrefix.size()));
    return text;
}

bool listsSeveralDirs(const std::string& type) { return type == "F" || type == "L" || type == "N"; }

}  // namespace

const std::vector<std::string>& offeredWindowTypes() {
    static const std::vector<std::string> types = {"F", "Multi F", "L", "Multi L", "O", "x"};
    return types;
}

std::string selectionTypeOf(const WindowState& window) {
    std::string type = window.get(".4");
    if ((type == "F" || type == "L") && window.menu("LM").checked) type = std::string(kMultiPrefix) + type;
    return type;
}

std::string WindowCaption(const WindowState& window, IniStore& ini, std::string_view listText) {
    const std::string type = window.get(".4");
    std::string caption;
    if (!type.empty()) {
        const bool multi = listsSeveralDirs(type) && window.menu("LM").checked;
        caption = typeText(ini, (multi ? "Capn Multi " : "Capn ") + type);
    }
    if (window.menu("LD").checked) caption += " <+>";
    if (!listText.empty()) {
        if (!caption.empty()) caption += ' ';
        caption += listText;
    }
    return caption;
}

MessageRequest windowTypeRequest(IniStore& ini, std::string_view currentType, std::vector<int>* optionIndex) {
    MessageRequest r = makeRequest(std::string(kSelectWindowTypeMessage), "1", {}, std::string(kSelectWindowTypeTitle));
    if (optionIndex) optionIndex->clear();
    bool first = true;
    for (const std::string& type : offeredWindowTypes()) {
        const std::string caption = "[" + typeText(ini, "Capn " + type) + "]";
        const int chosen = type == currentType ? 1 : 0;
        const std::string index = MBAddOptionGroup(joinList({caption}), chosen, nullptr, r, "OptionButton", {}, first);
        MBAddCtl("_Label", "", multiAware(ini, "Sel Mid Col ", type), r);
        if (optionIndex) optionIndex->push_back(std::stoi(index));
        first = false;
    }
    return r;
}

WindowTypeChange ChangeWindowType(WindowState& window, WindowStore& store, MessageHost& host) {
    WindowTypeChange change;
    IniStore& ini = store.ini();
    std::vector<int> buttons;
    MessageRequest request = windowTypeRequest(ini, selectionTypeOf(window), &buttons);
    std::string chosen;
    if (host.show(request) == kOkButton) {
        const auto& types = offeredWindowTypes();
        for (size_t i = 0; i < buttons.size() && chosen.empty(); ++i)
            if (textIsTrue(request.values[static_cast<size_t>(buttons[i])])) chosen = types[i];
    }
    if (chosen.empty()) {
        change.cancelled = true;
        change.status = {" - ", "cancelled."};
        return change;
    }
    change.type = chosen;

    std::string stored = chosen;
    const bool wasMulti = window.menu("LM").checked;
    bool multi = wasMulti;
    if (chosen.rfind(kMultiPrefix, 0) == 0) {
        stored = chosen.substr(kMultiPrefix.size());
        multi = true;
    } else if (chosen == "F" || chosen == "L") {
        multi = false;
    }
    change.typeChanged = window.get(".4") != stored;
    store.putKey(window, ".4", stored);
    change.status = {" - to ", multiAware(ini, "", chosen), "done."};
    if (multi != wasMulti) {
        store.putKey(window, "LM1", multi ? "-1" : "0");
        change.multiDirsChanged = true;
    }
    return change;
}

}  // namespace tav
