#pragma once
// The plain text of a file as the dissection gathers it: the text outside
// tags, scripts, styles and comments, with the skip list applied. Only what
// the columns need is kept: the start, a rolling tail, or, for a text view,
// all of it.
#include <cstdint>
#include <string>
#include <string_view>

#include "content/SkipList.h"

namespace tav {

class PlainText {
public:
    // firstChars: length of FirstNBytesPlainText (0: not wanted); lastChars:
    // length of LastNBytesPlainText (0: not wanted); keepAll: the whole text.
    // maxTotal: beyond this many bytes nothing more is compiled.
    void configure(std::size_t firstChars, std::size_t lastChars, bool keepAll, std::int64_t maxTotal,
                   const SkipList* skip);
    bool wanted() const { return firstCap_ > 0 || tailCap_ > 0 || keepAll_; }

    void begin();
    // Part of the current run of text; runs are cut by tags.
    void append(std::string_view part);
    // A tag, script, style or comment ends the run.
    void endPiece();
    // The first section has ended: the start of the text is final.
    void freezeFirst() { firstFrozen_ = true; }
    bool stopped() const { return stopped_; }

    // FirstNBytesPlainText and LastNBytesPlainText cells.
    std::string firstCell() const;
    std::string lastCell() const;
    // All of the text (keepAll), as display text.
    std::string allText() const;

private:
    void take(std::string_view text);

    std::size_t firstChars_ = 0, lastChars_ = 0;
    std::size_t firstCap_ = 0, tailCap_ = 0;
    bool keepAll_ = false;
    std::int64_t maxTotal_ = 0;
    const SkipList* skip_ = nullptr;

    std::string first_, tail_, all_;
    std::string piece_;      // the current run, when the skip list needs whole runs
    std::string filtered_;
    int skipping_ = -1;
    std::int64_t total_ = 0;
    bool firstFrozen_ = false;
    bool stopped_ = false;
};

}  // namespace tav
