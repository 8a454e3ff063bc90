#pragma once
// Shows a prompt request as a plain Qt message box: the message, the
// buttons with their accelerators, Esc on the request's Esc button. The
// full box engine with controls replaces it; until then, boxes with
// controls show their message and buttons only.
#include "core/MessageRequest.h"

class QWidget;

namespace tav::ui {

class QtMessageHost : public MessageHost {
public:
    explicit QtMessageHost(QWidget* parent = nullptr) : parent_(parent) {}
    void setParent(QWidget* parent) { parent_ = parent; }
    int show(MessageRequest& request) override;

private:
    QWidget* parent_;
};

}  // namespace tav::ui
