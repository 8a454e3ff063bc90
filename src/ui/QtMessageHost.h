#pragma once
// Shows a prompt request in the message box and returns the button pressed.
//
// Threads: show may be called on any thread. On the UI thread the box runs
// modally. On another thread the request is posted to the UI thread, which
// opens the box there, and the asking thread waits until the box is
// answered; the UI thread keeps running meanwhile. The button codes of the
// box go to the asking thread's mbState().
#include <QPointer>
#include <QWidget>

#include "core/MessageRequest.h"

namespace tav::ui {

class QtMessageHost : public MessageHost {
public:
    // The answer when the box is not shown ("No show"), could not be shown,
    // or was let go unanswered (the program ends while a worker waits).
    static constexpr int kNoAnswer = 0;

    explicit QtMessageHost(QWidget* parent = nullptr) : parent_(parent) {}
    void setParent(QWidget* parent) { parent_ = parent; }
    int show(MessageRequest& request) override;

private:
    int showOnUiThread(MessageRequest& request);
    QPointer<QWidget> parent_;  // written and read on the UI thread
};

}  // namespace tav::ui
