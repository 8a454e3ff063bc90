#pragma once
// A message host for tests: answers each prompt from a script and records
// every request it was asked, so a test can check the exact texts.
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/MessageRequest.h"

namespace tavtest {

class ScriptedHost : public tav::MessageHost {
public:
    // Answers given in order; when the script runs out, `fallback` is used.
    explicit ScriptedHost(int fallback = 1) : fallback_(fallback) {}

    void answer(int button) { script_.push_back([button](tav::MessageRequest&) { return button; }); }
    void answerWith(std::function<int(tav::MessageRequest&)> f) { script_.push_back(std::move(f)); }

    int show(tav::MessageRequest& request) override {
        asked_.push_back(request);
        if (script_.empty()) return fallback_;
        auto f = std::move(script_.front());
        script_.pop_front();
        return f(request);
    }

    const std::vector<tav::MessageRequest>& asked() const { return asked_; }
    std::vector<std::string> messages() const {
        std::vector<std::string> m;
        for (const auto& r : asked_) m.push_back(r.message);
        return m;
    }
    void clear() { asked_.clear(); }

private:
    int fallback_;
    std::deque<std::function<int(tav::MessageRequest&)>> script_;
    std::vector<tav::MessageRequest> asked_;
};

}  // namespace tavtest
