#pragma once
// Files with contents that tell where they are, for the viewer tests.
#include <cstdint>
#include <string>

namespace viewertest {

// Lines "L000001 ....\n" of `width` characters before the LF: byte number
// b lies on line (b - 1) / (width + 1) + 1.
inline std::string numberedLines(int count, int width = 30) {
    std::string s;
    s.reserve(static_cast<size_t>(count) * static_cast<size_t>(width + 1));
    for (int i = 1; i <= count; ++i) {
        std::string line = "L" + std::to_string(1000000 + i).substr(1) + " ";
        while (static_cast<int>(line.size()) < width) line += static_cast<char>('a' + (line.size() + static_cast<size_t>(i)) % 26);
        line.resize(static_cast<size_t>(width));
        s += line;
        s += '\n';
    }
    return s;
}

// Bytes without any line break (nor 0 or 9, which the view changes, nor
// UTF-8 lead bytes, so that every byte takes one column).
inline std::string binaryNoBreaks(size_t size, uint32_t seed = 7) {
    std::string s(size, 'x');
    uint32_t x = seed;
    for (char& c : s) {
        x = x * 1103515245u + 12345u;
        unsigned char b = static_cast<unsigned char>(x >> 16);
        if (b == '\n' || b == '\r' || b == 0 || b == 9) b = 'B';
        if (b >= 0xC2 && b <= 0xF4) b = 'C';
        c = static_cast<char>(b);
    }
    return s;
}

}  // namespace viewertest
