#pragma once
// Finds a text in a stream of chunks, ignoring case (ASCII letters) or not.
// A match cut by a chunk seam is found as if the stream were one piece: the
// finder keeps the last bytes of the previous chunk.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tav {

class StreamFinder {
public:
    static constexpr std::size_t npos = std::string_view::npos;

    void setPattern(std::string_view pattern, bool ignoreCase);
    const std::string& pattern() const { return pattern_; }
    // Forgets the bytes kept from earlier chunks.
    void reset() { carry_.clear(); }

    // The first match in `chunk` (which begins at stream offset `chunkBase`)
    // that starts at or after stream offset `minStart`; matches that begin in
    // the kept bytes of earlier chunks count. Returns the chunk index one past
    // the match's last byte, or npos. An empty pattern matches at minStart.
    std::size_t findEnd(std::string_view chunk, std::int64_t chunkBase, std::int64_t minStart) const;

    // Call once a chunk has been searched as far as it will be: keeps its tail.
    void keep(std::string_view chunk, std::int64_t chunkBase);

    // Plain search in one text, from index `from`; npos if absent.
    std::size_t findIn(std::string_view text, std::size_t from) const;

private:
    bool matchesAt(const char* p) const;

    std::string pattern_;   // lower case when ignoring case
    bool ignoreCase_ = false;
    std::size_t anchor_ = 0;          // index of the byte searched with memchr
    unsigned char anchorLower_ = 0;
    unsigned char anchorUpper_ = 0;
    std::string carry_;               // last pattern-1 bytes before the next chunk
    std::int64_t carryBase_ = 0;      // stream offset of carry_[0]
};

// ASCII lower case of one byte.
inline unsigned char asciiLower(unsigned char c) { return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c; }

}  // namespace tav
