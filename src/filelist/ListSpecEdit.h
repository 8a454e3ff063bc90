#pragma once
// Editing a list spec: adding and removing entries, and the lines of the
// directory selection dialog, which shows one entry a line and works on a
// copy of the window's list spec.
//
// A line is split at its first " <": before it the path, from it on the
// type and subdirectory mark (" <*.htm+>"). A line whose path ends in a file
// name or pattern is a file specification; the Set functions leave those
// alone. Paths use '/'; a directory ends in '/'.
//
// The functions return the texts of their prompts (lines joined with CR) so
// that the dialog shows them through its message host and tests read them.
#include <string>
#include <string_view>
#include <vector>

namespace tav {

inline constexpr std::string_view kAddedToListSpec = "Added to list of dirs/files to read: ";
inline constexpr std::string_view kRemovedFromListSpec = "Removed from list of dirs/files to read: ";
inline constexpr std::string_view kDuplicateRemoved = "- duplicate removed.";

// The prompts of the selection dialog.
namespace selectprompt {
inline constexpr std::string_view kNoDirToAdd = "First Select Directory to add and then try again.";
inline constexpr std::string_view kNoFilesToAdd = "First Select Files to add and then try again.";
inline constexpr std::string_view kNoDirToAddWith = "First select directory then try again.";
inline constexpr std::string_view kNoTypeChosen = "First select type from list then try again.";
inline constexpr std::string_view kCouldNotDelete = "Error. Could not Delete.";
inline constexpr std::string_view kEmptyListOnOk =
    "Select a directory or press Cancel to lose all changes here and return.";
// Both lines of the Set buttons' prompt.
std::string nothingToChange();
// "Already exists ..." with the line and " not added.".
std::string alreadyExists(std::string_view line);
}  // namespace selectprompt

// The entries of a list spec; "" and "{}" have none. Blank entries are dropped.
std::vector<std::string> listSpecEntries(std::string_view spec);
// Each entry in "{ }", joined with "|"; no entries give "".
std::string listSpecText(const std::vector<std::string>& entries);
bool listSpecEmpty(std::string_view spec);
// True if the list spec holds the entry, case ignored (the entry right-trimmed).
bool listSpecHolds(std::string_view spec, std::string_view entry);

struct ListSpecChange {
    bool changed = false;
    std::string status;  // the status line: "Added to ..." or "Removed from ..." and the entry
    std::string prompt;  // what to tell the user when nothing changed; may be empty
};

// Right-trims the entry and inserts it in order, case ignored, before the
// first entry that sorts after it. An entry already held (case ignored) is
// refused with the "Already exists" prompt; a blank one is refused quietly.
ListSpecChange AddToListSpec(std::string& spec, std::string_view entry);
// Removes the entry (case ignored); refused quietly when it is not held.
ListSpecChange RemoveFromListSpec(std::string& spec, std::string_view entry);

// The tree in `Multi Dirs` mode: the directories the list spec lists (the paths
// of its directory entries, marked or not, each once, case ignored), and the
// removal of every directory entry of one directory.
std::vector<std::string> listSpecDirectories(std::string_view spec);
ListSpecChange RemoveDirectoryFromListSpec(std::string& spec, std::string_view directory);

// One line of the dialog, split at its first " <".
struct ListLine {
    std::string path;     // before the " <", right-trimmed
    std::string mark;     // " <...>" as written; empty when none
    std::string type;     // the type inside the mark, without the +/- sign
    bool hasSubdirsMark = false;
    bool subdirs = false;  // the sign of the mark, when it has one
};
ListLine splitListLine(std::string_view line);

// The last component of the path names a file or a pattern.
bool isFileSpecification(std::string_view line);
// Whether the Set functions may change the line: a directory line.
bool isSettableLine(std::string_view line);

// The line for a directory with a type and a subdirectory sign: "dir <type+>".
std::string lineWithMark(std::string_view path, std::string_view type, bool subdirs);
// The line with its type replaced; the sign kept, `subdirsWhenUnmarked` when it had none.
std::string lineWithType(std::string_view line, std::string_view type, bool subdirsWhenUnmarked);
// The line with its sign set; a line without a mark gets `typeWhenUnmarked`.
std::string lineWithSubdirs(std::string_view line, bool subdirs, std::string_view typeWhenUnmarked);

// The outcome of a dialog operation: a prompt to show (empty for none) and
// the status line of the last change.
struct LineEdit {
    std::string prompt;
    std::string status;
    bool changed = false;
};

// The lines of the dialog over its copy of the list spec. Lines replaced by
// "- duplicate removed." stay on show but are no part of the list spec; they go
// when the lines are next built from the list spec (after an add, remove or clear).
class ListSpecLines {
public:
    explicit ListSpecLines(std::string_view spec = {});

    void reset(std::string_view spec);
    const std::string& spec() const { return spec_; }
    const std::vector<std::string>& lines() const { return lines_; }
    bool empty() const { return listSpecEmpty(spec_); }

    // An entry as given (a directory, a file, or a marked directory).
    LineEdit add(std::string_view entry);
    // Each entry in turn; one prompt for each one refused, in order.
    std::vector<LineEdit> addAll(const std::vector<std::string>& entries);
    // The directory with the type and sign of the Set controls (fAddWith).
    LineEdit addWith(std::string_view directory, std::string_view type, bool subdirs);
    // Rows index lines(). Rows out of range are ignored.
    LineEdit remove(const std::vector<int>& rows);
    LineEdit setType(const std::vector<int>& rows, std::string_view type, bool subdirsWhenUnmarked);
    LineEdit setSubdirs(const std::vector<int>& rows, bool subdirs, std::string_view typeWhenUnmarked);
    void clear();

    // The check of OK: the prompt when the list is empty, else "".
    std::string okPrompt() const;

private:
    void rebuildLines();
    void rebuildSpec();
    // Applies `change` to each settable row; a result equal to another line
    // turns the row into "- duplicate removed.".
    template <typename Change>
    LineEdit setRows(const std::vector<int>& rows, std::string_view type, Change change);

    std::string spec_;
    std::vector<std::string> lines_;
};

}  // namespace tav
