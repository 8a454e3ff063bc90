#pragma once
// The texts and small steps around a multi-column sort: the sort order as
// stored (`SO`, `Sort col Index`), the order being composed with Alt and
// Ctrl (`NS`), the sort description of the status line and the sort
// prompt, and the marks the header captions get for their place in the
// order.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "filelist/RowSink.h"

namespace tav {

// A `|` list of ColTypes to the numbers, in sequence; elements that are not
// whole numbers are dropped.
std::vector<int> ParseSortOrder(std::string_view text);
std::string JoinSortOrder(const std::vector<int>& order);

// Adds a column to `NS`; false (and no change) when `NS` holds it already
// or the ColType is negative.
bool AddToNewSortOrder(std::vector<int>& newOrder, int colType);

// The caption of a ColType's display column among the grid columns; the
// number as text when it has none.
std::string SortCaption(const std::vector<ListColumn>& columns, int colType);

// "Sort File List by: " and the captions of the order, each separated by a
// blank; the text of the sort prompt.
std::string SortDescription(const std::vector<ListColumn>& columns, const std::vector<int>& order);
// The status line after a sort: "Done: " and the description.
std::string SortDoneStatus(const std::vector<ListColumn>& columns, const std::vector<int>& order);
// What adding a column to `NS` shows: "New Sort Order now >>", the captions
// of `NS`, "<< - Use Alt_Ctrl to add another column and sort."
std::string NewSortOrderMessage(const std::vector<ListColumn>& columns, const std::vector<int>& newOrder);

// The marks of the header, one for each of the first positions in the
// order: a `|` list, or without `|`, each character a mark.
inline constexpr std::string_view kDefaultSortMarks = "\xC2\xB9|\xC2\xB2|\xC2\xB3|+";  // superscript 1 2 3, +
std::vector<std::string> ParseSortMarks(std::string_view setting);
// The mark of position `position` (from 0); beyond the list the last mark
// repeats. Empty when there are no marks.
std::string SortMarkFor(std::size_t position, const std::vector<std::string>& marks);
// A header caption: with the mark of its place when the ColType is in the
// order, else as it is.
std::string MarkedCaption(const std::string& caption, int colType, const std::vector<int>& order,
                          const std::vector<std::string>& marks);

}  // namespace tav
