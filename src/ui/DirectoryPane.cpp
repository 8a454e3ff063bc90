#include "ui/DirectoryPane.h"

#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QTreeView>
#include <QVBoxLayout>

namespace tav::ui {

DirectoryPane::DirectoryPane(QWidget* parent) : QWidget(parent), view_(new QTreeView(this)), model_(new QFileSystemModel(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    model_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
    model_->setRootPath(QDir::rootPath());
    view_->setModel(model_);
    for (int c = 1; c < model_->columnCount(); ++c) view_->hideColumn(c);
    view_->header()->hide();
    view_->setUniformRowHeights(true);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& index) {
        if (quiet_ || !index.isValid()) return;
        emit directoryChosen(model_->filePath(index));
    });
}

void DirectoryPane::showDirectory(const QString& path) {
    const QModelIndex index = model_->index(QDir::cleanPath(path));
    if (!index.isValid()) return;
    quiet_ = true;
    view_->setCurrentIndex(index);
    view_->scrollTo(index);
    quiet_ = false;
}

QString DirectoryPane::currentDirectory() const { return model_->filePath(view_->currentIndex()); }

}  // namespace tav::ui
