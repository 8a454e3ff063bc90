#include "cli/Cli.h"

#include <iostream>

#include "cli/Commands.h"

namespace tav::cli {

GlobalOptions parseGlobalOptions(const std::vector<std::string>& args) {
    GlobalOptions o;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (o.rest.empty() && a == "--version") {
            o.version = true;
        } else if (o.rest.empty() && a == "--data" && i + 1 < args.size()) {
            o.dataDir = args[++i];
        } else if (o.rest.empty() && a.rfind("--data=", 0) == 0) {
            o.dataDir = a.substr(7);
        } else {
            o.rest.push_back(a);
        }
    }
    return o;
}

bool isCommand(const GlobalOptions& options) {
    return !options.rest.empty() && findCommand(options.rest.front()) != nullptr;
}

int runCommand(const GlobalOptions& options, std::istream& in, std::ostream& out, std::ostream& err) {
    if (options.version) {
        out << "Tavelo " << TAVELO_VERSION << "\n";
        return 0;
    }
    const Command* command = findCommand(options.rest.front());
    if (!command) {
        err << "tavelo: unknown command '" << options.rest.front() << "'\n";
        return 2;
    }
    std::vector<std::string> args(options.rest.begin() + 1, options.rest.end());
    return command->run(CommandContext{options.dataDir, args, in, out, err});
}

}  // namespace tav::cli
