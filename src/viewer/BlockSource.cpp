#include "viewer/BlockSource.h"

#include <algorithm>

#include "viewer/FileBlockReader.h"
#include "viewer/RawConversion.h"

namespace tav {

std::string FileTextSource::key() const { return (removeBlank_ ? "Raw-nb\n" : "Raw\n") + path_; }

int64_t FileTextSource::length() const { return fileLengthOf(path_); }

SourceBlock FileTextSource::read(int64_t startByte, int64_t count) const {
    FileRead r = readFileBytes(path_, startByte, std::max<int64_t>(1, count));
    SourceBlock b;
    b.length = r.fileLength;
    if (!r.ok()) {
        b.error = std::move(r.error);
        return b;
    }
    b.nextByte = startByte + static_cast<int64_t>(r.bytes.size());
    b.text = convertRawBlock(r.bytes, removeBlank_);
    return b;
}

SourceBlock MemoryTextSource::read(int64_t startByte, int64_t count) const {
    SourceBlock b;
    const int64_t len = length();
    b.length = len;
    if (startByte < 1) startByte = 1;
    if (startByte > len && !(len == 0 && startByte == 1)) {
        b.error = "Start at byte specified is after end of file. File length: " + std::to_string(len) +
                  ". Start at Byte: " + std::to_string(startByte);
        return b;
    }
    const int64_t n = std::clamp<int64_t>(count, 0, len - startByte + 1);
    b.text = text_.substr(static_cast<size_t>(startByte - 1), static_cast<size_t>(n));
    b.nextByte = startByte + n;
    return b;
}

}  // namespace tav
