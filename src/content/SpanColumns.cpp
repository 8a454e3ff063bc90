#include "content/SpanColumns.h"

#include "content/DisplayText.h"
#include "content/Entities.h"
#include "content/Tidy.h"

namespace tav {

bool titleAllowsSpanColumn(std::string_view inFileWithTitle, std::string_view title) {
    if (inFileWithTitle.empty()) return true;
    const std::string start = Tidy(title, charCount(inFileWithTitle), 2, true);
    if (start.size() != inFileWithTitle.size()) return false;
    for (std::size_t i = 0; i < start.size(); ++i)
        if (asciiLower(static_cast<unsigned char>(start[i])) !=
            asciiLower(static_cast<unsigned char>(inFileWithTitle[i])))
            return false;
    return true;
}

void SpanColumns::configure(const std::vector<SpanColumnDef>& defs) {
    cols_.clear();
    cols_.resize(defs.size());
    for (std::size_t i = 0; i < defs.size(); ++i) {
        cols_[i].def = defs[i];
        cols_[i].start.setPattern(defs[i].textFrom, true);
        cols_[i].end.setPattern(defs[i].textTo, true);
    }
}

void SpanColumns::beginFile() {
    for (Column& c : cols_) {
        c.cell.clear();
        c.found.clear();
        c.state = State::Idle;
    }
}

void SpanColumns::beginSection(std::int64_t base) {
    pos_ = base;
    for (Column& c : cols_) {
        c.found.clear();
        c.start.reset();
        c.end.reset();
        c.textFrom = base;
        // A full cell takes no more text: it need not search.
        c.state = c.cell.size() >= kFullCell && charCount(c.cell) >= kFullCell ? State::Idle : State::SeekStart;
    }
}

bool SpanColumns::searching() const {
    for (const Column& c : cols_)
        if (c.state == State::SeekStart || c.state == State::SeekEnd) return true;
    return false;
}

void SpanColumns::feedColumn(Column& c, std::string_view chunk) {
    const std::int64_t base = pos_;
    const std::size_t npos = StreamFinder::npos;
    if (c.state == State::SeekStart) {
        const std::size_t end = c.start.findEnd(chunk, base, c.textFrom);
        if (end == npos) {
            c.start.keep(chunk, base);
            return;
        }
        c.state = State::SeekEnd;
        c.textFrom = base + static_cast<std::int64_t>(end);
        c.end.reset();
    }
    if (c.state == State::SeekEnd) {
        const std::size_t from = c.textFrom > base ? static_cast<std::size_t>(c.textFrom - base) : 0;
        const std::size_t end = c.end.findEnd(chunk, base, c.textFrom);
        std::size_t to = chunk.size();
        if (end != npos) {
            const std::int64_t endStart = base + static_cast<std::int64_t>(end - c.def.textTo.size());
            if (endStart < base) {
                const std::int64_t keepLen = endStart - c.textFrom;
                if (keepLen >= 0 && static_cast<std::size_t>(keepLen) < c.found.size())
                    c.found.resize(static_cast<std::size_t>(keepLen));
                to = from;
            } else {
                to = static_cast<std::size_t>(endStart - base);
            }
            c.state = State::Found;
        }
        if (to > from && c.found.size() < kMaxFound) {
            std::size_t n = to - from;
            if (n > kMaxFound - c.found.size()) n = kMaxFound - c.found.size();
            c.found.append(chunk.data() + from, n);
        }
        if (c.state == State::SeekEnd) c.end.keep(chunk, base);
    }
}

void SpanColumns::feed(std::string_view chunk) {
    for (Column& c : cols_)
        if (c.state == State::SeekStart || c.state == State::SeekEnd) feedColumn(c, chunk);
    pos_ += static_cast<std::int64_t>(chunk.size());
}

void SpanColumns::FillSpanCols(std::string_view title) {
    for (Column& c : cols_) {
        const bool found = c.state == State::Found;
        c.state = State::Idle;
        if (!found) continue;
        if (!titleAllowsSpanColumn(c.def.inFileWithTitle, title)) continue;
        if (charCount(c.cell) >= kFullCell) continue;
        c.cell += DecodeEntities(toDisplayText(c.found));
    }
}

}  // namespace tav
