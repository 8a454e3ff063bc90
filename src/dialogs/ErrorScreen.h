#pragma once
// What the error handler shows. The UI gives the platform's plain boxes (not
// the message box engine, which may be what failed); tests script it.
#include <string>

namespace tav {

class ErrorScreen {
public:
    virtual ~ErrorScreen() = default;

    // Before the report is built: reset the mouse pointer and let the key
    // system forget any pending state.
    virtual void prepare() {}

    // The error screen, buttons OK and Cancel. True for OK.
    virtual bool showError(const std::string& title, const std::string& text) = 0;

    // The second box after Cancel, buttons Yes and Cancel. True for Yes,
    // which ends the system.
    virtual bool askEndSystem(const std::string& title, const std::string& text) = 0;

    // A notice with OK only: the end texts and the failure of the handler.
    virtual void showNotice(const std::string& title, const std::string& text) = 0;

    // After OK: unload a message box that the failed action left open.
    virtual void closeOpenBoxes() {}
};

}  // namespace tav
