#pragma once
// The text between two values: finds the start text, then the end text
// behind it, and gives what lies between, walking 10,000-byte blocks.
// Serves the SpanCols columns, which cut such texts out of files.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "find/ByteSource.h"

namespace tav {

struct TextBetweenRequest {
    std::string startText;        // empty: start at firstByte
    std::string endText;          // empty: run to the end
    int64_t firstByte = 1;
    bool matchCase = false;
    int64_t maxLength = 0;        // longest result kept (0: no limit); longer sets `truncated`
    int timeLimitTenths = 1;      // the walk is abandoned after this (0: no limit)
    std::function<bool()> stopRequested;  // tested between blocks
};

struct TextBetweenResult {
    bool startFound = false;
    int64_t startByte = 0;        // first byte of the start text
    int64_t endByte = 0;          // first byte of the end text; 0 when it was not found
    std::string text;             // the bytes between
    bool truncated = false;
    bool timedOut = false;        // abandoned: no result
    bool interrupted = false;
    std::string error;
};

TextBetweenResult textBetween(ByteSource& source, const TextBetweenRequest& request);
TextBetweenResult textBetweenInFile(const std::string& path, const TextBetweenRequest& request);
// Over pieces of text held in memory, from `offset` in piece `firstPiece`,
// as if they were one text; the stop test runs every 100 pieces.
TextBetweenResult textBetweenInPieces(const std::vector<std::string>& pieces, size_t firstPiece, size_t offset,
                                      const TextBetweenRequest& request);

}  // namespace tav
