#pragma once
// One text view on a source of any size: which part shows, how it moves,
// and what is selected. The view never holds the file: it works on the
// shared text block cache, and asks a LineMeasure, supplied by the widget
// that paints it, where display lines break and how many fit.
//
// Positions shown to callers are byte numbers from 1. The selection is held
// as two byte numbers, so it survives every refill of the cache; a widget
// paints the part of it that falls on the screen lines.
//
// A widget uses it this way: its LineMeasure wraps with the widget's font
// and width (displayText() gives the characters it paints for a line's
// bytes); it paints screen() after every move, selectedPart() of each line
// highlighted; its scroll bar runs from 0 to 10002, takes scrollBarValue()
// after each move without firing, and passes user moves to scrollBarMoved();
// PgUp/PgDn/Up/Down at the screen's edge, Ctrl+Home and Ctrl+End call the
// moves below, with `extend` while Shift is held.
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/MessageRequest.h"
#include "viewer/BlockSource.h"
#include "viewer/LineMeasure.h"
#include "viewer/TextBlockCache.h"

namespace tav {

// Values of the scroll bar that spans the whole source in 10000 steps.
inline constexpr int kBarPageUp = 0;
inline constexpr int kBarLineUp = 1;
inline constexpr int kBarFirst = 2;
inline constexpr int kBarLast = 10000;
inline constexpr int kBarLineDown = 10001;
inline constexpr int kBarPageDown = 10002;

struct ViewSettings {
    bool warnMemoryProblem = true;        // `WNG Memory PRB`: show the overflow message
    bool warnReposWithSelection = true;   // `Wng when repos n have sel`
};

struct ScreenLine {
    int64_t firstByte = 1;  // byte number of the line's first character
    int64_t endByte = 1;    // byte number behind its last character (line break included)
    std::string text;       // the characters, line break removed
};

// A selection between byte positions: anchor is where it started, caret
// where it ends now. Positions run from 1 to length + 1; equal means none.
struct ByteSelection {
    int64_t anchor = 0;
    int64_t caret = 0;
    bool empty() const { return anchor == caret; }
    int64_t first() const { return anchor < caret ? anchor : caret; }
    int64_t behind() const { return anchor < caret ? caret : anchor; }
};

class TextView {
public:
    TextView(TextBlockCache& cache, const LineMeasure& measure, MessageHost& host, ViewSettings settings = {});

    // Shows a source with `startByte` in the top line. False when it could not
    // be read (the reader's message has been shown); the view is then empty.
    bool show(std::shared_ptr<const BlockSource> source, int64_t startByte = 1);
    // Shows a short text that does not move (the empty-file notice); `length`
    // is what the view reports as the file's length. The last selection goes.
    // A longer text held in memory, such as a grid cell, goes through show()
    // with a MemoryTextSource.
    void showFixedText(const std::string& text, int64_t length);

    // Jump so that `byte` is on screen, its display line on top; at the end
    // of the source the screen is filled from above.
    bool repositionText(int64_t byte);
    // Reads behind the screen until it is full or the source ends. False on
    // a failed read or an overflow.
    bool fillForward();
    // When the source ends on a screen that is not full, adds lines ahead
    // of it so that the last line sits at the bottom.
    void fillBackward();
    // Moves the top up by `lines` display lines, reading ahead of the cache
    // as needed.
    void scrollLinesUp(int lines);
    void scrollLinesDown(int lines);

    void pageDown(bool extend = false);
    void pageUp(bool extend = false);
    void lineDown(bool extend = false);
    void lineUp(bool extend = false);
    void toEnd(bool extend = false);    // Ctrl+End
    void toStart(bool extend = false);  // Ctrl+Home

    // A move of the bar: 0 page up, 1 line up, 2 to 10000 absolute,
    // 10001 line down, 10002 page down. False when the user kept the
    // selection by cancelling the warning (the bar goes back).
    bool scrollBarMoved(int value);
    // The bar's value for what shows now.
    int scrollBarValue() const;

    int64_t fileLength() const { return length_; }
    const std::string& sourceName() const { return name_; }
    // What the view reads from; null before the first show.
    const BlockSource* source() const { return source_.get(); }
    bool showsFixedText() const { return fixed_; }
    int64_t topByte() const { return topByte_; }
    int64_t screenEndByte() const;
    std::vector<ScreenLine> screen() const;
    bool wholeFileShown() const;
    bool atEnd() const;  // the source's last byte is on screen
    bool overflowed() const { return overflowed_; }

    const ByteSelection& selection() const { return selection_; }
    void setSelection(int64_t anchor, int64_t caret);
    void clearSelection() { selection_ = {}; }
    // The selected part of a screen line, as [from, to) offsets into its
    // text; from == to when none of it is selected.
    std::pair<size_t, size_t> selectedPart(const ScreenLine& line) const;

private:
    struct Lines {
        std::vector<int64_t> starts;  // cache positions of line starts, all below the text's end
        bool lastComplete = false;    // the last line ended in a break or a wrap before the text's end
    };
    Lines lineStarts(int64_t from, size_t maxLines) const;
    bool sourceEndHeld() const;
    bool syncTop();
    // Puts a fixed text in the cache (again, after another view used it).
    void holdFixedText(const std::string& text, int64_t length);
    bool readAt(int64_t byte);
    bool readBackward();
    void setTop(int64_t pos);
    void alignTop();
    void reportOverflow();
    bool movable() const;
    void extendTo(bool extend, int64_t byte);

    TextBlockCache& cache_;
    const LineMeasure& measure_;
    MessageHost& host_;
    ViewSettings settings_;

    std::shared_ptr<const BlockSource> source_;
    std::string name_;
    bool fixed_ = false;      // a fixed text: nothing moves
    int64_t length_ = 0;      // the source's length in bytes
    int64_t top_ = 0;         // cache position of the top line's first character
    int64_t topByte_ = 1;     // its byte number, kept to find the place again
    uint64_t generation_ = 0; // cache generation that top_ belongs to
    bool overflowed_ = false;
    ByteSelection selection_;
};

}  // namespace tav
