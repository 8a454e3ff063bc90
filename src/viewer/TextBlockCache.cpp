#include "viewer/TextBlockCache.h"

#include <algorithm>

#include "viewer/FileBlockReader.h"

namespace tav {

namespace {
// Fresh positions after a replace start far from the old ones, so that a
// stale position can never be mistaken for a held one.
constexpr int64_t kFreshSpan = int64_t{1} << 40;
}  // namespace

void TextBlockCache::reset(const std::string& file) {
    file_ = file;
    text_.clear();
    start_ = 1;
    end_ = 1;
    anchors_.clear();
    base_ += kFreshSpan;
    ++generation_;
}

std::string_view TextBlockCache::textFrom(int64_t pos) const {
    if (pos < base_ || pos > endPos()) return {};
    return std::string_view(text_).substr(static_cast<size_t>(pos - base_));
}

int64_t TextBlockCache::byteAtPos(int64_t pos) const {
    if (anchors_.empty() || pos <= base_) return start_;
    if (pos >= endPos()) return end_;
    auto it = std::upper_bound(anchors_.begin(), anchors_.end(), pos,
                               [](int64_t p, const Anchor& a) { return p < a.pos; });
    --it;
    int64_t byte = it->byte + (pos - it->pos);
    const int64_t limit = (it + 1 != anchors_.end()) ? (it + 1)->byte : end_;
    return std::min(byte, limit - 1);
}

int64_t TextBlockCache::posOfByte(int64_t byte) const {
    if (anchors_.empty() || byte <= start_) return base_;
    if (byte >= end_) return endPos();
    auto it = std::upper_bound(anchors_.begin(), anchors_.end(), byte,
                               [](int64_t b, const Anchor& a) { return b < a.byte; });
    --it;
    int64_t pos = it->pos + (byte - it->byte);
    const int64_t limit = (it + 1 != anchors_.end()) ? (it + 1)->pos : endPos();
    return std::min(pos, limit);
}

void TextBlockCache::dropFront(size_t count) {
    count = std::min(count, text_.size());
    const int64_t newBase = base_ + static_cast<int64_t>(count);
    const int64_t newStart = byteAtPos(newBase);
    text_.erase(0, count);
    base_ = newBase;
    start_ = newStart;
    auto firstKept = std::upper_bound(anchors_.begin(), anchors_.end(), newBase,
                                      [](int64_t p, const Anchor& a) { return p < a.pos; });
    anchors_.erase(anchors_.begin(), firstKept);
    if (anchors_.empty() || anchors_.front().pos != newBase) anchors_.insert(anchors_.begin(), {newBase, newStart});
}

void TextBlockCache::dropBack(size_t count) {
    count = std::min(count, text_.size());
    const int64_t newEndPos = endPos() - static_cast<int64_t>(count);
    const int64_t newEnd = byteAtPos(newEndPos);
    text_.resize(text_.size() - count);
    end_ = newEnd;
    while (anchors_.size() > 1 && anchors_.back().pos >= newEndPos) anchors_.pop_back();
}

TextBlockCache::BlockResult TextBlockCache::readTextBlock(const BlockSource& source, int64_t startByte,
                                                          MessageHost* host) {
    if (source.key() != file_) reset(source.key());
    startByte = std::max<int64_t>(1, startByte);
    // A read ahead of the cache never overlaps it.
    int64_t n = start_ - startByte;
    if (n < 1) n = kBlockSize;
    n = std::min(n, kBlockSize);

    SourceBlock block = source.read(startByte, n);
    BlockResult result;
    result.length = block.length;
    if (!block.error.empty() || block.nextByte < 0) {
        if (host) {
            MessageRequest m;
            m.message = block.error;
            m.buttons = "0";
            m.options = "Esc=1|";
            host->show(m);
        }
        return result;
    }
    result.nextByte = block.nextByte;
    const auto blockLen = static_cast<int64_t>(block.text.size());

    if (!text_.empty() && block.nextByte == start_) {
        if (text_.size() >= kCacheSlideLength)
            dropBack(std::min(block.text.size(), text_.size() - 1));
        text_.insert(0, block.text);
        base_ -= blockLen;
        anchors_.insert(anchors_.begin(), {base_, startByte});
        start_ = startByte;
        result.merge = Merge::Front;
    } else if (startByte == end_ && (!text_.empty() || start_ == startByte)) {
        if (text_.size() >= kCacheSlideLength) dropFront(block.text.size());
        if (anchors_.empty() || anchors_.back().byte != startByte) anchors_.push_back({endPos(), startByte});
        text_ += block.text;
        end_ = block.nextByte;
        result.merge = Merge::Back;
    } else {
        base_ += kFreshSpan;
        ++generation_;
        text_ = std::move(block.text);
        start_ = startByte;
        end_ = block.nextByte;
        anchors_.assign(1, {base_, startByte});
        result.merge = Merge::Replaced;
    }
    // Two anchors on one position (an empty block) would make the map ambiguous.
    anchors_.erase(std::unique(anchors_.begin(), anchors_.end(),
                               [](const Anchor& a, const Anchor& b) { return a.pos == b.pos; }),
                   anchors_.end());
    return result;
}

}  // namespace tav
