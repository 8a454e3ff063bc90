#pragma once
// The file reader under every text view: reads a run of bytes at a byte
// number (counting from 1) in blocks of 10000, without ever holding more
// than was asked for. Failures come back as the message the user sees.
#include <cstdint>
#include <string>

namespace tav {

inline constexpr int64_t kBlockSize = 10000;

struct FileRead {
    std::string bytes;       // the bytes read, unconverted
    int64_t fileLength = -1; // length of the file when it was read; -1 if it could not be opened
    bool truncated = false;  // more than `maximum` was available
    std::string error;       // empty on success: the message for the user otherwise
    bool ok() const { return error.empty(); }
};

// Length of a file in bytes, or -1 when it cannot be read.
int64_t fileLengthOf(const std::string& path);

// Reads up to `maximum` bytes (< 1: no limit) from `startByte` on.
// A start past the end is an error with the file's length in the message;
// a start exactly one past the end of a non-empty file is one too, while an
// empty file read at byte 1 gives no bytes and no error.
FileRead readFileBytes(const std::string& path, int64_t startByte, int64_t maximum);

}  // namespace tav
