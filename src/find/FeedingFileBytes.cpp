#include "find/FeedingFileBytes.h"

#include <algorithm>
#include <utility>

#include "filelist/ListContentReader.h"

namespace tav {

FeedingFileBytes::FeedingFileBytes(std::string path, ContentFeed feed)
    : FileBytes(std::move(path)), feed_(std::move(feed)), done_(!feed_) {}

const char* FeedingFileBytes::view(int64_t from, int64_t to, bool forward) {
    const char* bytes = FileBytes::view(from, to, forward);
    if (bytes && to > from) pass(from, bytes, static_cast<size_t>(to - from));
    return bytes;
}

std::string FeedingFileBytes::read(int64_t from, int64_t to) {
    std::string bytes = FileBytes::read(from, to);
    if (!bytes.empty()) pass(std::max<int64_t>(from, 1), bytes.data(), bytes.size());
    return bytes;
}

void FeedingFileBytes::pass(int64_t from, const char* bytes, size_t count) {
    if (done_) return;
    const int64_t next = fedTo_ + 1;
    const int64_t end = from + static_cast<int64_t>(count);  // one past the last byte
    if (from > next || end <= next) return;  // a gap ahead, or nothing new
    const auto skip = static_cast<size_t>(next - from);
    pending_.append(bytes + skip, count - skip);
    fedTo_ = end - 1;
    if (pending_.size() >= kListReadChunk) flush();
}

void FeedingFileBytes::flush() {
    if (!done_ && !pending_.empty() && !feed_(pending_)) done_ = true;
    pending_.clear();
}

bool FeedingFileBytes::feedRest(const std::function<bool()>& stop) {
    while (!done_ && fedTo_ < length()) {
        if (stop && stop()) return false;
        const int64_t from = fedTo_ + 1;
        const int64_t to = std::min(length() + 1, from + static_cast<int64_t>(kListReadChunk));
        if (!view(from, to, true)) return false;
    }
    flush();
    return true;
}

}  // namespace tav
