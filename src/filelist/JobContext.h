#pragma once
// What a long job sees of the one who started it: a stop flag, a progress
// report that reaches the caller at most ten times a second, and the host
// that answers prompts. The starter keeps the context alive for the run.
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "core/MessageRequest.h"

namespace tav {

struct JobProgress {
    std::int64_t filesListed = 0;
    std::int64_t filesExamined = 0;
    std::string current;  // the directory or file being worked on
};

class JobContext {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds kProgressInterval{100};

    explicit JobContext(MessageHost* prompter = nullptr) : prompter_(prompter) {}
    JobContext(const JobContext&) = delete;
    JobContext& operator=(const JobContext&) = delete;
    virtual ~JobContext() = default;

    // Any thread: asks the job to stop at its next test, or takes that back.
    void requestStop() { stop_.store(true, std::memory_order_relaxed); }
    void clearStop() { stop_.store(false, std::memory_order_relaxed); }
    // The job's thread: tested after each file and in long reads.
    virtual bool stopRequested() const { return stop_.load(std::memory_order_relaxed); }
    // Throws the user's Stop (AppError 1066) when a stop is requested.
    void checkpoint() const;

    // Set by the starter before the run; called on the job's thread.
    void setProgressHandler(std::function<void(const JobProgress&)> handler) { onProgress_ = std::move(handler); }
    // Passes the report on unless one went out less than kProgressInterval
    // ago; true when it was passed on.
    bool progress(const JobProgress& report);
    // Replaces the clock, for tests.
    void setClock(std::function<Clock::time_point()> clock) { clock_ = std::move(clock); }

    MessageHost* prompter() const { return prompter_; }

private:
    std::atomic<bool> stop_{false};  // written by any thread, read by the job
    MessageHost* prompter_;
    std::function<void(const JobProgress&)> onProgress_;
    std::function<Clock::time_point()> clock_;
    bool reported_ = false;          // job thread only
    Clock::time_point lastReport_{};
};

}  // namespace tav
