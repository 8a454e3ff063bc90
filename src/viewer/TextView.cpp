#include "viewer/TextView.h"

#include <algorithm>

#include "viewer/FileBlockReader.h"

namespace tav {

namespace {

bool isBreak(char c) { return c == '\n' || c == '\r'; }

// Rounds of reading in one move: a screen never needs more than a few blocks,
// so running out of rounds means the screen cannot be filled.
constexpr int kMaxRounds = 64;

}  // namespace

TextView::TextView(TextBlockCache& cache, const LineMeasure& measure, MessageHost& host, ViewSettings settings)
    : cache_(cache), measure_(measure), host_(host), settings_(settings) {}

bool TextView::show(std::shared_ptr<const BlockSource> source, int64_t startByte) {
    source_ = std::move(source);
    name_ = source_->name();
    fixed_ = false;
    overflowed_ = false;
    selection_ = {};
    length_ = source_->length();
    topByte_ = 1;
    generation_ = 0;
    if (length_ < 0) {
        // Unreadable: let the reader say why.
        length_ = 0;
        SourceBlock b = source_->read(1, 1);
        MessageRequest m;
        m.message = b.error.empty() ? "Error opening file >>" + name_ + "<<." : b.error;
        m.buttons = "0";
        m.options = "Esc=1|";
        host_.show(m);
        showFixedText("", 0);
        return false;
    }
    if (!repositionText(std::max<int64_t>(1, startByte))) {
        showFixedText("", 0);
        return false;
    }
    return true;
}

void TextView::showFixedText(const std::string& text, int64_t length) {
    selection_ = {};
    holdFixedText(text, length);
}

void TextView::holdFixedText(const std::string& text, int64_t length) {
    source_ = std::make_shared<MemoryTextSource>(name_, text, "Fixed");
    fixed_ = true;
    length_ = length;
    overflowed_ = false;
    cache_.reset(source_->key());
    cache_.readTextBlock(*source_, 1, nullptr);
    // A fixed text is short; hold all of it whatever its size.
    while (!sourceEndHeld() && cache_.readTextBlock(*source_, cache_.endByte(), nullptr).nextByte > 0) {
    }
    generation_ = cache_.generation();
    top_ = cache_.basePos();
    topByte_ = 1;
}

// ---------------------------------------------------------------- measuring

TextView::Lines TextView::lineStarts(int64_t from, size_t maxLines) const {
    Lines lines;
    const std::string_view text = cache_.textFrom(from);
    size_t pos = 0;
    while (lines.starts.size() < maxLines && pos < text.size()) {
        lines.starts.push_back(from + static_cast<int64_t>(pos));
        const std::string_view rest = text.substr(pos);
        size_t len = std::max<size_t>(1, measure_.lineLength(rest));
        len = std::min(len, rest.size());
        // A CR at the end of the text may be the first half of a CR LF whose LF is not read yet.
        lines.lastComplete = len < rest.size() || rest[len - 1] == '\n' || (rest[len - 1] == '\r' && sourceEndHeld());
        if (!lines.lastComplete) break;
        pos += len;
    }
    return lines;
}

bool TextView::sourceEndHeld() const { return cache_.endByte() > length_; }

bool TextView::movable() const { return source_ && !fixed_ && !wholeFileShown(); }

// ------------------------------------------------------------------ reading

bool TextView::readAt(int64_t byte) {
    const auto r = cache_.readTextBlock(*source_, byte, &host_);
    if (r.length >= 0) length_ = r.length;  // the file may have changed size since it was opened
    return r.nextByte >= 0;
}

// The place on top is kept as a cache position, valid while the cache holds
// the same text; another view, a replacing read or a slide past it sends the
// view back to its byte number.
bool TextView::syncTop() {
    if (!source_) return false;
    const bool sameText = cache_.file() == source_->key() && cache_.generation() == generation_;
    if (sameText && top_ >= cache_.basePos() && top_ <= cache_.endPos()) return true;
    if (cache_.file() == source_->key() &&
        (cache_.holdsByte(topByte_) || (topByte_ == cache_.endByte() && sourceEndHeld()))) {
        top_ = cache_.posOfByte(topByte_);
        generation_ = cache_.generation();
        return true;
    }
    if (fixed_) {
        holdFixedText(std::string(source_->read(1, source_->length()).text), length_);
        return true;
    }
    if (!readAt(topByte_)) return false;
    top_ = cache_.posOfByte(topByte_);
    generation_ = cache_.generation();
    return true;
}

bool TextView::readBackward() {
    if (cache_.startByte() <= 1) return false;
    const int64_t at = std::max<int64_t>(1, cache_.startByte() - kBlockSize);
    if (!readAt(at)) return false;
    return syncTop();
}

void TextView::setTop(int64_t pos) {
    top_ = pos;
    topByte_ = cache_.byteAtPos(pos);
    generation_ = cache_.generation();
}

void TextView::reportOverflow() {
    overflowed_ = true;
    if (!settings_.warnMemoryProblem) return;
    MessageRequest m;
    m.message =
        "Overflow or Memory problem. Cannot read enough text from file to fill area available. Scroll keys and "
        "scroll bar will not work correctly after this problem.\r"
        "This Problem is usually caused by either: 1. keeping \"Page Up\" or \"Page Down\" pressed for a long "
        "time and then pressing the other page key or 2. By setting font size too low. Either avoid this use of "
        "page keys or increase font size and try again.";
    m.buttons = "0";
    m.options = "Esc=1|";
    host_.show(m);
}

// ------------------------------------------------------------------- moving

bool TextView::fillForward() {
    if (!syncTop()) return false;
    const auto visible = static_cast<size_t>(measure_.visibleLines());
    for (int round = 0; round < kMaxRounds; ++round) {
        const Lines lines = lineStarts(top_, visible + 1);
        if (lines.starts.size() > visible || (lines.starts.size() == visible && lines.lastComplete)) return true;
        if (sourceEndHeld()) return true;
        // A read behind a full cache slides its front away: the top must survive it.
        if (cache_.text().size() >= kCacheSlideLength && top_ - cache_.basePos() < kBlockSize) {
            reportOverflow();
            return false;
        }
        if (!readAt(cache_.endByte())) return false;
        if (!syncTop()) return false;
    }
    reportOverflow();
    return false;
}

void TextView::scrollLinesUp(int lines) {
    if (lines <= 0 || !movable() || !syncTop()) return;
    const size_t want = static_cast<size_t>(lines);
    for (int round = 0; round < kMaxRounds; ++round) {
        // Measure from a real line start: `want` line breaks above the top,
        // the file's start, or failing both, room for wrap above the top.
        const std::string& text = cache_.text();
        const int64_t base = cache_.basePos();
        size_t scan = static_cast<size_t>(top_ - base);
        size_t found = 0;
        int64_t origin = -1;
        // The break right before the top ends the line above: it is not a start.
        if (scan > 0 && text[scan - 1] == '\n') --scan;
        if (scan > 0 && text[scan - 1] == '\r') --scan;
        while (found < want) {
            size_t i = scan;
            while (i > 0 && !isBreak(text[i - 1])) --i;
            if (i == 0) break;
            const size_t at = i - 1;
            ++found;
            if (found == want) origin = base + static_cast<int64_t>(at) + 1;
            scan = (at > 0 && text[at] == '\n' && text[at - 1] == '\r') ? at - 1 : at;
        }
        const bool fileStartHeld = cache_.startByte() <= 1;
        if (origin < 0 && fileStartHeld) origin = base;
        if (origin < 0 && top_ - base < kBlockSize && readBackward()) continue;
        if (origin < 0) {
            const int64_t room = static_cast<int64_t>(want * measure_.maxLineBytes() + 1000);
            origin = std::max(base, top_ - room);
        }
        // Lines from the origin down to the one that holds the top.
        std::vector<int64_t> starts;
        const std::string_view from = cache_.textFrom(origin);
        size_t pos = 0;
        while (origin + static_cast<int64_t>(pos) <= top_ && pos < from.size()) {
            starts.push_back(origin + static_cast<int64_t>(pos));
            pos += std::max<size_t>(1, measure_.lineLength(from.substr(pos)));
        }
        if (starts.empty()) starts.push_back(top_);
        const size_t topLine = starts.size() - 1;
        if (topLine >= want) {
            setTop(starts[topLine - want]);
            return;
        }
        if (origin > base || fileStartHeld || !(top_ - base < kBlockSize && readBackward())) {
            setTop(starts.front());
            return;
        }
    }
    reportOverflow();
}

void TextView::scrollLinesDown(int lines) {
    if (lines <= 0 || !movable() || atEnd() || !fillForward()) return;
    const Lines l = lineStarts(top_, static_cast<size_t>(lines) + 1);
    if (l.starts.size() > static_cast<size_t>(lines))
        setTop(l.starts[static_cast<size_t>(lines)]);
    else if (!l.starts.empty())
        setTop(l.starts.back());
    fillForward();
    fillBackward();
}

// At the end of the source the last line sits at the bottom: a screen that
// is not full is filled from above.
void TextView::fillBackward() {
    if (!sourceEndHeld() || !syncTop()) return;
    const auto visible = static_cast<size_t>(measure_.visibleLines());
    const Lines lines = lineStarts(top_, visible + 1);
    if (lines.starts.size() < visible && cache_.byteAtPos(top_) > 1)
        scrollLinesUp(static_cast<int>(visible - std::max<size_t>(1, lines.starts.size())));
}

// After a jump the top starts a display line: measured from the line break
// before it when one is near, else the jump's byte itself is the start.
void TextView::alignTop() {
    int64_t origin = -1;
    for (int attempt = 0; attempt < 2 && origin < 0; ++attempt) {
        const std::string& text = cache_.text();
        const int64_t base = cache_.basePos();
        const size_t topIndex = static_cast<size_t>(top_ - base);
        const size_t reach = std::min<size_t>(topIndex, 1000);
        for (size_t i = topIndex; i > topIndex - reach; --i)
            if (isBreak(text[i - 1])) {
                origin = base + static_cast<int64_t>(i);
                break;
            }
        if (origin >= 0) break;
        if (cache_.startByte() <= 1 && topIndex <= 1000) origin = base;
        // The block read for a jump starts at the jump: the line's start may lie just before it.
        else if (topIndex >= 1000 || !readBackward())
            break;
    }
    if (origin < 0 || origin == top_) return;
    const std::string_view from = cache_.textFrom(origin);
    size_t pos = 0, last = 0;
    while (origin + static_cast<int64_t>(pos) <= top_ && pos < from.size()) {
        last = pos;
        pos += std::max<size_t>(1, measure_.lineLength(from.substr(pos)));
    }
    setTop(origin + static_cast<int64_t>(last));
}

bool TextView::repositionText(int64_t byte) {
    if (!source_) return false;
    byte = std::clamp<int64_t>(byte, 1, std::max<int64_t>(1, length_));
    overflowed_ = false;
    if (fixed_) return syncTop();
    if (cache_.file() == source_->key() && cache_.holdsByte(byte)) {
        setTop(cache_.posOfByte(byte));
    } else {
        if (!readAt(byte)) return false;
        byte = std::clamp<int64_t>(byte, 1, std::max<int64_t>(1, length_));
        setTop(cache_.posOfByte(byte));
    }
    alignTop();
    // An overflow leaves what could be read on screen: the view goes on.
    fillForward();
    fillBackward();
    return true;
}

void TextView::extendTo(bool extend, int64_t byte) {
    if (!extend) return;
    if (selection_.empty()) selection_.anchor = selection_.caret ? selection_.caret : topByte_;
    selection_.caret = byte;
}

void TextView::pageDown(bool extend) {
    const int visible = measure_.visibleLines();
    scrollLinesDown(std::max(1, visible - 1));
    extendTo(extend, screenEndByte());
}

void TextView::pageUp(bool extend) {
    scrollLinesUp(std::max(1, measure_.visibleLines() - 1));
    extendTo(extend, topByte_);
}

void TextView::lineDown(bool extend) {
    scrollLinesDown(1);
    extendTo(extend, screenEndByte());
}

void TextView::lineUp(bool extend) {
    scrollLinesUp(1);
    extendTo(extend, topByte_);
}

void TextView::toEnd(bool extend) {
    if (movable()) repositionText(length_);
    extendTo(extend, length_ + 1);
}

void TextView::toStart(bool extend) {
    if (movable()) repositionText(1);
    extendTo(extend, 1);
}

bool TextView::scrollBarMoved(int value) {
    if (fixed_ || !source_) return true;
    switch (value) {
    case kBarPageUp: pageUp(); return true;
    case kBarLineUp: lineUp(); return true;
    case kBarLineDown: lineDown(); return true;
    case kBarPageDown: pageDown(); return true;
    default: break;
    }
    value = std::clamp(value, kBarFirst, kBarLast);
    if (!selection_.empty() && settings_.warnReposWithSelection) {
        MessageRequest m;
        m.message =
            "By repositioning using scroll bar, you willl lose selection. To Reposition text and keep selection, "
            "use keys PgDn, PgUp, up, down.\rPress OK to reposition and lose selection now.";
        m.buttons = "1";
        if (host_.show(m) != 1) return false;
    }
    selection_ = {};
    if (!movable()) return true;
    const int64_t byte = length_ / 9998 * (value - kBarFirst) + length_ % 9998 * (value - kBarFirst) / 9998;
    repositionText(std::max<int64_t>(1, byte));
    return true;
}

// ------------------------------------------------------------------ showing

std::vector<ScreenLine> TextView::screen() const {
    std::vector<ScreenLine> out;
    if (!source_ || cache_.file() != source_->key() || generation_ != cache_.generation()) return out;
    const auto visible = static_cast<size_t>(measure_.visibleLines());
    const Lines lines = lineStarts(top_, visible + 1);
    const size_t n = std::min(visible, lines.starts.size());
    for (size_t i = 0; i < n; ++i) {
        const int64_t from = lines.starts[i];
        const int64_t to = i + 1 < lines.starts.size() ? lines.starts[i + 1] : cache_.endPos();
        std::string_view t = cache_.textFrom(from).substr(0, static_cast<size_t>(to - from));
        while (!t.empty() && isBreak(t.back())) t.remove_suffix(1);
        out.push_back({cache_.byteAtPos(from), cache_.byteAtPos(to), std::string(t)});
    }
    return out;
}

int64_t TextView::screenEndByte() const {
    const std::vector<ScreenLine> s = screen();
    return s.empty() ? topByte_ : s.back().endByte;
}

bool TextView::atEnd() const { return sourceEndHeld() && screenEndByte() > length_; }

bool TextView::wholeFileShown() const {
    if (fixed_) return true;
    return topByte_ <= 1 && atEnd();
}

int TextView::scrollBarValue() const {
    if (length_ <= 0) return 0;
    const int64_t shown = screenEndByte() - topByte_;
    const double denom = static_cast<double>(std::max<int64_t>(1, length_ - shown));
    const double v = static_cast<double>(topByte_ - 1) / denom * 10000.0;
    return static_cast<int>(std::min(10000.0, v));
}

void TextView::setSelection(int64_t anchor, int64_t caret) {
    const int64_t hi = length_ + 1;
    selection_.anchor = std::clamp<int64_t>(anchor, 1, std::max<int64_t>(1, hi));
    selection_.caret = std::clamp<int64_t>(caret, 1, std::max<int64_t>(1, hi));
}

}  // namespace tav

namespace tav {

std::pair<size_t, size_t> TextView::selectedPart(const ScreenLine& line) const {
    if (selection_.empty()) return {0, 0};
    const auto size = static_cast<int64_t>(line.text.size());
    const int64_t from = std::clamp<int64_t>(selection_.first() - line.firstByte, 0, size);
    const int64_t to = std::clamp<int64_t>(selection_.behind() - line.firstByte, 0, size);
    if (from >= to) return {0, 0};
    return {static_cast<size_t>(from), static_cast<size_t>(to)};
}

}  // namespace tav
