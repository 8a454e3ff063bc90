#include "find/FileSearch.h"

#include <algorithm>

#include "find/CriteriaCheck.h"
#include "find/ValueFinder.h"

namespace tav {

namespace {

class Walk {
public:
    Walk(const PreparedCriteria& c, ByteSource& s, const SearchRange& r, const SearchHooks& h,
         const std::function<bool(const FoundHit&)>& onHit)
        : c_(c), src_(s), r_(r), hooks_(h), onHit_(onHit) {}

    SearchOutcome run() {
        out_.length = src_.length();
        if (!src_.error().empty()) {
            out_.error = src_.error();
            return out_;
        }
        overlap_ = std::max<int64_t>(c_.maxValueLength, 0);
        if (r_.forward)
            forward();
        else
            backward();
        return out_;
    }

private:
    enum class Verdict { Rejected, Accepted, Done };

    // A raw hit at byte bn: check it, report it. Done ends the walk.
    Verdict judge(int64_t bn, const ValueHit& vh, const char* buf, size_t index) {
        std::string_view value(buf + index, c_.value(vh.value).size());
        if (lastReported_ >= 0 && (r_.forward ? bn <= lastReported_ : bn >= lastReported_))
            return Verdict::Rejected;  // reported already, seen again in the overlap
        if (!r_.raw) {
            if (auto reject = checkCriteria(c_, src_, bn, value)) {
                if (hooks_.rejected)
                    hooks_.rejected->add(hooks_.heading, *reject, hooks_.keepAllRejected || c_.keepAllRejected,
                                         hooks_.rejectedShowing);
                return Verdict::Rejected;
            }
        }
        lastReported_ = bn;
        FoundHit hit;
        hit.byteNumber = bn;
        hit.valueIndex = vh.value;
        hit.value = std::string(value);
        if (r_.beforeLength > 0 || r_.afterLength > 0) {
            int64_t from = std::max<int64_t>(1, bn - r_.beforeLength);
            int64_t to = std::min(out_.length + 1, bn + static_cast<int64_t>(value.size()) + r_.afterLength);
            hit.text = src_.read(from, to);
            hit.textStart = from;
            hit.textEnd = to - 1;
        } else {
            hit.text = hit.value;
            hit.textStart = bn;
            hit.textEnd = bn + static_cast<int64_t>(value.size()) - 1;
        }
        out_.found = true;
        out_.hit = hit;
        return onHit_(out_.hit) ? Verdict::Accepted : Verdict::Done;
    }

    // Every fifth block: progress and the stop test. True stops.
    bool checkpoint(int64_t done, int64_t total) {
        if (++blocks_ % 5 != 0) return false;
        if (hooks_.progress) hooks_.progress(done, total);
        if (hooks_.stopRequested && hooks_.stopRequested()) {
            out_.interrupted = true;
            return true;
        }
        return false;
    }

    bool readFailed() {
        out_.error = src_.error().empty() ? "The file could not be read." : src_.error();
        return true;
    }

    void forward() {
        const int64_t len = out_.length;
        const int64_t total = std::min(len, r_.endByte) - r_.startByte + 1;
        int64_t pos = std::max<int64_t>(1, r_.startByte);
        int64_t carry = 0;
        while (pos <= len) {
            const int64_t blockEnd = std::min(pos + kBlockBytes - 1, len);
            const int64_t next = pos + kBlockBytes;
            const int64_t bufStart = pos - carry;
            const char* buf = src_.view(bufStart, blockEnd + 1, true);
            if (!buf && readFailed()) return;
            const auto size = static_cast<size_t>(blockEnd + 1 - bufStart);
            BufferScan scan(c_, buf, size);
            for (size_t from = 0;;) {
                ValueHit vh = scan.next(from);
                if (!vh.found()) break;
                const int64_t bn = bufStart + static_cast<int64_t>(vh.index);
                if (bn >= r_.endByte) return;
                Verdict v = judge(bn, vh, buf, vh.index);
                if (v == Verdict::Done) return;
                // The check reads its context with read(), which leaves the
                // piece under scan where it is.
                from = vh.index + 1;
                if (from >= size) break;
            }
            if (next > r_.endByte || next > len) return;
            carry = std::min<int64_t>(overlap_, blockEnd + 1 - bufStart);
            pos = next;
            if (checkpoint(pos - r_.startByte, total)) return;
        }
    }

    void backward() {
        const int64_t len = out_.length;
        const int64_t end = std::min(r_.endByte, len + 1);  // bytes below `end` take part
        const int64_t start = std::max<int64_t>(1, r_.startByte);
        if (end <= 1) return;
        const int64_t total = end - start;
        int64_t pos = std::max<int64_t>(1, end - kBlockBytes);
        int64_t blockEnd = end - 1;
        int64_t carry = 0;
        while (true) {
            const int64_t bufEnd = blockEnd + carry;  // last byte of the buffer
            const char* buf = src_.view(pos, bufEnd + 1, false);
            if (!buf && readFailed()) return;
            const auto size = static_cast<size_t>(bufEnd + 1 - pos);
            BufferScan scan(c_, buf, size);
            for (size_t limit = size;;) {
                ValueHit vh = scan.previous(limit);
                if (!vh.found()) break;
                const int64_t bn = pos + static_cast<int64_t>(vh.index);
                if (bn < start) return;
                Verdict v = judge(bn, vh, buf, vh.index);
                if (v == Verdict::Done) return;
                limit = vh.index;
                if (limit == 0) break;
            }
            if (pos < start || pos < 2) return;
            carry = std::min<int64_t>(overlap_, static_cast<int64_t>(size));
            blockEnd = pos - 1;
            pos = std::max<int64_t>(1, pos - kBlockBytes);
            if (checkpoint(end - pos, total)) return;
        }
    }

    const PreparedCriteria& c_;
    ByteSource& src_;
    const SearchRange& r_;
    const SearchHooks& hooks_;
    const std::function<bool(const FoundHit&)>& onHit_;
    SearchOutcome out_;
    int64_t overlap_ = 0;
    int64_t blocks_ = 0;
    int64_t lastReported_ = -1;
};

}  // namespace

SearchOutcome searchBytes(const PreparedCriteria& criteria, ByteSource& source, const SearchRange& range,
                          const SearchHooks& hooks, const std::function<bool(const FoundHit&)>& onHit) {
    if (criteria.mainValue.empty() && criteria.otherValues.empty()) {
        SearchOutcome o;
        o.length = source.length();
        return o;
    }
    Walk w(criteria, source, range, hooks, onHit);
    return w.run();
}

SearchOutcome findInFile(const PreparedCriteria& criteria, const std::string& path, const SearchRange& range,
                         const SearchHooks& hooks) {
    FileBytes file(path);
    if (!file.open()) {
        SearchOutcome o;
        o.error = file.error();
        return o;
    }
    SearchHooks h = hooks;
    if (h.heading.empty()) h.heading = "File: " + path;
    return searchBytes(criteria, file, range, h, [](const FoundHit&) { return false; });
}

SearchOutcome findInText(const PreparedCriteria& criteria, std::string_view text, const SearchRange& range,
                         const SearchHooks& hooks) {
    MemoryBytes bytes(text);
    return searchBytes(criteria, bytes, range, hooks, [](const FoundHit&) { return false; });
}

}  // namespace tav
