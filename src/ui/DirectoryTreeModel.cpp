#include "ui/DirectoryTreeModel.h"

#include <QDir>

namespace tav::ui {

DirectoryTreeModel::DirectoryTreeModel(QObject* parent) : QFileSystemModel(parent) {
    setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
    setReadOnly(true);
    setRootPath(QDir::rootPath());
}

void DirectoryTreeModel::setShowHidden(bool on) {
    QDir::Filters f = QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives;
    if (on) f |= QDir::Hidden;
    if (f != filter()) setFilter(f);
}

void DirectoryTreeModel::setTicks(bool on) {
    if (on == ticks_) return;
    ticks_ = on;
    marksChanged();
}

void DirectoryTreeModel::marksChanged() {
    // Only the rows already read can show a tick; a layout change repaints them all.
    emit layoutChanged();
}

QVariant DirectoryTreeModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::CheckStateRole && index.column() == 0) {
        if (!ticks_) return {};
        return marked_ && marked_(filePath(index)) ? Qt::Checked : Qt::Unchecked;
    }
    return QFileSystemModel::data(index, role);
}

bool DirectoryTreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role == Qt::CheckStateRole && index.column() == 0 && ticks_) {
        if (pick_) pick_(filePath(index), value.toInt() == Qt::Checked);
        return true;
    }
    return QFileSystemModel::setData(index, value, role);
}

Qt::ItemFlags DirectoryTreeModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = QFileSystemModel::flags(index);
    if (ticks_ && index.column() == 0) f |= Qt::ItemIsUserCheckable;
    return f;
}

}  // namespace tav::ui
