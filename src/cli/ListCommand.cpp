// tavelo list: makes a file list and prints it, a header line of the shown
// columns' captions and one line a row, tab-separated or CSV. A list that
// needs no sort is printed while it is made.
#include <ostream>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/ListOptions.h"
#include "cli/ListRowPrinter.h"
#include "cli/ListStreamSink.h"
#include "filelist/JobContext.h"
#include "filelist/ListJob.h"
#include "filelist/RowTable.h"

namespace tav::cli {

namespace {

int usage(const CommandContext& ctx, const std::string& problem) {
    ctx.err << "tavelo list: " << problem << "\n"
            << "usage: tavelo list [--data DIR] [options] ENTRY...\n"
            << kListOptionsUsage;
    return 2;
}

std::string parseArgs(const std::vector<std::string>& args, ListArgs& a) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string problem;
        if (!takeListOption(args, i, a, problem)) return "unknown option " + args[i];
        if (!problem.empty()) return problem;
    }
    if (a.entries.empty()) return "no directory given";
    return {};
}

}  // namespace

int runList(const CommandContext& ctx) {
    ListArgs a;
    std::string problem = parseArgs(ctx.args, a);
    if (!problem.empty()) return usage(ctx, problem);
    ListRun run;
    problem = prepareListRun(ctx, a, false, {}, run);
    if (run.sessionFailed) return 2;
    if (!problem.empty()) return usage(ctx, problem);

    JobContext job;
    if (listCanStream(a, run.sortTypes)) {
        ListRowPrinter printer(ctx.out, a.csv ? ListStyle::Csv : ListStyle::Tabs);
        ListStreamSink sink(printer, static_cast<std::size_t>(a.limit));
        FindAndListFiles(run.spec, job, sink);
        printListEnd(ctx, sink.errors(), sink.totals(), a, "list");
        return 0;
    }
    RowTable table;
    setUpTable(a, table);
    FindAndListFiles(run.spec, job, table);
    printListTable(ctx, table, a, run.sortTypes, "list");
    return 0;
}

}  // namespace tav::cli
