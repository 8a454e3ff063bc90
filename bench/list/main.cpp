// File listing and content refresh: the `tavelo list` command against find,
// fd and a plain C reader, timed in one run.
//
//   bench_list [TAVELO [CORPUS]] [--runs N] [--out DIR] [--shared DIR]
//
// TAVELO  the tavelo program (default: <build>/src/tavelo, found from this
//         program's own path).
// CORPUS  the tree to list (default /tmp/tavelo-corpus/medium); its sibling
//         "small" is used for the lxml comparison.
// --runs  timed runs a command (default 5), after one warm-up run.
// --out   where every command writes its output (default /tmp/tavelo-bench-list);
//         some tools skip work when they write to /dev/null.
// --shared  folder of readall.c and html_extract.py (default /work/shared/bench).
//
// Listing: `tavelo list --subdirs --columns "FileName|Type|Size|Date|Time"`
// against `find -printf '%p\t%s\t%T@\n'`, the same with TZ=UTC and dates, and
// `fdfind` (names only) when installed.
// Content refresh: the same list with the columns Title, MetaTags, HTMLTags,
// WWWAddresses, MailAddresses and FirstNBytes (100 bytes), on one thread and
// with --threads 2, against readall -j1 and -j2 (open/read/close of every
// file, the floor of any content refresh). On the small tree, the same
// against the lxml extraction script when /usr/bin/python3 has lxml.
//
// Commands run in rounds (each command once a round, the order turned by one
// each round) so that a slow phase of the machine hits every command alike. The page cache is warmed before each
// group. Prints median, min and max of each command and the ratios
// Tavelo / anchor with the targets.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

struct Settings {
    fs::path tavelo;
    fs::path corpus = "/tmp/tavelo-corpus/medium";
    fs::path out = "/tmp/tavelo-bench-list";
    fs::path shared = "/work/shared/bench";
    int runs = 5;
};

struct Command {
    std::string group;
    std::string name;
    std::string shell;  // writes to `output`
    fs::path output;
    std::vector<double> times;
    bool failed = false;
    double median = 0, low = 0, high = 0;
    long lines = 0;
};

