#pragma once
// Free file names made by counting a name up in the alphabet 0-9, a-z.
#include <string>

namespace tav {

// The path itself when no file of that name exists; otherwise the base name
// is filled with "0" or cut to eight characters and counted up from its last
// character ("9" -> "a", "z" wraps to "0" and carries) until a free name is
// found; the type is kept. Returns "" and sets *error when every name is used.
std::string uniqueFileName(const std::string& path, std::string* error = nullptr);

}  // namespace tav
