#include "viewer/RawConversion.h"

#include <algorithm>

namespace tav {

namespace {

bool allBlank(std::string_view s) {
    return std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 33; });
}

bool isBreak(char c) { return c == '\r' || c == '\n'; }

}  // namespace

std::string removeBlankLines(std::string_view text) { return removeBlankLines(text, {}, {}, false); }

std::string removeBlankLines(std::string_view text, std::string_view before, std::string_view after,
                             bool afterIsEnd) {
    // The part of a line that lies before the block: known when a break, or
    // nothing at all, stands before it.
    const bool startsLine = before.empty() || isBreak(before.back());
    const size_t headBreak = before.find_last_of("\r\n");
    const std::string_view head =
        startsLine ? std::string_view{} : before.substr(headBreak == std::string_view::npos ? 0 : headBreak + 1);
    const bool headKnown = startsLine || headBreak != std::string_view::npos || before.size() < kBlankLineContext;

    std::string out;
    out.reserve(text.size());
    size_t pos = 0;
    while (pos < text.size()) {
        const size_t brk = text.find_first_of("\r\n", pos);
        const bool first = pos == 0;
        bool blank;
        size_t next;
        if (brk == std::string_view::npos) {
            // The line goes on behind the block: look at its rest.
            next = text.size();
            const size_t tailBreak = after.find_first_of("\r\n");
            const bool tailKnown = tailBreak != std::string_view::npos || afterIsEnd;
            blank = tailKnown && allBlank(text.substr(pos)) && allBlank(after.substr(0, tailBreak)) &&
                    (!first || (headKnown && allBlank(head)));
        } else {
            next = brk + 1;
            if (text[brk] == '\r' && next < text.size() && text[next] == '\n') ++next;
            blank = allBlank(text.substr(pos, brk - pos)) && (!first || (headKnown && allBlank(head)));
        }
        if (!blank) out.append(text.substr(pos, next - pos));
        pos = next;
    }
    return out;
}

std::string convertRawBlock(std::string_view bytes, bool removeBlank) {
    std::string out = removeBlank ? removeBlankLines(bytes) : std::string(bytes);
    for (char& c : out)
        if (c == '\0' || c == '\t') c = '\x01';
    return out;
}

}  // namespace tav
