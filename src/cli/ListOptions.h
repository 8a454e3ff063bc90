#pragma once
// What `tavelo list` and `tavelo find` share: the options that say what to
// list and how to show it, the setup of a list run from them, and the
// printing of the rows (a header line of the shown columns' captions, then
// one tab-separated line a row).
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/EngineSession.h"
#include "filelist/FormatWindowMasks.h"
#include "filelist/ListJob.h"
#include "filelist/RowTable.h"

namespace tav::cli {

// The option lines of the usage text.
extern const char* const kListOptionsUsage;

inline constexpr const char* kDefaultListColumns = "4|1|2|3|6|7|0";

struct ListArgs {
    std::string columns = kDefaultListColumns;
    std::string sort;
    bool subdirs = false;
    int dirs = -1;  // -1: the setting
    bool hidden = false, system = false;
    std::string type;
    WindowFormats formats;
    std::int64_t firstBytes = 200, lastBytes = 200, firstPlain = 200, lastPlain = 200;
    bool descending = false, caseSensitive = false, renumber = false, errors = false, dirsToTop = false;
    std::int64_t limit = 0;
    std::int64_t firstPart = 0;
    std::int64_t threads = 1;
    bool lower = false;
    bool csv = false;        // CSV lines, every field quoted, instead of tabs
    std::string separator;   // separator of the list columns (`.l`); empty: the default
    bool endTags = false;    // `Include html end tags` (`.s`)
    std::vector<std::string> entries;
};

// Takes args[i] when it is a list option or an entry (a word not starting
// with "-"), moving `i` past a value that follows. False when the word is
// not the list's; `problem` is set when it is, but badly used.
bool takeListOption(const std::vector<std::string>& args, std::size_t& i, ListArgs& a, std::string& problem);

// A directory named without its final separator gets one, so that it is
// listed rather than taken as a file name.
std::string entryText(const std::string& entry);

struct ListRun {
    std::unique_ptr<EngineSession> session;  // with --data
    ListJobSpec spec;
    std::vector<int> sortTypes;
    bool sessionFailed = false;  // the data directory could not be opened (said on stderr)
};

// The job spec from the arguments: columns (with `extraColTypes` added
// behind them when not asked for already), masks, what to list. A problem
// for the usage text, or empty.
std::string prepareListRun(const CommandContext& ctx, const ListArgs& a, bool searchActive,
                           const std::vector<int>& extraColTypes, ListRun& run);

// The table made from a run: RowTable with the arguments' row limit and
// directories at the top.
void setUpTable(const ListArgs& a, RowTable& table);

// Sorts and renumbers as asked, prints the rows, and on stderr the error
// list (with --errors) and the run's message behind "tavelo <command>:".
void printListTable(const CommandContext& ctx, RowTable& table, const ListArgs& a, const std::vector<int>& sortTypes,
                    const std::string& command);

// True when the rows can be printed as they come: no sort, no renumbering,
// no directories moved to the top.
bool listCanStream(const ListArgs& a, const std::vector<int>& sortTypes);

// The tail of a run on stderr: the error list (with --errors) and the run's
// message behind "tavelo <command>:".
void printListEnd(const CommandContext& ctx, const std::vector<FileErrorLine>& errors, const ListTotals& totals,
                  const ListArgs& a, const std::string& command);

}  // namespace tav::cli
