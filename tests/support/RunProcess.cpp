#include "support/RunProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "support/TempDir.h"

namespace tavtest {

std::string shellQuoted(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

ProcessRun runProcess(const std::string& program, const std::vector<std::string>& args, const std::string& input) {
    TempDir scratch;
    std::string cmd = shellQuoted(program);
    for (const auto& a : args) cmd += " " + shellQuoted(a);
    cmd += " 2>" + shellQuoted((scratch / "stderr").string());
    cmd += " <" + shellQuoted(scratch.write("stdin", input).string());
    ProcessRun r;
    FILE* p = popen(cmd.c_str(), "r");
    if (!p) return r;
    char buf[4096];
    size_t n;
    while ((n = fread(buf, 1, sizeof buf, p)) > 0) r.out.append(buf, n);
    const int status = pclose(p);
    r.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.err = scratch.read("stderr");
    return r;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> out;
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t end = text.find('\n', at);
        if (end == std::string::npos) end = text.size();
        out.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return out;
}

}  // namespace tavtest
