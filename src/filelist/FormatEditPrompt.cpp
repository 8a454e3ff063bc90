#include "filelist/FormatEditPrompt.h"

#include "dialogs/MessageBuilder.h"
#include "filelist/FormatChecks.h"

namespace tav {

namespace {

constexpr const char* kTextBoxSpec = "10000||||||";
constexpr int kOkButton = 1;  // of the standard buttons "&OK|&Cancel"
constexpr int kYesButton = 1; // of the standard buttons "&Yes|&No"

void tell(MessageHost& host, const std::string& message) {
    MessageRequest box;
    box.message = message;
    box.buttons = "0";
    box.title = std::string(kEnterFormatsTitle);
    host.show(box);
}

}  // namespace

EditFormatsOutcome EditFormats(MessageHost& host, const WindowFormats& current) {
    EditFormatsOutcome outcome;
    WindowFormats typed = current;
    for (;;) {
        MessageRequest ask;
        ask.message = std::string(kEnterFormatsMessage);
        ask.buttons = "1";
        ask.title = std::string(kEnterFormatsTitle);
        MBAddCtl("Label", "", kDateFormatLabel, ask, true);
        const int date = MBAddCtl("TextBox", kTextBoxSpec, typed.date, ask);
        MBAddCtl("Label", "", kTimeFormatLabel, ask);
        const int time = MBAddCtl("TextBox", kTextBoxSpec, typed.time, ask);
        MBAddCtl("Label", "", kSizeFormatLabel, ask);
        const int size = MBAddCtl("TextBox", kTextBoxSpec, typed.size, ask);
        if (host.show(ask) != kOkButton) return outcome;
        typed.date = ask.values[date];
        typed.time = ask.values[time];
        typed.size = ask.values[size];

        const FormatsVerdict verdict = checkEditedFormats(typed);
        if (verdict.failed != FormatsVerdict::Field::None) {
            tell(host, verdict.message);
            continue;
        }
        bool totals = true;
        if (!verdict.sizeReversible) {
            MessageRequest question;
            question.message = sizeNotReversiblePrompt(typed.size);
            question.buttons = "4";
            question.title = std::string(kEnterFormatsTitle);
            if (host.show(question) != kYesButton) continue;
            totals = false;
        }
        outcome.changed = true;
        outcome.formats = typed;
        outcome.showByteTotals = totals;
        return outcome;
    }
}

}  // namespace tav
