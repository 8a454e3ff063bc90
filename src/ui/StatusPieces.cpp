#include "ui/StatusPieces.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace tav::ui {

StatusPieces::StatusPieces(QWidget* parent)
    : QWidget(parent),
      start_(new QPushButton("Start")),
      stop_(new QPushButton("Stop")),
      statCmb_(new QComboBox),
      selected_(new QLabel),
      progress_(new QLabel),
      buttons_(new QWidget) {
    setObjectName("fSBarPicAll");
    start_->setObjectName("fStart");
    stop_->setObjectName("fStop");
    statCmb_->setObjectName("fStatCmb");
    selected_->setObjectName("fSelectedLabel");
    progress_->setObjectName("fOpProgressWordslabel");
    auto* b = new QHBoxLayout(buttons_);
    b->setContentsMargins(0, 0, 0, 0);
    b->addWidget(start_);
    b->addWidget(stop_);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->addWidget(buttons_);
    layout->addWidget(statCmb_, 3);
    layout->addWidget(selected_, 1);
    layout->addWidget(progress_, 2);
    statCmb_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    statCmb_->setMinimumContentsLength(30);
    stop_->setEnabled(false);
    // The buttons never take the focus from the list.
    start_->setFocusPolicy(Qt::NoFocus);
    stop_->setFocusPolicy(Qt::NoFocus);
    statCmb_->setFocusPolicy(Qt::ClickFocus);
    connect(stop_, &QPushButton::clicked, this, &StatusPieces::stopClicked);
    connect(start_, &QPushButton::clicked, this, &StatusPieces::startClicked);
}

void StatusPieces::setLists(const QStringList& results, const QStringList& directories, const QStringList& errors) {
    results_ = results;
    directories_ = directories;
    errors_ = errors;
    fillList();
}

void StatusPieces::setListKind(ListKind kind) {
    kind_ = kind;
    fillList();
}

void StatusPieces::fillList() {
    const QStringList& list = kind_ == ListKind::Results ? results_ : kind_ == ListKind::Directories ? directories_ : errors_;
    statCmb_->clear();
    statCmb_->addItems(list);
    if (!list.isEmpty()) statCmb_->setCurrentIndex(static_cast<int>(list.size()) - 1);
}

void StatusPieces::setProgress(const QString& text) { progress_->setText(text); }
void StatusPieces::setSelected(const QString& text) { selected_->setText(text); }

void StatusPieces::setRunning(bool running) {
    stop_->setEnabled(running);
    start_->setEnabled(!running);
}

void StatusPieces::setPiecesShown(bool buttons, bool status, bool selected, bool progress) {
    buttons_->setVisible(buttons);
    statCmb_->setVisible(status);
    selected_->setVisible(selected);
    progress_->setVisible(progress);
}

void StatusPieces::showList() { statCmb_->showPopup(); }

QString StatusPieces::statusLine() const { return statCmb_->currentText(); }
QString StatusPieces::progressText() const { return progress_->text(); }

}  // namespace tav::ui
