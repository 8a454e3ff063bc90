#include "find/ValueFinder.h"

namespace tav {

namespace {
constexpr size_t npos = ValueSearcher::npos;
constexpr size_t kNeverAsked = static_cast<size_t>(-1);
}  // namespace

ValueHit findValueInBuffer(bool forward, size_t startOrLimit, const char* buffer, size_t size,
                           const PreparedCriteria& criteria) {
    BufferScan scan(criteria, buffer, size);
    return forward ? scan.next(startOrLimit) : scan.previous(startOrLimit);
}

BufferScan::BufferScan(const PreparedCriteria& criteria, const char* buffer, size_t size)
    : criteria_(&criteria), buffer_(buffer), size_(size), cached_(criteria.valueCount(), npos),
      asked_(criteria.valueCount(), kNeverAsked) {}

ValueHit BufferScan::next(size_t from) {
    ValueHit best;
    for (size_t v = 0; v < criteria_->valueCount(); ++v) {
        // A remembered answer holds while the new start has not passed it.
        bool valid = asked_[v] != kNeverAsked && asked_[v] <= from && (cached_[v] == npos || cached_[v] >= from);
        if (!valid) {
            cached_[v] = criteria_->value(v).findForward(buffer_, size_, from);
            asked_[v] = from;
        }
        size_t at = cached_[v];
        if (at != npos && (!best.found() || at <= best.index)) best = {at, v};
    }
    return best;
}

ValueHit BufferScan::previous(size_t limit) {
    ValueHit best;
    for (size_t v = 0; v < criteria_->valueCount(); ++v) {
        const size_t len = criteria_->value(v).size();
        bool valid = asked_[v] != kNeverAsked && asked_[v] >= limit &&
                     (cached_[v] == npos || cached_[v] + len <= limit);
        if (!valid) {
            cached_[v] = criteria_->value(v).findBackward(buffer_, limit);
            asked_[v] = limit;
        }
        size_t at = cached_[v];
        if (at != npos && (!best.found() || at >= best.index)) best = {at, v};
    }
    return best;
}

}  // namespace tav
