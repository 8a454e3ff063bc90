#pragma once
// How the view's area breaks text into display lines. The text view asks
// it where each line of a text ends and how many lines fit; the widget that
// shows the text supplies one that wraps exactly as it paints. Wrapping must
// depend only on the text from a line's start, so that any display line
// start can serve as the start of a measure.
#include <cstddef>
#include <string_view>

namespace tav {

class LineMeasure {
public:
    virtual ~LineMeasure() = default;
    // Number of whole lines that fit the area (at least 1).
    virtual int visibleLines() const = 0;
    // Bytes taken by the display line at the start of `text`: its characters
    // and its line break (CR LF, CR or LF), if the line ends in one. A line
    // that runs to the end of `text` returns text.size().
    virtual size_t lineLength(std::string_view text) const = 0;
    // A bound on the bytes of one display line without a break, used as room
    // for wrap when measuring backwards from a place with no line break.
    virtual size_t maxLineBytes() const = 0;
};

// Fixed-width cells: every character one column, a valid UTF-8 sequence one
// character, any other byte one character. Lines wrap at `columns`, at the
// last blank when `wordWrap` is on and the line holds one.
class FixedWidthMeasure : public LineMeasure {
public:
    FixedWidthMeasure(int columns, int lines, bool wordWrap = false)
        : columns_(columns < 1 ? 1 : columns), lines_(lines < 1 ? 1 : lines), wordWrap_(wordWrap) {}
    int visibleLines() const override { return lines_; }
    size_t lineLength(std::string_view text) const override;
    size_t maxLineBytes() const override { return static_cast<size_t>(columns_) * 4 + 2; }
    int columns() const { return columns_; }

private:
    int columns_;
    int lines_;
    bool wordWrap_;
};

// Length of the character (UTF-8 sequence or single byte) at the start of text.
size_t displayCharLength(std::string_view text);

}  // namespace tav
