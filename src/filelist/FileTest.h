#pragma once
// A test that a list run puts each item through before it gets a row: for
// Find Files Containing Text, the name, size and date test and the search
// of the file's bytes. The list maker does not know how the test decides.
// It asks first on the directory entry alone, then, for a file that passes
// and when the test reads content, hands the test the file to read and a
// feed for the content columns, so that one read serves the search and the
// columns together.
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "filelist/WalkDirectory.h"

namespace tav {

// The texts of the three Found columns of a row.
struct FoundCells {
    std::string value;       // `Found Value`
    std::string byteNumber;  // `Fnd At Byte No`
    std::string text;        // `Found Text`
};

struct FileVerdict {
    bool keep = true;                 // false: the file gets no row
    FoundCells found;
    std::string error;                // the file could not be searched (it gets no row)
    bool stopped = false;             // a stop came during the search
    std::vector<std::string> notes;   // what the test keeps of this file, given back in walk order
};

// Takes the bytes of a file in order from its first byte; false when no
// more are wanted.
using ContentFeed = std::function<bool(std::string_view bytes)>;

class FileTest {
public:
    virtual ~FileTest() = default;

    // On the job's thread, for every item the walk reports (directories
    // too), from the directory entry alone. False: no row.
    virtual bool passesEntry(const FoundItem& item) = 0;

    // True when the files that pass the entry test are read by testContent.
    virtual bool testsContent() const = 0;

    // True when the entry test reads creation times.
    virtual bool needsBirthTimes() const { return false; }

    // Reads and judges one file. Every byte it reads, in order from the
    // first, goes to `feed` (when set) until the feed says false or the file
    // ends; the test reads on for the feed when its own search ends early.
    // `stop` is tested between pieces. May run on a reader thread, several
    // files at a time: it must keep to its arguments and its own locks.
    virtual FileVerdict testContent(const std::string& path, std::int64_t size, const ContentFeed& feed,
                                    const std::function<bool()>& stop) const = 0;

    // On the job's thread, in walk order, for each file testContent judged,
    // before its row is made. False stops the run after this file.
    virtual bool settle(const FoundItem& item, FileVerdict& verdict) {
        (void)item;
        (void)verdict;
        return true;
    }
};

}  // namespace tav
