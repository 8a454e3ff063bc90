#pragma once
// Text of the cache as it is painted: valid UTF-8 sequences stand as they
// are, any other byte from 128 on is read as Windows-1252. With
// `markControls`, characters below 32 (the byte 1 that stands for 0 and tab
// among them) and 127 show as '.', as on a terminal.
#include <string>
#include <string_view>

namespace tav {

std::string displayText(std::string_view bytes, bool markControls);

// Bytes at the end of `bytes` that begin a UTF-8 sequence the bytes do not
// finish: a reader in pieces keeps them for the next piece.
size_t unfinishedUtf8Tail(std::string_view bytes);

}  // namespace tav
