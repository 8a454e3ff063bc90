#include <ostream>

#include "cli/Commands.h"

namespace tav::cli {

int runIni(const CommandContext& ctx) {
    ctx.err << "tavelo ini: not ready\n";
    return 2;
}

}  // namespace tav::cli
