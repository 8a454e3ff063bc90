#include "find/ByteSource.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#if defined(_WIN32)
#include <io.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tav {

const char* MemoryBytes::view(int64_t from, int64_t to, bool) {
    if (from < 1 || to < from || to - 1 > length()) return nullptr;
    return bytes_.data() + (from - 1);
}

std::string MemoryBytes::read(int64_t from, int64_t to) {
    from = std::max<int64_t>(from, 1);
    to = std::min<int64_t>(to, length() + 1);
    if (to <= from) return {};
    return std::string(bytes_.substr(static_cast<size_t>(from - 1), static_cast<size_t>(to - from)));
}

#if defined(_WIN32)
struct FileBytes::Handle {
    std::FILE* f = nullptr;
    ~Handle() {
        if (f) std::fclose(f);
    }
};
#else
struct FileBytes::Handle {
    int fd = -1;
    ~Handle() {
        if (fd >= 0) ::close(fd);
    }
};
#endif

FileBytes::FileBytes(std::string path, size_t windowSize) : path_(std::move(path)), windowSize_(windowSize) {}

FileBytes::~FileBytes() = default;

bool FileBytes::open() {
    if (handle_) return true;
    auto h = std::make_unique<Handle>();
#if defined(_WIN32)
    h->f = std::fopen(path_.c_str(), "rb");
    if (!h->f) {
        error_ = std::strerror(errno);
        return false;
    }
    _fseeki64(h->f, 0, SEEK_END);
    length_ = _ftelli64(h->f);
#else
    h->fd = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC);
    if (h->fd < 0) {
        error_ = std::strerror(errno);
        return false;
    }
    struct stat st {};
    if (::fstat(h->fd, &st) != 0) {
        error_ = std::strerror(errno);
        return false;
    }
    length_ = static_cast<int64_t>(st.st_size);
#if defined(POSIX_FADV_SEQUENTIAL)
    ::posix_fadvise(h->fd, 0, 0, POSIX_FADV_SEQUENTIAL);
#endif
#endif
    handle_ = std::move(h);
    return true;
}

bool FileBytes::readAt(int64_t from, char* into, size_t count) {
    if (!open()) return false;
#if defined(_WIN32)
    if (_fseeki64(handle_->f, from - 1, SEEK_SET) != 0 || std::fread(into, 1, count, handle_->f) != count) {
        error_ = "Error from Windows.";
        return false;
    }
    return true;
#else
    size_t done = 0;
    while (done < count) {
        ssize_t n = ::pread(handle_->fd, into + done, count - done, static_cast<off_t>(from - 1 + static_cast<int64_t>(done)));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            error_ = n < 0 ? std::strerror(errno) : "The file ended before the bytes asked for.";
            return false;
        }
        done += static_cast<size_t>(n);
    }
    return true;
#endif
}

const char* FileBytes::view(int64_t from, int64_t to, bool forward) {
    if (!open()) return nullptr;
    if (from < 1 || to < from || to - 1 > length_) return nullptr;
    const int64_t wEnd = windowStart_ + static_cast<int64_t>(windowLength_);
    if (from >= windowStart_ && to <= wEnd && windowLength_ > 0) return window_.data() + (from - windowStart_);
    const auto want = static_cast<int64_t>(std::max<size_t>(windowSize_, static_cast<size_t>(to - from)));
    int64_t start, end;
    if (forward) {
        start = from;
        end = std::min(length_ + 1, from + want);
    } else {
        end = to;
        start = std::max<int64_t>(1, to - want);
    }
    size_t n = static_cast<size_t>(end - start);
    if (window_.size() < n) window_.resize(n);
    windowStart_ = start;
    windowLength_ = 0;
    if (!readAt(start, window_.data(), n)) return nullptr;
    windowLength_ = n;
    return window_.data() + (from - windowStart_);
}

std::string FileBytes::read(int64_t from, int64_t to) {
    from = std::max<int64_t>(from, 1);
    if (!open()) return {};
    to = std::min<int64_t>(to, length_ + 1);
    if (to <= from) return {};
    const int64_t wEnd = windowStart_ + static_cast<int64_t>(windowLength_);
    if (windowLength_ > 0 && from >= windowStart_ && to <= wEnd)
        return std::string(window_.data() + (from - windowStart_), static_cast<size_t>(to - from));
    std::string out(static_cast<size_t>(to - from), '\0');
    if (!readAt(from, out.data(), out.size())) return {};
    return out;
}

FileBytesResult readFileBytes(const std::string& path, int64_t fromByte, int64_t toByte, int64_t maxLength) {
    FileBytesResult r;
    FileBytes f(path, 0);
    if (!f.open()) {
        r.error = f.error();
        return r;
    }
    int64_t to = std::min(toByte, f.length()) + 1;
    int64_t from = std::max<int64_t>(fromByte, 1);
    if (maxLength > 0 && to - from > maxLength) {
        to = from + maxLength;
        r.truncated = true;
    }
    r.bytes = f.read(from, to);
    if (!f.error().empty()) {
        r.error = f.error();
        r.bytes.clear();
    }
    return r;
}

}  // namespace tav
