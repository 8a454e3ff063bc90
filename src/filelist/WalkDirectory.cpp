#include "filelist/WalkDirectory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
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

struct DirId {
    dev_t dev;
    ino_t ino;
    bool operator<(const DirId& o) const { return dev != o.dev ? dev < o.dev : ino < o.ino; }
};

class Walker {
public:
    Walker(const WalkOptions& options, const WalkHooks& hooks) : options_(options), hooks_(hooks), types_(options.typeList) {}

    bool walk(const std::string& directory) {
        if (!enter(directory)) return true;
        std::vector<FoundItem> items;
        const bool read =
            hooks_.lister ? hooks_.lister(directory, items) : listDirectory(directory, items, options_.birthTimes);
        if (!read) return true;
        std::vector<std::string> subdirs;
        for (const FoundItem& item : items) {
            if (item.hidden && !options_.showHidden) continue;
            if (item.system && !options_.showSystem) continue;
            if (item.isDirectory) subdirs.push_back(item.path());
            if (!types_.passes(item.name)) continue;
            if (hooks_.found && !hooks_.found(item)) return false;
        }
        if (!options_.subdirs) return true;
        for (const std::string& sub : subdirs) {
            if (hooks_.stopRequested && hooks_.stopRequested()) return false;
            if (!walk(withSeparator(sub))) return false;
        }
        return true;
    }

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
    const int fd = ::dirfd(d);
    while (const dirent* e = ::readdir(d)) {
        const std::string name = e->d_name;
        if (name == "." || name == "..") continue;
        struct stat st {};
        if (::fstatat(fd, e->d_name, &st, AT_SYMLINK_NOFOLLOW) != 0) continue;  // gone meanwhile
        bool follow = false;
        if (S_ISLNK(st.st_mode)) {
            struct stat target {};
            if (::fstatat(fd, e->d_name, &target, 0) == 0) {
                st = target;
                follow = true;
            }
        }
        FoundItem item;
        item.directory = dir;
        item.name = name;
        item.isDirectory = S_ISDIR(st.st_mode);
        item.hidden = !name.empty() && name.front() == '.';
        item.system = !S_ISDIR(st.st_mode) && !S_ISREG(st.st_mode) && !S_ISLNK(st.st_mode);
        item.readOnly = (st.st_mode & S_IWUSR) == 0;
        item.size = item.isDirectory ? -1 : static_cast<std::int64_t>(st.st_size);
        item.modified = static_cast<std::int64_t>(st.st_mtime);
        item.accessed = static_cast<std::int64_t>(st.st_atime);
        item.created = birthTimes ? birthTime(fd, e->d_name, st, follow) : static_cast<std::int64_t>(st.st_ctime);
        items.push_back(std::move(item));
    }
    ::closedir(d);
    return true;
}

bool DirectoryWalk(const std::string& directory, const WalkOptions& options, const WalkHooks& hooks) {
    Walker walker(options, hooks);
    return walker.walk(withSeparator(directory));
}

}  // namespace tav
