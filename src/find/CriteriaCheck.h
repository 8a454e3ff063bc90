#pragma once
// Judges one raw hit against the prepared criteria, on the bytes around it.
// The nine tests run in a fixed order and the first that rejects ends the
// check: whole word, exclude line start, exclude values, exclude same line,
// exclude range, include line start, include same line, include range,
// simple exclude. Word character ranges and line breaks are judged on
// byte values, so with UTF-8 text a range over 128-255 makes every byte of
// a non-ASCII letter a word character.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "find/ByteSource.h"
#include "find/PreparedCriteria.h"

namespace tav {

// The bytes the tests read around a hit.
struct HitContext {
    std::string before;            // bytes ahead of the hit
    std::string value;             // the hit as it stands in the source
    std::string after;             // bytes behind it
    int64_t lineStartIndex = -1;   // 1-based index in `before` of the line's first byte; -1 when not found
};

// Reads the context of the hit at `byteNumber` (1-based) of `value.size()`
// bytes, going back to the source for whatever it needs.
HitContext gatherHitContext(const PreparedCriteria& c, ByteSource& source, int64_t byteNumber,
                            std::string_view value);

// The line around the hit, at most the restrict distance either side, cut
// behind its first carriage return or line feed.
std::string gatherLine(const PreparedCriteria& c, const HitContext& h);

// The reject text when a test rejects the hit; nothing when it is a find.
std::optional<std::string> checkCriteria(const PreparedCriteria& c, ByteSource& source, int64_t byteNumber,
                                         std::string_view value);
std::optional<std::string> checkCriteria(const PreparedCriteria& c, const HitContext& h);

// The alignment test: does the hit, with the bytes around it, spell the
// exclusion `exclude` at any place where the exclusion holds the value?
std::optional<std::string> alignmentReject(const HitContext& h, std::string_view exclude, bool ignoreCase);

}  // namespace tav
