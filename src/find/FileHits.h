#pragma once
// Hits in one file for the command line: from a byte, forward or backward,
// the first accepted hit or all of them.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "find/FindCriteria.h"

namespace tav {

struct FileHit {
    int64_t byteNumber = 0;   // 1-based first byte of the hit
    std::string value;        // the bytes found
    int64_t textEnd = 0;      // last byte of the found text around it
    int64_t textStart = 0;    // its first byte
};

struct FileHitsRequest {
    std::string path;
    FindCriteria criteria;
    int64_t fromByte = 1;     // forward: hits start here or later; backward: hits end before it (0: the file's end)
    bool forward = true;
    bool allHits = false;
    int64_t contextBytes = 0; // found text either side of the value
    std::function<bool()> stopRequested;
};

struct FileHitsResult {
    std::vector<FileHit> hits;
    bool interrupted = false;
    std::string error;        // the file could not be read
};

FileHitsResult fileHits(const FileHitsRequest& request);

}  // namespace tav
