#include "viewer/ShowInfo.h"

#include <algorithm>

#include "viewer/HexDump.h"

namespace tav {

namespace {
// Buttons in the order of the list; "&OK" (1), Esc and anything else close.
constexpr int kClip = 2;
constexpr int kHex = 3;
constexpr int kBytes = 4;
}  // namespace

MessageRequest showInfoRequest(const TextView& view, const ShownText& shown, bool showBytes, bool copied) {
    // The kind's own word "text" is cut, so that it is not said twice.
    std::string kind = std::string(kindName(shown.kind)) + " text";
    if (const size_t at = kind.find("text"); at != std::string::npos) kind.erase(at, 4);

    std::string m = "Text Shown is " + kind + "text from:\r" + shown.pafn;
    m += "\rTitle:        " + (shown.title.empty() ? std::string("Not Found") : shown.title);
    if (showBytes) {
        const int64_t length = view.fileLength();
        m += "\rTotal Length:  " + std::to_string(length) + ". ";
        const int64_t first = std::min(view.topByte(), std::max<int64_t>(length, 1));
        const int64_t last = std::min(view.screenEndByte() - 1, length);
        m += "\rBytes Shown: " + std::to_string(length > 0 ? first : 0) + " to " + std::to_string(last) + ". ";
        const ByteSelection& sel = view.selection();
        m += "\rBytes Selected: ";
        if (sel.empty() || length <= 0)
            m += "** none **";
        else if (sel.first() <= 1 && sel.behind() > length)
            m += "** ALL **";
        else
            m += "(" + std::to_string(sel.behind() - sel.first()) + ") " + std::to_string(sel.first()) + " to " +
                 std::to_string(sel.behind() - 1) + ". ";
    }
    if (copied) m += "\r(Copied to Clipboard)";

    MessageRequest r;
    r.message = std::move(m);
    r.buttons = std::string("&OK|&Clip FileName|Show &Hex Dump|") + (showBytes ? "< &Bytes" : "> &Bytes");
    r.options = "Esc=1|";
    r.title = "- Show Info for text";
    return r;
}

bool hexDumpForView(const TextView& view, MessageRequest& request, std::string& error) {
    const BlockSource* source = view.source();
    if (!source) {
        error = "Error opening file >><<.";
        return false;
    }
    const ByteSelection& sel = view.selection();
    const int64_t first = sel.empty() ? 1 : sel.first();
    const int64_t count = sel.empty() ? kHexDumpLimit : std::min(kHexDumpLimit, sel.behind() - sel.first());
    if (const auto* file = dynamic_cast<const FileTextSource*>(source))
        return hexDumpOfFile(file->name(), first, count, request, error);
    const auto* memory = dynamic_cast<const MemoryTextSource*>(source);
    const std::string& text = memory ? memory->text() : std::string();
    const auto from = static_cast<size_t>(std::min<int64_t>(first - 1, static_cast<int64_t>(text.size())));
    request = hexDumpRequest(std::string_view(text).substr(from, static_cast<size_t>(count)), first,
                             view.sourceName());
    return true;
}

ShowInfoOutcome showBytesInfo(const TextView& view, const ShownText& shown, bool showBytes, MessageHost& host,
                              const std::function<void(const std::string&)>& toClipboard) {
    ShowInfoOutcome out;
    out.showBytes = showBytes;
    bool copied = false;
    for (;;) {
        MessageRequest r = showInfoRequest(view, shown, out.showBytes, copied);
        const int button = host.show(r);
        if (button == kClip) {
            if (toClipboard) toClipboard(shown.pafn);
            copied = true;
        } else if (button == kBytes) {
            out.showBytes = !out.showBytes;
        } else {
            out.hexDumpWanted = button == kHex;
            return out;
        }
    }
}

}  // namespace tav
