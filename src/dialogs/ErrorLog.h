#pragma once
// The error log: the file named by the ErrLog entry, or the fallback log
// when that is empty or cannot be written.
#include <string>
#include <string_view>
#include <vector>

namespace tav {

// C:\TavErr.LOG on Windows when C:\ is there; otherwise TavErr.LOG in the
// system's temporary directory.
std::string fallbackErrorLog();

// The note added to the report when the fallback log is used.
std::string fallbackLogNote(std::string_view fallbackPath);

// The log's name as the settings give it: "*** not found ***" means none.
std::string errorLogName(std::string_view setting);

// Appends the lines to the file, one line each; false when it cannot be
// opened or written. Never throws.
bool appendErrorLog(const std::string& path, const std::vector<std::string>& lines);

}  // namespace tav
