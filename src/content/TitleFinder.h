#pragma once
// The Title column: the text between <title and </title in the first
// section of a file, or failing that the page's description meta text.
// Fed chunk by chunk; a title cut by a chunk seam is found whole.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "content/StreamFinder.h"

namespace tav {

class TitleFinder {
public:
    TitleFinder();

    void begin();
    void feed(std::string_view chunk);
    // True once more bytes can no longer change the title.
    bool done() const { return state_ == State::Found; }
    // The title of what was fed: tidied and with references decoded.
    std::string result() const;

private:
    enum class State { SeekStart, SeekEnd, Found };
    enum class Desc { SeekStart, SeekEnd, Found };

    // Appends chunk[from, to) to a collected text, up to its cap.
    static void collect(std::string& into, std::string_view chunk, std::size_t from, std::size_t to);

    StreamFinder titleStart_, titleEnd_, descStart_, descEnd_;
    State state_ = State::SeekStart;
    Desc desc_ = Desc::SeekStart;
    std::int64_t pos_ = 0;          // stream offset of the next chunk
    std::int64_t titleFrom_ = 0;    // stream offset where the title text begins
    std::int64_t descFrom_ = 0;
    std::string title_, description_;
};

// The Title of one section given as chunks.
std::string GetTitle(std::span<const std::string_view> chunks);
std::string GetTitle(std::string_view section);

}  // namespace tav
