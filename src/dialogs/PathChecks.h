#pragma once
// The checks every typed name and every target of a file operation passes
// before anything is done on disk. They never raise: they give ok or not,
// the reason as text ready for a box (lines joined with CR), and whether the
// name exists.
//
// The message argument "Skip checks" turns a check off: it then only fills
// `exists` and passes, so callers use it to test for existence.
#include <string>
#include <string_view>

namespace tav {

inline constexpr std::string_view kSkipChecks = "Skip checks";

struct NameRules {
    bool shortNames = false;   // names cut to 8.3, at most nine directory levels
    bool oldCharset = false;   // the oldest Windows: its small character set, and the 8.3 rules
    std::string appName = "Tavelo";
};

struct NameCheck {
    bool ok = true;
    std::string message;  // the reason, when not ok
    bool exists = false;
    std::string name;     // the name checked (a directory with its final separator)
};

// The directory rules. The name gets a final separator. mustExist: a
// directory that is not there fails with "Dir does not exist.".
NameCheck CheckDirName(std::string_view name, bool mustExist = false, std::string_view message = {},
                       const NameRules& rules = {});
NameCheck CheckDirExists(std::string_view name, std::string_view message = {}, const NameRules& rules = {});

// The rules for the name part of a file name (a full name or a bare one).
// forbidExisting: an existing file fails.
NameCheck CheckFileName(std::string_view name, bool forbidExisting = false, std::string_view message = {},
                        const NameRules& rules = {});

// Directory plus file: the directory must exist and the name may not be a
// directory.
NameCheck CheckPafnValid(std::string_view pafn, bool forbidExisting = false, std::string_view message = {},
                         const NameRules& rules = {});
NameCheck CheckFileExists(std::string_view pafn, std::string_view message = {}, const NameRules& rules = {});

}  // namespace tav
