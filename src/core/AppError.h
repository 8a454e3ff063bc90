#pragma once
// A numbered program error. It unwinds to the nearest handler, which logs
// and reports it.
// Number 1066 is the user's Stop: it unwinds quietly and is never logged.
#include <stdexcept>
#include <string>

namespace tav {

constexpr int kUserStop = 1066;

class AppError : public std::runtime_error {
public:
    AppError(int number, std::string text, std::string procedure = {})
        : std::runtime_error(text), number_(number), procedure_(std::move(procedure)) {}
    int number() const { return number_; }
    const std::string& procedure() const { return procedure_; }
    bool isUserStop() const { return number_ == kUserStop; }

private:
    int number_;
    std::string procedure_;
};

[[noreturn]] inline void raiseError(int number, const std::string& text, const std::string& procedure = {}) {
    throw AppError(number, text, procedure);
}

[[noreturn]] inline void raiseUserStop() { throw AppError(kUserStop, "Stopped by user"); }

}  // namespace tav
