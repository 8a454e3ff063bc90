#include "find/FileHits.h"

#include "find/FileSearch.h"
#include "find/PreparedCriteria.h"

namespace tav {

FileHitsResult fileHits(const FileHitsRequest& request) {
    FileHitsResult result;
    PreparedCriteria criteria = prepareFindCriteria(request.criteria);
    FileBytes file(request.path);
    if (!file.open()) {
        result.error = file.error();
        return result;
    }
    SearchRange range;
    range.forward = request.forward;
    if (request.forward)
        range.startByte = std::max<int64_t>(1, request.fromByte);
    else
        range.endByte = request.fromByte > 0 ? request.fromByte : kNoEndByte;
    range.beforeLength = range.afterLength = request.contextBytes;
    SearchHooks hooks;
    hooks.stopRequested = request.stopRequested;
    SearchOutcome o = searchBytes(criteria, file, range, hooks, [&](const FoundHit& h) {
        result.hits.push_back({h.byteNumber, h.value, h.textEnd, h.textStart});
        return request.allHits;
    });
    result.interrupted = o.interrupted;
    result.error = o.error;
    return result;
}

}  // namespace tav
