#include "dialogs/StderrHost.h"

#include <ostream>

#include "core/ListText.h"
#include "dialogs/ControlSpec.h"
#include "dialogs/MessageBoxState.h"
#include "dialogs/MessageOptions.h"
#include "dialogs/MessageText.h"
#include "dialogs/StandardButtons.h"

namespace tav {

namespace {

// One line for a control that shows something to read.
std::string controlLine(const ControlSpec& spec, const std::string& value,
                        const std::vector<std::string>& list) {
    switch (spec.kind) {
    case ControlKind::Label:
        return messagePlainText(value);
    case ControlKind::TextBox:
        return "[" + value + "]";
    case ControlKind::CheckBox:
        return std::string(textIsTrue(value) ? "[x] " : "[ ] ") + captionText(spec.caption);
    case ControlKind::OptionButton:
        return std::string(textIsTrue(value) ? "(o) " : "( ) ") + captionText(spec.caption);
    case ControlKind::ListBox:
    case ControlKind::ComboBox:
    case ControlKind::Grid: {
        std::string line = "List:";
        for (size_t row = 1; row < list.size(); ++row) line += (row > 1 ? " | " : " ") + list[row];
        return line;
    }
    case ControlKind::CommandButton:
        return "<" + captionText(value) + ">";
    default:
        return {};
    }
}

}  // namespace

StderrHost::StderrHost(std::ostream& out, std::string appTitle) : out_(out), appTitle_(std::move(appTitle)) {}

int StderrHost::show(MessageRequest& request) {
    ButtonSet buttons = resolveButtons(request);
    applyButtonCodes(buttons, mbState());

    out_ << "[" << resolveTitle(request.title, appTitle_) << "]\n";
    std::string text = messagePlainText(request.message);
    if (!text.empty()) out_ << text << "\n";
    for (size_t i = 1; i < request.ctlSpecs.size(); ++i) {
        ControlSpec spec = parseControlSpec(request.ctlSpecs[i]);
        std::string value = i < request.values.size() ? request.values[i] : std::string();
        std::vector<std::string> none;
        const auto& list = i < request.lists.size() ? request.lists[i] : none;
        std::string line = controlLine(spec, value, list);
        if (!line.empty()) out_ << "  " << line << "\n";
    }
    std::string row;
    for (size_t i = 0; i < buttons.captions.size(); ++i) {
        if (i) row += " | ";
        row += captionText(buttons.captions[i]);
    }
    int answer = buttons.escButton > 0 ? buttons.escButton : buttons.defaultButton;
    out_ << "Buttons: " << row << "\n";
    if (answer >= 1 && static_cast<size_t>(answer) <= buttons.captions.size())
        out_ << "Answered: " << captionText(buttons.captions[answer - 1]) << "\n";
    out_.flush();

    if (request.values.empty()) request.values.emplace_back();
    mbState().lastKeyData = request.values[0];
    return answer;
}

}  // namespace tav
