#include <algorithm>
#include <charconv>
#include <limits>
#include <memory>
#include <ostream>
#include <string>

#include "cli/Commands.h"
#include "cli/OptionWord.h"
#include "viewer/DisplayText.h"
#include "viewer/FileBlockReader.h"
#include "viewer/HexDump.h"
#include "viewer/PlainText.h"
#include "viewer/RawConversion.h"
#include "viewer/ShowFile.h"
#include "viewer/TextView.h"

namespace tav::cli {

namespace {

constexpr int kScreenColumns = 80;
constexpr int kScreenLines = 24;
constexpr int64_t kPiece = 1 << 20;  // bytes read and printed at a time

const char* const kUsage = "usage: tavelo view [--plain|--raw|--hex] [--from BYTE] [--bytes N] FILE\n";

enum class Mode { Plain, Raw, Hex };

struct ViewArgs {
    Mode mode = Mode::Plain;
    bool modeGiven = false;
    int64_t from = 1;
    int64_t bytes = 0;  // 0: a screenful
    std::string file;
};

// Prompts of the engine become lines on stderr.
class StderrHost : public MessageHost {
public:
    explicit StderrHost(std::ostream& err) : err_(err) {}
    int show(MessageRequest& request) override {
        std::string text = request.message;
        for (char& c : text)
            if (c == '\r') c = '\n';
        err_ << "tavelo view: " << text << "\n";
        ++count_;
        return 1;
    }
    int count() const { return count_; }

private:
    std::ostream& err_;
    int count_ = 0;
};

bool parseCount(const std::string& text, int64_t& value) {
    const char* end = text.data() + text.size();
    auto [p, ec] = std::from_chars(text.data(), end, value);
    return ec == std::errc() && p == end && value >= 1;
}

// The arguments, or an error text for stderr.
std::string parseArgs(const std::vector<std::string>& args, ViewArgs& v) {
    for (size_t i = 0; i < args.size(); ++i) {
        OptionWord word = splitOptionWord(args[i]);
        std::string a = std::move(word.name);
        std::string value = std::move(word.value);
        const bool hasValue = word.hasValue;
        if (a == "--plain" || a == "--raw" || a == "--hex") {
            const Mode m = a == "--plain" ? Mode::Plain : a == "--raw" ? Mode::Raw : Mode::Hex;
            if (hasValue) return "option " + a + " takes no value";
            if (v.modeGiven && v.mode != m) return "choose one of --plain, --raw, --hex";
            v.mode = m;
            v.modeGiven = true;
        } else if (a == "--from" || a == "--bytes") {
            if (!hasValue) {
                if (i + 1 >= args.size()) return "option " + a + " needs a number";
                value = args[++i];
            }
            int64_t n = 0;
            if (!parseCount(value, n)) return "option " + a + " needs a whole number from 1, not '" + value + "'";
            (a == "--from" ? v.from : v.bytes) = n;
        } else if (a.size() > 1 && a[0] == '-') {
            return "unknown option " + args[i];
        } else if (!v.file.empty()) {
            return "one file only: '" + v.file + "' and '" + a + "'";
        } else {
            v.file = a;
        }
    }
    if (v.file.empty()) return "no file given";
    return {};
}

// Streams `count` bytes (0: to the end) from `from` through `piece`, in
// pieces of at most kPiece; `last` tells the piece that no other follows.
template <class F>
bool forEachPiece(const CommandContext& ctx, const ViewArgs& v, int64_t count, F piece) {
    int64_t at = v.from;
    int64_t left = count > 0 ? count : std::numeric_limits<int64_t>::max();
    for (;;) {
        const int64_t ask = std::min(left, kPiece);
        FileRead r = readFileBytes(v.file, at, ask);
        if (!r.ok()) {
            ctx.err << "tavelo view: " << r.error << "\n";
            return false;
        }
        const auto got = static_cast<int64_t>(r.bytes.size());
        const bool last = !r.truncated || got == left || got == 0;
        piece(r.bytes, at, last);
        if (last) return true;
        at += got;
        left -= got;
    }
}

int printHex(const CommandContext& ctx, const ViewArgs& v) {
    const int64_t count = v.bytes > 0 ? v.bytes : kScreenLines * kHexBytesPerLine;
    const bool ok = forEachPiece(ctx, v, count, [&](const std::string& bytes, int64_t at, bool) {
        for (const std::string& line : hexDumpLines(bytes, at)) ctx.out << line << "\n";
    });
    return ok ? 0 : 1;
}

int printRawBytes(const CommandContext& ctx, const ViewArgs& v) {
    std::string carry;
    const bool ok = forEachPiece(ctx, v, v.bytes, [&](const std::string& bytes, int64_t, bool last) {
        std::string text = carry + convertRawBlock(bytes, false);
        const size_t keep = last ? 0 : unfinishedUtf8Tail(text);
        carry = text.substr(text.size() - keep);
        text.resize(text.size() - keep);
        ctx.out << displayText(text, true);
    });
    if (ok && !carry.empty()) ctx.out << displayText(carry, true);
    if (ok && v.bytes > 0) ctx.out << "\n";
    return ok ? 0 : 1;
}

int printScreen(const CommandContext& ctx, TextView& view) {
    for (const ScreenLine& line : view.screen()) ctx.out << displayText(line.text, true) << "\n";
    return 0;
}

}  // namespace

int runView(const CommandContext& ctx) {
    ViewArgs v;
    if (const std::string error = parseArgs(ctx.args, v); !error.empty()) {
        ctx.err << "tavelo view: " << error << "\n" << kUsage;
        return 2;
    }
    const int64_t length = fileLengthOf(v.file);
    if (length < 0) {
        ctx.err << "tavelo view: Error opening file >>" << v.file << "<<.\n";
        return 1;
    }
    if (length == 0) {
        if (v.from > 1) {
            ctx.err << "tavelo view: Start at byte specified is after end of file. File length: 0. Start at Byte: "
                    << v.from << "\n";
            return 1;
        }
        if (v.mode != Mode::Hex) ctx.out << "<empty file>\n";
        return 0;
    }
    if (v.from > length) {
        ctx.err << "tavelo view: Start at byte specified is after end of file. File length: " << length
                << ". Start at Byte: " << v.from << "\n";
        return 1;
    }
    if (v.mode == Mode::Hex) return printHex(ctx, v);
    if (v.mode == Mode::Raw && v.bytes > 0) return printRawBytes(ctx, v);

    StderrHost host(ctx.err);
    TextBlockCache cache;
    FixedWidthMeasure measure(kScreenColumns, kScreenLines);
    TextView view(cache, measure, host);
    if (v.mode == Mode::Raw) {
        if (!view.show(std::make_shared<FileTextSource>(v.file, false), v.from)) return 1;
        return printScreen(ctx, view);
    }
    // Plain: the plain text of the bytes from `from`, all of it when N is
    // given; for a screenful, of as much of the file as fills the screen.
    // The plain text is made in memory: never from more than kPlainSourceLimit bytes.
    if (v.bytes > kPlainSourceLimit) {
        ctx.err << "tavelo view: plain text is made from at most " << kPlainSourceLimit << " bytes\n";
        v.bytes = kPlainSourceLimit;
    }
    int64_t limit = v.bytes > 0 ? v.bytes : 64 * 1024;
    for (;;) {
        FileRead r = readFileBytes(v.file, v.from, limit);
        if (!r.ok()) {
            ctx.err << "tavelo view: " << r.error << "\n";
            return 1;
        }
        const std::string plain = plainTextOf(r.bytes);
        if (v.bytes > 0) {
            ctx.out << displayText(plain, true);
            if (!plain.empty() && plain.back() != '\n') ctx.out << "\n";
            return 0;
        }
        if (plain.empty() && !r.truncated) return 0;
        if (!plain.empty()) view.show(std::make_shared<MemoryTextSource>(v.file, plain, "Plain"), 1);
        if (host.count() > 0) return 1;
        if (!plain.empty() && (!view.atEnd() || !r.truncated || limit >= kPlainSourceLimit)) return printScreen(ctx, view);
        limit = std::min(limit * 4, kPlainSourceLimit);
    }
}

}  // namespace tav::cli
