#pragma once
// `FindAndListFiles`: the list maker as a job. It walks each entry of the
// list spec, makes one row per file or directory, reads each file once for
// all content columns, and sends the rows to a sink in walk order. With a
// file test (Find Files Containing Text) only the items that pass it get
// rows, with the Found columns the test fills; the search reads the file in
// the same pass as the content columns.
#include <cstdint>
#include <string>
#include <vector>

#include "content/ContentExtractor.h"
#include "filelist/ColumnLayout.h"
#include "filelist/FileTest.h"
#include "filelist/JobContext.h"
#include "filelist/ListContentReader.h"
#include "filelist/RowSink.h"
#include "filelist/WalkDirectory.h"

namespace tav {

// Everything a run needs, built before it starts and not changed by it.
struct ListJobSpec {
    std::string listSpec;              // `.9`
    std::string defaultType = "*";     // `.b` `Last FileType`
    bool subdirsByDefault = false;     // menu state `LD` `Sub Dirs`
    // The saved pairing is crossed, and kept so: the value saved as
    // `Include system` decides on hidden items, the one saved as
    // `Include Hidden` on system items.
    bool includeSystemEntry = false;   // `.d`: hidden items are listed
    bool includeHiddenEntry = false;   // `.e`: system items are listed
    bool listDirs = true;              // `.f` `List Dirs`
    bool lowerCaseNames = false;       // `Change FileList NAMES to LOWERCASE`
    ColumnLayout layout;               // from SetUpListColumns
    ContentSpec content;               // columns are filled in from the layout by the job
    DirectoryLister lister;            // empty: the file system
    // Threads that read files for content columns; 1: the job's own thread.
    // Rows leave in walk order either way.
    int contentThreads = 1;
    // The test every item goes through; null: every item is listed. Held
    // by the caller for the run.
    FileTest* fileTest = nullptr;
};

// True if the run got to its end; false if it was stopped or there was
// nothing to list (no entries).
bool FindAndListFiles(const ListJobSpec& spec, JobContext& job, RowSink& sink);

}  // namespace tav
