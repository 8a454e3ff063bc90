#pragma once
// Shows a prompt request in the message box and returns the button pressed.
//
// Threads: show may be called on any thread. On the UI thread the box runs
// modally. On another thread the request is posted to the UI thread, which
// opens the box there, and the asking thread waits until the box is
// answered; the UI thread keeps running meanwhile. The button codes of the
// box go to the asking thread's mbState().
//
// NoHide: a box asked with NoHide stays on screen after the press; the next
// request with NoHide is answered by the same box (showing its validation
// text first), and a request without NoHide, or releaseKept, removes it; a
// "No show" request without NoHide only removes it. The second flag of
// {NoHide=text|flag2|flag3} removes the boxes other hosts keep before the
// box shows again; the third builds the kept box anew from the request (its
// controls, values and lists may have changed): the new instance takes the
// old one's place and focus and is on screen before the old one goes.
//
// Fonts: a format key in a box (see MessageBoxDialog::changeFont) makes the
// host build the same box again in the new font, which the boxes keep from
// then on and which goes to the format store, when one is set. The caller
// sees only the final answer.
// The host must outlive the prompts that are asked through it.
#include <QFont>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <mutex>
#include <optional>

#include "core/MessageRequest.h"

namespace tav {
class IniStore;
}

namespace tav::ui {

class MessageBoxDialog;

class QtMessageHost : public MessageHost {
public:
    // The answer when the box is not shown ("No show"), could not be shown,
    // or was let go unanswered (the program ends while a worker waits).
    static constexpr int kNoAnswer = 0;

    explicit QtMessageHost(QWidget* parent = nullptr) : parent_(parent) {}
    // The window the boxes stand over; none: the active window.
    void setParent(QWidget* parent) { parent_ = parent; }
    // The user's message box font (see messageBoxFont); the boxes asked from
    // then on use it.
    void setBoxFont(const QFont& font);
    std::optional<QFont> boxFont() const;
    // Where a font the user changes in a box is remembered (section
    // "MB formats"); none: for this run only. UI thread.
    void setFormatStore(IniStore* ini) { formatStore_ = ini; }
    int show(MessageRequest& request) override;

    // Removes the box kept on screen by NoHide, if any (UI thread).
    void releaseKept();
    // The box kept on screen by NoHide, if any (UI thread).
    MessageBoxDialog* keptBox() const;

private:
    // Opens the box (or answers with the kept one) on the UI thread and
    // calls answered once with the answer.
    // replaced: the box this one is built in place of (a rebuild in a new
    // font), hidden already.
    void ask(MessageRequest& request, QWidget* parent, const std::optional<QFont>& font, bool applicationModal,
             std::function<void(int)> answered, const MessageBoxDialog* replaced = nullptr);
    void rememberFont(const QFont& font);
    void releaseOthersKept();
    // Set on the UI thread before prompts are asked; show reads it on the
    // asking thread.
    QPointer<QWidget> parent_;
    mutable std::mutex fontLock_;
    std::optional<QFont> font_;  // written on the UI thread, read by show on any thread
    QPointer<MessageBoxDialog> kept_;  // the NoHide box; UI thread only
    IniStore* formatStore_ = nullptr;  // UI thread only
};

}  // namespace tav::ui
