#include "find/TextBetween.h"

#include <algorithm>
#include <chrono>

#include "find/FileSearch.h"
#include "find/ValueSearcher.h"

namespace tav {

namespace {

using Clock = std::chrono::steady_clock;

class BetweenWalk {
public:
    BetweenWalk(ByteSource& s, const TextBetweenRequest& r) : src_(s), req_(r), started_(Clock::now()) {}

    TextBetweenResult run() {
        const int64_t len = src_.length();
        int64_t from = std::max<int64_t>(1, req_.firstByte);
        if (!req_.startText.empty()) {
            int64_t at = find(req_.startText, from);
            if (at <= 0) return out_;
            out_.startByte = at;
            from = at + static_cast<int64_t>(req_.startText.size());
        } else {
            out_.startByte = from;
        }
        out_.startFound = true;
        int64_t to = len + 1;
        if (!req_.endText.empty()) {
            int64_t at = find(req_.endText, from);
            if (at < 0) return out_;
            if (at > 0) {
                out_.endByte = at;
                to = at;
            }
        }
        if (req_.maxLength > 0 && to - from > req_.maxLength) {
            to = from + req_.maxLength;
            out_.truncated = true;
        }
        out_.text = src_.read(from, to);
        if (!src_.error().empty()) out_.error = src_.error();
        return out_;
    }

private:
    // The byte of the first `value` at or after `from`; 0 when there is
    // none; -1 when the walk was abandoned.
    int64_t find(const std::string& value, int64_t from) {
        ValueSearcher s(value, !req_.matchCase);
        const int64_t len = src_.length();
        const auto overlap = static_cast<int64_t>(value.size()) - 1;
        for (int64_t pos = from; pos <= len; pos += kBlockBytes) {
            const int64_t bufStart = std::max(from, pos - overlap);
            const int64_t bufEnd = std::min(pos + kBlockBytes - 1, len);
            const char* buf = src_.view(bufStart, bufEnd + 1, true);
            if (!buf) {
                out_.error = src_.error();
                return -1;
            }
            size_t at = s.findForward(buf, static_cast<size_t>(bufEnd + 1 - bufStart));
            if (at != ValueSearcher::npos) return bufStart + static_cast<int64_t>(at);
            if (abandoned()) return -1;
        }
        return 0;
    }

    bool abandoned() {
        if (req_.stopRequested && req_.stopRequested()) {
            out_ = {};
            out_.interrupted = true;
            return true;
        }
        if (req_.timeLimitTenths > 0 &&
            Clock::now() - started_ > std::chrono::milliseconds(100LL * req_.timeLimitTenths)) {
            out_ = {};
            out_.timedOut = true;
            return true;
        }
        return false;
    }

    ByteSource& src_;
    const TextBetweenRequest& req_;
    Clock::time_point started_;
    TextBetweenResult out_;
};

}  // namespace

TextBetweenResult textBetween(ByteSource& source, const TextBetweenRequest& request) {
    return BetweenWalk(source, request).run();
}

TextBetweenResult textBetweenInFile(const std::string& path, const TextBetweenRequest& request) {
    FileBytes file(path);
    if (!file.open()) {
        TextBetweenResult r;
        r.error = file.error();
        return r;
    }
    return textBetween(file, request);
}

TextBetweenResult textBetweenInPieces(const std::vector<std::string>& pieces, size_t firstPiece, size_t offset,
                                      const TextBetweenRequest& request) {
    std::string joined;
    for (size_t i = firstPiece; i < pieces.size(); ++i) {
        if ((i - firstPiece) % 100 == 99 && request.stopRequested && request.stopRequested()) {
            TextBetweenResult r;
            r.interrupted = true;
            return r;
        }
        if (i == firstPiece)
            joined.append(pieces[i], std::min(offset, pieces[i].size()));
        else
            joined += pieces[i];
    }
    MemoryBytes bytes(joined);
    return textBetween(bytes, request);
}

}  // namespace tav
