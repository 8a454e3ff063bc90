#pragma once
// Fast search for one value in a byte buffer, forward or backward, with or
// without case.
//
// Case rule (compare mode 1): ASCII letters match either case; so do the
// Latin-1 letters U+00C0..U+00DE / U+00E0..U+00FE (not the signs x and /),
// both as single bytes (0xC0..0xFE, files in Latin-1 or Windows-1252) and
// as their UTF-8 pairs C3 80..C3 9E / C3 A0..C3 BE. Every such pair of
// letters differs in the bit 0x20 of one byte, so a value compiles to bytes
// plus a mask of bits to ignore, and a match keeps byte positions and
// lengths unchanged. A UTF-8 value matches UTF-8 bytes only: "e acute"
// typed as text is not the single byte 0xE9.
//
// The scan looks for the value's two rarest positions together (32 or 16
// bytes a step), then verifies the rest.
#include <cstddef>
#include <string>
#include <string_view>

namespace tav {

class ValueSearcher {
public:
    static constexpr size_t npos = static_cast<size_t>(-1);

    ValueSearcher() = default;
    ValueSearcher(std::string_view value, bool ignoreCase);

    const std::string& value() const { return value_; }
    size_t size() const { return value_.size(); }
    bool empty() const { return value_.empty(); }
    bool ignoreCase() const { return ignoreCase_; }

    // Index of the first occurrence that starts at or after `from` and lies
    // wholly inside data[0, size); npos if none.
    size_t findForward(const char* data, size_t size, size_t from = 0) const;
    // Index of the last occurrence that ends at or before `limit`, that is
    // lies wholly inside data[0, limit); npos if none.
    size_t findBackward(const char* data, size_t limit) const;
    // True if the value stands at p (p must have size() bytes).
    bool matchesAt(const char* p) const;
    // Convenience for text held in strings.
    size_t find(std::string_view text, size_t from = 0) const {
        return findForward(text.data(), text.size(), from);
    }
    bool startsWith(std::string_view text) const {
        return text.size() >= size() && matchesAt(text.data());
    }

private:
    std::string value_;
    std::string ored_;   // value bytes with the ignored bits set
    std::string masks_;  // per byte: 0x20 where case is ignored, else 0
    bool ignoreCase_ = false;
    bool anyMask_ = false;
    size_t rare1_ = 0, rare2_ = 0;  // the two positions the scan filters on
};

// True when a equals b under the compare mode.
bool textEquals(std::string_view a, std::string_view b, bool ignoreCase);

}  // namespace tav
