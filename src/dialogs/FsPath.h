#pragma once
// File names are UTF-8 inside; these convert to and from the platform's
// path type without going through the local code page.
#include <filesystem>
#include <string>
#include <string_view>

namespace tav {

inline std::filesystem::path toFsPath(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

inline std::string fromFsPath(const std::filesystem::path& p) {
    std::u8string s = p.u8string();
    return std::string(s.begin(), s.end());
}

}  // namespace tav
