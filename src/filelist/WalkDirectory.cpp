#include "filelist/WalkDirectory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <set>
#include <utility>

#include "filelist/ListSpec.h"

namespace tav {

namespace {

constexpr char kSep = static_cast<char>(std::filesystem::path::preferred_separator);

std::string withSeparator(std::string dir) {
    if (dir.empty()) dir = ".";
    if (dir.back() != kSep && dir.back() != '/') dir += kSep;
    return dir;
}

std::int64_t birthTime(int dirFd, const char* name, const struct stat& st, bool follow) {
#if defined(STATX_BTIME)
    struct statx sx {};
    if (::statx(dirFd, name, follow ? 0 : AT_SYMLINK_NOFOLLOW, STATX_BTIME, &sx) == 0 &&
        (sx.stx_mask & STATX_BTIME) != 0)
        return static_cast<std::int64_t>(sx.stx_btime.tv_sec);
#else
    (void)dirFd;
    (void)name;
    (void)follow;
#endif
    return static_cast<std::int64_t>(st.st_ctime);
}

// The items of an open directory, `dir` ending in a separator.
void readDirectory(DIR* d, const std::string& dir, std::vector<FoundItem>& items, bool birthTimes) {
    items.clear();
    const int fd = ::dirfd(d);
    while (const dirent* e = ::readdir(d)) {
        const char* name = e->d_name;
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) continue;
        struct stat st {};
        if (::fstatat(fd, name, &st, AT_SYMLINK_NOFOLLOW) != 0) continue;  // gone meanwhile
        bool follow = false;
        if (S_ISLNK(st.st_mode)) {
            struct stat target {};
            if (::fstatat(fd, name, &target, 0) == 0) {
                st = target;
                follow = true;
            }
        }
        FoundItem& item = items.emplace_back();
        item.directory = dir;
        item.name = name;
        item.isDirectory = S_ISDIR(st.st_mode);
        item.hidden = name[0] == '.';
        item.system = !S_ISDIR(st.st_mode) && !S_ISREG(st.st_mode) && !S_ISLNK(st.st_mode);
        item.readOnly = (st.st_mode & S_IWUSR) == 0;
        item.size = item.isDirectory ? -1 : static_cast<std::int64_t>(st.st_size);
        item.modified = static_cast<std::int64_t>(st.st_mtime);
        item.accessed = static_cast<std::int64_t>(st.st_atime);
        item.created = birthTimes ? birthTime(fd, name, st, follow) : static_cast<std::int64_t>(st.st_ctime);
    }
}

struct DirId {
    dev_t dev;
    ino_t ino;
    bool operator<(const DirId& o) const { return dev != o.dev ? dev < o.dev : ino < o.ino; }
};

class Walker {
public:
    Walker(const WalkOptions& options, const WalkHooks& hooks) : options_(options), hooks_(hooks), types_(options.typeList) {}

    bool walk(const std::string& directory) {
        if (hooks_.lister) return walkListed(directory);
        return walkOpen(directory, -1, nullptr, 0);
    }

private:
    // The items of one directory through the filters; their subdirectories
    // collected. False when the hook stops the walk.
    bool report(std::vector<FoundItem>& items, std::vector<const FoundItem*>& subdirs, int dirFd = -1) {
        for (FoundItem& item : items) {
            item.dirFd = dirFd;
            if (item.hidden && !options_.showHidden) continue;
            if (item.system && !options_.showSystem) continue;
            if (item.isDirectory) subdirs.push_back(&item);
            if (!types_.passes(item.name)) continue;
            if (hooks_.found && !hooks_.found(item)) return false;
        }
        return true;
    }

    // Through the caller's lister, by path.
    bool walkListed(const std::string& directory) {
        if (!enter(directory)) return true;
        std::vector<FoundItem> items;
        if (!hooks_.lister(directory, items)) return true;
        std::vector<const FoundItem*> subdirs;
        if (!report(items, subdirs)) return false;
        if (!options_.subdirs) return true;
        for (const FoundItem* sub : subdirs) {
            if (hooks_.stopRequested && hooks_.stopRequested()) return false;
            if (!walkListed(withSeparator(sub->path()))) return false;
        }
        return true;
    }

    // Through the file system: a subdirectory is opened relative to its
    // parent, which stays open while its subdirectories are walked, so the
    // kernel does not look up the whole path again for every directory.
    bool walkOpen(const std::string& directory, int parentFd, const char* name, int depth) {
        constexpr int kOpenFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
        int fd = parentFd >= 0 && name ? ::openat(parentFd, name, kOpenFlags) : -1;
        if (fd < 0) fd = ::open(directory.c_str(), kOpenFlags);
        if (fd < 0) return true;  // cannot be read: empty
        struct stat st {};
        if (::fstat(fd, &st) == 0 && !seen_.insert(DirId{st.st_dev, st.st_ino}).second) {
            ::close(fd);
            return true;
        }
        // Closed however the walk below ends, a user's stop unwinding through it included.
        std::unique_ptr<DIR, int (*)(DIR*)> open(::fdopendir(fd), &::closedir);
        if (!open) {
            ::close(fd);
            return true;
        }
        std::vector<FoundItem> items;
        readDirectory(open.get(), directory, items, options_.birthTimes);
        // Deep trees let go of their parents rather than run out of handles.
        if (depth >= kMaxOpenDepth) open.reset();
        DIR* d = open.get();
        std::vector<const FoundItem*> subdirs;
        bool goOn = report(items, subdirs, d ? ::dirfd(d) : -1);
        if (goOn && options_.subdirs) {
            for (const FoundItem* sub : subdirs) {
                if (hooks_.stopRequested && hooks_.stopRequested()) {
                    goOn = false;
                    break;
                }
                if (!walkOpen(withSeparator(sub->path()), d ? ::dirfd(d) : -1, sub->name.c_str(), depth + 1)) {
                    goOn = false;
                    break;
                }
            }
        }
        return goOn;
    }

    static constexpr int kMaxOpenDepth = 64;

private:
    // False for a directory already walked in this run.
    bool enter(const std::string& directory) {
        struct stat st {};
        if (::stat(directory.c_str(), &st) != 0) return true;  // the lister says what it can
        return seen_.insert(DirId{st.st_dev, st.st_ino}).second;
    }

    const WalkOptions& options_;
    const WalkHooks& hooks_;
    TypeFilter types_;
    std::set<DirId> seen_;
};

}  // namespace

bool listDirectory(const std::string& directory, std::vector<FoundItem>& items, bool birthTimes) {
    items.clear();
    const std::string dir = withSeparator(directory);
    DIR* d = ::opendir(dir.c_str());
    if (!d) return false;
    readDirectory(d, dir, items, birthTimes);
    ::closedir(d);
    return true;
}

bool DirectoryWalk(const std::string& directory, const WalkOptions& options, const WalkHooks& hooks) {
    Walker walker(options, hooks);
    return walker.walk(withSeparator(directory));
}

}  // namespace tav
