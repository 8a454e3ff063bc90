#pragma once
// The widget that shows a file through a text view of the viewer engine.
// It never holds the file: it paints the screen lines the view gives it,
// measured with its own font and size, and passes the movement keys, the
// wheel and its scroll bar to the view.
//
// Keys: PgDn/PgUp a screen, Down/Up a line, Ctrl+End/Ctrl+Home the end and
// the start of the file; with Shift each extends the selection. Other keys
// go on to the parent. The scroll bar runs from 0 to 10002: its arrows and
// page areas move by lines and screens, its slider spans the file.
//
// The text block cache is taken by reference so that all views of the
// program can share one; the message host shows the reader's messages.
//
// The plain text of a large file is made on a worker thread: until it is
// ready the view goes on showing what it showed, with the busy status
// painted at its foot; then the plain text shows and plainShown() tells the
// owner. A newer showFile drops an older plain text still being made, and
// Esc (or stopPlain) stops it.
#include <QFutureWatcher>
#include <QScrollBar>
#include <QStringList>
#include <QWidget>
#include <atomic>
#include <memory>
#include <string>

#include "core/MessageRequest.h"
#include "ui/FontLineMeasure.h"
#include "viewer/ShowFile.h"
#include "viewer/TextBlockCache.h"
#include "viewer/TextView.h"

namespace tav::ui {

class TextSectionView : public QWidget {
    Q_OBJECT
public:
    TextSectionView(TextBlockCache& cache, MessageHost& host, ViewSettings settings = {}, QWidget* parent = nullptr);

    ~TextSectionView() override;

    // Shows the file from `startByte`: "<empty file>" for an empty one.
    // The result carries the status texts; shown is false after a failure
    // (its message has gone to the host). A plain text made on a worker
    // comes back pending, with the busy status as its status: plainShown()
    // brings the final result.
    ShowFileResult showFile(const QString& path, TextKind kind = TextKind::Raw, int64_t startByte = 1,
                            const QString& title = {}, const ShowFileOptions& options = {});
    // Plain text of files from this many bytes on is made on a worker
    // (smaller ones at once: the round trip would cost more than the work).
    void setPlainWorkerFrom(int64_t bytes) { plainWorkerFrom_ = bytes; }
    int64_t plainWorkerFrom() const { return plainWorkerFrom_; }
    // A plain text is being made.
    bool plainPending() const { return plain_ != nullptr; }
    // The busy status while a plain text is made, else empty.
    const QString& busyStatus() const { return busyStatus_; }
    // What shows, as shown by the last successful showFile.
    const ShownText& shownText() const { return shown_; }

    TextView& view() { return view_; }
    const TextView& view() const { return view_; }
    const FontLineMeasure& measure() const { return measure_; }
    QScrollBar* scrollBar() const { return bar_; }

    // The lines on screen as painted, top first.
    QStringList shownLines() const;
    // The selected text of each screen line, as painted (empty where none).
    QStringList selectedParts() const;
    int visibleLines() const { return measure_.visibleLines(); }

    void setWordWrap(bool on);
    // Characters below 32 and 127 painted as '.' (on by default).
    void setMarkControls(bool on);

    QSize sizeHint() const override;

public slots:
    // Stops the plain text being made; what shows stays.
    void stopPlain();

signals:
    // After every move, refill or new file.
    void moved();
    // The busy status while a plain text is made; empty when it is over.
    void busyChanged(const QString& status);
    // A plain text made on a worker has shown (result.shown) or failed.
    void plainShown(const tav::ShowFileResult& result);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    // The plain text being made on a worker, and what to show it as.
    struct PlainJob {
        ShownText shown;
        int64_t startByte = 1;
        ShowFileOptions options;
        std::shared_ptr<std::atomic<bool>> stop;
        QFutureWatcher<PlainSource>* watcher = nullptr;
    };

    ShowFileResult startPlain(const ShownText& shown, int64_t startByte, const ShowFileOptions& options);
    void plainReady();
    // Forgets the job in hand, telling its worker to stop.
    void dropPlain();
    void setBusyStatus(const QString& status);
    void barAction(int action);
    void barValueChanged(int value);
    // The measure takes the widget's font and text area; true when it changed.
    bool updateMeasure();
    // Refills the screen after the area changed, keeping the top line's place.
    void refill();
    void afterMove();
    void updateBar();
    QRect textArea() const;
    // The byte under a point of the text area (length + 1 behind the text).
    int64_t byteAt(const QPoint& p) const;

    FontLineMeasure measure_;
    TextView view_;
    MessageHost& host_;
    QScrollBar* bar_ = nullptr;
    ShownText shown_;
    int barShown_ = -1;     // the value the bar was given for what shows
    bool busy_ = false;     // a move is under way: bar signals do not act
    int wheelRest_ = 0;     // wheel turns not yet worth a line
    std::unique_ptr<PlainJob> plain_;
    QString busyStatus_;
    int64_t plainWorkerFrom_ = 64 * 1024;
};

}  // namespace tav::ui
