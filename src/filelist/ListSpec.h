#pragma once
// The list spec of a File List window: a `|` list of `{ }` bracketed
// entries, each a directory, or a directory with a file name or pattern as
// its last component, optionally followed by ` <type+>` or ` <type->`:
//   {/home/me/site/}|{/home/me/site/ <*.htm+>}|{/tmp/*.txt}
// The type of an entry is a `|` list of patterns; one that holds `*` makes
// all of them wild card patterns, otherwise a name passes when it contains
// one of them. Case is ignored.
#include <string>
#include <string_view>
#include <vector>

namespace tav {

struct ListEntry {
    std::string text;       // the entry as written
    std::string directory;  // with a final separator; empty if none was given
    std::string type;       // the type list; the default type when none was given
    bool subdirs = false;
    bool namedFiles = false;  // the last component named files (a name or a pattern)
};

// An empty spec ("" or "{}") gives no entries. `defaultType` stands for an
// entry without a type; `defaultSubdirs` for one without a ` <...>` mark.
std::vector<ListEntry> parseListSpec(std::string_view spec, std::string_view defaultType, bool defaultSubdirs);
ListEntry parseListEntry(std::string_view entry, std::string_view defaultType, bool defaultSubdirs);

// The type test of one name.
class TypeFilter {
public:
    explicit TypeFilter(std::string_view typeList);
    // True for the type list `*`: every name passes.
    bool passesAll() const { return all_; }
    bool passes(std::string_view name) const;

private:
    std::vector<std::string> patterns_;  // lower case
    bool all_ = false;
    bool wild_ = false;
};

// Wild card comparison, case ignored: `*` any run, `?` one character, `#`
// one digit, `[abc]`, `[a-z]`, `[!abc]` one character of (or not of) a set.
bool wildMatch(std::string_view pattern, std::string_view name);

}  // namespace tav
