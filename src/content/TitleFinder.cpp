#include "content/TitleFinder.h"

#include "content/DisplayText.h"
#include "content/Entities.h"
#include "content/Tidy.h"

namespace tav {

namespace {

// A title longer than this is kept only up to here.
constexpr std::size_t kMaxCollected = 1 << 20;

}  // namespace

TitleFinder::TitleFinder() {
    titleStart_.setPattern("<title", true);
    titleEnd_.setPattern("</title", true);
    descStart_.setPattern("name=\"description\" content=\"", true);
    descEnd_.setPattern("\">", true);
}

void TitleFinder::begin() {
    titleStart_.reset();
    titleEnd_.reset();
    descStart_.reset();
    descEnd_.reset();
    state_ = State::SeekStart;
    desc_ = Desc::SeekStart;
    pos_ = 0;
    titleFrom_ = descFrom_ = 0;
    title_.clear();
    description_.clear();
}

void TitleFinder::collect(std::string& into, std::string_view chunk, std::size_t from, std::size_t to) {
    if (to <= from || into.size() >= kMaxCollected) return;
    std::size_t n = to - from;
    if (n > kMaxCollected - into.size()) n = kMaxCollected - into.size();
    into.append(chunk.data() + from, n);
}

void TitleFinder::feed(std::string_view chunk) {
    if (state_ == State::Found) return;
    const std::int64_t base = pos_;
    const std::size_t npos = StreamFinder::npos;

    if (state_ == State::SeekStart) {
        const std::size_t end = titleStart_.findEnd(chunk, base, base - 64);
        if (end != npos) {
            state_ = State::SeekEnd;
            titleFrom_ = base + static_cast<std::int64_t>(end);
            titleEnd_.reset();
        }
    }
    if (state_ == State::SeekEnd) {
        const std::size_t from = titleFrom_ > base ? static_cast<std::size_t>(titleFrom_ - base) : 0;
        const std::size_t end = titleEnd_.findEnd(chunk, base, titleFrom_);
        if (end != npos) {
            // The end text may have begun in an earlier chunk: cut the
            // collected text back to where it starts.
            const std::int64_t endStart = base + static_cast<std::int64_t>(end) - 7;
            if (endStart >= base) {
                collect(title_, chunk, from, static_cast<std::size_t>(endStart - base));
            } else {
                const std::int64_t keepLen = endStart - titleFrom_;
                if (keepLen >= 0 && static_cast<std::size_t>(keepLen) < title_.size())
                    title_.resize(static_cast<std::size_t>(keepLen));
            }
            state_ = State::Found;
            pos_ += static_cast<std::int64_t>(chunk.size());
            return;
        }
        collect(title_, chunk, from, chunk.size());
    }

    // The description is wanted only while there is no title.
    if (desc_ == Desc::SeekStart) {
        const std::size_t end = descStart_.findEnd(chunk, base, base - 64);
        if (end != npos) {
            desc_ = Desc::SeekEnd;
            descFrom_ = base + static_cast<std::int64_t>(end);
            descEnd_.reset();
        }
    }
    if (desc_ == Desc::SeekEnd) {
        const std::size_t from = descFrom_ > base ? static_cast<std::size_t>(descFrom_ - base) : 0;
        const std::size_t end = descEnd_.findEnd(chunk, base, descFrom_);
        if (end != npos) {
            const std::int64_t endStart = base + static_cast<std::int64_t>(end) - 2;
            if (endStart >= base) {
                collect(description_, chunk, from, static_cast<std::size_t>(endStart - base));
            } else {
                const std::int64_t keepLen = endStart - descFrom_;
                if (keepLen >= 0 && static_cast<std::size_t>(keepLen) < description_.size())
                    description_.resize(static_cast<std::size_t>(keepLen));
            }
            desc_ = Desc::Found;
        } else {
            collect(description_, chunk, from, chunk.size());
        }
    }

    titleStart_.keep(chunk, base);
    titleEnd_.keep(chunk, base);
    descStart_.keep(chunk, base);
    descEnd_.keep(chunk, base);
    pos_ += static_cast<std::int64_t>(chunk.size());
}

std::string TitleFinder::result() const {
    std::string_view raw;
    if (state_ == State::Found) {
        raw = title_;
        const std::size_t gt = raw.find('>');
        if (gt != std::string_view::npos) raw.remove_prefix(gt + 1);
    } else if (desc_ == Desc::Found) {
        raw = description_;
    } else {
        return {};
    }
    return DecodeEntities(Tidy(toDisplayText(raw), 0, 1, true));
}

std::string GetTitle(std::span<const std::string_view> chunks) {
    TitleFinder f;
    f.begin();
    for (std::string_view c : chunks) {
        f.feed(c);
        if (f.done()) break;
    }
    return f.result();
}

std::string GetTitle(std::string_view section) {
    const std::string_view one[] = {section};
    return GetTitle(std::span<const std::string_view>(one));
}

}  // namespace tav