std::string quote(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

std::string quote(const fs::path& p) { return quote(p.string()); }

bool haveTool(const std::string& name) {
    return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0;
}

bool runShell(const std::string& cmd) {
    const int rc = std::system(cmd.c_str());
    return rc != -1 && WIFEXITED(rc) && WEXITSTATUS(rc) == 0;
}

std::string slug(const std::string& s) {
    std::string r;
    for (char c : s) r += (std::isalnum(static_cast<unsigned char>(c)) || c == '-') ? c : '_';
    return r;
}

long countLines(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    long n = 0;
    char buf[1 << 16];
    while (in.read(buf, sizeof buf) || in.gcount() > 0) {
        n += std::count(buf, buf + in.gcount(), '\n');
        if (!in) break;
    }
    return n;
}

// The tavelo next to this program's build tree: walk up from our own folder
// until a src/tavelo shows up.
fs::path defaultTavelo() {
    std::error_code ec;
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return "tavelo";
    for (fs::path dir = self.parent_path(); !dir.empty(); dir = dir.parent_path()) {
        if (fs::exists(dir / "src" / "tavelo", ec)) return dir / "src" / "tavelo";
        if (dir == dir.root_path()) break;
    }
    return "tavelo";
}

void warm(const fs::path& dir) {
    runShell("find " + quote(dir) + " -type f -print0 | xargs -0 cat > /dev/null 2>&1");
}

// One warm-up round, then `runs` timed rounds; in each round every command once.
void measure(std::vector<Command*> cmds, int runs) {
    for (Command* c : cmds) {
        std::cerr << "  warm-up  " << c->name << "\n";
        if (!runShell(c->shell)) {
            std::cerr << "  FAILED: " << c->shell << "\n";
            c->failed = true;
        }
    }
    for (int r = 0; r < runs; ++r) {
        // Each round starts one command further on, so that no command is
        // always the one that runs first (or right after another's load).
        for (std::size_t k = 0; k < cmds.size(); ++k) {
            Command* c = cmds[(k + static_cast<std::size_t>(r)) % cmds.size()];
            if (c->failed) continue;
            const auto start = Clock::now();
            const bool ok = runShell(c->shell);
            const double t = std::chrono::duration<double>(Clock::now() - start).count();
            if (!ok) {
                std::cerr << "  FAILED: " << c->shell << "\n";
                c->failed = true;
                continue;
            }
            c->times.push_back(t);
        }
    }
    for (Command* c : cmds) {
        if (c->failed || c->times.empty()) continue;
        auto t = c->times;
        std::sort(t.begin(), t.end());
        c->median = t.size() % 2 ? t[t.size() / 2] : (t[t.size() / 2 - 1] + t[t.size() / 2]) / 2;
        c->low = t.front();
        c->high = t.back();
        c->lines = countLines(c->output);
    }
}

std::string ms(double s) {
    char buf[32];
    if (s < 1)
        std::snprintf(buf, sizeof buf, "%.1f ms", s * 1e3);
    else
        std::snprintf(buf, sizeof buf, "%.2f s", s);
    return buf;
}

int usage() {
    std::cerr << "usage: bench_list [TAVELO [CORPUS]] [--runs N] [--out DIR] [--shared DIR]\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    Settings s;
    s.tavelo = defaultTavelo();
    int positional = 0;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        auto value = [&]() -> const char* { return i + 1 < argc ? argv[++i] : nullptr; };
        if (a == "--runs") {
            const char* v = value();
            if (!v || (s.runs = std::atoi(v)) < 1) return usage();
        } else if (a == "--out") {
            const char* v = value();
            if (!v) return usage();
            s.out = v;
        } else if (a == "--shared") {
            const char* v = value();
            if (!v) return usage();
            s.shared = v;
        } else if (a == "-h" || a == "--help") {
            usage();
            return 0;
        } else if (!a.empty() && a[0] == '-') {
            return usage();
        } else if (positional == 0) {
            s.tavelo = a;
            ++positional;
        } else if (positional == 1) {
            s.corpus = a;
            ++positional;
        } else {
            return usage();
        }
    }

    std::error_code ec;
    if (!fs::is_directory(s.corpus, ec)) {
        std::cout << "No corpus at " << s.corpus.string() << ". Build it with\n"
                  << "  " << (s.shared / "corpus.sh").string()
                  << "          # CORPUS_DIR=/tmp/tavelo-corpus by default\n"
                  << "then run again: bench_list [TAVELO] [CORPUS_DIR/medium]\n";
        return 0;
    }
    if (!fs::exists(s.tavelo, ec) && !haveTool(quote(s.tavelo))) {
        std::cerr << "no tavelo program at " << s.tavelo.string() << " (give its path as the first argument)\n";
        return 1;
    }
    s.tavelo = fs::absolute(s.tavelo, ec);
    s.corpus = fs::absolute(s.corpus, ec);
    fs::create_directories(s.out, ec);
    ::setenv("LC_ALL", "C.UTF-8", 1);

    // readall: compiled once into the build dir (beside src/), else into --out.
    fs::path buildDir = s.tavelo.parent_path().parent_path();
    fs::path readall = (fs::is_directory(buildDir, ec) && ::access(buildDir.c_str(), W_OK) == 0 ? buildDir : s.out) /
                       "readall";
    if (!fs::exists(readall, ec)) {
        const fs::path src = s.shared / "readall.c";
        if (!runShell("cc -O2 -pthread -o " + quote(readall) + " " + quote(src))) {
            std::cerr << "could not compile " << src.string() << ": readall rows left out\n";
            readall.clear();
        }
    }
    const std::string fd = haveTool("fdfind") ? "fdfind" : haveTool("fd") ? "fd" : "";
    const fs::path small = s.corpus.parent_path() / "small";
    const bool lxml = fs::is_directory(small, ec) && fs::exists(s.shared / "html_extract.py", ec) &&
                      runShell("/usr/bin/python3 -c 'import lxml.html' >/dev/null 2>&1");

    const std::string T = quote(s.tavelo);
    const std::string dir = quote(s.corpus.string() + "/");
    const std::string dirNoSlash = quote(s.corpus);
    const std::string listCols = " list --subdirs --columns 'FileName|Type|Size|Date|Time' ";
    const std::string contentCols =
        " list --subdirs --columns 'FileName|Title|MetaTags|HTMLTags|WWWAddresses|MailAddresses|FirstNBytes'"
        " --first-bytes 100 ";

    std::vector<Command> all;
    all.reserve(16);
    auto add = [&](const std::string& group, const std::string& name, const std::string& cmd) -> Command* {
        Command c;
        c.group = group;
        c.name = name;
        c.output = s.out / (slug(group + "." + name) + ".out");
        c.shell = cmd + " > " + quote(c.output) + " 2> " + quote(s.out / (slug(group + "." + name) + ".err"));
        all.push_back(c);
        return &all.back();
    };

    // Listing
    Command* tList = add("list", "tavelo list", T + listCols + dir);
    Command* tListUtc = add("list", "TZ=UTC tavelo list", "TZ=UTC " + T + listCols + dir);
    Command* findEpoch = add("list", "find -printf epoch", "find " + dirNoSlash + " -printf '%p\\t%s\\t%T@\\n'");
    Command* findDate = add("list", "TZ=UTC find -printf date",
                            "TZ=UTC find " + dirNoSlash + " -printf '%p\\t%s\\t%TY-%Tm-%Td %TH:%TM:%TS\\n'");
    Command* fdNames = fd.empty() ? nullptr : add("list", fd + " (names)", fd + " -HI . " + dirNoSlash);

    // Content refresh
    Command* tContent1 = add("content", "tavelo content, 1 thread", T + contentCols + dir);
    Command* tContent2 = add("content", "tavelo content, --threads 2", T + contentCols + "--threads 2 " + dir);
    Command* read1 = readall.empty() ? nullptr : add("content", "readall -j1", quote(readall) + " -j1 " + dirNoSlash);
    Command* read2 = readall.empty() ? nullptr : add("content", "readall -j2", quote(readall) + " -j2 " + dirNoSlash);

    // Small tree against lxml
    Command* tSmall = nullptr;
    Command* lxmlSmall = nullptr;
    if (lxml) {
        tSmall = add("small", "tavelo content, 1 thread", T + contentCols + quote(small.string() + "/"));
        lxmlSmall = add("small", "lxml -j1", "/usr/bin/python3 " + quote(s.shared / "html_extract.py") +
                                                 " --parser lxml " + quote(small));
    }

    auto group = [&](const std::string& g) {
        std::vector<Command*> v;
        for (auto& c : all)
            if (c.group == g) v.push_back(&c);
        return v;
    };

    std::cerr << "tavelo: " << s.tavelo.string() << "\ncorpus: " << s.corpus.string() << "\noutputs: "
              << s.out.string() << "\n";
    std::cerr << "== listing\n";
    warm(s.corpus);
    measure(group("list"), s.runs);
    std::cerr << "== content refresh\n";
    warm(s.corpus);
    measure(group("content"), s.runs);
    if (lxml) {
        std::cerr << "== small tree, lxml\n";
        warm(small);
        measure(group("small"), s.runs);
    } else {
        std::cerr << "(no lxml for /usr/bin/python3 or no small tree: lxml row left out)\n";
    }

    std::printf("\n%-8s %-30s %10s %10s %10s %8s\n", "group", "command", "median", "min", "max", "lines");
    for (const auto& c : all) {
        if (c.failed)
            std::printf("%-8s %-30s %10s\n", c.group.c_str(), c.name.c_str(), "FAILED");
        else
            std::printf("%-8s %-30s %10s %10s %10s %8ld\n", c.group.c_str(), c.name.c_str(), ms(c.median).c_str(),
                        ms(c.low).c_str(), ms(c.high).c_str(), c.lines);
    }

    std::printf("\n%-38s %-28s %7s  %s\n", "Tavelo", "anchor", "ratio", "target");
    auto ratio = [](const Command* t, const Command* a, double target) {
        if (!t || !a) return;
        if (t->failed || a->failed) {
            std::printf("%-38s %-28s %7s\n", t->name.c_str(), a->name.c_str(), "-");
            return;
        }
        const double r = t->median / a->median;
        if (target > 0)
            std::printf("%-38s %-28s %6.2fx  within %.1fx: %s\n", (t->group + ": " + t->name).c_str(),
                        a->name.c_str(), r, target, r <= target ? "met" : "NOT met");
        else
            std::printf("%-38s %-28s %6.2fx\n", (t->group + ": " + t->name).c_str(), a->name.c_str(), r);
    };
    ratio(tList, findEpoch, 1.5);
    ratio(tList, findDate, 0);
    ratio(tListUtc, findDate, 0);
    ratio(tList, fdNames, 0);
    ratio(tContent1, read1, 3.0);
    ratio(tContent2, read2, 2.5);
    ratio(tContent2, tContent1, 0);
    ratio(tSmall, lxmlSmall, 0);
    std::printf("\nTargets: listing within 1.5x of find -printf; content refresh within 3x of readall -j1 on\n"
                "one core and within 2.5x of readall -j2 with both cores. Ratios of one run only; the spread\n"
                "between runs on this machine is 10-30%%.\n");
    return 0;
}
