#pragma once
// The profile service under the INI store: reads and writes single entries of
// INI files with the platform profile rules (names match case-insensitively,
// a value read back loses surrounding double quotes and trailing blanks, a
// write that would make a file too large fails with result false).
//
// Parsed files are cached; a cached file is checked against the disk at most
// every few milliseconds and read again only when it changed. Every write
// replaces the file atomically (temporary file, flush, rename), so a crash
// leaves the old file or the new one, never a damaged one.
//
// Thread-safe: one mutex guards the cache.
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "settings/ProfileFile.h"

namespace tav {

class ProfileService {
public:
    static constexpr size_t kDefaultMaxFileSize = 65535;

    // The largest file a write may produce, in bytes.
    void setMaxFileSize(size_t bytes) { maxFileSize_ = bytes; }
    size_t maxFileSize() const { return maxFileSize_; }

    // The value of an entry, or nullopt when the file, section or entry is missing.
    std::optional<std::string> read(const std::string& path, std::string_view section, std::string_view entry);
    bool hasSection(const std::string& path, std::string_view section);
    std::vector<std::string> sectionNames(const std::string& path);
    std::vector<std::string> entryNames(const std::string& path, std::string_view section);

    // Each returns false where the platform call returned zero.
    // After a failed write, lastWriteTooLarge() tells whether the size limit refused it.
    bool write(const std::string& path, std::string_view section, std::string_view entry, std::string_view value);
    bool eraseEntry(const std::string& path, std::string_view section, std::string_view entry);
    bool eraseSection(const std::string& path, std::string_view section);
    bool flush(const std::string& path);

    // The whole parsed file (empty when missing), and its replacement.
    ProfileFile snapshot(const std::string& path);
    bool replace(const std::string& path, const ProfileFile& file);
    // The file's size on disk, or nullopt when it cannot be known.
    static std::optional<std::uintmax_t> fileSize(const std::string& path);

    bool lastWriteTooLarge() const { return lastTooLarge_; }

    // Changes made between beginBatch and endBatch reach each file in one
    // atomic replacement at the end, so that a value written as several
    // entries is never seen half written. Batches nest. endBatch returns
    // false when a file could not be written (its cache then holds the disk).
    void beginBatch();
    bool endBatch();

    // Forgets the cached copy, so that the next read goes to the disk.
    void invalidate(const std::string& path);
    void invalidateAll();

    // Removes the temporary files that a process killed in the middle of a
    // write left in `dir`; returns how many went.
    static int removeStaleTemporaries(const std::string& dir);

    // Replaces a file's bytes atomically; false with *error on failure.
    static bool writeFileAtomic(const std::string& path, std::string_view bytes, std::string* error = nullptr);

private:
    struct Cached {
        ProfileFile file;
        bool exists = false;
        std::filesystem::file_time_type mtime{};
        std::uintmax_t size = 0;
        std::chrono::steady_clock::time_point checked{};
        bool dirty = false;  // changed in a batch, not yet written
    };
    bool writeOut(const std::string& path, Cached& cached);

    Cached& load(const std::string& path);  // with the mutex held
    template <typename Change>
    bool modify(const std::string& path, Change change);

    std::mutex mutex_;
    std::unordered_map<std::string, std::unique_ptr<Cached>> cache_;
    size_t maxFileSize_ = kDefaultMaxFileSize;
    bool lastTooLarge_ = false;  // written under the mutex by the last modify
    int batchDepth_ = 0;
};

}  // namespace tav
