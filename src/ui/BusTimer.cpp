#include "ui/BusTimer.h"

#include <QApplication>
#include <QMenu>

namespace tav::ui {

namespace {
// A popup menu holds the message loop: entries behind the wait marker hold back.
bool popupShowing() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr; }
}  // namespace

BusTimer::BusTimer(Dispatch dispatch, QObject* parent, std::function<bool(const ActionBus&)> mayServe)
    : QObject(parent), dispatch_(std::move(dispatch)), mayServe_(std::move(mayServe)) {
    timer_.setSingleShot(false);
    connect(&timer_, &QTimer::timeout, this, &BusTimer::tick);
}

void BusTimer::queue(std::string_view command, std::string_view options) {
    bus_.QueueAction(command, options);
    schedule();
}

void BusTimer::tick() {
    if (bus_.empty()) {
        timer_.stop();
        return;
    }
    if (mayServe_ && !mayServe_(bus_)) return;
    std::optional<BusCommand> command = bus_.ServiceQueue(popupShowing());
    schedule();
    if (command) dispatch_(*command);
}

void BusTimer::schedule() {
    if (!bus_.timerEnabled() || bus_.empty()) {
        timer_.stop();
        return;
    }
    timer_.setInterval(std::max(1, bus_.interval()));
    if (!timer_.isActive()) timer_.start();
}

}  // namespace tav::ui
