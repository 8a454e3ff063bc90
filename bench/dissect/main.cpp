// Times a content refresh of a directory tree: every file is read once in
// 64 KiB chunks and fed to the content extractor with the columns Title,
// MetaTags, HTMLTags, WWWAddresses, MailAddresses and FirstNBytes (100).
// The same files are also read without any work, in the same run, and the
// ratio of the two is printed.
//
//   bench_dissect [DIR] [--runs N] [--dump N] [--chunk BYTES] [--cols title,meta,tags,www,mail,first]
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "content/ContentExtractor.h"

namespace fs = std::filesystem;

namespace {

std::size_t gChunk = 64 * 1024;  // read size

struct Totals {
    double seconds = 0;
    double cpu = 0;  // user + system time of the process
    std::uint64_t bytes = 0;
    std::size_t files = 0;
    std::size_t titles = 0, tagCells = 0, metaCells = 0, wwwCells = 0, mailCells = 0;
};

double cpuNow() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return static_cast<double>(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
           static_cast<double>(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

Totals readAll(const std::vector<std::string>& files, std::vector<char>& buf) {
    Totals t;
    const double t0 = now();
    const double c0 = cpuNow();
    for (const std::string& f : files) {
        const int fd = ::open(f.c_str(), O_RDONLY);
        if (fd < 0) continue;
        ssize_t n;
        while ((n = ::read(fd, buf.data(), buf.size())) > 0) t.bytes += static_cast<std::uint64_t>(n);
        ::close(fd);
        ++t.files;
    }
    t.seconds = now() - t0;
    t.cpu = cpuNow() - c0;
    return t;
}

// sizes: the file sizes the directory walk found, as a file list has them.
Totals dissectAll(const std::vector<std::string>& files, const std::vector<std::int64_t>& sizes,
                  std::vector<char>& buf, tav::ContentExtractor& x, std::size_t dump) {
    Totals t;
    const double t0 = now();
    const double c0 = cpuNow();
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string& f = files[i];
        const int fd = ::open(f.c_str(), O_RDONLY);
        if (fd < 0) continue;
        x.beginFile(f, sizes[i]);
        ssize_t n;
        while ((n = ::read(fd, buf.data(), buf.size())) > 0) {
            t.bytes += static_cast<std::uint64_t>(n);
            if (!x.feed(std::string_view(buf.data(), static_cast<std::size_t>(n)))) break;
        }
        ::close(fd);
        x.finish();
        const tav::ContentCells& c = x.cells();
        t.titles += !c.title.empty();
        t.tagCells += !c.htmlTags.empty();
        t.metaCells += !c.metaTags.empty();
        t.wwwCells += !c.wwwAddresses.empty();
        t.mailCells += !c.mailAddresses.empty();
        if (t.files < dump) {
            std::printf("%s\n  Title: %s\n  MetaTags: %s\n  HTMLTags: %s\n  WWW: %s\n  Mail: %s\n  First: %s\n",
                        f.c_str(), c.title.c_str(), c.metaTags.c_str(), c.htmlTags.c_str(),
                        c.wwwAddresses.c_str(), c.mailAddresses.c_str(), c.firstBytes.c_str());
        }
        ++t.files;
    }
    t.seconds = now() - t0;
    t.cpu = cpuNow() - c0;
    return t;
}

// The file list: names and sizes, as a directory walk of the list maker has them.
void walk(const std::string& dir, std::vector<std::string>& files, std::vector<std::int64_t>& sizes) {
    std::error_code ec;
    files.clear();
    sizes.clear();
    for (auto it = fs::recursive_directory_iterator(dir, fs::directory_options::skip_permission_denied, ec);
         it != fs::recursive_directory_iterator(); it.increment(ec)) {
        if (ec) break;
        if (it->is_regular_file(ec)) {
            files.push_back(it->path().string());
            sizes.push_back(static_cast<std::int64_t>(it->file_size(ec)));
        }
    }
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    std::string dir;
    int runs = 5;
    std::size_t dump = 0;
    std::string cols = "title,meta,tags,www,mail,first";
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        if (a == "--runs" && i + 1 < argc) {
            runs = std::max(1, std::atoi(argv[++i]));
        } else if (a == "--chunk" && i + 1 < argc) {
            gChunk = static_cast<std::size_t>(std::max(1, std::atoi(argv[++i])));
        } else if (a == "--cols" && i + 1 < argc) {
            cols = argv[++i];
        } else if (a == "--dump" && i + 1 < argc) {
            dump = static_cast<std::size_t>(std::atoi(argv[++i]));
        } else {
            dir = a;
        }
    }
    if (dir.empty()) dir = "/tmp/tavelo-corpus/medium";
    std::error_code ec;
    if (!fs::is_directory(dir, ec)) {
        std::fprintf(stderr, "no directory %s (build it with /work/shared/bench/corpus.sh)\n", dir.c_str());
        return 2;
    }
    std::vector<std::string> files;
    std::vector<std::int64_t> sizes;
    walk(dir, files, sizes);

    tav::ContentSpec spec;
    auto has = [&](const char* name) { return ("," + cols + ",").find(std::string(",") + name + ",") != std::string::npos; };
    spec.columns.title = has("title");
    spec.columns.metaTags = has("meta");
    spec.columns.htmlTags = has("tags");
    spec.columns.www = has("www");
    spec.columns.mail = has("mail");
    spec.columns.firstBytes = has("first");
    spec.options.BytF = 100;
    tav::ContentExtractor x(spec);
    std::vector<char> buf(gChunk);

    readAll(files, buf);  // warm the page cache
    if (dump > 0) {
        dissectAll(files, sizes, buf, x, dump);
        return 0;
    }
    std::vector<double> readTimes, dissectTimes, readCpu, dissectCpu, walkTimes;
    Totals r, d;
    for (int i = 0; i < runs; ++i) {
        std::vector<std::string> f2;
        std::vector<std::int64_t> s2;
        const double w0 = now();
        walk(dir, f2, s2);
        walkTimes.push_back(now() - w0);
        r = readAll(files, buf);
        d = dissectAll(files, sizes, buf, x, 0);
        readTimes.push_back(r.seconds);
        dissectTimes.push_back(d.seconds);
        readCpu.push_back(r.cpu);
        dissectCpu.push_back(d.cpu);
    }
    const double rt = median(readTimes), dt = median(dissectTimes);
    const double mb = static_cast<double>(r.bytes) / 1e6;
    std::printf("files %zu, %.1f MB, %d runs (median)\n", r.files, mb, runs);
    std::printf("read     %8.1f ms  %7.0f MB/s  %8.0f files/s\n", rt * 1e3, mb / rt, static_cast<double>(r.files) / rt);
    std::printf("dissect  %8.1f ms  %7.0f MB/s  %8.0f files/s  (bytes taken %.1f MB)\n", dt * 1e3,
                mb / dt, static_cast<double>(d.files) / dt, static_cast<double>(d.bytes) / 1e6);
    std::printf("ratio dissect/read %.2f (wall); cpu %.1f ms / %.1f ms = %.2f\n", dt / rt, median(dissectCpu) * 1e3,
                median(readCpu) * 1e3, median(dissectCpu) / median(readCpu));
    const double wt = median(walkTimes);
    std::printf("walk     %8.1f ms; with the walk: dissect/read %.2f\n", wt * 1e3, (wt + dt) / (wt + rt));
    std::printf("cells: title %zu, HTMLTags %zu, MetaTags %zu, WWW %zu, Mail %zu\n", d.titles, d.tagCells,
                d.metaCells, d.wwwCells, d.mailCells);
    return 0;
}
