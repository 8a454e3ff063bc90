// Reads per second of a plain entry and of a split entry from a 40 KB INI file.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "settings/IniStore.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

int main() {
    fs::path dir = fs::temp_directory_path() / ("tavelo-bench-ini-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    std::string file = (dir / "bench.ini").string();

    tav::ProfileService service;
    tav::IniStore ini(service);
    ini.missingDefault = ini.missingMode = tav::kMissingNotFound;
    // About 40 KB: 20 sections of 20 entries, and one split value.
    for (int s = 0; s < 20; ++s)
        for (int e = 0; e < 20; ++e)
            ini.put("Section " + std::to_string(s), "Entry number " + std::to_string(e),
                    "value " + std::string(60, 'a' + (s + e) % 26), file);
    ini.put("Section 5", "Long", std::string(12000, 'L'), file);
    std::printf("file size: %ju bytes\n", static_cast<uintmax_t>(fs::file_size(file)));

    auto measure = [&](const char* what, const char* section, const char* entry) {
        const int n = 2'000'000;
        size_t sink = 0;
        auto t0 = Clock::now();
        for (int i = 0; i < n; ++i) sink += ini.get(section, entry, file).size();
        double s = std::chrono::duration<double>(Clock::now() - t0).count();
        std::printf("%-14s %10.0f reads/s  (%.1f ns a read, %zu)\n", what, n / s, 1e9 * s / n, sink % 7);
        return n / s;
    };
    double plain = measure("plain entry", "Section 12", "Entry number 13");
    measure("split entry", "Section 5", "Long");
    std::printf("target: 1,000,000 plain reads/s; ratio %.2f\n", plain / 1e6);
    fs::remove_all(dir);
    return 0;
}
