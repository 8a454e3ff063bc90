#pragma once
// The file system model of a directory tree: directories only, and, when
// ticks are on, a tick on each directory that a callback names as marked.
// Ticking or unticking a directory does not change the mark: it goes to the
// pick callback, and the owner sets the marks.
#include <QFileSystemModel>
#include <functional>

namespace tav::ui {

class DirectoryTreeModel : public QFileSystemModel {
public:
    explicit DirectoryTreeModel(QObject* parent = nullptr);

    void setShowHidden(bool on);
    void setTicks(bool on);
    bool ticks() const { return ticks_; }
    // Whether a directory (path without a final '/') is marked.
    void setMarkedTest(std::function<bool(const QString&)> test) { marked_ = std::move(test); }
    // A tick (true) or untick (false) of a directory by the user.
    void setPick(std::function<void(const QString&, bool)> pick) { pick_ = std::move(pick); }
    // Repaints the ticks after the marks changed.
    void marksChanged();

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    bool ticks_ = false;
    std::function<bool(const QString&)> marked_;
    std::function<void(const QString&, bool)> pick_;
};

}  // namespace tav::ui
