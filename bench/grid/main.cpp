// The list grid under load, offscreen:
//
//   bench_grid [--files N] [--rows N] [--runs N] [--keep DIR]
//
// 1. Refresh: a synthetic tree of N files (default 100000, 500 a directory)
//    is listed by the refresh runner into the grid model with its view on
//    screen. Prints the rows per second that reach the model, and the
//    longest stall of the UI thread seen by a 10 ms timer meanwhile
//    (target: under 100 ms). The same list made by the engine alone into a
//    row table and `find -printf` over the same tree are timed in the same
//    rounds; the ratios are printed.
// 2. Sort: a list of N rows (default 1000000) sorted by two columns (Type,
//    then Size by its key) through the model with its view attached
//    (target: under 2 s), then back by FileName.
//
// The tree is made in a temporary directory and removed at the end unless
// --keep names a directory to use (made once, kept).
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "core/ListText.h"
#include "filelist/ColumnLayout.h"
#include "filelist/JobContext.h"
#include "filelist/KeySort.h"
#include "filelist/ListJob.h"
#include "filelist/RowTable.h"
#include "ui/ListGridModel.h"
#include "ui/ListGridView.h"
#include "ui/RefreshRunner.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

struct Settings {
    int files = 100000;
    int rows = 1000000;
    int runs = 3;
    fs::path keep;
};

double seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

double median(std::vector<double> v) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

std::string quote(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

// Files of a few sizes and types, 500 a directory; a file's first byte
// count varies so sizes differ.
void makeTree(const fs::path& root, int files) {
    static const char* const kTypes[] = {".txt", ".htm", ".cpp", ".h", ".md", ""};
    std::string bytes(4096, 'x');
    for (int i = 0; i < files; ++i) {
        const fs::path dir = root / ("dir" + std::to_string(i / 500));
        if (i % 500 == 0) fs::create_directories(dir);
        const fs::path file = dir / ("file" + std::to_string(i) + kTypes[i % 6]);
        const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (fd < 0) continue;
        const std::size_t n = static_cast<std::size_t>((i * 37) % 4096);
        if (n && ::write(fd, bytes.data(), n) < 0) std::perror("write");
        ::close(fd);
    }
}

tav::ListJobSpec specFor(const fs::path& dir) {
    tav::ColumnRequest request;
    request.colTypes = {tav::col::Number, tav::col::FileName, tav::col::Type, tav::col::Size,
                        tav::col::Date,   tav::col::Time,     tav::col::FilePath};
    tav::ListJobSpec spec;
    spec.layout = tav::SetUpListColumns(request, tav::factoryColumnSpecs(), tav::WindowFormats{});
    spec.listSpec = tav::joinList({dir.string() + "/"});
    spec.subdirsByDefault = true;
    return spec;
}

struct RefreshRun {
    double seconds = 0;
    int rows = 0;
    qint64 longestStall = 0;  // ms
    int batches = 0;
};

RefreshRun refreshIntoGrid(const fs::path& tree, tav::ui::ListGridModel& model) {
    tav::ui::RefreshRunner runner(&model);
    RefreshRun run;
    QEventLoop loop;
    QObject::connect(&runner, &tav::ui::RefreshRunner::finished, &loop, &QEventLoop::quit);
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, [&run] { ++run.batches; });
    QElapsedTimer clock;
    qint64 last = 0;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] {
        const qint64 now = clock.elapsed();
        run.longestStall = std::max(run.longestStall, now - last);
        last = now;
    });
    const auto start = Clock::now();
    clock.start();
    tick.start(10);
    runner.start(specFor(tree));
    loop.exec();
    run.seconds = seconds(start);
    const qint64 now = clock.elapsed();
    run.longestStall = std::max(run.longestStall, now - last);
    run.rows = model.rowCount();
    return run;
}

double engineOnly(const fs::path& tree) {
    tav::JobContext job;
    tav::RowTable table;
    const auto start = Clock::now();
    tav::FindAndListFiles(specFor(tree), job, table);
    return seconds(start);
}

