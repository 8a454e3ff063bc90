#pragma once
// Small makers for the dialogs' controls: each carries its control name as
// its object name, so keys, tests and the window's code find it by name.
#include <QCheckBox>
#include <QPushButton>
#include <QString>

namespace tav::ui {

// A push button that is never the default: Enter presses the focused one.
inline QPushButton* namedButton(const char* name, const QString& caption, QWidget* parent) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

inline QCheckBox* namedCheck(const char* name, const QString& caption, bool on, QWidget* parent) {
    auto* c = new QCheckBox(caption, parent);
    c->setObjectName(name);
    c->setChecked(on);
    return c;
}

}  // namespace tav::ui
