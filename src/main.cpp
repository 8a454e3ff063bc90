// tavelo: with a command it runs headless; with none it starts the desktop program.
#include <iostream>
#include <string>
#include <vector>

#include "cli/Cli.h"
#ifndef TAVELO_NO_GUI
#include "ui/GuiMain.h"
#endif

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    auto options = tav::cli::parseGlobalOptions(args);
    if (options.version || tav::cli::isCommand(options))
        return tav::cli::runCommand(options, std::cin, std::cout, std::cerr);
#ifndef TAVELO_NO_GUI
    return tav::ui::runGui(argc, argv, options.dataDir);
#else
    std::cerr << "tavelo: built without the desktop program; give a command\n";
    return 2;
#endif
}
