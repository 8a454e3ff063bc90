#pragma once
// Finds the nearest of several values in one buffer: the text to find and
// the further values, in list order.
//   Forward: each value from the start index; the lowest index wins.
//   Backward: each value wholly below the limit; the highest index wins.
//   On equal indices the later list entry wins.
#include <cstddef>
#include <vector>

#include "find/PreparedCriteria.h"

namespace tav {

struct ValueHit {
    size_t index = ValueSearcher::npos;  // 0-based index in the buffer; npos for none
    size_t value = 0;                    // 0 the text to find, 1.. the further values
    bool found() const { return index != ValueSearcher::npos; }
};

ValueHit findValueInBuffer(bool forward, size_t startOrLimit, const char* buffer, size_t size,
                           const PreparedCriteria& criteria);

// The same over one buffer searched again and again (after each rejected
// hit): remembers each value's last answer, so every value scans each byte
// of the buffer at most once.
class BufferScan {
public:
    BufferScan(const PreparedCriteria& criteria, const char* buffer, size_t size);
    // Forward: the nearest hit starting at or after `from`.
    ValueHit next(size_t from);
    // Backward: the nearest hit lying wholly below `limit`.
    ValueHit previous(size_t limit);

private:
    const PreparedCriteria* criteria_;
    const char* buffer_;
    size_t size_;
    std::vector<size_t> cached_;  // each value's last answer
    std::vector<size_t> asked_;   // the from / limit it answered
};

}  // namespace tav
