#pragma once
// The one place an unexpected failure goes: it is written to the error log,
// shown on the error screen, and the user ends the action or the system.
// The user's Stop (1066) is no error: it is neither logged nor shown.
//
// Modes: 0 logs and shows; -1 logs only (no screen, the action ends);
// -2 shows without logging.
//
// Threads: any thread may report; reports are taken one at a time. A report
// that arrives on a thread while that thread is already inside the handler
// (a timer firing under the error screen) is never followed: it ends in the
// "handler itself failed" notice and the end of the process.
#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "dialogs/ErrorReport.h"

namespace tav {

class AppError;
class ErrorScreen;

enum class ErrorOutcome {
    Ignored,      // the user's Stop: nothing was done
    ActionEnded,  // the action ends; the caller leaves its routine
    SkipStep,     // a form's load or paint, or a combo control: go on with the next step
    SystemEnded,  // the end callback was called
};

class ErrorHandler {
public:
    using EndProcess = std::function<void()>;
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    // endProcess ends the process at once, without saving options; in tests
    // it only records the call.
    ErrorHandler(ErrorScreen& screen, EndProcess endProcess, std::string appTitle = "Tavelo");

    // The log named by the ErrLog entry; empty or "*** not found ***": the fallback log.
    void setErrorLog(std::string_view name);
    const std::string& errorLog() const { return log_; }
    void setFallbackLog(std::string path) { fallback_ = std::move(path); }
    const std::string& fallbackLog() const { return fallback_; }
    void setClock(Clock clock) { clock_ = std::move(clock); }

    ErrorOutcome handle(const ErrorInfo& error, const ErrorPlace& place, int mode = 0);
    // The procedure comes from the error when the place names none.
    ErrorOutcome handle(const AppError& error, ErrorPlace place, int mode = 0);

private:
    ErrorOutcome report(const ErrorInfo& error, const ErrorPlace& place, int mode);
    ErrorOutcome failed(const std::string& what);
    ErrorOutcome endSystem();

    ErrorScreen& screen_;
    EndProcess endProcess_;
    std::string appTitle_;
    std::string log_;
    std::string fallback_;
    Clock clock_;
    std::mutex mutex_;                       // one report at a time
    std::atomic<std::thread::id> activeThread_{};  // the thread inside the handler
};

// Texts of the end of the system, for the UI that closes the forms.
inline constexpr const char* kSystemEndText = "This system will now be terminated. All unsaved data will be lost.";
inline constexpr const char* kFormWillNotGoText =
    "This system cannot continue. (This form cannot be unloaded automatically.)";
inline constexpr const char* kFormMinimisedText =
    "This form cannot be unloaded automatically. It will be minimized and can be ignored.";

}  // namespace tav
