#include "ui/QtMessageHost.h"

#include <QApplication>
#include <QEventLoop>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <future>
#include <memory>

#include "dialogs/MessageBoxFormat.h"
#include "dialogs/MessageBoxState.h"
#include "dialogs/MessageOptions.h"
#include "dialogs/StandardButtons.h"
#include "ui/MessageBoxControls.h"
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

// The box stands over the host's window, else over the active window. When
// that is another message box, the box stands over that one's window: a box
// goes with its parent, and the other box may go first (answered, released,
// replaced).
QWidget* boxParent(QWidget* parent) {
    if (parent) return parent;
    QWidget* over = QApplication::activeWindow();
    for (auto* box = qobject_cast<MessageBoxDialog*>(over); box; box = qobject_cast<MessageBoxDialog*>(over))
        over = box->parentWidget() ? box->parentWidget()->window() : nullptr;
    return over;
}

// The boxes that NoHide keeps on screen, of all hosts. UI thread only.
std::vector<QPointer<MessageBoxDialog>>& keptBoxes() {
    static std::vector<QPointer<MessageBoxDialog>> boxes;
    return boxes;
}

void keep(MessageBoxDialog* box) {
    std::vector<QPointer<MessageBoxDialog>>& all = keptBoxes();
    all.erase(std::remove_if(all.begin(), all.end(), [](const auto& b) { return b.isNull() || b->isAbandoned(); }),
              all.end());
    all.emplace_back(box);
}

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

MessageBoxDialog* QtMessageHost::keptBox() const { return kept_.data(); }

void QtMessageHost::releaseOthersKept() {
    std::vector<QPointer<MessageBoxDialog>>& all = keptBoxes();
    for (const QPointer<MessageBoxDialog>& box : all) {
        if (!box || box == kept_) continue;
        box->abandon();
        box->deleteLater();
    }
    all.clear();
    if (kept_) all.push_back(kept_);
}

void QtMessageHost::rememberFont(const QFont& font) {
    setBoxFont(font);
    if (!formatStore_) return;
    try {
        writeMessageBoxFormat(*formatStore_, messageBoxFormatOf(font));
    } catch (const std::exception&) {
        // The font holds for this run; the box goes on regardless.
    }
}

void QtMessageHost::ask(MessageRequest& request, QWidget* parent, const std::optional<QFont>& font,
                        bool applicationModal, std::function<void(int)> answered, const MessageBoxDialog* replaced) {
    const std::optional<NoHideSpec> noHide = optionsOf(request).noHide();
    if (kept_ && kept_->isAbandoned()) kept_ = nullptr;  // removed by another host
    if (!noHide) releaseKept();
    if (noHide && noHide->removeOthers) releaseOthersKept();
    MessageBoxDialog* box = nullptr;
    QPointer<MessageBoxDialog> previous;  // the kept box a second instance replaces
    if (noHide && kept_ && !noHide->secondInstance) {
        box = kept_.data();
        box->rearm(request, noHide->text);
    } else {
        if (noHide && kept_) previous = kept_;
        // A box built in place of another stands over the same window (the
        // active window may be the old box, which is about to go).
        const MessageBoxDialog* replacing = previous ? previous.data() : replaced;
        QWidget* over = replacing ? replacing->parentWidget() : boxParent(parent);
        box = new MessageBoxDialog(request, QApplication::applicationName(), mainCaption(over), over,
                                   font ? &*font : nullptr);
        if (previous) box->takePlaceOf(*previous);
        else if (replaced) box->takePlaceOf(*replaced);
        if (noHide) {
            kept_ = box;
            keep(box);
        }
    }

    // One answer a call: the first of a press, the end of the box, its
    // destruction or the end of the program. A font change is no answer:
    // the same box is built again in the new font and answers instead.
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
    QPointer<QWidget> over(parent);
    links->push_back(QObject::connect(box, &MessageBoxDialog::pressed, box, finish));
    links->push_back(QObject::connect(
        box, &QDialog::finished, box, [this, finish, guard, callback, links, over, applicationModal](int) {
            if (!guard) return;
            if (kept_ == guard) kept_ = nullptr;
            if (guard->answer() == MessageBoxDialog::kFontChanged && *callback) {
                for (const auto& link : *links) QObject::disconnect(link);
                auto call = std::move(*callback);
                *callback = nullptr;
                rememberFont(guard->changedFont());
                ask(guard->request(), over.data(), guard->changedFont(), applicationModal, std::move(call),
                    guard.data());
                guard->deleteLater();
                return;
            }
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
        // A new instance of a kept box shows the validation text too, but a
        // rebuild in a new font does not show it again.
        if (previous && noHide && !replaced) box->rearm(request, noHide->text);
    }
    // The old instance goes once the new one is on screen.
    if (previous) {
        previous->abandon();
        previous->deleteLater();
    }
}

int QtMessageHost::show(MessageRequest& request) {
    QCoreApplication* app = QCoreApplication::instance();
    const ButtonSet buttons = resolveButtons(request);
    const MessageOptions options = optionsOf(request);
    const bool noShow = options.noShow();
    int answer = kNoAnswer;
    if (app && noShow && !options.noHide()) {
        // A box that is not shown ends a NoHide cycle: the kept box goes.
        if (QThread::currentThread() == app->thread()) releaseKept();
        else QMetaObject::invokeMethod(app, [this] { releaseKept(); }, Qt::QueuedConnection);
    }
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
