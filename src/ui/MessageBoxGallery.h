#pragma once
// A window of sample message boxes, for a person to look at the boxes and
// try their keys: each sample opens its box through the Qt host and shows
// the answer and the values the box wrote back. "tavelo --demo-boxes".
#include <QWidget>

#include "ui/QtMessageHost.h"

class QPlainTextEdit;

namespace tav::ui {

class MessageBoxGallery : public QWidget {
    Q_OBJECT
public:
    explicit MessageBoxGallery(QWidget* parent = nullptr);

    // The names of the samples, in the order of their buttons.
    static QStringList sampleNames();
    // The request of a sample; an empty request for an unknown name.
    static MessageRequest sample(const QString& name);

    // Opens a sample here (on the UI thread) or from a worker thread, and
    // writes the answer to the log.
    void run(const QString& name, bool fromWorker);
    QString log() const;

    // The prompt calls that show their box again between their steps
    // (the sequence and lines prompts), and running one.
    static QStringList promptNames();
    void runPrompt(const QString& name, bool fromWorker);

private:
    void report(const QString& name, int answer, const MessageRequest& request);

    QtMessageHost host_;
    QPlainTextEdit* log_ = nullptr;
};

// Shows the gallery and runs the event loop; the exit code of the loop.
int runMessageBoxGallery();

}  // namespace tav::ui
