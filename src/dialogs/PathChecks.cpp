#include "dialogs/PathChecks.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

#include "core/Utf8.h"
#include "dialogs/FsPath.h"
#include "dialogs/NameChars.h"
#include "dialogs/PathSplit.h"

namespace tav {

namespace fs = std::filesystem;

namespace {

constexpr const char* kDirPrefix = "Error In Directory name: ";
constexpr const char* kFilePrefix = "Error In File Name: ";

#ifdef _WIN32
constexpr const char* kDirFormatText = "Dir name must be of format x:\\name where x is drive letter.";
constexpr const char* kDoubleSepText = " \"\\\\\" with directory name not allowed. Change to \"\\\".";
constexpr const char* kDirInvalidText =
    "Directory name is not in a valid format. Enter directory name in format x:\\maindir\\subdir\\ where x is a "
    "valid drive letter.";
constexpr const char* kPafnInvalidText =
    "Path and file name is not in a valid format. Enter path and file name in format "
    "x:\\maindir\\subdir\\filename.type where x is a valid drive letter.";
#else
constexpr const char* kDirFormatText = "Dir name must be of format /name where / is the root directory.";
constexpr const char* kDoubleSepText = " \"//\" with directory name not allowed. Change to \"/\".";
constexpr const char* kDirInvalidText =
    "Directory name is not in a valid format. Enter directory name in format /maindir/subdir/ starting at the "
    "root directory.";
constexpr const char* kPafnInvalidText =
    "Path and file name is not in a valid format. Enter path and file name in format "
    "/maindir/subdir/filename.type starting at the root directory.";
#endif

std::string lines(std::initializer_list<std::string_view> parts) {
    std::string out;
    for (auto p : parts) {
        if (!out.empty()) out += '\r';
        out += p;
    }
    return out;
}

NameCheck fail(NameCheck check, std::string_view prefix, std::string text) {
    check.ok = false;
    check.message = std::string(prefix) + text;
    return check;
}

bool oldRules(const NameRules& r) { return r.shortNames || r.oldCharset; }

// What the file system says about a name.
struct Probe {
    fs::file_type type = fs::file_type::not_found;
    std::error_code error;  // set for failures other than "not there"
};

Probe probe(std::string_view name) {
    Probe p;
    std::error_code ec;
    fs::file_status st = fs::status(toFsPath(name), ec);
    if (ec && ec != std::errc::no_such_file_or_directory && ec != std::errc::not_a_directory) {
        p.error = ec;
        return p;
    }
    p.type = ec ? fs::file_type::not_found : st.type();
    if (p.type == fs::file_type::none) p.type = fs::file_type::not_found;
    return p;
}

bool isDeviceError(const std::error_code& ec) {
#ifdef _WIN32
    // ERROR_NOT_READY, ERROR_GEN_FAILURE and ERROR_NO_MEDIA_IN_DRIVE.
    if (ec.category() == std::system_category())
        return ec.value() == 21 || ec.value() == 31 || ec.value() == 1112;
#endif
    if (ec.category() != std::generic_category() && ec.category() != std::system_category()) return false;
    switch (ec.value()) {
    case EIO:
    case ENXIO:
    case ENODEV:
#ifdef ENOMEDIUM
    case ENOMEDIUM:
#endif
        return true;
    default:
        return false;
    }
}

// The levels of a directory name, without its root and final separator.
std::vector<std::string> levelsOf(std::string_view dir) {
    std::vector<std::string> out;
    std::string_view rest = dir.substr(DriveOf(dir).size());
    size_t pos = 0;
    while (pos < rest.size()) {
        size_t next = rest.find(kDirSep, pos);
        if (next == std::string_view::npos) next = rest.size();
        out.emplace_back(rest.substr(pos, next - pos));
        pos = next + 1;
    }
    return out;
}

// The directory without its final separator, as the file system is asked.
std::string withoutFinalSep(const std::string& dir) {
    std::string root = DriveOf(dir);
    if (dir.size() > root.size() && dir.back() == kDirSep) return dir.substr(0, dir.size() - 1);
    return dir;
}

}  // namespace

NameCheck CheckDirName(std::string_view name, bool mustExist, std::string_view message, const NameRules& rules) {
    NameCheck check;
    check.name = withFinalSep(name);
    const std::string& dir = check.name;

    if (message == kSkipChecks) {
        check.exists = !name.empty() && probe(withoutFinalSep(dir)).type == fs::file_type::directory;
        return check;
    }
    if (name.empty() || !isDriveLetterPath(dir))
        return fail(check, kDirPrefix, lines({kDirFormatText, "Action aborted."}));
#ifdef _WIN32
    {
        std::error_code ec;
        if (!fs::is_directory(toFsPath(DriveOf(dir)), ec))
            return fail(check, kDirPrefix, lines({"Invalid drive letter.", "Action aborted."}));
    }
#endif
    if (dir.find(std::string(2, kDirSep)) != std::string::npos)
        return fail(check, kDirPrefix, lines({kDoubleSepText, "Action aborted."}));

    const std::vector<std::string> levels = levelsOf(dir);
    std::string bad;
    for (const auto& level : levels) {
        std::string b = badNameChars(level, rules.oldCharset);
        if (!b.empty()) bad += (bad.empty() ? "" : " ") + b;
    }
    if (!bad.empty())
        return fail(check, kDirPrefix,
                    "Invalid directory name. Includes character(s) " + bad +
                        " which are not allowed in a filename. Enter a file name in format xxxxxxxx.xxx ");

    // The root and the empty part behind the final separator count as parts.
    if (rules.shortNames && levels.size() + 2 >= 12)
        return fail(check, kDirPrefix,
                    lines({"Invalid directory name. This version of " + rules.appName +
                               " is written for older versions of Windows which only allow at most nine "
                               "subdirectory levels.",
                           "Reduce number of subdirectory levels and try again."}));
    if (oldRules(rules)) {
        for (const auto& level : levels) {
            if (level.find(' ') != std::string::npos)
                return fail(check, kDirPrefix,
                            "Invalid directory name. Includes spaces which are not allowed in a filename. Enter a "
                            "file name in format xxxxxxxx.xxx ");
            if (utf8Length(BaseOf(level)) > 8 || utf8Length(TypeOf(level)) > 3)
                return fail(check, kDirPrefix,
                            lines({"Invalid subdirectory name: " + level,
                                   " Subdirectory name must by in 8.3 format (xxxx.yyy where xxxx cannot be longer "
                                   "than 8 characters, yyy cannot be longer than 3 characters)."}));
        }
    }

    Probe p = probe(withoutFinalSep(dir));
    if (p.error)
        return fail(check, kDirPrefix,
                    isDeviceError(p.error) ? "Disk not ready. Insert disk and make sure that drive door is closed."
                                           : kDirInvalidText);
    if (p.type != fs::file_type::not_found && p.type != fs::file_type::directory)
        return fail(check, kDirPrefix, "Invalid directory name. Name is used as a file name.");
    check.exists = p.type == fs::file_type::directory;
    if (mustExist && !check.exists) return fail(check, kDirPrefix, "Dir does not exist.");
    return check;
}

NameCheck CheckDirExists(std::string_view name, std::string_view message, const NameRules& rules) {
    return CheckDirName(name, true, message, rules);
}

NameCheck CheckFileName(std::string_view name, bool forbidExisting, std::string_view message,
                        const NameRules& rules) {
    NameCheck check;
    check.name = std::string(name);
    if (message == kSkipChecks) {
        Probe p = probe(name);
        check.exists = !name.empty() && p.type != fs::file_type::not_found && p.type != fs::file_type::directory;
        return check;
    }
    const std::string file = FileOf(name);
    const std::string base = BaseOf(file);
    const std::string type = TypeOf(file);

    if (std::string bad = badNameChars(base, rules.oldCharset); !bad.empty())
        return fail(check, kFilePrefix,
                    "Invalid File name. Includes character(s) " + bad +
                        " which are not allowed in a filename. Enter a file name in format xxxxxxxx.xxx ");
    if (oldRules(rules)) {
        if (utf8Length(base) > 8)
            return fail(check, kFilePrefix, "Invalid Filename. Max 8 characters allowed before the \".\".");
        if (base.empty())
            return fail(check, kFilePrefix, "Invalid Filename. At least 1 character required before the \".\".");
    }
    if (std::string bad = badNameChars(type, rules.oldCharset); !bad.empty())
        return fail(check, kFilePrefix,
                    "Invalid File type.  Includes character(s) " + bad +
                        " which are not allowed in a filename. Enter a file name in format xxxxxxxx.xxx ");
    if (oldRules(rules) && utf8Length(type) > 3)
        return fail(check, kFilePrefix, "Invalid Filename. Max 3 characters allowed after the \".\".");

    Probe p = probe(name);
    if (p.error) return fail(check, kFilePrefix, kPafnInvalidText);
    check.exists = p.type != fs::file_type::not_found && p.type != fs::file_type::directory;
    if (forbidExisting && check.exists)
        return fail(check, kFilePrefix, "File already exists. Enter a new file name.");
    return check;
}

NameCheck CheckPafnValid(std::string_view pafn, bool forbidExisting, std::string_view message,
                         const NameRules& rules) {
    if (message == kSkipChecks) return CheckFileName(pafn, false, message, rules);
    NameCheck check;
    check.name = std::string(pafn);
    if (pafn.empty() || pafn.back() == kDirSep)
        return fail(check, "", lines({"Must include file name after dir spec.", "Action aborted."}));

    NameCheck dir = CheckDirName(DirOf(pafn), false, {}, rules);
    if (!dir.ok) {
        dir.name = check.name;
        dir.exists = false;
        return dir;
    }
    if (probe(pafn).type == fs::file_type::directory)
        return fail(check, "", "That file name currently exists as a directory. Action aborted.");
    if (!dir.exists) return fail(check, "", "Directory does not exist.");
    return CheckFileName(pafn, forbidExisting, {}, rules);
}

NameCheck CheckFileExists(std::string_view pafn, std::string_view message, const NameRules& rules) {
    NameCheck check = CheckPafnValid(pafn, false, message, rules);
    if (check.ok && !check.exists && message != kSkipChecks)
        return fail(check, kFilePrefix, "File does not exist.");
    return check;
}

}  // namespace tav
