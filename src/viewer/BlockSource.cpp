#include "viewer/BlockSource.h"

#include <sys/stat.h>

#include <algorithm>
#include <atomic>

#include "viewer/FileBlockReader.h"
#include "viewer/RawConversion.h"

namespace tav {

FileTextSource::FileTextSource(std::string path, bool removeBlank) : path_(std::move(path)), removeBlank_(removeBlank) {
    struct stat st {};
    if (::stat(path_.c_str(), &st) == 0)
        stamp_ = std::to_string(st.st_size) + ":" + std::to_string(st.st_mtim.tv_sec) + "." +
                 std::to_string(st.st_mtim.tv_nsec);
}

std::string FileTextSource::key() const {
    return (removeBlank_ ? "Raw-nb\n" : "Raw\n") + path_ + "\n" + stamp_;
}

int64_t FileTextSource::length() const { return fileLengthOf(path_); }

SourceBlock FileTextSource::read(int64_t startByte, int64_t count) const {
    startByte = std::max<int64_t>(1, startByte);
    count = std::max<int64_t>(1, count);
    SourceBlock b;
    if (!removeBlank_) {
        FileRead r = readFileBytes(path_, startByte, count);
        b.length = r.fileLength;
        if (!r.ok()) {
            b.error = std::move(r.error);
            return b;
        }
        b.nextByte = startByte + static_cast<int64_t>(r.bytes.size());
        b.text = convertRawBlock(r.bytes, false);
        return b;
    }
    // Collapsing blank lines needs the lines that the block's edges cut: read
    // some bytes on both sides as well.
    const auto context = static_cast<int64_t>(kBlankLineContext);
    const int64_t back = std::min<int64_t>(startByte - 1, context);
    FileRead r = readFileBytes(path_, startByte - back, back + count + context);
    b.length = r.fileLength;
    if (r.ok() && startByte > r.fileLength && !(r.fileLength == 0 && startByte == 1))
        r.error = "Start at byte specified is after end of file. File length: " + std::to_string(r.fileLength) +
                  ". Start at Byte: " + std::to_string(startByte);
    if (!r.ok()) {
        b.error = std::move(r.error);
        return b;
    }
    const std::string_view all(r.bytes);
    const std::string_view before = all.substr(0, static_cast<size_t>(back));
    const std::string_view block = all.substr(before.size(), static_cast<size_t>(count));
    const std::string_view after = all.substr(before.size() + block.size());
    b.nextByte = startByte + static_cast<int64_t>(block.size());
    b.text = convertRawBlock(removeBlankLines(block, before, after, !r.truncated), false);
    return b;
}

MemoryTextSource::MemoryTextSource(std::string name, std::string text, std::string kind)
    : name_(std::move(name)), text_(std::move(text)), kind_(std::move(kind)) {
    static std::atomic<uint64_t> made{0};
    serial_ = std::to_string(++made);
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
