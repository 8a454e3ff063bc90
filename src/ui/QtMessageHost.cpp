#include "ui/QtMessageHost.h"

#include <QApplication>
#include <QThread>
#include <atomic>
#include <future>
#include <memory>

#include "dialogs/MessageBoxState.h"
#include "dialogs/MessageOptions.h"
#include "dialogs/StandardButtons.h"
#include "ui/MessageBoxDialog.h"

namespace tav::ui {

namespace {

// The answer a worker waits for. Fulfilled once: by the box's finished, or
// with no answer when the last holder on the UI side lets go unanswered.
class PendingAnswer {
public:
    explicit PendingAnswer(std::promise<int> promise) : promise_(std::move(promise)) {}
    ~PendingAnswer() { set(QtMessageHost::kNoAnswer); }
    PendingAnswer(const PendingAnswer&) = delete;
    PendingAnswer& operator=(const PendingAnswer&) = delete;
    void set(int answer) {
        if (!done_.exchange(true)) promise_.set_value(answer);
    }

private:
    std::promise<int> promise_;
    std::atomic<bool> done_{false};
};

// The box stands over the host's window, else over the active window.
QWidget* boxParent(QWidget* parent) { return parent ? parent : QApplication::activeWindow(); }

QString mainCaption(QWidget* parent) {
    if (parent) return parent->window()->windowTitle();
    return QApplication::applicationName();
}

}  // namespace

void QtMessageHost::setBoxFont(const QFont& font) {
    std::lock_guard lock(fontLock_);
    font_ = font;
}

std::optional<QFont> QtMessageHost::boxFont() const {
    std::lock_guard lock(fontLock_);
    return font_;
}

int QtMessageHost::showOnUiThread(MessageRequest& request) {
    QWidget* parent = boxParent(parent_.data());
    const std::optional<QFont> font = boxFont();
    MessageBoxDialog box(request, QApplication::applicationName(), mainCaption(parent), parent,
                         font ? &*font : nullptr);
    box.exec();
    return box.answer();
}

int QtMessageHost::show(MessageRequest& request) {
    QCoreApplication* app = QCoreApplication::instance();
    const ButtonSet buttons = resolveButtons(request);
    const bool noShow = MessageOptions::parse(request.options).noShow();
    int answer = kNoAnswer;
    if (!app || noShow) {
        answer = kNoAnswer;
    } else if (QThread::currentThread() == app->thread()) {
        answer = showOnUiThread(request);
    } else {
        std::promise<int> promise;
        std::future<int> future = promise.get_future();
        auto pending = std::make_shared<PendingAnswer>(std::move(promise));
        QPointer<QWidget> parent = parent_;
        const std::optional<QFont> font = boxFont();
        MessageRequest* asked = &request;
        QMetaObject::invokeMethod(
            app,
            [pending, parent, font, asked]() mutable {
                QWidget* over = boxParent(parent.data());
                auto* box = new MessageBoxDialog(*asked, QApplication::applicationName(), mainCaption(over), over,
                                                 font ? &*font : nullptr);
                QObject::connect(box, &QDialog::finished, box, [pending, box](int) {
                    pending->set(box->answer());
                    box->deleteLater();
                });
                // Destroyed unanswered (its parent went away): the worker gets no answer.
                QObject::connect(box, &QObject::destroyed, [pending] { pending->set(kNoAnswer); });
                // The program ends: the box lets go of the request before the worker goes on.
                QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, box, [pending, box] {
                    box->abandon();
                    pending->set(kNoAnswer);
                });
                pending.reset();
                box->open();
            },
            Qt::QueuedConnection);
        pending.reset();
        answer = future.get();
    }
    applyButtonCodes(buttons, mbState());
    if (request.values.empty()) request.values.emplace_back();
    mbState().lastKeyData = request.values[0];
    return answer;
}

}  // namespace tav::ui
