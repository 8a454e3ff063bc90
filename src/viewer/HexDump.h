#pragma once
// The hex dump of bytes: lines of 16 bytes, each with the byte number of
// its first byte (from 1), the bytes in hex in two groups of eight, and the
// printable characters, others as '.'. So a special character in a text can
// be told apart.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"

namespace tav {

inline constexpr int kHexBytesPerLine = 16;
// The most bytes one dump shows; a larger file or selection shows its start.
inline constexpr int64_t kHexDumpLimit = 1 << 20;

std::vector<std::string> hexDumpLines(std::string_view bytes, int64_t firstByte);

// "Cell Contents|Hex Dump": the text and its dump, for the message host.
// The dump sits in a multi-line text box in the fixed font.
MessageRequest hexDumpRequest(std::string_view bytes, int64_t firstByte, const std::string& name);

// Reads `count` bytes (< 1: to the end, at most kHexDumpLimit) from
// `firstByte` and makes the request; an unreadable file gives the reader's
// message in `error` instead.
bool hexDumpOfFile(const std::string& path, int64_t firstByte, int64_t count, MessageRequest& request,
                   std::string& error);

}  // namespace tav
