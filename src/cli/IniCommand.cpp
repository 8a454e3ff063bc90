// tavelo ini get|put|erase: the INI store from the command line.
#include <iostream>
#include <iterator>
#include <sstream>

#include "cli/Commands.h"
#include "cli/EngineSession.h"
#include "core/AppError.h"
#include "core/ListText.h"

namespace tav::cli {

namespace {
constexpr const char* kUsage =
    "usage: tavelo ini get [--mode N] FILE SECTION ENTRY\n"
    "       tavelo ini put FILE SECTION ENTRY VALUE     (VALUE - reads standard input)\n"
    "       tavelo ini erase FILE SECTION [ENTRY]\n"
    "FILE is a path, a name in the data directory, or ::* to choose the file by section.\n";

bool isFullPath(const std::string& spec) {
#ifdef _WIN32
    return spec.find(":\\") != std::string::npos || spec.rfind("\\\\", 0) == 0;
#else
    return !spec.empty() && spec.front() == '/';
#endif
}

int usage(const CommandContext& ctx, const std::string& problem) {
    ctx.err << "tavelo ini: " << problem << "\n" << kUsage;
    return 2;
}
}  // namespace

int runIni(const CommandContext& ctx) {
    std::vector<std::string> args = ctx.args;
    if (args.empty()) return usage(ctx, "missing operation");
    const std::string op = args.front();
    args.erase(args.begin());

    int mode = kMissingEmpty;
    if (op == "get" && args.size() >= 2 && args[0] == "--mode") {
        const std::string& m = args[1];
        if (m.size() != 1 || m[0] < '0' || m[0] > '4') return usage(ctx, "--mode takes 0 to 4");
        mode = m[0] - '0';
        args.erase(args.begin(), args.begin() + 2);
    }

    size_t want = op == "get" ? 3 : op == "put" ? 4 : op == "erase" ? 2 : 0;
    if (want == 0) return usage(ctx, "unknown operation '" + op + "'");
    if (args.size() < want || args.size() > (op == "erase" ? 3u : want)) return usage(ctx, "wrong number of arguments");

    std::string file = args[0];
    const std::string& section = args[1];

    EngineSession session(ctx.err);
    IniStore& ini = session.ini();
    ini.missingDefault = kMissingEmpty;
    if (!isFullPath(file) || !ctx.dataDir.empty()) {
        if (!session.open(ctx.dataDir)) return 2;
    }

    try {
        if (op == "get") {
            const std::string& entry = args[2];
            std::string probe = file;
            bool missing = ini.mode(kMissingNotFound).get(section, entry, probe) == kNotFoundText;
            if (missing) {
                if (mode == kMissingNotFound) ctx.out << kNotFoundText << "\n";
                else if (mode == kMissingPrompt) ini.mode(kMissingPrompt).get(section, entry, file);
                else if (mode == kMissingRaise) ctx.err << "tavelo ini: entry missing (error 1001)\n";
                return 1;
            }
            ctx.out << ini.mode(mode).get(section, entry, file) << "\n";
            return 0;
        }
        if (op == "put") {
            std::string value = args[3];
            if (value == "-") value.assign(std::istreambuf_iterator<char>(ctx.in), std::istreambuf_iterator<char>());
            ini.put(section, args[2], value, file);
            return ini.writeFailed ? 2 : 0;
        }
        if (args.size() == 3) ini.eraseEntry(section, args[2], file);
        else ini.eraseSection(section, file);
        return ini.writeFailed ? 2 : 0;
    } catch (const AppError& e) {
        ctx.err << "tavelo ini: " << e.what() << " (error " << e.number() << ")\n";
        return e.number() == 1001 ? 1 : 2;
    }
}

}  // namespace tav::cli
