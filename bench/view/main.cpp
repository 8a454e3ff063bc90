// The viewer on a 3 GiB file: open at its end and show the last screen,
// a thousand Page Down from the start, a thousand Page Up from the end and
// a hundred scroll bar jumps, with the blocks read and the memory held;
// against `tail -c 20000 FILE`, timed in the same run. The resident memory
// is checked: viewing a file of any size may add no more than a few MiB,
// and the exit code is 1 when it added more.
//
//   bench_view [FILE | --synthetic]
// Without FILE: /tmp/tavelo-corpus/huge/huge.txt if present, else a
// synthetic 3 GiB file (text at both ends, a hole between) made under /tmp
// and removed at the end.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

#include "viewer/BlockSource.h"
#include "viewer/ShowFile.h"
#include "viewer/TextView.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

// What viewing, at most, may add to the resident memory (kB): the cache and
// a screen are some tens of kB, the rest is the allocator's slack.
constexpr long kViewingRssLimitKb = 8 * 1024;

// Counts the blocks the cache asks for.
class CountingSource : public tav::BlockSource {
public:
    explicit CountingSource(std::string path) : inner_(std::move(path), false) {}
    std::string key() const override { return inner_.key(); }
    std::string name() const override { return inner_.name(); }
    int64_t length() const override { return inner_.length(); }
    tav::SourceBlock read(int64_t startByte, int64_t count) const override {
        ++reads;
        return inner_.read(startByte, count);
    }
    mutable long reads = 0;

private:
    tav::FileTextSource inner_;
};

class QuietHost : public tav::MessageHost {
public:
    int show(tav::MessageRequest& r) override {
        std::fprintf(stderr, "message: %s\n", r.message.c_str());
        return 1;
    }
};

long statusKb(const char* field) {
    std::ifstream in("/proc/self/status");
    std::string line;
    const std::string key = std::string(field) + ":";
    while (std::getline(in, line))
        if (line.rfind(key, 0) == 0) return std::strtol(line.c_str() + key.size(), nullptr, 10);
    return -1;
}

double seconds(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

// Wall time of `tail -c 20000 FILE > /dev/null`, best of `runs`.
double timeTail(const std::string& file, int runs) {
    double best = 1e9;
    for (int i = 0; i < runs; ++i) {
        std::fflush(stdout);  // the child must not write our buffer again
        const auto t0 = Clock::now();
        const pid_t pid = fork();
        if (pid == 0) {
            if (!std::freopen("/dev/null", "w", stdout)) _exit(127);
            execlp("tail", "tail", "-c", "20000", file.c_str(), static_cast<char*>(nullptr));
            _exit(127);
        }
        int status = 0;
        waitpid(pid, &status, 0);
        best = std::min(best, seconds(t0));
    }
    return best;
}

std::string makeSyntheticFile() {
    const std::string path = (fs::temp_directory_path() / ("tavelo-bench-view-" + std::to_string(getpid()) + ".txt")).string();
    const int64_t size = int64_t{3} << 30;
    std::mt19937 rng(1);
    const char* words[] = {"alpha", "block", "cache", "display", "end", "file", "gigabyte", "hex", "index", "jump"};
    // A megabyte of lines at a time, so that making the file costs little memory.
    auto piece = [&] {
        std::string text;
        while (text.size() < (1u << 20)) {
            const int n = 3 + static_cast<int>(rng() % 15);
            for (int w = 0; w < n; ++w) {
                text += words[rng() % 10];
                text += ' ';
            }
            text.back() = '\n';
        }
        return text;
    };
    {
        std::ofstream out(path, std::ios::binary);
        for (int i = 0; i < 64; ++i) out << piece();
    }
    const std::string tail = piece();
    fs::resize_file(path, static_cast<uintmax_t>(size) - tail.size());
    std::ofstream out(path, std::ios::binary | std::ios::app);
    out << tail;
    return path;
}

}  // namespace

