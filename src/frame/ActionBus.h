#pragma once
// The deferred action bus of one form: a queue of commands, served one entry
// a tick by the form's queue timer. Work that must not run inside an event
// (a menu still open, the grid still painting) goes here and runs after the
// event has ended.
//
// The queue is one string: entries separated by kBusSeparator, each entry
// `command|parameters`. It may begin with kBusWaitMarker, which holds every
// entry back while a popup menu is open. A wait entry (first element
// kBusWaitEntry, then seconds since midnight, then an interval in ms) blocks
// the entries behind it until its time has come, and slows the timer down
// meanwhile.
//
// The engine holds the queue and the timer's wanted state; the form drives it
// from its timer and dispatches what ServiceQueue hands back.
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tav {

inline constexpr std::string_view kBusSeparator = ">>!~!>>";
inline constexpr std::string_view kBusWaitMarker = "<<<WAIT<<<";
inline constexpr std::string_view kBusWaitEntry = "<<<WtUntilTmrIs<<<";
// The options of the start-up commands: unique, to the front.
inline constexpr std::string_view kBusUniqueFront = "True|";
// Plain first-come service: appended at the end.
inline constexpr std::string_view kBusAppend = "||True";

// One command handed to the form: the caption it sets on its dispatcher and
// the tag (the parameters, a "|" list).
struct BusCommand {
    std::string caption;
    std::string tag;
};

// A wait entry for the given time (seconds since midnight) and timer interval.
std::string busWaitEntry(double secondsSinceMidnight, int intervalMs);

// Seconds since local midnight, with the fraction, from the system clock.
double secondsSinceMidnightNow();

class ActionBus {
public:
    // The clock gives seconds since midnight; the system clock when empty.
    using Clock = std::function<double()>;
    explicit ActionBus(Clock clock = {});

    // Queues a command. options: a "|" list of three flags (each false only
    // for "", "0" and "False"): 1 unique (do nothing when the command's text
    // is anywhere in the queue), 2 remove every earlier "command + separator"
    // first, 3 append at the end (else put in front). Enables the timer.
    void QueueAction(std::string_view command, std::string_view options);

    // Puts the popup marker in front of the queue (once): nothing runs until
    // no popup shows. Enables the timer.
    void HoldWhilePopup();

    // The timer's work: the next command to dispatch, or nothing (held back
    // by the popup marker or a wait entry, the entry was empty, or it was a
    // wait entry that has come due).
    std::optional<BusCommand> ServiceQueue(bool popupShowing);

    // The first element of the head entry (behind a popup marker); empty
    // when the queue is empty.
    std::string headCommand() const;

    const std::string& queue() const { return queue_; }
    bool empty() const { return queue_.empty(); }
    // The timer: enabled while the queue holds something to serve.
    bool timerEnabled() const { return timerEnabled_; }
    int interval() const { return interval_; }
    // The form dies or starts over: nothing of the bus is kept.
    void clear();

private:
    Clock clock_;
    std::string queue_;
    bool timerEnabled_ = false;
    int interval_ = 1;
};

// File List window rule: a head entry "=z" (show a cell) is served only while
// the window is the active child of the main window; everything else at once.
bool fileListMayServe(const ActionBus& bus, bool activeChild);

}  // namespace tav
