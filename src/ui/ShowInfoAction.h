#pragma once
// `OB` "Show &Bytes/Info for text" and `OM` "Show Hex Du&mp for File" as
// the application runs them: the Show Info prompt over a text view, with
// the file name put on the clipboard, the byte lines' state kept in
// `(Intrnl) Show bytes ON IDDATA`, and the hex display of the message box
// for a view's bytes, a file or a cell's text.
//
// Threads: UI thread only; the prompts go through the message host.
#include <QString>

#include "core/MessageRequest.h"

namespace tav {
class IniStore;
}

namespace tav::ui {

class TextSectionView;

// The Show Info prompt for what the view shows, until it is closed; "Show
// &Hex Dump" closes it and opens the dump of the view's selected bytes (or
// of its text from the start).
void showInfoForView(const TextSectionView& view, MessageHost& host, IniStore& ini);

// The hex display ("Cell Contents|Hex Dump") of a view's selected bytes, or
// of its source from the start. False when there is nothing to show or the
// file could not be read (the reader's message has been shown).
bool showHexDumpOfView(const TextSectionView& view, MessageHost& host);
// The same for a file from its first byte (at most kHexDumpLimit bytes).
bool showHexDumpOfFile(const QString& path, MessageHost& host);
// The same for a text in memory, such as a grid cell: its UTF-8 bytes.
void showHexDumpOfText(const QString& text, const QString& name, MessageHost& host);

}  // namespace tav::ui
