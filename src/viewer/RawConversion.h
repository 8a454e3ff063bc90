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

std::string convertRawBlock(std::string_view bytes, bool removeBlank);

}  // namespace tav
