#include "core/TextTrim.h"
#include "dialogs/StandardButtons.h"

#include <cmath>

#include "core/ListText.h"
#include "dialogs/MessageBoxState.h"
#include "dialogs/MessageOptions.h"

namespace tav {


ButtonSet standardButtons(std::string_view buttons) {
    ButtonSet set;
    std::string_view t = trimBlanks(buttons);
    if (!t.empty() && !isNumericText(t)) {
        set.captions = splitItems(buttons);
        return set;
    }
    set.standard = true;
    long n = t.empty() ? 0 : std::lround(optionNumber(t));
    switch (n) {
    case 1:
        set.captions = {"&OK", "&Cancel"};
        set.escButton = 2;
        set.cancelCode = 2;
        break;
    case 2:
        set.captions = {"&Abort", "&Retry", "&Ignore"};
        set.retryCode = 2;
        break;
    case 3:
        set.captions = {"&Yes", "&No", "&Cancel"};
        set.escButton = 3;
        set.cancelCode = 3;
        break;
    case 4:
        set.captions = {"&Yes", "&No"};
        set.escButton = 2;
        break;
    case 5:
        set.captions = {"&Retry", "&Cancel"};
        set.escButton = 2;
        set.cancelCode = 2;
        set.retryCode = 1;
        break;
    default:  // 0 or less, and numbers without a list of their own
        set.captions = {"&OK"};
        set.escButton = 1;
        break;
    }
    return set;
}

ButtonSet resolveButtons(const MessageRequest& request) {
    ButtonSet set = standardButtons(request.buttons);
    MessageOptions options = isNumericText(request.options)
                                 ? MessageOptions::parse(std::lround(optionNumber(request.options)))
                                 : MessageOptions::parse(request.options);
    const int count = static_cast<int>(set.captions.size());
    if (auto esc = options.escButton()) set.escButton = *esc;
    if (set.escButton < 1 || set.escButton > count) set.escButton = 0;
    set.defaultButton = options.defaultButton();
    if (set.defaultButton > count) set.defaultButton = 1;
    if (auto focus = options.focusButton(); focus && *focus >= 1 && *focus <= count &&
                                            *focus != set.defaultButton)
        set.focusButton = *focus;
    return set;
}

void applyButtonCodes(const ButtonSet& buttons, MessageBoxState& state) {
    if (buttons.cancelCode) state.cancelCode = *buttons.cancelCode;
    if (buttons.retryCode) state.retryCode = *buttons.retryCode;
}

}  // namespace tav
