#pragma once
// `DirectoryWalk`: the files and directories of a directory in the order in
// which the file system gives them, then the contents of each subdirectory,
// depth first, in the same order. Nothing is sorted. A directory that cannot
// be read counts as empty. A directory reached a second time (through a
// symbolic link) is not entered again, so link loops end.
//
// On POSIX a name starting with "." is hidden; sockets, pipes and devices
// are system items; an item the owner may not write is read-only.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tav {

struct FoundItem {
    std::string directory;  // with a final separator
    std::string name;
    bool isDirectory = false;
    bool hidden = false;
    bool system = false;
    bool readOnly = false;
    std::int64_t size = -1;        // -1 for a directory or when not known
    std::int64_t modified = 0;     // POSIX seconds
    std::int64_t accessed = 0;
    std::int64_t created = 0;      // birth time where asked for and kept, else the change time
    // The open directory the item was found in, valid only while the walk's
    // `found` hook runs (a reader may duplicate it); -1 when there is none.
    int dirFd = -1;
    std::string path() const { return directory + name; }
};

struct WalkOptions {
    std::string typeList = "*";
    bool subdirs = false;
    bool showHidden = false;
    bool showSystem = false;
    bool birthTimes = false;  // look up creation times (one more call a file)
};

// Lists one directory: its items, with their data, in enumeration order.
// False when the directory cannot be read.
using DirectoryLister = std::function<bool(const std::string& directory, std::vector<FoundItem>& items)>;
bool listDirectory(const std::string& directory, std::vector<FoundItem>& items, bool birthTimes = false);

struct WalkHooks {
    // Each item that passes the filters; false stops the whole walk.
    std::function<bool(const FoundItem&)> found;
    // Tested before each subdirectory is entered; true stops the walk.
    std::function<bool()> stopRequested;
    DirectoryLister lister;  // empty: listDirectory
};

// False when the walk was stopped.
bool DirectoryWalk(const std::string& directory, const WalkOptions& options, const WalkHooks& hooks);

}  // namespace tav
