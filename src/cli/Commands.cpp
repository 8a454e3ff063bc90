#include "cli/Commands.h"

namespace tav::cli {

namespace {
const Command kCommands[] = {
    {"ini", &runIni},
    {"view", &runView},
    {"list", &runList},
    {"find", &runFind},
};
}

const Command* findCommand(const std::string& name) {
    for (const Command& c : kCommands)
        if (name == c.name) return &c;
    return nullptr;
}

}  // namespace tav::cli
