// Find in files: Tavelo's engine against ripgrep and grep, timed in one run.
//
//   bench_find [--runs N] [--corpus DIR] [--out DIR] [--skip-huge]
//
// Tree: a case-insensitive search for "regular expression" over every file
// of DIR/medium, walked with std::filesystem, every hit of each file by
// fileHits; on one thread and on two threads (output in file order),
// against `rg -uu -j1 -F -i`, `rg -uu -F -i` and `grep -r -F -i`.
// Dir: the same value by `tavelo find DIR` in-process, the directory search
// through the list maker (first hit of each file, one row a file), on one
// and on two threads, against `rg -uu -l -F -i` (the files with a hit).
// Huge: TAVELO_NEEDLE_2f9c41 (case-insensitive) in DIR/huge/huge.txt by
// fileHits and by the `tavelo find` command in-process, against `rg -F -i`.
// Every output goes to a file under --out (rg and grep skip work on
// /dev/null). Prints the median of N runs (default 5) after one warm-up run,
// and the ratio Tavelo / anchor.
#include <sys/wait.h>

#include <atomic>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "cli/Commands.h"
#include "find/FileHits.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

const char* const kValue = "regular expression";
const char* const kNeedle = "TAVELO_NEEDLE_2f9c41";

struct Settings {
    int runs = 5;
    fs::path corpus = "/tmp/tavelo-corpus";
    fs::path out = "/tmp/tavelo-bench-find";
    bool huge = true;
};

struct Row {
    std::string group;
    std::string name;
    double median = 0;  // seconds
    double low = 0, high = 0;
    bool tavelo = false;
    std::string note;
};

