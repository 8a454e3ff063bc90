#pragma once
// The characters a file or directory name may hold.
//
// Windows refuses the double quote, "*", "/", ":", "<", ">", "?", "\" and
// "|" (and NUL); other systems refuse "/" and NUL. The old character set
// (the oldest Windows, kept as a mode) allows only
// ! # $ % & ' ( ) - . 0-9 @ A-Z ^ _ ` a-z { } ~.
#include <string>
#include <string_view>

namespace tav {

bool isAllowedNameChar(char32_t cp, bool oldCharset);

// The characters of a name part that are not allowed, each once, in order,
// separated by blanks; control characters show as "chr(n)". Empty when all
// are allowed.
std::string badNameChars(std::string_view part, bool oldCharset);

}  // namespace tav
