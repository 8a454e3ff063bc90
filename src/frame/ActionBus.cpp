#include "frame/ActionBus.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>

#include "core/ListText.h"
#include "settings/IniNumbers.h"

namespace tav {

namespace {
bool startsWith(std::string_view text, std::string_view head) { return text.substr(0, head.size()) == head; }

// Every occurrence of `what` taken out of `text`.
void removeAll(std::string& text, std::string_view what) {
    if (what.empty()) return;
    std::string out;
    out.reserve(text.size());
    size_t from = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
        out.append(text, from, at - from);
        from = at + what.size();
    }
    out.append(text, from, std::string::npos);
    text = std::move(out);
}

// The entry at the head of a queue (without the popup marker) and the rest.
std::pair<std::string_view, std::string_view> splitHead(std::string_view queue) {
    const size_t at = queue.find(kBusSeparator);
    if (at == std::string_view::npos) return {queue, {}};
    return {queue.substr(0, at), queue.substr(at + kBusSeparator.size())};
}

double numberOr0(std::string_view text) { return numberAtStart(text).value_or(0.0); }
}  // namespace

std::string busWaitEntry(double secondsSinceMidnight, int intervalMs) {
    char buf[32];
    auto res = std::to_chars(buf, buf + sizeof buf, static_cast<float>(secondsSinceMidnight));
    return std::string(kBusWaitEntry) + "|" + std::string(buf, res.ptr) + "|" + std::to_string(intervalMs);
}

double secondsSinceMidnightNow() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t t = system_clock::to_time_t(now);
    std::tm local{};
    localtime_r(&t, &local);
    const double fraction = duration<double>(now.time_since_epoch()).count() - static_cast<double>(t);
    return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + std::clamp(fraction, 0.0, 0.999999);
}

ActionBus::ActionBus(Clock clock) : clock_(clock ? std::move(clock) : Clock(secondsSinceMidnightNow)) {}

void ActionBus::QueueAction(std::string_view command, std::string_view options) {
    const bool unique = textIsTrue(listElement(options, 1));
    const bool removeFirst = textIsTrue(listElement(options, 2));
    const bool atEnd = textIsTrue(listElement(options, 3));
    // A plain search of the queue text: a longer command that holds this
    // one as a part counts as a match.
    if (unique && queue_.find(command) != std::string::npos) return;
    if (removeFirst) removeAll(queue_, std::string(command) + std::string(kBusSeparator));
    // No test for an empty queue: appending to one leaves a leading
    // separator, and the first tick serves an empty entry.
    if (atEnd)
        queue_ = queue_ + std::string(kBusSeparator) + std::string(command);
    else
        queue_ = std::string(command) + std::string(kBusSeparator) + queue_;
    timerEnabled_ = true;
}

void ActionBus::HoldWhilePopup() {
    if (!startsWith(queue_, kBusWaitMarker)) queue_.insert(0, kBusWaitMarker);
    timerEnabled_ = true;
}

std::optional<BusCommand> ActionBus::ServiceQueue(bool popupShowing) {
    if (startsWith(queue_, kBusWaitMarker)) {
        if (popupShowing) return std::nullopt;
        queue_.erase(0, kBusWaitMarker.size());
    }
    interval_ = 1;
    auto [head, rest] = splitHead(queue_);
    if (listElement(head, 1) == kBusWaitEntry) {
        const float now = static_cast<float>(clock_());
        const float until = static_cast<float>(numberOr0(listElement(head, 2)));
        if (now < until) {
            const double wanted = numberOr0(listElement(head, 3));
            interval_ = std::max(interval_, static_cast<int>(std::clamp(wanted, 0.0, 2147483647.0)));
            return std::nullopt;
        }
    }
    BusCommand command;
    const size_t bar = head.find('|');
    if (bar != std::string_view::npos) command.tag = std::string(head.substr(bar + 1));
    command.caption = listElement(head, 1);
    queue_ = std::string(rest);
    if (queue_.empty()) timerEnabled_ = false;
    // An empty caption runs nothing; a wait entry that has come due is spent.
    if (command.caption.empty() || command.caption == kBusWaitEntry) return std::nullopt;
    return command;
}

std::string ActionBus::headCommand() const {
    std::string_view q = queue_;
    if (startsWith(q, kBusWaitMarker)) q.remove_prefix(kBusWaitMarker.size());
    return listElement(splitHead(q).first, 1);
}

void ActionBus::clear() {
    queue_.clear();
    timerEnabled_ = false;
    interval_ = 1;
}

bool fileListMayServe(const ActionBus& bus, bool activeChild) {
    return activeChild || bus.headCommand() != "=z";
}

}  // namespace tav