std::string shellQuote(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

bool haveTool(const std::string& name) {
    return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0;
}

// One warm-up run, then `runs` timed runs; the median, min and max.
Row timeIt(const std::string& group, const std::string& name, int runs, const std::function<void()>& job) {
    job();
    std::vector<double> t;
    for (int i = 0; i < runs; ++i) {
        const auto start = Clock::now();
        job();
        t.push_back(std::chrono::duration<double>(Clock::now() - start).count());
    }
    std::sort(t.begin(), t.end());
    Row r;
    r.group = group;
    r.name = name;
    r.median = t.size() % 2 ? t[t.size() / 2] : (t[t.size() / 2 - 1] + t[t.size() / 2]) / 2;
    r.low = t.front();
    r.high = t.back();
    return r;
}

Row timeCommand(const std::string& group, const std::string& name, int runs, const std::string& cmd) {
    std::fprintf(stderr, "== %-6s %-22s %s\n", group.c_str(), name.c_str(), cmd.c_str());
    return timeIt(group, name, runs, [&] {
        const int rc = std::system(cmd.c_str());
        // grep and rg exit 1 when nothing matched; anything above is a failure.
        if (rc == -1 || (WIFEXITED(rc) && WEXITSTATUS(rc) > 1)) std::fprintf(stderr, "failed: %s\n", cmd.c_str());
    });
}

std::vector<std::string> listFiles(const fs::path& root) {
    std::vector<std::string> files;
    std::error_code ec;
    for (fs::recursive_directory_iterator it(root, fs::directory_options::skip_permission_denied, ec), end;
         it != end; it.increment(ec)) {
        if (ec) break;
        if (it->is_symlink(ec)) continue;
        if (it->is_regular_file(ec)) files.push_back(it->path().string());
    }
    return files;
}

tav::FindCriteria valueCriteria(const char* text) {
    tav::FindCriteria c;
    c.text = text;
    c.matchCase = false;
    return c;
}

// Every hit of one file as lines "path<TAB>byte<TAB>value".
void appendHits(const std::string& path, const tav::FindCriteria& criteria, std::string& out, long& hits) {
    tav::FileHitsRequest request;
    request.path = path;
    request.criteria = criteria;
    request.allHits = true;
    const tav::FileHitsResult r = tav::fileHits(request);
    for (const tav::FileHit& h : r.hits) {
        out += path;
        out += '\t';
        out += std::to_string(h.byteNumber);
        out += '\t';
        out += h.value;
        out += '\n';
    }
    hits += static_cast<long>(r.hits.size());
}

struct TreeCount {
    long files = 0;      // files with a hit
    long hits = 0;
};

// Walk and search on this thread, writing as it goes.
TreeCount treeOneThread(const fs::path& root, const fs::path& sink) {
    const tav::FindCriteria criteria = valueCriteria(kValue);
    std::FILE* f = std::fopen(sink.c_str(), "wb");
    TreeCount count;
    std::string out;
    for (const std::string& path : listFiles(root)) {
        out.clear();
        long hits = 0;
        appendHits(path, criteria, out, hits);
        if (hits) ++count.files;
        count.hits += hits;
        std::fwrite(out.data(), 1, out.size(), f);
    }
    std::fclose(f);
    return count;
}

// Two threads search the files; this thread writes their output in the
// order of the walk as soon as each file is done.
TreeCount treeTwoThreads(const fs::path& root, const fs::path& sink) {
    const tav::FindCriteria criteria = valueCriteria(kValue);
    const std::vector<std::string> files = listFiles(root);
    std::vector<std::string> outputs(files.size());
    std::vector<long> hitCounts(files.size(), 0);
    std::vector<std::atomic<bool>> done(files.size());
    for (auto& d : done) d.store(false);
    std::atomic<size_t> next{0};
    auto worker = [&] {
        for (size_t i; (i = next.fetch_add(1)) < files.size();) {
            appendHits(files[i], criteria, outputs[i], hitCounts[i]);
            done[i].store(true, std::memory_order_release);
            done[i].notify_one();
        }
    };
    std::thread a(worker), b(worker);
    std::FILE* f = std::fopen(sink.c_str(), "wb");
    TreeCount count;
    for (size_t i = 0; i < files.size(); ++i) {
        done[i].wait(false, std::memory_order_acquire);
        std::fwrite(outputs[i].data(), 1, outputs[i].size(), f);
        std::string().swap(outputs[i]);
        if (hitCounts[i]) ++count.files;
        count.hits += hitCounts[i];
    }
    std::fclose(f);
    a.join();
    b.join();
    return count;
}

long hugeHits(const fs::path& file, const fs::path& sink) {
    tav::FileHitsRequest request;
    request.path = file.string();
    request.criteria = valueCriteria(kNeedle);
    request.allHits = true;
    const tav::FileHitsResult r = tav::fileHits(request);
    std::ofstream out(sink, std::ios::binary);
    for (const tav::FileHit& h : r.hits) out << h.byteNumber << '\t' << h.value << '\n';
    if (!r.error.empty()) std::fprintf(stderr, "huge: %s\n", r.error.c_str());
    return static_cast<long>(r.hits.size());
}

int hugeCommand(const fs::path& file, const fs::path& sink) {
    std::ofstream out(sink, std::ios::binary);
    std::istringstream in;
    std::ostringstream err;
    const tav::cli::CommandContext ctx{{}, {"--text", kNeedle, "--in", file.string(), "--all"}, in, out, err};
    const int rc = tav::cli::runFind(ctx);
    if (rc != 0) std::fprintf(stderr, "tavelo find exit %d: %s\n", rc, err.str().c_str());
    return rc;
}

// `tavelo find --subdirs DIR`: the list of files with a hit; the rows printed.
long dirCommand(const fs::path& root, const fs::path& sink, int threads) {
    std::ofstream out(sink, std::ios::binary);
    std::istringstream in;
    std::ostringstream err;
    const tav::cli::CommandContext ctx{{},
                                       {"--text", kValue, "--subdirs", "--hidden", "--no-dirs", "--columns",
                                        "FilePath|FileName|Type", "--threads", std::to_string(threads),
                                        root.string()},
                                       in,
                                       out,
                                       err};
    const int rc = tav::cli::runFind(ctx);
    if (rc > 1) std::fprintf(stderr, "tavelo find exit %d: %s\n", rc, err.str().c_str());
    out.close();
    long lines = 0;
    std::ifstream back(sink, std::ios::binary);
    for (std::string line; std::getline(back, line);) ++lines;
    return lines > 0 ? lines - 1 : 0;  // less the header
}

long countLines(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    long n = 0;
    std::string line;
    while (std::getline(in, line)) ++n;
    return n;
}

std::string seconds(double s) {
    char buf[32];
    if (s < 1)
        std::snprintf(buf, sizeof buf, "%.1f ms", s * 1e3);
    else
        std::snprintf(buf, sizeof buf, "%.2f s", s);
    return buf;
}

void printTable(const std::vector<Row>& rows) {
    std::printf("\n%-6s %-34s %10s %10s %10s\n", "group", "command", "median", "min", "max");
    for (const Row& r : rows)
        std::printf("%-6s %-34s %10s %10s %10s  %s\n", r.group.c_str(), r.name.c_str(), seconds(r.median).c_str(),
                    seconds(r.low).c_str(), seconds(r.high).c_str(), r.note.c_str());
    std::printf("\nratio Tavelo / anchor (median / median; below 1 is faster):\n");
    for (const Row& t : rows) {
        if (!t.tavelo) continue;
        for (const Row& a : rows) {
            if (a.tavelo || a.group != t.group) continue;
            std::printf("  %-6s %-34s / %-22s %6.2f\n", t.group.c_str(), t.name.c_str(), a.name.c_str(),
                        t.median / a.median);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    Settings s;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        if (a == "--runs" && i + 1 < argc) {
            s.runs = std::max(1, std::atoi(argv[++i]));
        } else if (a == "--corpus" && i + 1 < argc) {
            s.corpus = argv[++i];
        } else if (a == "--out" && i + 1 < argc) {
            s.out = argv[++i];
        } else if (a == "--skip-huge") {
            s.huge = false;
        } else {
            std::fprintf(stderr, "usage: bench_find [--runs N] [--corpus DIR] [--out DIR] [--skip-huge]\n");
            return 2;
        }
    }
    const fs::path medium = s.corpus / "medium";
    const fs::path huge = s.corpus / "huge" / "huge.txt";
    if (!fs::is_directory(medium)) {
        std::printf("No corpus in %s. Build it with /work/shared/bench/corpus.sh (see its README.md),\n"
                    "or pass --corpus DIR. Nothing measured.\n",
                    s.corpus.c_str());
        return 0;
    }
    std::error_code ec;
    fs::create_directories(s.out, ec);
    const fs::path sink = s.out / "sink.out";
    const std::string q = shellQuote(sink.string());
    const bool rg = haveTool("rg");
    if (!rg) std::fprintf(stderr, "rg not installed (apt-get install -y ripgrep): its rows are left out\n");
    const bool grep = haveTool("grep");
    std::vector<Row> rows;

    // The tree. The first warm-up run of each row also warms the page cache.
    {
        const std::string med = shellQuote(medium.string());
        const std::string value = shellQuote(kValue);
        if (rg) {
            rows.push_back(timeCommand("tree", "rg -j1 -F -i", s.runs,
                                       "rg -uu -j1 -F -i " + value + " " + med + " > " + q));
            rows.back().note = std::to_string(countLines(sink)) + " lines";
            rows.push_back(timeCommand("tree", "rg -F -i", s.runs, "rg -uu -F -i " + value + " " + med + " > " + q));
        }
        if (grep) {
            rows.push_back(timeCommand("tree", "grep -r -F -i", s.runs, "grep -r -F -i " + value + " " + med + " > " + q));
            rows.back().note = std::to_string(countLines(sink)) + " lines";
        }
        TreeCount one, two;
        std::fprintf(stderr, "== tree   Tavelo fileHits, 1 thread\n");
        rows.push_back(timeIt("tree", "Tavelo walk+fileHits 1 thread", s.runs, [&] { one = treeOneThread(medium, sink); }));
        rows.back().tavelo = true;
        rows.back().note = std::to_string(one.hits) + " hits in " + std::to_string(one.files) + " files";
        std::fprintf(stderr, "== tree   Tavelo fileHits, 2 threads\n");
        rows.push_back(timeIt("tree", "Tavelo walk+fileHits 2 threads", s.runs, [&] { two = treeTwoThreads(medium, sink); }));
        rows.back().tavelo = true;
        rows.back().note = std::to_string(two.hits) + " hits in " + std::to_string(two.files) + " files";
        if (one.hits != two.hits || one.files != two.files) std::fprintf(stderr, "the two Tavelo runs disagree\n");
        if (rg) {
            const fs::path listed = s.out / "rg-files.out";
            std::system(("rg -uu -F -i -l " + value + " " + med + " > " + shellQuote(listed.string())).c_str());
            std::printf("files with a hit: rg %ld, Tavelo %ld\n", countLines(listed), one.files);
        }
    }

    // The directory search: files with a hit, one row each.
    {
        const std::string med = shellQuote(medium.string());
        if (rg) {
            rows.push_back(timeCommand("dir", "rg -l -F -i", s.runs,
                                       "rg -uu -l -F -i " + shellQuote(kValue) + " " + med + " > " + q));
            rows.back().note = std::to_string(countLines(sink)) + " files";
        }
        for (int threads : {1, 2}) {
            long files = 0;
            const std::string name = "tavelo find DIR, " + std::to_string(threads) + (threads > 1 ? " threads" : " thread");
            std::fprintf(stderr, "== dir    %s\n", name.c_str());
            rows.push_back(timeIt("dir", name, s.runs, [&] { files = dirCommand(medium, sink, threads); }));
            rows.back().tavelo = true;
            rows.back().note = std::to_string(files) + " files";
        }
    }

    // The huge file.
    if (s.huge && fs::is_regular_file(huge)) {
        const std::string h = shellQuote(huge.string());
        if (rg) rows.push_back(timeCommand("huge", "rg -F -i", s.runs, "rg -F -i " + std::string(kNeedle) + " " + h + " > " + q));
        long hits = 0;
        std::fprintf(stderr, "== huge   Tavelo fileHits\n");
        rows.push_back(timeIt("huge", "Tavelo fileHits", s.runs, [&] { hits = hugeHits(huge, sink); }));
        rows.back().tavelo = true;
        rows.back().note = std::to_string(hits) + " hits";
        std::fprintf(stderr, "== huge   tavelo find --all (in-process)\n");
        rows.push_back(timeIt("huge", "tavelo find --all (in-process)", s.runs, [&] { hugeCommand(huge, sink); }));
        rows.back().tavelo = true;
    } else if (s.huge) {
        std::printf("No %s: the huge rows are left out (corpus.sh makes it).\n", huge.c_str());
    }
    fs::remove(sink, ec);
    printTable(rows);
    return 0;
}
