#pragma once
// Drives the deferred action bus of one window from a timer: while the queue
// holds something the timer fires at the interval the bus asks for, and
// each tick serves one entry to the window's dispatcher.
#include <QObject>
#include <QTimer>
#include <functional>
#include <string_view>

#include "frame/ActionBus.h"

namespace tav::ui {

class BusTimer : public QObject {
    Q_OBJECT
public:
    using Dispatch = std::function<void(const BusCommand&)>;
    // `mayServe`: asked before each tick's entry (the File List window serves
    // "=z" only while it is the active window); none: always.
    BusTimer(Dispatch dispatch, QObject* parent = nullptr, std::function<bool(const ActionBus&)> mayServe = {});

    void queue(std::string_view command, std::string_view options = kBusAppend);
    ActionBus& bus() { return bus_; }
    // One tick now (the main timer calls the queue's handler itself).
    void tick();

private:
    void schedule();

    ActionBus bus_;
    QTimer timer_;
    Dispatch dispatch_;
    std::function<bool(const ActionBus&)> mayServe_;
};

}  // namespace tav::ui
