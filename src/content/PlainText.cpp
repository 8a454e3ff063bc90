#include "content/PlainText.h"

#include "content/DisplayText.h"
#include "content/Tidy.h"

namespace tav {

void PlainText::configure(std::size_t firstChars, std::size_t lastChars, bool keepAll, std::int64_t maxTotal,
                          const SkipList* skip) {
    firstChars_ = firstChars;
    lastChars_ = lastChars;
    // Tidy drops blank runs and indentation: keep a generous start.
    firstCap_ = firstChars == 0 ? 0 : (firstChars * 8 > 65536 ? firstChars * 8 : 65536);
    // 2 x lastChars characters of at most 4 bytes each.
    tailCap_ = lastChars * 8;
    keepAll_ = keepAll;
    maxTotal_ = maxTotal;
    skip_ = (skip && !skip->empty()) ? skip : nullptr;
}

void PlainText::begin() {
    first_.clear();
    tail_.clear();
    all_.clear();
    piece_.clear();
    skipping_ = -1;
    total_ = 0;
    firstFrozen_ = false;
    stopped_ = false;
}

void PlainText::take(std::string_view text) {
    if (stopped_ || text.empty()) return;
    if (total_ + static_cast<std::int64_t>(text.size()) > maxTotal_) {
        text = text.substr(0, static_cast<std::size_t>(maxTotal_ > total_ ? maxTotal_ - total_ : 0));
        stopped_ = true;
    }
    total_ += static_cast<std::int64_t>(text.size());
    if (!firstFrozen_ && first_.size() < firstCap_) {
        const std::size_t n = text.size() < firstCap_ - first_.size() ? text.size() : firstCap_ - first_.size();
        first_.append(text.data(), n);
    }
    if (tailCap_ > 0) {
        if (text.size() >= tailCap_) {
            tail_.assign(text.data() + text.size() - tailCap_, tailCap_);
        } else {
            tail_.append(text);
            if (tail_.size() > 2 * tailCap_) tail_.erase(0, tail_.size() - tailCap_);
        }
    }
    if (keepAll_) all_.append(text);
}

void PlainText::append(std::string_view part) {
    if (stopped_) return;
    if (skip_) {
        piece_.append(part);
        return;
    }
    take(part);
}

void PlainText::endPiece() {
    if (!skip_ || piece_.empty()) return;
    filtered_.clear();
    skip_->filter(piece_, skipping_, filtered_);
    piece_.clear();
    take(filtered_);
}

std::string PlainText::firstCell() const {
    if (firstChars_ == 0) return {};
    return Tidy(toDisplayText(first_), firstChars_, 1, true);
}

std::string PlainText::lastCell() const {
    if (lastChars_ == 0) return {};
    std::string text = toDisplayText(tail_);
    const std::size_t chars = charCount(text);
    if (chars > 2 * lastChars_) text.erase(0, byteLengthOfChars(text, chars - 2 * lastChars_));
    return Tidy(text, lastChars_, 1, true);
}

std::string PlainText::allText() const { return toDisplayText(all_); }

}  // namespace tav
