#include "dialogs/ErrorHandler.h"

#include <cctype>
#include <stdexcept>

#include "core/AppError.h"
#include "dialogs/ErrorLog.h"
#include "dialogs/ErrorScreen.h"

namespace tav {

namespace {

std::string lower(std::string_view s) {
    std::string out(s);
    for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

// A form's load and paint events, and combo controls, go on after an error.
bool skipsStep(const ErrorPlace& place) {
    std::string proc = lower(place.procedure);
    return proc.ends_with("form_load") || proc.ends_with("form_paint") ||
           lower(place.control).find("combo") != std::string::npos;
}

std::string describe(const ErrorInfo& error) {
    return "Error " + std::to_string(error.number) + " - " + (error.text.empty() ? "Unknown error" : error.text);
}

// Marks the calling thread as inside the handler for the life of a report.
class ActiveGuard {
public:
    explicit ActiveGuard(std::atomic<std::thread::id>& slot) : slot_(slot) { slot_ = std::this_thread::get_id(); }
    ~ActiveGuard() { slot_ = std::thread::id{}; }
    ActiveGuard(const ActiveGuard&) = delete;
    ActiveGuard& operator=(const ActiveGuard&) = delete;

private:
    std::atomic<std::thread::id>& slot_;
};

}  // namespace

ErrorHandler::ErrorHandler(ErrorScreen& screen, EndProcess endProcess, std::string appTitle)
    : screen_(screen),
      endProcess_(std::move(endProcess)),
      appTitle_(std::move(appTitle)),
      fallback_(fallbackErrorLog()),
      clock_([] { return std::chrono::system_clock::now(); }) {}

void ErrorHandler::setErrorLog(std::string_view name) { log_ = errorLogName(name); }

ErrorOutcome ErrorHandler::handle(const AppError& error, ErrorPlace place, int mode) {
    if (place.procedure.empty()) place.procedure = error.procedure();
    return handle(ErrorInfo{error.number(), error.what(), 0}, place, mode);
}

ErrorOutcome ErrorHandler::handle(const ErrorInfo& error, const ErrorPlace& place, int mode) {
    if (error.number == kUserStop) return ErrorOutcome::Ignored;
    if (activeThread_.load() == std::this_thread::get_id()) return failed(describe(error));
    std::lock_guard lock(mutex_);
    ActiveGuard active(activeThread_);
    try {
        return report(error, place, mode);
    } catch (const std::exception& e) {
        return failed(std::string("Error - ") + e.what());
    } catch (...) {
        return failed("Error - Unknown error");
    }
}

ErrorOutcome ErrorHandler::report(const ErrorInfo& error, const ErrorPlace& place, int mode) {
    screen_.prepare();
    const std::string stamp = errorTimeStamp(clock_());

    std::string logName = log_.empty() ? fallback_ : log_;
    std::vector<std::string> lines = errorBlockLines(error, place, stamp, logName);
    if (log_.empty()) lines.back() += fallbackLogNote(fallback_);
    if (mode != -2 && !appendErrorLog(logName, lines)) {
        if (logName == fallback_) throw std::runtime_error("The error log " + fallback_ + " cannot be written");
        lines = errorBlockLines(error, place, stamp, fallback_);
        lines.back() += fallbackLogNote(fallback_);
        if (!appendErrorLog(fallback_, lines))
            throw std::runtime_error("The error log " + fallback_ + " cannot be written");
    }
    if (mode == -1) return ErrorOutcome::ActionEnded;

    const bool skip = skipsStep(place);
    if (skip) lines[2] += " - This module will skip the current step and continue.";
    lines.emplace_back(" Press OK to terminate this Action and continue. Press Cancel to end this system.");
    const std::string text = joinLines(lines);

    if (!screen_.showError(appTitle_, text)) {
        if (screen_.askEndSystem(appTitle_,
                                 "To 'debug now press break. Yes will end system, Cancel will continue "
                                 "(same as press OK on error screen)."))
            return endSystem();
    }
    screen_.closeOpenBoxes();
    return skip ? ErrorOutcome::SkipStep : ErrorOutcome::ActionEnded;
}

ErrorOutcome ErrorHandler::endSystem() {
    screen_.showNotice(appTitle_, kSystemEndText);
    if (endProcess_) endProcess_();
    return ErrorOutcome::SystemEnded;
}

ErrorOutcome ErrorHandler::failed(const std::string& what) {
    std::vector<std::string> lines = {
        what + " in ErrorHandler",
        "Error Handler did not process an error correctly. Possibly check ",
        " the Errorlog path is not set to an incorrect drive mapping in the INI file.",
        "Program will now be stopped.",
        fallback_,
    };
    appendErrorLog(fallback_, lines);
    try {
        screen_.showNotice("Error", joinLines(lines));
    } catch (...) {
        // Nothing more can be shown; the process ends all the same.
    }
    if (endProcess_) endProcess_();
    return ErrorOutcome::SystemEnded;
}

}  // namespace tav
