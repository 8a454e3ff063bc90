#include "filelist/JobContext.h"

#include "core/AppError.h"

namespace tav {

void JobContext::checkpoint() const {
    if (stopRequested()) raiseUserStop();
}

bool JobContext::progress(const JobProgress& report) {
    if (!onProgress_) return false;
    const Clock::time_point now = clock_ ? clock_() : Clock::now();
    if (reported_ && now - lastReport_ < kProgressInterval) return false;
    reported_ = true;
    lastReport_ = now;
    onProgress_(report);
    return true;
}

}  // namespace tav
