#pragma once
// Runs a refresh (`FindAndListFiles`) on a worker thread and streams its
// rows into a ListGridModel on the UI thread, in batches about every
// 100 ms. The UI thread never waits for the worker:
//
// - start(spec) begins a refresh; one that still runs is stopped first,
//   and whatever it still sends is dropped.
// - stop() asks the running job to stop at its next test; the rows that
//   reached the grid stay, and finished follows with an incomplete total.
// - progress comes at most ten times a second; file errors come as lines
//   for the window's error list.
//
// Prompts of the job go through the message host given, on the worker
// thread (QtMessageHost opens the box on the UI thread and lets the worker
// wait for the answer).
#include <QObject>
#include <QString>
#include <memory>
#include <vector>

#include "core/MessageRequest.h"
#include "filelist/ListJob.h"
#include "filelist/RowSink.h"

namespace tav::ui {

class ListGridModel;

class RefreshRunner : public QObject {
    Q_OBJECT
public:
    explicit RefreshRunner(ListGridModel* model, QObject* parent = nullptr);
    // Stops every job still running and waits a short while for each; a
    // worker that does not end in that time is left to end by itself.
    ~RefreshRunner() override;

    void setMessageHost(MessageHost* host) { host_ = host; }

    void start(ListJobSpec spec);
    void stop();
    // A refresh has started and its end has not yet reached the UI thread.
    bool isRunning() const;
    // Workers of earlier refreshes that have not yet ended.
    int retiringCount() const { return static_cast<int>(retiring_.size()); }

    struct Run;  // shared by the UI thread and one worker

signals:
    void started();
    // The columns of the new list are in the model (it is empty now).
    void listBegun();
    void progress(qint64 filesListed, qint64 filesExamined, const QString& current);
    void fileError(const QString& path, const QString& text);
    void stopping();
    // ranToEnd: false when stopped or nothing was listed.
    void finished(const tav::ListTotals& totals, bool ranToEnd);

private:
    friend struct RunEvents;
    void reap(const std::shared_ptr<Run>& run);

    ListGridModel* model_;
    MessageHost* host_ = nullptr;
    std::shared_ptr<Run> current_;                 // UI thread only
    std::vector<std::shared_ptr<Run>> retiring_;   // stopped, worker not yet ended; UI thread only
};

}  // namespace tav::ui
