#pragma once
// The free space of a disk as text: "more than 2GB" from 2147155968 bytes
// up, below that the count of kilobytes in the mask `#,###,##0K`.
#include <cstdint>
#include <filesystem>
#include <string>

namespace tav {

inline constexpr std::uint64_t kFreeSpaceTextLimit = 2147155968;
inline constexpr const char* kMoreThan2GB = "more than 2GB";
inline constexpr const char* kFreeSpaceMask = "#,###,##0K";

std::string freeSpaceTextForBytes(std::uint64_t freeBytes);

// The free space available to this user on the disk that holds `path` (or
// its nearest existing parent). Empty, with `error` set, if it cannot be had.
std::string FreeSpaceText(const std::filesystem::path& path, std::string* error = nullptr);

}  // namespace tav
