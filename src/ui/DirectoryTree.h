#pragma once
// A tree of the platform's directories, read lazily as branches open.
//
// Single selection (the default): moving to a directory chooses it, and the
// window's list follows (directoryChosen). Multiple mode (`Multi Dirs`,
// `LM`): the tree only picks directories to add to or remove from the list;
// the directories of the list show ticked, and the list changes by the
// user's picks only (addRequested, removeRequested).
//
// Keys: the arrows move and open branches; Enter activates; in multiple
// mode Space ticks or unticks the current directory, Insert adds it and
// Delete removes it. A double click activates in single mode and ticks or
// unticks in multiple mode.
//
// Paths are given and reported with a final '/'.
#include <QSet>
#include <QStringList>
#include <QTreeView>

namespace tav::ui {

class DirectoryTreeModel;

class DirectoryTree : public QTreeView {
    Q_OBJECT
public:
    explicit DirectoryTree(QWidget* parent = nullptr);

    void setShowHidden(bool on);
    void setMultiDirs(bool on);
    bool multiDirs() const { return multi_; }

    // The directories of the list: ticked in multiple mode.
    void setMarkedDirs(const QStringList& dirs);
    QStringList markedDirs() const;
    bool isMarked(const QString& dir) const;

    // Opens the tree down to `path` and makes it current, without a signal.
    void showDirectory(const QString& path);
    // The current directory with a final '/'; empty when none.
    QString currentDirectory() const;

    // A path as the tree reports it: cleaned, with a final '/'.
    static QString dirText(const QString& path);

signals:
    // Single mode: the user moved to a directory.
    void directoryChosen(const QString& path);
    // Enter, or a double click in single mode.
    void directoryActivated(const QString& path);
    // Multiple mode: the user picked a directory to add or to remove.
    void addRequested(const QString& path);
    void removeRequested(const QString& path);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QString pathOf(const QModelIndex& index) const;
    // Multiple mode: ticks or unticks, and asks the list to follow.
    void pick(const QString& dir, bool add);

    DirectoryTreeModel* model_;
    QSet<QString> marked_;
    bool scrollPending_ = false;  // the current directory is kept in view while the tree is read
    bool multi_ = false;
    bool quiet_ = false;
};

}  // namespace tav::ui
