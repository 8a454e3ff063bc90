#include "ui/DirectoryTree.h"

#include <QDir>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

#include "ui/DirectoryTreeModel.h"

namespace tav::ui {

namespace {
constexpr int kKeepInViewMs = 3000;
}  // namespace

DirectoryTree::DirectoryTree(QWidget* parent) : QTreeView(parent), model_(new DirectoryTreeModel(this)) {
    setModel(model_);
    for (int c = 1; c < model_->columnCount(); ++c) hideColumn(c);
    header()->hide();
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setExpandsOnDoubleClick(false);
    model_->setMarkedTest([this](const QString& path) { return marked_.contains(dirText(path)); });
    model_->setPick([this](const QString& path, bool add) { pick(dirText(path), add); });
    // The branches open and sort as they are read: keep the current
    // directory in view meanwhile, until the user moves or a while has passed.
    auto keepInView = [this] {
        if (scrollPending_ && currentIndex().isValid()) scrollTo(currentIndex(), QAbstractItemView::PositionAtCenter);
    };
    connect(model_, &QFileSystemModel::directoryLoaded, this, keepInView);
    connect(model_, &QAbstractItemModel::layoutChanged, this, keepInView);
    connect(model_, &QAbstractItemModel::rowsInserted, this, keepInView);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& index) {
        if (quiet_) return;
        scrollPending_ = false;
        if (multi_ || !index.isValid()) return;
        emit directoryChosen(pathOf(index));
    });
}

QString DirectoryTree::dirText(const QString& path) {
    if (path.isEmpty()) return {};
    QString p = QDir::fromNativeSeparators(QDir::cleanPath(path));
    if (!p.endsWith('/')) p += '/';
    return p;
}

QString DirectoryTree::pathOf(const QModelIndex& index) const {
    return index.isValid() ? dirText(model_->filePath(index)) : QString();
}

void DirectoryTree::setShowHidden(bool on) { model_->setShowHidden(on); }

void DirectoryTree::setMultiDirs(bool on) {
    multi_ = on;
    model_->setTicks(on);
}

void DirectoryTree::setMarkedDirs(const QStringList& dirs) {
    marked_.clear();
    for (const QString& d : dirs)
        if (!d.isEmpty()) marked_.insert(dirText(d));
    model_->marksChanged();
}

QStringList DirectoryTree::markedDirs() const {
    QStringList out(marked_.begin(), marked_.end());
    out.sort();
    return out;
}

bool DirectoryTree::isMarked(const QString& dir) const { return marked_.contains(dirText(dir)); }

void DirectoryTree::showDirectory(const QString& path) {
    QString p = QDir::cleanPath(path);
    if (p.size() > 1 && p.endsWith('/')) p.chop(1);
    const QModelIndex index = model_->index(p);
    if (!index.isValid()) return;
    quiet_ = true;
    setCurrentIndex(index);
    scrollTo(index, QAbstractItemView::PositionAtCenter);
    scrollPending_ = true;
    QTimer::singleShot(kKeepInViewMs, this, [this] { scrollPending_ = false; });
    quiet_ = false;
}

QString DirectoryTree::currentDirectory() const { return pathOf(currentIndex()); }

void DirectoryTree::pick(const QString& dir, bool add) {
    if (dir.isEmpty()) return;
    if (add)
        marked_.insert(dir);
    else
        marked_.remove(dir);
    model_->marksChanged();
    if (add)
        emit addRequested(dir);
    else
        emit removeRequested(dir);
}

void DirectoryTree::keyPressEvent(QKeyEvent* event) {
    const QString dir = currentDirectory();
    const bool plain = event->modifiers() == Qt::NoModifier;
    if (plain && !dir.isEmpty()) {
        switch (event->key()) {
            case Qt::Key_Return:
            case Qt::Key_Enter:
                emit directoryActivated(dir);
                return;
            case Qt::Key_Space:
                if (multi_) {
                    pick(dir, !marked_.contains(dir));
                    return;
                }
                break;
            case Qt::Key_Insert:
                if (multi_) {
                    if (!marked_.contains(dir)) pick(dir, true);
                    return;
                }
                break;
            case Qt::Key_Delete:
                if (multi_) {
                    if (marked_.contains(dir)) pick(dir, false);
                    return;
                }
                break;
            default:
                break;
        }
    }
    QTreeView::keyPressEvent(event);
}

void DirectoryTree::showEvent(QShowEvent* event) {
    QTreeView::showEvent(event);
    // A directory made current while hidden is scrolled to once there is room.
    QTimer::singleShot(0, this, [this] {
        if (currentIndex().isValid()) scrollTo(currentIndex(), QAbstractItemView::PositionAtCenter);
    });
}

void DirectoryTree::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid()) {
        QTreeView::mouseDoubleClickEvent(event);
        return;
    }
    const QString dir = pathOf(index);
    if (multi_)
        pick(dir, !marked_.contains(dir));
    else
        emit directoryActivated(dir);
    event->accept();
}

}  // namespace tav::ui
