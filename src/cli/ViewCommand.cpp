#include <ostream>

#include "cli/Commands.h"

namespace tav::cli {

int runView(const CommandContext& ctx) {
    ctx.err << "tavelo view: not ready\n";
    return 2;
}

}  // namespace tav::cli
