#include "viewer/FileBlockReader.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <new>

namespace tav {

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

std::string openError(const std::string& path) { return "Error opening file >>" + path + "<<."; }

}  // namespace

int64_t fileLengthOf(const std::string& path) {
    struct stat st {};
    if (path.empty() || ::stat(path.c_str(), &st) != 0 || S_ISDIR(st.st_mode)) return -1;
    return static_cast<int64_t>(st.st_size);
}

FileRead readFileBytes(const std::string& path, int64_t startByte, int64_t maximum) {
    FileRead r;
    if (path.empty()) {
        r.error = openError(path);
        return r;
    }
    std::unique_ptr<std::FILE, FileCloser> f(std::fopen(path.c_str(), "rb"));
    struct stat st {};
    if (!f || ::fstat(fileno(f.get()), &st) != 0 || S_ISDIR(st.st_mode)) {
        r.error = openError(path);
        return r;
    }
    r.fileLength = static_cast<int64_t>(st.st_size);
    if (startByte < 1) startByte = 1;
    if (startByte > r.fileLength && !(r.fileLength == 0 && startByte == 1)) {
        r.error = "Start at byte specified is after end of file. File length: " + std::to_string(r.fileLength) +
                  ". Start at Byte: " + std::to_string(startByte);
        return r;
    }
    if (maximum < 1) maximum = std::numeric_limits<int64_t>::max();
    const int64_t available = r.fileLength - startByte + 1;
    int64_t wanted = available;
    if (wanted > maximum) {
        wanted = maximum;
        r.truncated = true;
    }
    if (wanted <= 0) return r;
    if (::fseeko(f.get(), static_cast<off_t>(startByte - 1), SEEK_SET) != 0) {
        r.error = openError(path);
        return r;
    }
    try {
        r.bytes.resize(static_cast<size_t>(wanted));
    } catch (const std::bad_alloc&) {
        r.bytes.clear();
        r.error = "File >>" + path + "<< cannot be processed. Insufficient space.";
        return r;
    }
    // Blocks of 10000 until the wanted length is held or the file ends early
    // (it may have shrunk since it was measured).
    int64_t got = 0;
    while (got < wanted) {
        const size_t n = static_cast<size_t>(std::min<int64_t>(kBlockSize, wanted - got));
        const size_t read = std::fread(r.bytes.data() + got, 1, n, f.get());
        got += static_cast<int64_t>(read);
        if (read < n) {
            if (std::ferror(f.get())) {
                r.bytes.clear();
                r.error = openError(path);
                return r;
            }
            break;
        }
    }
    r.bytes.resize(static_cast<size_t>(got));
    if (got < wanted) {
        r.truncated = false;
        r.fileLength = startByte - 1 + got;
    }
    return r;
}

}  // namespace tav
