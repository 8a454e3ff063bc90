#include "viewer/ShowFile.h"

#include <filesystem>
#include <memory>

#include "core/Utf8.h"
#include "viewer/FileBlockReader.h"
#include "viewer/PlainText.h"

namespace tav {

namespace {

void tell(MessageHost& host, const std::string& text) {
    MessageRequest m;
    m.message = text;
    m.buttons = "0";
    m.options = "Esc=1|";
    host.show(m);
}

bool isDirectoryName(const std::string& pafn) {
    if (!pafn.empty() && (pafn.back() == '\\' || pafn.back() == '/')) return true;
    std::error_code ec;
    return !pafn.empty() && std::filesystem::is_directory(pafn, ec);
}

}  // namespace

PlainSource makePlainSource(const std::string& path, int64_t sourceLimit, const std::atomic<bool>* stop) {
    PlainSource plain;
    const auto stopped = [stop] { return stop && stop->load(std::memory_order_relaxed); };
    if (stopped()) {  // dropped while it waited for a thread
        plain.stopped = true;
        return plain;
    }
    FileRead r = readFileBytes(path, 1, sourceLimit);
    if (!r.ok()) {
        plain.error = std::move(r.error);
        return plain;
    }
    plain.cut = r.truncated;
    std::string text = plainTextOf(r.bytes, stopped);
    r.bytes = std::string();
    if (stopped()) {
        plain.stopped = true;
        return plain;
    }
    plain.source = std::make_shared<MemoryTextSource>(path, std::move(text), "Plain");
    return plain;
}

ShowAction showActionNamed(std::string_view actionName) {
    if (actionName == "Show plain text") return ShowAction::PlainText;
    if (actionName == "Show raw text") return ShowAction::RawText;
    if (actionName == "Show hex dump") return ShowAction::HexDump;
    return ShowAction::None;
}

const char* kindName(TextKind kind) { return kind == TextKind::Plain ? "Plain" : "Raw"; }

std::string busyStatusOf(TextKind kind, const std::string& pafn) {
    return std::string("Show ") + kindName(kind) + " text. <<>>" + pafn;
}

ShowFileResult showFile(TextView& view, const ShownText& shown, int64_t startByte, MessageHost& host,
                        const ShowFileOptions& options, const PlainSource* prepared) {
    ShowFileResult result;
    const std::string& name = shown.pafn;
    const std::string kind = kindName(shown.kind);
    if (isDirectoryName(name)) {
        tell(host, "File for current line in file list is a directory. Show not done. File Name >>" + name + "<<");
        return result;
    }
    result.busyStatus = busyStatusOf(shown.kind, name);

    bool ok = false;
    const int64_t length = fileLengthOf(name);
    if (length == 0) {
        view.showFixedText("<empty file>", 0);
        ok = true;
    } else if (shown.kind == TextKind::Plain && (length > 0 || (prepared && prepared->source))) {
        const PlainSource plain = prepared ? *prepared : makePlainSource(name, options.plainSourceLimit);
        if (plain.stopped) {
            return result;  // the user stopped it: nothing to tell
        } else if (!plain.source) {
            tell(host, plain.error);
        } else {
            result.plainCut = plain.cut;
            if (plain.source->length() == 0) {
                view.showFixedText("", 0);
                ok = true;
            } else {
                ok = view.show(plain.source, startByte);
            }
        }
    } else {
        ok = view.show(std::make_shared<FileTextSource>(name, options.removeBlank), startByte);
    }
    if (!ok) {
        tell(host, "Error from Windows. Cannot read title\r" + kind + " text from " + name);
        return result;
    }
    result.shown = true;
    std::string title = shown.title.empty() ? name : shown.title;
    if (options.maxTitleInStatus > 0 && utf8Length(title) > options.maxTitleInStatus)
        title.resize(utf8Offset(title, options.maxTitleInStatus));
    result.status = kind + " text from " + title;
    return result;
}

}  // namespace tav
