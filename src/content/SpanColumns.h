#pragma once
// SpanCols columns: user columns cut out of a file between a start text and
// an end text, ignoring case, once per section. A column with a restricting
// title text is filled only for files whose Title begins with that text.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "content/StreamFinder.h"

namespace tav {

struct SpanColumnDef {
    int colType = 0;              // the column's number, 27 and up
    std::string textFrom;         // `textfrom`
    std::string textTo;           // `textto`
    std::string inFileWithTitle;  // `infilewithtitle`; empty: every file
};

class SpanColumns {
public:
    // A cell with this many characters or more takes no more text.
    static constexpr std::size_t kFullCell = 255;
    // The text found in one section is kept up to this many bytes.
    static constexpr std::size_t kMaxFound = 1 << 16;

    void configure(const std::vector<SpanColumnDef>& defs);
    bool empty() const { return cols_.empty(); }
    std::size_t size() const { return cols_.size(); }
    const SpanColumnDef& def(std::size_t i) const { return cols_[i].def; }

    void beginFile();
    // A section begins at stream offset `base`; each column looks for one
    // occurrence in it.
    void beginSection(std::int64_t base);
    void feed(std::string_view chunk);
    // True while some column still searches in this section.
    bool searching() const;
    // `FillSpanCols`: at a section's end, appends the found texts to the
    // cells of the columns whose title test passes. `title` is the row's Title.
    void FillSpanCols(std::string_view title);

    const std::string& cell(std::size_t i) const { return cols_[i].cell; }

private:
    enum class State { SeekStart, SeekEnd, Found, Idle };
    struct Column {
        SpanColumnDef def;
        StreamFinder start, end;
        State state = State::Idle;
        std::int64_t textFrom = 0;   // stream offset of the found text
        std::string found;           // raw bytes between the two texts
        std::string cell;            // the cell so far (display text)
    };
    void feedColumn(Column& c, std::string_view chunk);

    std::vector<Column> cols_;
    std::int64_t pos_ = 0;
};

// Whether a column with restricting title text `inFileWithTitle` applies to
// a file with Title `title`.
bool titleAllowsSpanColumn(std::string_view inFileWithTitle, std::string_view title);

}  // namespace tav