double findPrintf(const fs::path& tree, const fs::path& out) {
    const std::string cmd =
        "find " + quote(tree.string()) + " -printf '%p\\t%s\\t%T@\\n' > " + quote(out.string()) + " 2>/dev/null";
    const auto start = Clock::now();
    const int rc = std::system(cmd.c_str());
    if (rc == -1 || !WIFEXITED(rc) || WEXITSTATUS(rc) != 0) return -1;
    return seconds(start);
}

// `rows` rows in the columns of a refresh: names, types and size keys
// drawn at random (fixed seed), the other cells plain.
void fillSynthetic(tav::ui::ListGridModel& model, const std::vector<tav::ListColumn>& columns, int rows) {
    static const char* const kTypes[] = {"txt", "htm", "cpp", "h", "md", "", "png", "PDF"};
    std::mt19937_64 random(20261123);
    model.beginList(columns);
    const tav::RowTable& t = model.table();
    const int name = t.columnOf(tav::col::FileName), type = t.columnOf(tav::col::Type);
    const int size = t.columnOf(tav::col::Size), sizeKey = t.keyColumnOf(tav::col::Size);
    std::vector<tav::Row> batch;
    batch.reserve(100000);
    char key[32];
    for (int i = 0; i < rows; ++i) {
        tav::Row r;
        r.cells.assign(columns.size(), std::string());
        const std::uint64_t n = random();
        r.cells[static_cast<std::size_t>(name)] = "file" + std::to_string(n % 1000003);
        r.cells[static_cast<std::size_t>(type)] = kTypes[(n >> 20) % 8];
        const long long bytes = static_cast<long long>((n >> 24) % 10000000);
        r.cells[static_cast<std::size_t>(size)] = std::to_string(bytes);
        if (sizeKey >= 0) {
            std::snprintf(key, sizeof key, "%015lld", bytes);
            r.cells[static_cast<std::size_t>(sizeKey)] = key;
        }
        batch.push_back(std::move(r));
        if (batch.size() == 100000) {
            model.appendRows(std::move(batch));
            batch.clear();
        }
    }
    model.appendRows(std::move(batch));
}

