#pragma once
// The formats prompt of a File List window: three text boxes for the date,
// time and size masks, asked again until the masks pass their checks or the
// user cancels. Storing the masks in the window and its formats section and
// rewriting the grid from its key cells are the window's part.
#include "core/MessageRequest.h"
#include "filelist/FormatWindowMasks.h"

namespace tav {

struct EditFormatsOutcome {
    bool changed = false;        // false: Cancel, the window keeps its formats
    WindowFormats formats;       // the masks to take when changed
    bool showByteTotals = true;  // false: the size mask was kept though it cannot be read back
};

EditFormatsOutcome EditFormats(MessageHost& host, const WindowFormats& current);

}  // namespace tav
