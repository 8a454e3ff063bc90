#pragma once
// What a popup text window asks of the File List window that opened it.
// The popup holds the window by a QPointer beside this interface, and
// calls it only while the window is alive.
#include <QString>

class QKeyEvent;

namespace tav::ui {

class ShowDataOwner {
public:
    virtual ~ShowDataOwner() = default;
    // A file was shown: the window keeps it as its `Last Txt PAFN`.
    virtual void popupTextShown(const QString& path) = 0;
    // A key that the view did not take, for the window's key definitions;
    // true when the window used it.
    virtual bool popupKey(QKeyEvent* event) = 0;
};

}  // namespace tav::ui