int usage() {
    std::fprintf(stderr, "usage: bench_grid [--files N] [--rows N] [--runs N] [--keep DIR]\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    Settings s;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        const char* v = i + 1 < argc ? argv[i + 1] : nullptr;
        if (a == "--files" && v) {
            s.files = std::atoi(argv[++i]);
        } else if (a == "--rows" && v) {
            s.rows = std::atoi(argv[++i]);
        } else if (a == "--runs" && v) {
            s.runs = std::max(1, std::atoi(argv[++i]));
        } else if (a == "--keep" && v) {
            s.keep = argv[++i];
        } else {
            return usage();
        }
    }
    if (s.files < 1 || s.rows < 2) return usage();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    // The tree.
    fs::path tree = s.keep;
    bool removeTree = false;
    std::error_code ec;
    if (tree.empty()) {
        char pattern[] = "/tmp/tavelo-bench-grid-XXXXXX";
        if (!::mkdtemp(pattern)) {
            std::perror("mkdtemp");
            return 1;
        }
        tree = pattern;
        removeTree = true;
    }
    if (!fs::exists(tree / "dir0", ec)) {
        const auto start = Clock::now();
        makeTree(tree, s.files);
        std::fprintf(stderr, "made %d files in %s in %.2f s\n", s.files, tree.c_str(), seconds(start));
    }
    const fs::path findOut = fs::temp_directory_path() / "tavelo-bench-grid-find.out";

    tav::ui::ListGridModel model;
    tav::ui::ListGridView view;
    view.setGridModel(&model);
    view.resize(1000, 700);
    view.show();
    QApplication::processEvents();

    // 1. Refresh, in rounds: engine alone, grid, find.
    std::vector<double> gridTimes, engineTimes, findTimes;
    std::vector<qint64> stalls;
    int rows = 0, batches = 0;
    findPrintf(tree, findOut);  // warm the directory cache
    engineOnly(tree);
    for (int r = 0; r < s.runs; ++r) {
        engineTimes.push_back(engineOnly(tree));
        const RefreshRun run = refreshIntoGrid(tree, model);
        gridTimes.push_back(run.seconds);
        stalls.push_back(run.longestStall);
        rows = run.rows;
        batches = run.batches;
        const double f = findPrintf(tree, findOut);
        if (f >= 0) findTimes.push_back(f);
    }
    const double grid = median(gridTimes), engine = median(engineTimes), find = median(findTimes);
    const qint64 stall = *std::max_element(stalls.begin(), stalls.end());
    std::printf("\nRefresh of %d files (%d rows, %d batches), median of %d runs\n", s.files, rows, batches, s.runs);
    std::printf("  %-34s %9.3f s  %10.0f rows/s\n", "refresh into the grid model", grid, rows / grid);
    std::printf("  %-34s %9.3f s  %10.0f rows/s\n", "same list, engine into a row table", engine, rows / engine);
    if (!findTimes.empty())
        std::printf("  %-34s %9.3f s  %10.0f rows/s\n", "find -printf '%p\\t%s\\t%T@\\n'", find, rows / find);
    std::printf("  grid / engine %.2f", grid / engine);
    if (!findTimes.empty()) std::printf("   grid / find %.2f   engine / find %.2f", grid / find, engine / find);
    std::printf("\n  longest UI-thread stall (10 ms timer): %lld ms  (target < 100 ms) %s\n",
                static_cast<long long>(stall), stall < 100 ? "ok" : "OVER");

    // 2. Sort.
    const std::vector<tav::ListColumn> columns = model.table().columns();
    const auto fillStart = Clock::now();
    fillSynthetic(model, columns, s.rows);
    QApplication::processEvents();
    const double fillTime = seconds(fillStart);
    tav::SortOrder byTypeSize;
    byTypeSize.colTypes = {tav::col::Type, tav::col::Size};
    // The engine's sorts alone, on copies of the rows: the fast one the
    // grid uses, and the plain text sort it must agree with.
    auto sortCopy = [&](auto sort) {
        tav::RowTable copy;
        copy.begin(columns);
        for (const tav::Row& r : model.table().rows()) copy.row(tav::Row(r));
        const auto from = Clock::now();
        sort(copy, byTypeSize);
        return seconds(from);
    };
    const double sortEngine = sortCopy(tav::SortRowsByKeys);
    const double sortPlain = sortCopy(tav::SortRows);
    auto start = Clock::now();
    start = Clock::now();
    model.sortBy(byTypeSize);
    const double sortModel = seconds(start);
    start = Clock::now();
    QApplication::processEvents();
    const double repaint = seconds(start);
    tav::SortOrder byName;
    byName.colTypes = {tav::col::FileName};
    start = Clock::now();
    model.sortBy(byName);
    QApplication::processEvents();
    const double sortName = seconds(start);
    start = Clock::now();
    model.renumber();
    const double renumber = seconds(start);
    std::printf("\nSort of %d rows (filled in %.2f s)\n", s.rows, fillTime);
    std::printf("  %-34s %9.3f s  (target < 2 s) %s\n", "by Type, Size (model and view)", sortModel + repaint,
                sortModel + repaint < 2 ? "ok" : "OVER");
    std::printf("  %-34s %9.3f s\n", "  of it the view's repaint", repaint);
    std::printf("  %-34s %9.3f s\n", "  the engine's sort alone", sortEngine);
    std::printf("  %-34s %9.3f s  (fast / plain %.2f)\n", "  the plain text sort (SortRows)", sortPlain,
                sortEngine / sortPlain);
    std::printf("  %-34s %9.3f s\n", "by FileName", sortName);
    std::printf("  %-34s %9.3f s\n", "renumber", renumber);

    fs::remove(findOut, ec);
    if (removeTree) fs::remove_all(tree, ec);
    return 0;
}
