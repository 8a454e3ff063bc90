#pragma once
// The lists of last searches: criteria records (`Last Values on find`) and
// file find records (`Last Values for find file cont`), each stored as one
// "|" list with "{}" groups. These are the list operations; where the text
// is kept is the caller's business.
#include <string>
#include <string_view>
#include <vector>

namespace tav {

// The line that divides the criteria of open windows from the stored list.
inline constexpr std::string_view kLastSearchDivider = "-------------------------------------------------------";

std::vector<std::string> parseLastSearches(std::string_view stored);
std::string buildLastSearches(const std::vector<std::string>& entries);

// Puts `entry` at the head, removing an equal entry further down first.
void addLastSearch(std::vector<std::string>& entries, const std::string& entry);

// What the dialog lists: the records of the open windows (empty ones
// skipped), the divider, then the stored entries.
std::vector<std::string> lastSearchesForDialog(const std::vector<std::string>& openWindows,
                                               const std::vector<std::string>& stored);

}  // namespace tav
