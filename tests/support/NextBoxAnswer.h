#pragma once
// For tests of the desktop program: answers the next message box that the
// program shows, from the event loop, by the button whose caption holds
// `caption` (accelerator marks left out). With `seen`, the box's labels are
// added to it first, a line each.
#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QtTest>

#include "ui/MessageBoxDialog.h"

namespace tavtest {

inline void answerNextBox(const QString& caption, QString* seen = nullptr) {
    QTimer::singleShot(0, [caption, seen] {
        if (!QTest::qWaitFor(
                [] { return qobject_cast<tav::ui::MessageBoxDialog*>(QApplication::activeModalWidget()); }, 5000))
            return;
        auto* box = qobject_cast<tav::ui::MessageBoxDialog*>(QApplication::activeModalWidget());
        if (!box) return;
        if (seen)
            for (QLabel* label : box->findChildren<QLabel*>()) *seen += label->text() + '\n';
        for (QAbstractButton* b : box->findChildren<QAbstractButton*>())
            if (b->text().remove('&').contains(caption)) {
                b->click();
                return;
            }
    });
}

}  // namespace tavtest
