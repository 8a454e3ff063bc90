#pragma once
// The buttons of a box: a "|" list of captions, or a standard number with
// its captions, its Esc button and the codes it leaves for the caller.
//
//   0 or less  "&OK"                    Esc 1
//   1          "&OK|&Cancel"            Esc 2, cancel code 2
//   2          "&Abort|&Retry|&Ignore"  retry code 2
//   3          "&Yes|&No|&Cancel"       Esc 3, cancel code 3
//   4          "&Yes|&No"               Esc 2
//   5          "&Retry|&Cancel"         Esc 2, cancel code 2, retry code 1
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"

namespace tav {

struct MessageBoxState;

struct ButtonSet {
    std::vector<std::string> captions;  // with their "&" accelerators
    int escButton = 0;                  // the button Esc and the close box press; 0: none
    int defaultButton = 1;              // the button Enter presses
    std::optional<int> focusButton;     // FocBut, when it differs from the default
    std::optional<int> cancelCode;      // what the box sets in the cancel code, if anything
    std::optional<int> retryCode;       // what the box sets in the retry code, if anything
    bool standard = false;              // given as a number
};

// The buttons of a button argument alone ("" counts as 0).
ButtonSet standardButtons(std::string_view buttons);

// The buttons of a request, with its options applied: Esc, DfltButton (or
// the 256/512 flags) and FocBut. A default or Esc beyond the last button is
// dropped (button 1, none).
ButtonSet resolveButtons(const MessageRequest& request);

// Writes the codes the box sets into the caller's state.
void applyButtonCodes(const ButtonSet& buttons, MessageBoxState& state);

}  // namespace tav
