#pragma once
// The plain text of a file: the text outside markup, with comments, script,
// style and server blocks left out, character references decoded and the
// result tidied (one blank line at most in a row, line ends joined).
// Input is the file's bytes; output is UTF-8 (bytes that are not valid
// UTF-8 are read as Windows-1252).
#include <functional>
#include <string>
#include <string_view>

namespace tav {

// The text outside tags of an HTML-like text, pieces that met at a tag
// separated by one blank unless one side already has white space.
std::string stripMarkup(std::string_view text);

// Numeric (&#65;) and named (&amp;, &eacute;, ...) references; output UTF-8.
// A number outside 0 to 255 gives a blank; an unknown name gives ???name???.
std::string decodeEntities(std::string_view text);

// The tidy step of every text cell. maxLength 0: no limit (in characters).
std::string tidyText(std::string_view text, size_t maxLength, int maxBlankLines, bool joinLineEnds);

// The whole conversion, bytes in, display text out (bytes 0 and 9 as byte 1).
// `stopped`, when given, is asked between the steps: true ends the work with
// an empty text.
std::string plainTextOf(std::string_view bytes, const std::function<bool()>& stopped = {});

}  // namespace tav
