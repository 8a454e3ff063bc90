#pragma once
// An error screen for tests: answers the error handler's boxes from a script
// and records what they showed. Unscripted answers are OK on the error
// screen and Cancel (go on) on the end-system box.
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "dialogs/ErrorScreen.h"

namespace tavtest {

class ScriptedErrorScreen : public tav::ErrorScreen {
public:
    std::deque<bool> errorAnswers;  // OK = true
    std::deque<bool> endAnswers;    // Yes = true
    std::vector<std::string> errors, asks, notices, noticeTitles;
    std::function<void()> onError;  // runs inside the error screen
    int boxesClosed = 0;

    bool showError(const std::string&, const std::string& text) override {
        errors.push_back(text);
        if (onError) onError();
        if (errorAnswers.empty()) return true;
        bool a = errorAnswers.front();
        errorAnswers.pop_front();
        return a;
    }
    bool askEndSystem(const std::string&, const std::string& text) override {
        asks.push_back(text);
        if (endAnswers.empty()) return false;
        bool a = endAnswers.front();
        endAnswers.pop_front();
        return a;
    }
    void showNotice(const std::string& title, const std::string& text) override {
        noticeTitles.push_back(title);
        notices.push_back(text);
    }
    void closeOpenBoxes() override { ++boxesClosed; }
};

}  // namespace tavtest

