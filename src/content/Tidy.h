#pragma once
// The tidy step applied to every text cell: line ends joined, indentation of
// lines dropped, runs of blank lines shortened, leading control characters
// skipped, and the text cut to a length in characters.
#include <cstddef>
#include <string>
#include <string_view>

namespace tav {

// The line end that Tidy puts between lines.
inline constexpr std::string_view kTidyLineEnd = "\r\n";

// maxLength 0: no limit. maxBlankLines: blank lines kept in a row.
// joinLineEnds: CR LF, lone CR and lone LF all count as line ends; when off
// the text keeps its line ends and only the leading skip and the cut apply.
std::string Tidy(std::string_view text, std::size_t maxLength, int maxBlankLines, bool joinLineEnds);
// The same into `out` (which must not hold `text`), reusing its memory.
void Tidy(std::string_view text, std::size_t maxLength, int maxBlankLines, bool joinLineEnds, std::string& out);

// The file list's form: one blank line at most, line ends joined.
inline std::string tidyCell(std::string_view text, std::size_t maxLength) {
    return Tidy(text, maxLength, 1, true);
}

}  // namespace tav
