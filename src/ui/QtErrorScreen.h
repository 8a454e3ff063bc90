#pragma once
// The error screen as the platform's plain message boxes.
#include "dialogs/ErrorScreen.h"

namespace tav::ui {

class QtErrorScreen : public ErrorScreen {
public:
    void prepare() override;
    bool showError(const std::string& title, const std::string& text) override;
    bool askEndSystem(const std::string& title, const std::string& text) override;
    void showNotice(const std::string& title, const std::string& text) override;
};

}  // namespace tav::ui
