#pragma once
// Showing a file in a text view: as plain text (markup taken out) or raw
// text (the bytes as they are), with the messages and status texts that go
// with it.
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/MessageRequest.h"
#include "viewer/TextView.h"

namespace tav {

enum class TextKind { Plain, Raw };

// "Plain" or "Raw", as shown in messages and kept with the view.
const char* kindName(TextKind kind);

// The status line while a file is read for showing.
std::string busyStatusOf(TextKind kind, const std::string& pafn);

// The plain text is made in memory from at most this many bytes of the file.
inline constexpr int64_t kPlainSourceLimit = 32 * 1024 * 1024;

struct ShowFileOptions {
    bool removeBlank = false;        // `Show Raw remove blank`
    size_t maxTitleInStatus = 80;    // `Text - max len title in status bar`
    int64_t plainSourceLimit = kPlainSourceLimit;
};

// The built-in actions that show a file: "Show plain text", "Show raw text"
// and "Show hex dump". Any other name is not a show action.
enum class ShowAction { None, PlainText, RawText, HexDump };
ShowAction showActionNamed(std::string_view actionName);

// What a view shows, kept for Show Info and the hex dump.
struct ShownText {
    std::string pafn;
    TextKind kind = TextKind::Raw;
    std::string title;  // empty for a file with none
};

struct ShowFileResult {
    bool shown = false;
    std::string busyStatus;  // for the status line while the file is read
    std::string status;      // for the status bar afterwards; empty after a failure
    bool plainCut = false;   // the plain text was made from the file's first part only
    bool pending = false;    // the plain text is being made: it shows when ready
};

// The plain text of a file, made into a source for a view. It touches no
// shared state, so a worker thread can make it for a large file while the
// view goes on showing what it showed; `showFile` then takes it ready-made.
// When `stop` turns true the work ends at its next step, with no source.
struct PlainSource {
    std::shared_ptr<MemoryTextSource> source;  // null when the file could not be read or the work stopped
    bool cut = false;                          // made from the file's first part only
    bool stopped = false;                      // ended by `stop`
    std::string error;                         // the reader's message
};
PlainSource makePlainSource(const std::string& path, int64_t sourceLimit = kPlainSourceLimit,
                            const std::atomic<bool>* stop = nullptr);

// Shows the file in the view. For a plain view, `prepared` may carry the
// plain text made beforehand (it is shown even if the file has gone since);
// otherwise it is made here.
ShowFileResult showFile(TextView& view, const ShownText& shown, int64_t startByte, MessageHost& host,
                        const ShowFileOptions& options = {}, const PlainSource* prepared = nullptr);

}  // namespace tav