int main(int argc, char** argv) {
    std::string file;
    bool made = false;
    const std::string arg = argc > 1 ? argv[1] : "";
    if (!arg.empty() && arg != "--synthetic") {
        file = arg;
    } else if (arg.empty() && fs::exists("/tmp/tavelo-corpus/huge/huge.txt")) {
        file = "/tmp/tavelo-corpus/huge/huge.txt";
    } else {
        std::printf("making a synthetic 3 GiB file under /tmp ...\n");
        file = makeSyntheticFile();
        made = true;
    }
    const auto size = static_cast<int64_t>(fs::file_size(file));
    std::printf("file: %s, %lld bytes\n", file.c_str(), static_cast<long long>(size));
    // The peak starts here: making the synthetic file is not viewing.
    { std::ofstream("/proc/self/clear_refs") << "5"; }
    const long rssStart = statusKb("VmRSS");

    tav::TextBlockCache cache;
    QuietHost host;
    tav::FixedWidthMeasure measure(120, 50);
    tav::TextView view(cache, measure, host);
    auto source = std::make_shared<CountingSource>(file);

    // Open at the end and produce the last screen.
    auto t0 = Clock::now();
    if (!view.show(source, size)) return 1;
    size_t shown = 0;
    for (const auto& line : view.screen()) shown += line.text.size();
    const double openEnd = seconds(t0);
    std::printf("open at end + last screen: %8.3f ms, %ld block reads, top byte %lld, %zu characters shown\n",
                openEnd * 1e3, source->reads, static_cast<long long>(view.topByte()), shown);

    // A thousand Page Down from the start.
    view.toStart();
    long reads = source->reads;
    long most = 0;
    t0 = Clock::now();
    for (int i = 0; i < 1000; ++i) {
        const long before = source->reads;
        view.pageDown();
        shown += view.screen().size();
        most = std::max(most, source->reads - before);
    }
    const double down = seconds(t0);
    std::printf("1000 Page Down:            %8.3f ms (%.1f us each), %ld block reads, at most %ld in one, top byte %lld\n",
                down * 1e3, down * 1e6 / 1000, source->reads - reads, most, static_cast<long long>(view.topByte()));

    // A thousand Page Up from the end.
    view.toEnd();
    reads = source->reads;
    most = 0;
    t0 = Clock::now();
    for (int i = 0; i < 1000; ++i) {
        const long before = source->reads;
        view.pageUp();
        shown += view.screen().size();
        most = std::max(most, source->reads - before);
    }
    const double up = seconds(t0);
    std::printf("1000 Page Up from the end: %8.3f ms (%.1f us each), %ld block reads, at most %ld in one\n",
                up * 1e3, up * 1e6 / 1000, source->reads - reads, most);

    // A hundred scroll bar jumps.
    std::mt19937 rng(42);
    reads = source->reads;
    t0 = Clock::now();
    for (int i = 0; i < 100; ++i) {
        view.scrollBarMoved(2 + static_cast<int>(rng() % 9999));
        shown += view.screen().size();
    }
    const double jumps = seconds(t0);
    std::printf("100 scroll bar jumps:      %8.3f ms (%.1f us each), %ld block reads\n", jumps * 1e3,
                jumps * 1e6 / 100, source->reads - reads);

    const long hwmViewing = statusKb("VmHWM");
    const long rssViewing = statusKb("VmRSS");

    // The plain text that a plain view is made from: the most it reads.
    t0 = Clock::now();
    const tav::PlainSource plain = tav::makePlainSource(file);
    const double plainTime = seconds(t0);
    std::printf("plain text of %lld MiB:     %8.3f ms (%.0f MB/s), %zu characters\n",
                static_cast<long long>(tav::kPlainSourceLimit >> 20), plainTime * 1e3,
                static_cast<double>(tav::kPlainSourceLimit) / plainTime / 1e6,
                plain.source ? plain.source->text().size() : 0);
    const long plainHwm = statusKb("VmHWM");

    const double tail = timeTail(file, 5);
    std::printf("tail -c 20000 FILE:        %8.3f ms (best of 5)\n", tail * 1e3);
    std::printf("ratio open-at-end / tail:  %8.3f\n", openEnd / tail);
    std::printf("ratio Page Down / tail:    %8.3f\n", down / 1000 / tail);
    std::printf("ratio Page Up / tail:      %8.3f\n", up / 1000 / tail);
    std::printf("ratio bar jump / tail:     %8.3f\n", jumps / 100 / tail);
    std::printf("memory: VmRSS %ld kB (at start %ld kB), VmHWM before the plain text %ld kB, after %ld kB, file %lld kB, cache %zu characters\n",
                statusKb("VmRSS"), rssStart, hwmViewing, plainHwm, static_cast<long long>(size / 1024),
                cache.text().size());
    // The check: a 3 GiB file is viewed in the memory of a small one.
    const long viewingGrowth = std::max(hwmViewing, rssViewing) - rssStart;
    const bool memoryOk = viewingGrowth <= kViewingRssLimitKb;
    std::printf("resident memory added by viewing: %ld kB, limit %ld kB, ratio to file size %.6f: %s\n",
                viewingGrowth, kViewingRssLimitKb, static_cast<double>(viewingGrowth) / static_cast<double>(size / 1024),
                memoryOk ? "ok" : "TOO MUCH");
    std::printf("(checksum %zu)\n", shown % 1000);
    if (made) fs::remove(file);
    return memoryOk ? 0 : 1;
}
