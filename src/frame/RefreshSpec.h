#pragma once
// What a refresh of a File List window needs, read from the window's state
// and the INI store on the UI thread before the job starts: the list spec,
// the column request and layout, the window's masks and reading options.
#include <string>
#include <vector>

#include "filelist/ColumnLayout.h"
#include "filelist/ListJob.h"

namespace tav {

class IniStore;
class WindowState;

// One element of `Last Col List`: a ColType number, or `UserCol/` and the
// name of a user column.
struct ColumnListItem {
    int colType = -1;      // standard ColType, or the run's number of a user column
    std::string userName;  // the name after `UserCol/`; empty for a standard column
};

inline constexpr std::string_view kUserColPrefix = "UserCol/";

// The window's column list with user columns defined in `Column Specs`.
// Names no longer defined are dropped and named in `problems` with the
// message of a bad column.
std::vector<ColumnListItem> readColumnList(const std::string& lastColList, IniStore& ini,
                                           std::vector<UserColumn>& userColumns,
                                           std::vector<std::string>* problems = nullptr);
// The stored form of a column list.
std::string columnListText(const std::vector<ColumnListItem>& items);

struct RefreshSpec {
    ListJobSpec job;
    std::vector<ColumnListItem> columnList;  // the display columns asked for, in order
    std::vector<std::string> problems;       // lines for the window's error list
    bool dirsToTop = false;
};

// "~/" at the start of a list entry stands for the user's home directory.
std::string expandHome(const std::string& entry);

// The refresh of a window as it stands. `searchActive` keeps the Found columns.
RefreshSpec makeRefreshSpec(const WindowState& window, IniStore& ini, bool searchActive = false);

}  // namespace tav
