#pragma once
// Plain string cuts of path names, and the shapes that tell full paths from
// relative ones. A directory name ends in the separator. Full paths start at
// a drive root ("C:\") on Windows and at "/" elsewhere.
#include <string>
#include <string_view>

namespace tav {

#ifdef _WIN32
inline constexpr char kDirSep = '\\';
#else
inline constexpr char kDirSep = '/';
#endif

// The name with a final separator.
std::string withFinalSep(std::string_view name);

// The root of a full path ("C:\", "/"); empty for a relative name.
std::string DriveOf(std::string_view pafn);
// Up to and with the last separator; empty when there is none.
std::string DirOf(std::string_view pafn);
// Behind the last separator.
std::string FileOf(std::string_view pafn);
// The file part before its last "."; all of it when it has none.
std::string BaseOf(std::string_view pafn);
// The file part behind its last ".", without the "."; empty when none.
std::string TypeOf(std::string_view pafn);
// The directory above a directory (with or without its final separator),
// with a final separator; empty for a root or a name without one.
std::string ParentDirOf(std::string_view dir);

// "[a-z,A-Z]:\*" on Windows; "/*" elsewhere.
bool isDriveLetterPath(std::string_view name);
// "?:\*" on Windows; "/*" elsewhere.
bool isAnyDrivePath(std::string_view name);
// "*:\*" on Windows; "/*" elsewhere: the name is a full path.
bool hasDrivePattern(std::string_view name);
// ".\*" and "..\*" (with the platform's separator).
bool isDotRelative(std::string_view name);
bool isDotDotRelative(std::string_view name);

// ".\x" and "..\x" (repeatable: "..\..\x") made full from the current
// directory; "." and ".." alone give the directory itself and its parent.
// Other names come back unchanged. Climbing stops at the root.
std::string ExpandRelative(std::string_view name, std::string_view current);

// A name that is not a full path, placed in the main data directory.
std::string DataPafn(std::string_view name, std::string_view mainDataDir);

}  // namespace tav
