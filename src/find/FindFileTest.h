#pragma once
// Find Files Containing Text over directories: the test the list maker puts
// each item through. An item gets a row only when it is a file that passes
// the name, size and date test of the file find record and, with a text to
// find, holds an accepted hit within the first maximum bytes; the row then
// carries the Found columns of the first hit. Hits rejected by the criteria
// go to the rejected list, under a heading for their file.
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "filelist/FileTest.h"
#include "find/FileFindRecord.h"
#include "find/FindCriteria.h"
#include "find/PreparedCriteria.h"
#include "find/RejectedList.h"
#include "find/SizeDateTest.h"

namespace tav {

// Bytes of found text either side of a hit, and the length the Found Text
// cell keeps of it.
inline constexpr int64_t kFoundTextContext = 100;
inline constexpr size_t kFoundTextLength = 200;

// The Found columns a directory search adds to its list, by the switches
// of the find options: `Found Value`, `Fnd At Byte No`, `Found Text`.
std::vector<int> foundColumnsFor(const FindOptions& options);

// The Found Text cell: the text around the hit, tidied and cut, a line end,
// and "[Bytes start to end]". Cells are display text: UTF-8, with bytes
// that are not read as Windows-1252; a character cut by an edge of the text
// is left out (and the range says so).
std::string foundTextCell(std::string_view text, int64_t start, int64_t end);

class FindFileTest : public FileTest {
public:
    // `today`: the day number that Today compares with.
    FindFileTest(const FindCriteria& criteria, const FileFindRecord& record, int64_t today);

    bool passesEntry(const FoundItem& item) override;
    bool testsContent() const override { return hasText_; }
    bool needsBirthTimes() const override { return sizeDate_.needsCreated(); }
    FileVerdict testContent(const std::string& path, std::int64_t size, const ContentFeed& feed,
                            const std::function<bool()>& stop) const override;
    bool settle(const FoundItem& item, FileVerdict& verdict) override;

    // At each file with a hit, in walk order, before its row (the popup of
    // a directory search); false ends the run after this file's row.
    std::function<bool(const FoundItem& item, const FileVerdict& verdict)> onHit;

    // The list of rejected hits; with "save detail of all" off it holds
    // those of the last file that had any.
    const RejectedList& rejected() const { return rejected_; }
    // The rejected list is showing: it is not cleared at a new file.
    void setRejectedShowing(bool on) { rejectedShowing_ = on; }
    int64_t filesFound() const { return filesFound_; }
    // The maximum bytes searched in each file; 0: the whole file.
    int64_t maxBytes() const { return maxBytes_; }

private:
    PreparedCriteria prepared_;
    bool hasText_ = false;
    int64_t maxBytes_ = 0;
    bool keepAllRejected_ = false;
    bool rejectedShowing_ = false;
    SizeDateTest sizeDate_;
    RejectedList rejected_;
    int64_t filesFound_ = 0;
};

}  // namespace tav
