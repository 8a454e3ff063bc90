#pragma once
// The text block cache: some 30000 characters of one source, shared by all
// text views of the program. Blocks of at most 10000 bytes are read at a
// byte number and merged: a block that ends where the cache starts goes in
// front, one that starts where it ends goes behind, anything else replaces
// the cache. Once the text is 30002 characters long it no longer grows but
// slides, dropping from the far end as much as each new block adds.
//
// Every character has a stable position (`pos`) that does not change when
// the cache slides, so a view can hold on to its place across reads.
// Positions map to byte numbers exactly at block starts; within a block
// whose text was shortened by conversion they run short by the bytes removed.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"
#include "viewer/BlockSource.h"

namespace tav {

inline constexpr size_t kCacheSlideLength = 30002;

class TextBlockCache {
public:
    enum class Merge { Front, Back, Replaced, Failed };
    struct BlockResult {
        int64_t nextByte = -1;  // byte behind the block read, -1 on failure
        Merge merge = Merge::Failed;
        int64_t length = -1;    // length of the source seen by the read, -1 if unknown
    };

    // Reads at most one block at startByte and merges it. A read ahead of
    // the cache stops where the cache starts. On failure the message goes to
    // `host` (none: not shown) and the cache is left as it was.
    BlockResult readTextBlock(const BlockSource& source, int64_t startByte, MessageHost* host);

    // Empties the cache and points it at `file` (start = end = 1).
    void reset(const std::string& file);

    const std::string& file() const { return file_; }
    const std::string& text() const { return text_; }
    int64_t startByte() const { return start_; }  // byte of the first character
    int64_t endByte() const { return end_; }      // byte behind the last byte read
    // Bumped whenever positions held elsewhere become meaningless (new file, replaced text).
    uint64_t generation() const { return generation_; }

    // Stable positions: [basePos(), endPos()) are held.
    int64_t basePos() const { return base_; }
    int64_t endPos() const { return base_ + static_cast<int64_t>(text_.size()); }
    std::string_view textFrom(int64_t pos) const;

    int64_t byteAtPos(int64_t pos) const;  // byte number of the character at pos (endPos(): endByte())
    int64_t posOfByte(int64_t byte) const; // position of the character at byte, clamped into the cache
    bool holdsByte(int64_t byte) const { return !text_.empty() && byte >= start_ && byte < end_; }

private:
    struct Anchor {
        int64_t pos;   // stable position of a block's first character
        int64_t byte;  // its byte number
    };
    void dropFront(size_t count);
    void dropBack(size_t count);

    std::string file_;
    std::string text_;
    int64_t start_ = 1;
    int64_t end_ = 1;
    int64_t base_ = 0;
    uint64_t generation_ = 0;
    std::vector<Anchor> anchors_;  // ascending; anchors_[0].pos == base_ when text is held
};

}  // namespace tav
