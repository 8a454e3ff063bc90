#include "ui/RefreshRunner.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

#include "core/AppError.h"
#include "core/Utf8.h"
#include "filelist/JobContext.h"
#include "filelist/RowBatcher.h"
#include "ui/ListGridModel.h"

namespace tav::ui {

namespace {

QString qtext(const std::string& s) { return QString::fromStdString(toUtf8(s)); }

constexpr std::chrono::seconds kEndWait{3};

}  // namespace

struct RefreshRunner::Run {
    explicit Run(MessageHost* host) : job(host) {}

    ListJobSpec spec;          // written before the worker starts, then read by it only
    JobContext job;            // stop: any thread
    std::thread worker;        // UI thread only
    RefreshRunner* owner = nullptr;  // UI thread only; null once the runner is gone
    bool ended = false;        // UI thread only: the worker's end has arrived
    ListTotals totals;         // worker thread only, until it is posted
    std::mutex lock;           // guards done
    std::condition_variable endCv;
    bool done = false;         // the worker has left its function
};

// What the worker hands to the UI thread. Each call is queued to the
// application object, so it runs on the UI thread, in the order posted; it
// is dropped when the runner is gone.
struct RunEvents {
    template <class F>
    static void post(const std::shared_ptr<RefreshRunner::Run>& run, F f) {
        QCoreApplication* app = QCoreApplication::instance();
        if (!app) return;
        QMetaObject::invokeMethod(
            app,
            [run, f]() {
                if (RefreshRunner* r = run->owner) f(*r, run);
            },
            Qt::QueuedConnection);
    }
    // Only the refresh in force may touch the grid.
    static bool current(RefreshRunner& r, const std::shared_ptr<RefreshRunner::Run>& run) {
        return r.current_ == run;
    }
    static ListGridModel* model(RefreshRunner& r) { return r.model_; }
    static void reap(RefreshRunner& r, const std::shared_ptr<RefreshRunner::Run>& run) { r.reap(run); }
};

namespace {

using RunPtr = std::shared_ptr<RefreshRunner::Run>;

void work(RunPtr run) {
    RowBatcher::Receiver to;
    to.begin = [run](const std::vector<ListColumn>& columns) {
        RunEvents::post(run, [columns](RefreshRunner& r, const RunPtr& self) {
            if (!RunEvents::current(r, self)) return;
            RunEvents::model(r)->beginList(columns);
            emit r.listBegun();
        });
    };
    to.rows = [run](std::vector<Row>&& rows) {
        auto batch = std::make_shared<std::vector<Row>>(std::move(rows));
        RunEvents::post(run, [batch](RefreshRunner& r, const RunPtr& self) {
            if (RunEvents::current(r, self)) RunEvents::model(r)->appendRows(std::move(*batch));
        });
        return !run->job.stopRequested();
    };
    to.fileError = [run](const std::string& path, const std::string& text) {
        RunEvents::post(run, [path, text](RefreshRunner& r, const RunPtr& self) {
            if (!RunEvents::current(r, self)) return;
            RunEvents::model(r)->addFileError(path, text);
            emit r.fileError(qtext(path), qtext(text));
        });
    };
    to.finish = [run](const ListTotals& totals) { run->totals = totals; };
    RowBatcher batcher(std::move(to));
    run->job.setProgressHandler([run](const JobProgress& p) {
        RunEvents::post(run, [p](RefreshRunner& r, const RunPtr& self) {
            if (RunEvents::current(r, self)) emit r.progress(p.filesListed, p.filesExamined, qtext(p.current));
        });
    });

    bool ranToEnd = false;
    try {
        ranToEnd = FindAndListFiles(run->spec, run->job, batcher);
    } catch (const std::exception& e) {
        // Reported as a line of the error list; the rows made so far stay.
        run->totals.complete = false;
        const std::string text = std::string("**Err: ") + e.what();
        RunEvents::post(run, [text](RefreshRunner& r, const RunPtr& self) {
            if (RunEvents::current(r, self)) emit r.fileError(QString(), qtext(text));
        });
    }
    const ListTotals totals = run->totals;
    RunEvents::post(run, [totals, ranToEnd](RefreshRunner& r, const RunPtr& self) {
        const bool inForce = RunEvents::current(r, self);
        RunEvents::reap(r, self);
        if (!inForce) return;
        RunEvents::model(r)->finishList(totals);
        emit r.finished(totals, ranToEnd);
    });
    {
        std::lock_guard hold(run->lock);
        run->done = true;
    }
    run->endCv.notify_all();
}

}  // namespace

RefreshRunner::RefreshRunner(ListGridModel* model, QObject* parent) : QObject(parent), model_(model) {}

RefreshRunner::~RefreshRunner() {
    std::vector<RunPtr> all = retiring_;
    if (current_) all.push_back(current_);
    for (const RunPtr& run : all) {
        run->owner = nullptr;
        run->job.requestStop();
    }
    for (const RunPtr& run : all) {
        if (!run->worker.joinable()) continue;
        std::unique_lock hold(run->lock);
        const bool ended = run->endCv.wait_for(hold, kEndWait, [&] { return run->done; });
        hold.unlock();
        if (ended)
            run->worker.join();
        else
            run->worker.detach();  // holds its own share of the run
    }
}

void RefreshRunner::start(ListJobSpec spec) {
    if (current_ && !current_->ended) {
        current_->job.requestStop();
        retiring_.push_back(current_);
    }
    auto run = std::make_shared<Run>(host_);
    run->spec = std::move(spec);
    run->owner = this;
    current_ = run;
    run->worker = std::thread(work, run);
    emit started();
}

void RefreshRunner::stop() {
    if (!isRunning()) return;
    current_->job.requestStop();
    emit stopping();
}

bool RefreshRunner::isRunning() const { return current_ && !current_->ended; }

void RefreshRunner::reap(const std::shared_ptr<Run>& run) {
    // The worker has posted its last event: it is at its end, so the join
    // is at once.
    run->ended = true;
    if (run->worker.joinable()) run->worker.join();
    std::erase(retiring_, run);
}

}  // namespace tav::ui
