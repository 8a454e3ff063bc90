#pragma once
// The directory section of a File List window (`fSelectDir`): a tree of the
// platform's directories. In single selection a chosen directory becomes
// the window's list; with `Multi Dirs` it only picks directories to add.
#include <QWidget>

class QTreeView;
class QFileSystemModel;

namespace tav::ui {

class DirectoryPane : public QWidget {
    Q_OBJECT
public:
    explicit DirectoryPane(QWidget* parent = nullptr);

    // Opens the tree down to `path` and makes it current, without a signal.
    void showDirectory(const QString& path);
    QString currentDirectory() const;
    QTreeView* view() const { return view_; }

signals:
    // The user chose a directory (click, Enter, or moving with the keys).
    void directoryChosen(const QString& path);

private:
    QTreeView* view_;
    QFileSystemModel* model_;
    bool quiet_ = false;
};

}  // namespace tav::ui
