#include "settings/ProfileService.h"

#include <fstream>
#include <sstream>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace tav {

namespace {
// How long a cached file is trusted before the disk is asked again.
constexpr auto kRecheckAfter = std::chrono::milliseconds(20);

std::string readBytes(const std::string& path, bool& ok) {
    std::ifstream in(path, std::ios::binary);
    ok = static_cast<bool>(in);
    if (!ok) return {};
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// A link is written through to its target, so the link stays a link.
std::string writeTarget(const std::string& path) {
    std::error_code ec;
    if (fs::is_symlink(path, ec)) {
        fs::path target = fs::canonical(path, ec);
        if (!ec) return target.string();
    }
    return path;
}
}  // namespace

ProfileService::Cached& ProfileService::load(const std::string& path) {
    auto now = std::chrono::steady_clock::now();
    auto& slot = cache_[path];
    if (slot && (slot->dirty || now - slot->checked < kRecheckAfter)) return *slot;

    std::error_code ec;
    auto status = fs::status(path, ec);
    bool exists = !ec && fs::is_regular_file(status);
    fs::file_time_type mtime{};
    std::uintmax_t size = 0;
    if (exists) {
        mtime = fs::last_write_time(path, ec);
        size = fs::file_size(path, ec);
    }
    if (slot && slot->exists == exists && slot->mtime == mtime && slot->size == size) {
        slot->checked = now;
        return *slot;
    }
    auto fresh = std::make_unique<Cached>();
    fresh->exists = exists;
    fresh->mtime = mtime;
    fresh->size = size;
    fresh->checked = now;
    if (exists) {
        bool ok = false;
        std::string bytes = readBytes(path, ok);
        fresh->file = ProfileFile::parse(bytes);
    }
    slot = std::move(fresh);
    return *slot;
}

std::optional<std::string> ProfileService::read(const std::string& path, std::string_view section,
                                                std::string_view entry) {
    std::lock_guard lock(mutex_);
    const std::string* v = load(path).file.find(section, entry);
    if (!v) return std::nullopt;
    std::string_view s = *v;
    if (s.size() >= 2 && s.front() == '"' && s.back() == '"') s = s.substr(1, s.size() - 2);
    return std::string(s);
}

bool ProfileService::hasSection(const std::string& path, std::string_view section) {
    std::lock_guard lock(mutex_);
    return load(path).file.hasSection(section);
}

std::vector<std::string> ProfileService::sectionNames(const std::string& path) {
    std::lock_guard lock(mutex_);
    return load(path).file.sectionNames();
}

std::vector<std::string> ProfileService::entryNames(const std::string& path, std::string_view section) {
    std::lock_guard lock(mutex_);
    return load(path).file.entryNames(section);
}

template <typename Change>
bool ProfileService::modify(const std::string& path, Change change) {
    std::lock_guard lock(mutex_);
    lastTooLarge_ = false;
    Cached& cached = load(path);
    ProfileFile copy = cached.file;
    if (!change(copy)) return true;  // nothing to change
    if (copy.serializedSize() > maxFileSize_) {
        lastTooLarge_ = true;
        return false;
    }
    if (batchDepth_ > 0) {
        cached.file = std::move(copy);
        cached.dirty = true;
        return true;
    }
    Cached previous = std::move(cached);
    cached.file = std::move(copy);
    if (writeOut(path, cached)) return true;
    cached = std::move(previous);
    return false;
}

bool ProfileService::writeOut(const std::string& path, Cached& cached) {
    std::string bytes = cached.file.serialize();
    if (!writeFileAtomic(writeTarget(path), bytes)) return false;
    std::error_code ec;
    cached.exists = true;
    cached.dirty = false;
    cached.mtime = fs::last_write_time(path, ec);
    cached.size = bytes.size();
    cached.checked = std::chrono::steady_clock::now();
    return true;
}

void ProfileService::beginBatch() {
    std::lock_guard lock(mutex_);
    ++batchDepth_;
}

bool ProfileService::endBatch() {
    std::lock_guard lock(mutex_);
    if (batchDepth_ == 0 || --batchDepth_ > 0) return true;
    bool ok = true;
    for (auto it = cache_.begin(); it != cache_.end();) {
        Cached& cached = *it->second;
        if (cached.dirty && !writeOut(it->first, cached)) {
            ok = false;
            it = cache_.erase(it);  // the disk is what holds
            continue;
        }
        ++it;
    }
    return ok;
}

bool ProfileService::write(const std::string& path, std::string_view section, std::string_view entry,
                           std::string_view value) {
    if (section.empty() || entry.empty()) return flush(path);
    return modify(path, [&](ProfileFile& f) {
        const std::string* old = f.find(section, entry);
        if (old && *old == value) return false;
        f.set(section, entry, value);
        return true;
    });
}

bool ProfileService::eraseEntry(const std::string& path, std::string_view section, std::string_view entry) {
    {
        std::lock_guard lock(mutex_);
        if (!load(path).exists) return true;
    }
    return modify(path, [&](ProfileFile& f) { return f.erase(section, entry); });
}

bool ProfileService::eraseSection(const std::string& path, std::string_view section) {
    {
        std::lock_guard lock(mutex_);
        if (!load(path).exists) return true;
    }
    return modify(path, [&](ProfileFile& f) { return f.eraseSection(section); });
}

ProfileFile ProfileService::snapshot(const std::string& path) {
    std::lock_guard lock(mutex_);
    return load(path).file;
}

bool ProfileService::replace(const std::string& path, const ProfileFile& file) {
    return modify(path, [&](ProfileFile& f) {
        f = file;
        return true;
    });
}

std::optional<std::uintmax_t> ProfileService::fileSize(const std::string& path) {
    std::error_code ec;
    auto size = fs::file_size(path, ec);
    if (ec) return std::nullopt;
    return size;
}

bool ProfileService::flush(const std::string& path) {
    // Writes reach the disk as they are made; a flush only drops the cache.
    invalidate(path);
    return true;
}

void ProfileService::invalidate(const std::string& path) {
    std::lock_guard lock(mutex_);
    cache_.erase(path);
}

void ProfileService::invalidateAll() {
    std::lock_guard lock(mutex_);
    cache_.clear();
}

int ProfileService::removeStaleTemporaries(const std::string& dir) {
    int removed = 0;
    std::error_code ec;
    for (const auto& item : fs::directory_iterator(dir, ec)) {
        const std::string name = item.path().filename().string();
        const size_t mark = name.rfind(".tmp~");
        if (mark == std::string::npos || !item.is_regular_file(ec)) continue;
#ifndef _WIN32
        // A temporary of a living process is still being written.
        const std::string pid = name.substr(mark + 5);
        if (!pid.empty() && pid.find_first_not_of("0123456789") == std::string::npos &&
            (std::stol(pid) == ::getpid() || fs::exists("/proc/" + pid, ec)))
            continue;
#endif
        if (fs::remove(item.path(), ec)) ++removed;
    }
    return removed;
}

bool ProfileService::writeFileAtomic(const std::string& path, std::string_view bytes, std::string* error) {
    fs::path target(path);
    fs::path temp = target;
    temp += ".tmp~";
#ifndef _WIN32
    temp += std::to_string(::getpid());
    int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        if (error) *error = "cannot create " + temp.string();
        return false;
    }
    struct stat st {};
    if (::stat(target.c_str(), &st) == 0) ::fchmod(fd, st.st_mode & 07777);
    const char* p = bytes.data();
    size_t left = bytes.size();
    bool ok = true;
    while (left > 0) {
        ssize_t n = ::write(fd, p, left);
        if (n < 0) {
            ok = false;
            break;
        }
        p += n;
        left -= static_cast<size_t>(n);
    }
    if (ok && ::fdatasync(fd) != 0) ok = false;
    if (::close(fd) != 0) ok = false;
    if (ok && ::rename(temp.c_str(), target.c_str()) != 0) ok = false;
    if (!ok) {
        ::unlink(temp.c_str());
        if (error) *error = "cannot write " + target.string();
    }
    return ok;
#else
    {
        std::ofstream out(temp, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.flush();
        if (!out) {
            std::error_code ec;
            fs::remove(temp, ec);
            if (error) *error = "cannot write " + temp.string();
            return false;
        }
    }
    std::error_code ec;
    fs::rename(temp, target, ec);
    if (ec) {
        fs::remove(temp, ec);
        if (error) *error = "cannot replace " + target.string();
        return false;
    }
    return true;
#endif
}

}  // namespace tav
