#pragma once
// The walk that looks for the next accepted hit in a file of any size (or
// in text in memory), forward or backward, block by block.
//
// Blocks are 10,000 bytes, counted from the start byte forward, or back
// from the end byte. Each block is searched together with the overlap
// carried from the block before it: the longest value's length of bytes
// that touch the block, so a value across a seam is found, and a hit inside
// the overlap may be seen (and rejected) twice. Only bytes of the file take
// part in a hit; the first backward block ends on the file's last byte.
// The file is read in larger pieces, which changes nothing of the above.
//
// Forward: hits start at or after startByte and before endByte.
// Backward: hits start at or after startByte and end before endByte; after
// a rejected hit the next one must end before it starts.
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

#include "find/ByteSource.h"
#include "find/PreparedCriteria.h"
#include "find/RejectedList.h"

namespace tav {

inline constexpr int64_t kBlockBytes = 10000;
inline constexpr int64_t kNoEndByte = std::numeric_limits<int64_t>::max();

struct SearchRange {
    bool forward = true;
    int64_t startByte = 1;
    int64_t endByte = kNoEndByte;
    bool raw = false;              // every raw hit is a find; no criteria check
    int64_t beforeLength = 0;      // bytes of found text ahead of the hit
    int64_t afterLength = 0;       // and behind the value
};

struct SearchHooks {
    // Tested every fifth block; true stops the search (interrupted).
    std::function<bool()> stopRequested;
    // Called every fifth block: bytes done, bytes to do.
    std::function<void(int64_t done, int64_t total)> progress;
    // Receives reject texts; the heading defaults to "File: " and the path.
    RejectedList* rejected = nullptr;
    std::string heading;
    bool keepAllRejected = false;
    bool rejectedShowing = false;
};

struct FoundHit {
    int64_t byteNumber = -1;       // 1-based
    size_t valueIndex = 0;         // 0 the text to find, 1.. the further values
    std::string value;             // the bytes found, as they stand
    std::string text;              // the found text around the hit
    int64_t textStart = 0;         // its first byte
    int64_t textEnd = 0;           // its last byte
    // The range as stored with a find: end, "|", start.
    std::string textRange() const { return std::to_string(textEnd) + "|" + std::to_string(textStart); }
};

struct SearchOutcome {
    bool found = false;
    bool interrupted = false;
    FoundHit hit;                  // the (last) accepted hit
    int64_t length = 0;            // length of the file or text
    std::string error;             // the file could not be read
};

// Calls onHit for every accepted hit, in walk order, until it returns false
// (then `found` is true and `hit` is that hit). A position is reported once.
SearchOutcome searchBytes(const PreparedCriteria& criteria, ByteSource& source, const SearchRange& range,
                          const SearchHooks& hooks, const std::function<bool(const FoundHit&)>& onHit);

// The first accepted hit.
SearchOutcome findInFile(const PreparedCriteria& criteria, const std::string& path, const SearchRange& range,
                         const SearchHooks& hooks = {});
SearchOutcome findInText(const PreparedCriteria& criteria, std::string_view text, const SearchRange& range,
                         const SearchHooks& hooks = {});

}  // namespace tav
