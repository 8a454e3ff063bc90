#include "find/FoundPopup.h"

#include <vector>

#include "dialogs/MessageBuilder.h"

namespace tav {

namespace {

// "Select Nex&t Value (F2)" as the notes name it: without its ampersand.
std::string withoutAmpersand(std::string_view caption) {
    std::string out;
    for (char c : caption)
        if (c != '&') out += c;
    return out;
}

constexpr std::string_view kNextValue = "Select Nex&t Value (F2)";

}  // namespace

FoundPopupChoice FoundPopup::choice(int button) const {
    if (button == nextFile) return FoundPopupChoice::NextFile;
    if (nextValue && button == nextValue) return FoundPopupChoice::NextValue;
    if (button == listAll) return FoundPopupChoice::ListAll;
    if (button == editCriteria) return FoundPopupChoice::EditCriteria;
    if (button == legend) return FoundPopupChoice::Legend;
    return FoundPopupChoice::Stop;
}

FoundPopup foundPopup(std::string_view fileSearchStatement, const FoundHit& hit, bool onlyOneValue) {
    FoundPopup p;
    MessageRequest& r = p.request;
    r.message = "Find " + std::string(fileSearchStatement) + "\rPart of Document containing Found Value: (Bytes shown: " +
                std::to_string(hit.textStart) + " to " + std::to_string(hit.textEnd) + ")";
    // Width, height, then the selection (fields 11 and 12, from 0) of the value.
    std::vector<std::string> fields(12);
    fields[0] = "8000";
    fields[1] = "3000";
    fields[10] = std::to_string(hit.byteNumber - hit.textStart);
    fields[11] = std::to_string(hit.value.size());
    std::string spec;
    for (size_t i = 0; i < fields.size(); ++i) spec += (i ? "|" : "") + fields[i];
    p.textBox = MBAddCtl("TextBox", spec, hit.text, r, true);
    std::string notes = onlyOneValue ? std::string("** Only One Value found in this document **")
                                     : "Click \"" + withoutAmpersand(kNextValue) +
                                           "\" or Press F2 to show next value found here.";
    notes += "\rClick \"Find Next File (F4)\" or press F4 to Find Next File Containing Text.\rClick \"Stop\" to Stop now.";
    MBAddCtl("Label", "", notes, r);
    std::string buttons;
    p.nextFile = MBAddButton("Find &Next File (F4)", buttons, true);
    if (!onlyOneValue) p.nextValue = MBAddButton(kNextValue, buttons, false);
    p.listAll = MBAddButton("&List All Files", buttons, false);
    p.editCriteria = MBAddButton("&Edit Criteria", buttons, false);
    p.legend = MBAddButton("Le&gend", buttons, false);
    p.stop = MBAddButton("Sto&p", buttons, false);
    r.buttons = buttons;
    return p;
}

}  // namespace tav
