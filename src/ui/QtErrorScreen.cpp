#include "ui/QtErrorScreen.h"

#include <QApplication>
#include <QMessageBox>

namespace tav::ui {

namespace {
QString q(const std::string& s) {
    QString t = QString::fromStdString(s);
    t.replace("\r\n", "\n");
    t.replace('\r', '\n');
    return t;
}
}  // namespace

void QtErrorScreen::prepare() {
    while (QApplication::overrideCursor()) QApplication::restoreOverrideCursor();
}

bool QtErrorScreen::showError(const std::string& title, const std::string& text) {
    return QMessageBox::critical(nullptr, q(title), q(text), QMessageBox::Ok | QMessageBox::Cancel,
                                 QMessageBox::Ok) == QMessageBox::Ok;
}

bool QtErrorScreen::askEndSystem(const std::string& title, const std::string& text) {
    return QMessageBox::question(nullptr, q(title), q(text), QMessageBox::Yes | QMessageBox::Cancel,
                                 QMessageBox::Cancel) == QMessageBox::Yes;
}

void QtErrorScreen::showNotice(const std::string& title, const std::string& text) {
    QMessageBox::warning(nullptr, q(title), q(text));
}

}  // namespace tav::ui
