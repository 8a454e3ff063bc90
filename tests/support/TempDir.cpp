#include "support/TempDir.h"

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace tavtest {

TempDir::TempDir() {
    std::random_device rd;
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::path p = fs::temp_directory_path() / ("tavelo-test-" + std::to_string(rd()));
        std::error_code ec;
        if (fs::create_directory(p, ec)) {
            path_ = p;
            return;
        }
    }
    throw std::runtime_error("cannot make a temporary directory");
}

TempDir::~TempDir() {
    std::error_code ec;
    fs::remove_all(path_, ec);
}

fs::path TempDir::write(const std::string& relative, const std::string& bytes) const {
    fs::path p = path_ / relative;
    fs::create_directories(p.parent_path());
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out << bytes;
    return p;
}

std::string TempDir::read(const std::string& relative) const { return readFile(path_ / relative); }

std::string readFile(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

}  // namespace tavtest
