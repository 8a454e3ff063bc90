#pragma once
// A sink in front of a slow receiver, such as a grid on another thread:
// rows are gathered and handed on in batches, at most about every 100 ms,
// and whatever is left at the end. Runs on the job's thread; the receiver
// decides how a batch crosses to its own thread.
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "filelist/RowSink.h"

namespace tav {

class RowBatcher : public RowSink {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds kBatchInterval{100};

    struct Receiver {
        std::function<void(const std::vector<ListColumn>&)> begin;
        // A batch of rows in walk order; false stops the job.
        std::function<bool(std::vector<Row>&&)> rows;
        std::function<void(const std::string& path, const std::string& text)> fileError;
        std::function<void(const ListTotals&)> finish;
    };

    explicit RowBatcher(Receiver receiver) : to_(std::move(receiver)) {}
    void setClock(std::function<Clock::time_point()> clock) { clock_ = std::move(clock); }

    void begin(const std::vector<ListColumn>& columns) override;
    bool row(Row&& row) override;
    void fileError(const std::string& path, const std::string& text) override;
    void finish(const ListTotals& totals) override;

private:
    Clock::time_point now() const { return clock_ ? clock_() : Clock::now(); }
    bool flush();

    Receiver to_;
    std::function<Clock::time_point()> clock_;
    std::vector<Row> batch_;
    Clock::time_point lastFlush_{};
};

}  // namespace tav
