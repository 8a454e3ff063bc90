#pragma once
// The table of headless commands. Each command lives in its own file and
// registers here by name.
#include <iosfwd>
#include <string>
#include <vector>

namespace tav::cli {

struct CommandContext {
    std::string dataDir;  // from --data; empty: located through Dir.ini
    std::vector<std::string> args;
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

struct Command {
    const char* name;
    int (*run)(const CommandContext&);
};

const Command* findCommand(const std::string& name);

int runIni(const CommandContext& ctx);
int runView(const CommandContext& ctx);
int runList(const CommandContext& ctx);
int runFind(const CommandContext& ctx);

}  // namespace tav::cli
