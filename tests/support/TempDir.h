#pragma once
// A temporary directory for one test, removed with everything in it.
#include <filesystem>
#include <string>

namespace tavtest {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string str() const { return path_.string(); }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    // Writes bytes to a file below the directory, making its directories.
    std::filesystem::path write(const std::string& relative, const std::string& bytes) const;
    std::string read(const std::string& relative) const;

private:
    std::filesystem::path path_;
};

std::string readFile(const std::filesystem::path& p);

}  // namespace tavtest
