#include "dialogs/MessageShortcuts.h"

#include <cmath>
#include <cstdlib>

#include "core/ListText.h"
#include "dialogs/MessageBoxState.h"
#include "dialogs/MessageBuilder.h"
#include "dialogs/OptionBuilders.h"
#include "dialogs/StandardButtons.h"
#include "settings/IniNumbers.h"
#include "settings/IniStore.h"

namespace tav {

namespace {
MessageRequest request(std::string_view message, std::string_view buttons, std::string_view options,
                       std::string_view title) {
    return makeRequest(std::string(message), std::string(buttons), std::string(options), std::string(title));
}

bool ticked(const std::string& value) { return valueIsTrue(value) || value == "1"; }

// The width the percentages of a box refer to: a 1920-pixel screen, in twips.
constexpr int kScreenTwips = 1920 * 15;
}  // namespace

int MBSimple(MessageHost& host, std::string_view message, std::string_view buttons, std::string_view options,
             std::string_view title) {
    MessageRequest r = request(message, buttons, options, title);
    int answer = host.show(r);
    mbState().lastKeyData = r.values.empty() ? std::string() : r.values[0];
    return answer;
}

int MBOk(MessageHost& host, std::string_view message) { return MBSimple(host, message, "0", mbopt::esc(1), ""); }

int MBOnce(MessageHost& host, IniStore& ini, std::string_view message, std::string_view buttons,
           std::string_view options, std::string_view title, std::string_view section, std::string_view entry,
           std::string_view file) {
    if (ini.mode(kMissingEmpty).getBool(section, entry, file)) {
        mbState().cancelCode = -2;
        return -1;
    }
    MessageRequest r = request("", buttons, options, title);
    MBAddCtl("Label", "", message, r, true);
    const int check = MBAddCtl("CheckBox", std::string(kDoNotShowAgain) + "||||||", "0", r);
    int answer = host.show(r);
    if (ticked(r.values[check])) ini.put(section, entry, "-1", file);
    return answer;
}

int MBOkOnce(MessageHost& host, IniStore& ini, std::string_view message, std::string_view section,
             std::string_view entry, std::string_view file) {
    return MBOnce(host, ini, message, "0", mbopt::esc(1), "", section, entry, file);
}

int MBCount(MessageHost& host, IniStore& ini, double count, std::string_view message, std::string_view what,
            bool showNoMore, bool showThreshold, std::string_view buttons, std::string_view options,
            std::string_view title, std::string_view section, std::string_view entry, std::string_view file) {
    const double threshold = ini.mode(kMissingEmpty).getNum(section, entry, file);
    if (count < threshold) {
        mbState().cancelCode = -1;
        return -1;
    }
    MessageRequest r = request("", buttons, options, title);
    MBAddCtl("Label", "", message, r, true);
    int check = 0, box = 0;
    if (showNoMore) check = MBAddCtl("CheckBox", std::string(kDoNotShowAgain) + "||||||", "0", r);
    if (showThreshold) {
        MBAddCtl("Label", "2000", "Number of " + std::string(what) + " that will give this message [b]:", r);
        box = MBAddCtl("_TextBox", "2000|||||||", numberText(std::fabs(std::round(threshold))), r);
    }
    int answer = host.show(r);
    double stored = std::fabs(box ? numberAtStart(r.values[box]).value_or(threshold) : threshold);
    if (check && ticked(r.values[check])) stored = -stored;
    ini.putNumber(section, entry, stored, file);
    return answer;
}

std::string MBInput(MessageHost& host, std::string_view message, std::string_view title,
                    std::string_view defaultText) {
    MessageRequest r = request(message, "1", "", title);
    const int box = MBAddCtl("TextBox", "10000||||||", defaultText, r, true);
    ButtonSet buttons = resolveButtons(r);
    int answer = host.show(r);
    if (answer == buttons.escButton) return {};
    return r.values[box];
}

std::string MBInputFmt(MessageHost& host, std::string_view message, std::string_view title,
                       std::string_view defaultText, bool bold, double widthPercent, bool selectAll, int height,
                       int width) {
    std::string options = mbopt::defaultAndMinWidthPercent(widthPercent, kScreenTwips);
    if (bold) options += mbopt::textBold();
    MessageRequest r = request(message, "1", options, title);
    std::vector<std::string> fields(8);
    fields[0] = std::to_string(width > 0 ? width : 10000);
    if (height > 0) fields[1] = std::to_string(height);
    if (selectAll) fields[7] = "-1";
    const int box = MBAddCtl("TextBox", joinList(fields, "|", kPlainListStyle), defaultText, r, true);
    ButtonSet buttons = resolveButtons(r);
    int answer = host.show(r);
    if (answer == buttons.escButton) return {};
    return r.values[box];
}

bool MBSequence(MessageHost& host, std::string_view title, std::string_view prompt,
                std::vector<std::string>& items, std::string_view okCaption, std::string_view cancelCaption) {
    std::string buttons;
    const int up = MBAddButton("&Up", buttons, true);
    const int down = MBAddButton("Do&wn", buttons, false);
    const int ok = MBAddButton(okCaption, buttons, false);
    const int cancel = MBAddButton(cancelCaption, buttons, false);
    const std::string options = mbopt::esc(cancel) + mbopt::dfltButton(ok);
    std::vector<std::string> order = items;
    int selected = 0;
    bool first = true;
    bool done = false;
    bool accepted = false;
    // The box stays on screen through the cycle: the first call keeps it,
    // each later one shows it again with the moved items in place of the
    // kept one, and a box that is not shown removes it at the end.
    while (!done) {
        MessageRequest r = request(prompt.empty() ? "Select Item and Press Up/Down to change sequence." : prompt,
                                   buttons, options + (first ? mbopt::noHide() : mbopt::noHide("", false, true)),
                                   "- Sequence for " + std::string(title));
        first = false;
        const int list = MBAddCtl("ListBox", "|||||-1", std::to_string(selected), r, true);
        for (const auto& item : order) MBAddListItem(item, -1, r, list);
        const int answer = host.show(r);
        selected = static_cast<int>(numberAtStart(r.lists[list][0]).value_or(selected));
        const int n = static_cast<int>(order.size());
        if (answer == up) {
            if (selected > 0 && selected < n) {
                std::swap(order[static_cast<size_t>(selected)], order[static_cast<size_t>(selected - 1)]);
                --selected;
            }
        } else if (answer == down) {
            if (selected >= 0 && selected + 1 < n) {
                std::swap(order[static_cast<size_t>(selected)], order[static_cast<size_t>(selected + 1)]);
                ++selected;
            }
        } else {
            accepted = answer == ok;
            done = true;
        }
    }
    MessageRequest end = request("", "0", mbopt::noShow(), "");
    host.show(end);
    if (accepted) items = order;
    return accepted;
}

bool MBLines(MessageHost& host, std::vector<std::string>& lines, std::string_view title) {
    std::string buttons;
    const int ok = MBAddButton("&OK", buttons, true);
    const int cancel = MBAddButton("&Cancel", buttons, false);
    const int add = MBAddButton("&Add Line", buttons, false);
    std::vector<std::string> edited = lines.empty() ? std::vector<std::string>{""} : lines;
    size_t focus = 0;  // the line that gets the first focus: the new one after "Add Line"
    // "Add Line" closes the box; it is shown again with one more line,
    // keeping what was typed.
    while (true) {
        MessageRequest r = request("", buttons, mbopt::esc(cancel) + mbopt::defaultAndMinWidthPercent(54, kScreenTwips),
                                   title);
        std::vector<int> boxes;
        for (size_t i = 0; i < edited.size(); ++i)
            boxes.push_back(MBAddCtl("TextBox", i == focus ? "10000||||||-1" : "10000||||||", edited[i], r, i == 0));
        const int answer = host.show(r);
        for (size_t i = 0; i < boxes.size(); ++i) edited[i] = r.values[static_cast<size_t>(boxes[i])];
        if (answer == add) {
            focus = edited.size();
            edited.emplace_back();
            continue;
        }
        if (answer == ok) {
            lines = edited;
            return true;
        }
        return false;
    }
}

}  // namespace tav
