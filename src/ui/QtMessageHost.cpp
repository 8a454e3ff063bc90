#include "ui/QtMessageHost.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>

#include "dialogs/MessageOptions.h"
#include "dialogs/MessageText.h"
#include "dialogs/StandardButtons.h"

namespace tav::ui {

int QtMessageHost::show(MessageRequest& request) {
    ButtonSet buttons = resolveButtons(request);
    QMessageBox box(parent_);
    box.setWindowTitle(QString::fromStdString(resolveTitle(request.title, "Tavelo", "Tavelo")));
    box.setText(QString::fromStdString(messagePlainText(request.message)));
    box.setTextFormat(Qt::PlainText);
    MessageOptions options = MessageOptions::parse(request.options);
    switch (options.icon()) {
        case MessageIcon::Critical: box.setIcon(QMessageBox::Critical); break;
        case MessageIcon::Question: box.setIcon(QMessageBox::Question); break;
        case MessageIcon::Exclamation: box.setIcon(QMessageBox::Warning); break;
        case MessageIcon::Information: box.setIcon(QMessageBox::Information); break;
        case MessageIcon::None: break;
    }
    std::vector<QPushButton*> made;
    for (const std::string& caption : buttons.captions)
        made.push_back(box.addButton(QString::fromStdString(caption), QMessageBox::ActionRole));
    if (buttons.defaultButton >= 1 && buttons.defaultButton <= static_cast<int>(made.size()))
        box.setDefaultButton(made[buttons.defaultButton - 1]);
    if (buttons.escButton >= 1 && buttons.escButton <= static_cast<int>(made.size()))
        box.setEscapeButton(made[buttons.escButton - 1]);
    box.exec();
    QAbstractButton* clicked = box.clickedButton();
    for (size_t i = 0; i < made.size(); ++i)
        if (made[i] == clicked) return static_cast<int>(i + 1);
    return buttons.escButton > 0 ? buttons.escButton : buttons.defaultButton;
}

}  // namespace tav::ui
