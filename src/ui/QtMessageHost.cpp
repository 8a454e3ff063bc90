#include "ui/QtMessageHost.h"

#include <QApplication>
#include <QEventLoop>
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

// The answer a worker waits for. Fulfilled once: by the box, or with no
// answer when the last holder on the UI side lets go unanswered.
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

MessageOptions optionsOf(const MessageRequest& request) {
    return isNumericText(request.options) ? MessageOptions::parse(std::lround(optionNumber(request.options)))
                                          : MessageOptions::parse(request.options);
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

void QtMessageHost::releaseKept() {
    if (!kept_) return;
    MessageBoxDialog* box = kept_.data();
    kept_ = nullptr;
    box->abandon();
    box->deleteLater();
}

void QtMessageHost::ask(MessageRequest& request, QWidget* parent, const std::optional<QFont>& font,
                        bool applicationModal, std::function<void(int)> answered) {
    const std::optional<NoHideSpec> noHide = optionsOf(request).noHide();
    if (!noHide) releaseKept();
    MessageBoxDialog* box = nullptr;
    if (noHide && kept_) {
        box = kept_.data();
        box->rearm(request, noHide->text);
    } else {
        if (noHide) releaseKept();
        QWidget* over = boxParent(parent);
        box = new MessageBoxDialog(request, QApplication::applicationName(), mainCaption(over), over,
                                   font ? &*font : nullptr);
        if (noHide) kept_ = box;
    }

    // One answer a call: the first of a press, the end of the box, its
    // destruction or the end of the program.
    auto callback = std::make_shared<std::function<void(int)>>(std::move(answered));
    auto links = std::make_shared<std::vector<QMetaObject::Connection>>();
    auto finish = [callback, links](int answer) {
        for (const auto& link : *links) QObject::disconnect(link);
        if (!*callback) return;
        auto call = std::move(*callback);
        *callback = nullptr;
        call(answer);
    };
    QPointer<MessageBoxDialog> guard(box);
    links->push_back(QObject::connect(box, &MessageBoxDialog::pressed, box, finish));
    links->push_back(QObject::connect(box, &QDialog::finished, box, [this, finish, guard](int) {
        if (!guard) return;
        if (kept_ == guard) kept_ = nullptr;
        finish(guard->answer());
        guard->deleteLater();
    }));
    links->push_back(QObject::connect(box, &QObject::destroyed, [finish] { finish(kNoAnswer); }));
    links->push_back(QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, box,
                                      [finish, guard] {
                                          if (guard) guard->abandon();
                                          finish(kNoAnswer);
                                      }));
    if (!box->isVisible()) {
        if (applicationModal) {
            box->setWindowModality(Qt::ApplicationModal);
            box->show();
        } else {
            box->open();
        }
    }
}

int QtMessageHost::show(MessageRequest& request) {
    QCoreApplication* app = QCoreApplication::instance();
    const ButtonSet buttons = resolveButtons(request);
    const bool noShow = optionsOf(request).noShow();
    int answer = kNoAnswer;
    if (!app || noShow) {
        answer = kNoAnswer;
    } else if (QThread::currentThread() == app->thread()) {
        // Modal on the UI thread: wait here for the answer.
        QEventLoop loop;
        bool answered = false;
        ask(request, parent_.data(), boxFont(), true, [&](int n) {
            answer = n;
            answered = true;
            loop.quit();
        });
        if (!answered) loop.exec();
    } else {
        std::promise<int> promise;
        std::future<int> future = promise.get_future();
        auto pending = std::make_shared<PendingAnswer>(std::move(promise));
        QPointer<QWidget> parent = parent_;
        const std::optional<QFont> font = boxFont();
        MessageRequest* asked = &request;
        QMetaObject::invokeMethod(
            app,
            [this, pending, parent, font, asked]() mutable {
                ask(*asked, parent.data(), font, false, [pending](int n) { pending->set(n); });
                pending.reset();
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
