#pragma once
// Show Info for the text in a view: what it is, from where, which bytes
// show and which are selected, with buttons to copy the name, open the hex
// dump, and show or hide the byte lines.
#include <functional>
#include <string>

#include "core/MessageRequest.h"
#include "viewer/ShowFile.h"
#include "viewer/TextView.h"

namespace tav {

struct ShowInfoOutcome {
    bool hexDumpWanted = false;  // "Show &Hex Dump" was pressed
    bool showBytes = false;      // the byte lines' state to keep in `(Intrnl) Show bytes ON IDDATA`
};

// The prompt as it stands; `copied` adds the clipboard note.
MessageRequest showInfoRequest(const TextView& view, const ShownText& shown, bool showBytes, bool copied);

// The hex dump for the view: its selected bytes, or the source from its
// start (at most kHexDumpLimit bytes). A file shows its real bytes, not the
// converted text. False with the reader's message in `error`.
bool hexDumpForView(const TextView& view, MessageRequest& request, std::string& error);

// Runs the prompt until it is closed or the hex dump is asked for.
// `toClipboard` receives the PAFN for "&Clip FileName".
ShowInfoOutcome showBytesInfo(const TextView& view, const ShownText& shown, bool showBytes, MessageHost& host,
                              const std::function<void(const std::string&)>& toClipboard);

}  // namespace tav
