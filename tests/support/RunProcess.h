#pragma once
// Runs a program as a process for the command-line tests: its exit code,
// what it wrote to standard output and to standard error.
#include <string>
#include <vector>

namespace tavtest {

struct ProcessRun {
    int code = -1;
    std::string out;
    std::string err;
};

std::string shellQuoted(const std::string& s);

// Runs `program` with `args`; `input` goes to its standard input.
ProcessRun runProcess(const std::string& program, const std::vector<std::string>& args,
                      const std::string& input = {});

// The lines of a program's output, without their line ends.
std::vector<std::string> linesOf(const std::string& text);

}  // namespace tavtest
