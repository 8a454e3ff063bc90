#pragma once
// What a block of raw bytes becomes before it enters the text cache: blank
// lines collapsed when `Show Raw remove blank` is on, and the bytes 0 and 9
// turned into byte 1 (a zero cannot be held by a text control, and a tab
// would break the width of a line). The result may be shorter than the
// block, never longer.
#include <string>
#include <string_view>

namespace tav {

// Drops each line that holds nothing but characters below code 33; the line
// breaks of the kept lines stay as they were. A last line without a break is
// kept, as it may go on in the next block.
std::string removeBlankLines(std::string_view text);

// Bytes of context on each side that are enough to judge a cut line.
inline constexpr size_t kBlankLineContext = 4096;

// The same for a block cut out of a file: `before` and `after` are bytes
// around it (up to kBlankLineContext; a cut line longer than that is kept), so that a line the block's edges
// cut in two is judged whole, and both of its halves go or stay together.
// `afterIsEnd`: the file ends behind `after`.
std::string removeBlankLines(std::string_view text, std::string_view before, std::string_view after,
                             bool afterIsEnd);

std::string convertRawBlock(std::string_view bytes, bool removeBlank);

}  // namespace tav
