#pragma once
// The short calls most prompts use, each a thin layer on one request.
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"

namespace tav {

class IniStore;

inline constexpr std::string_view kDoNotShowAgain = "Do &not Show this Message again";

// A box with message and buttons only; Values entry 0 goes to the key data.
int MBSimple(MessageHost& host, std::string_view message, std::string_view buttons = "0",
             std::string_view options = {}, std::string_view title = {});

// An OK box that Esc closes.
int MBOk(MessageHost& host, std::string_view message);

// A box with "Do not show this message again". When the INI entry is true
// no box is shown: the cancel code becomes -2 and the call returns -1.
int MBOnce(MessageHost& host, IniStore& ini, std::string_view message, std::string_view buttons,
           std::string_view options, std::string_view title, std::string_view section, std::string_view entry,
           std::string_view file = "::*");
int MBOkOnce(MessageHost& host, IniStore& ini, std::string_view message, std::string_view section,
             std::string_view entry, std::string_view file = "::*");

// A reminder that fires from a count on. Below the stored threshold no box
// is shown (cancel code and result -1). A tick of "do not show" is stored as
// a negative threshold.
int MBCount(MessageHost& host, IniStore& ini, double count, std::string_view message, std::string_view what,
            bool showNoMore, bool showThreshold, std::string_view buttons, std::string_view options,
            std::string_view title, std::string_view section, std::string_view entry,
            std::string_view file = "::*");

// One text box with OK and Cancel: the edited text, or "" for Cancel.
std::string MBInput(MessageHost& host, std::string_view message, std::string_view title,
                    std::string_view defaultText);

// MBInput with a minimum width in percent of the screen, an optional bold
// message, a text box of the given size (width 0: 10000 twips) and its text
// selected on entry when selectAll is set.
std::string MBInputFmt(MessageHost& host, std::string_view message, std::string_view title,
                       std::string_view defaultText, bool bold, double widthPercent, bool selectAll,
                       int height = 0, int width = 0);

// Items in a list moved up and down; true with the new order on OK. The
// box stays on screen through the steps (NoHide): each Up or Down shows it
// again with the items moved, as a new instance in the kept one's place, and
// a box that is not shown ("No show") removes it at the end.
bool MBSequence(MessageHost& host, std::string_view title, std::string_view prompt,
                std::vector<std::string>& items, std::string_view okCaption = "&OK",
                std::string_view cancelCaption = "&Cancel");

// One text box a line, with "&Add Line"; true with the lines on OK. "Add
// Line" closes the box, which is shown again with one more line, the texts
// kept and the focus on the new line.
bool MBLines(MessageHost& host, std::vector<std::string>& lines, std::string_view title);

}  // namespace tav
