#pragma once
// `SelectDirform`: the dialog that edits what a File List window lists. It
// shows the window's list spec one entry a line and works on its own copy;
// Apply (F5) hands the copy to the window, which stores it and refreshes,
// and the dialog stays; OK does the same and closes, but not with an empty
// list; Cancel drops what changed since the last Apply.
//
// Controls carry their control names as object names (fSelectDir,
// fAddDir, fDirsLB, fOK ...). Prompts go through the window's message host.
// The width of the dialog is kept under "Width SelectDirForm" in "Main"
// (twips); the named file types are read from and written to the INI store.
#include <QDialog>
#include <QString>
#include <QStringList>
#include <vector>

#include "core/MessageRequest.h"
#include "filelist/FileTypeList.h"
#include "filelist/ListSelection.h"
#include "filelist/ListSpecEdit.h"

class QCheckBox;
class QComboBox;
class QFileSystemModel;
class QLabel;
class QListView;
class QListWidget;
class QPushButton;

namespace tav {
class IniStore;
}

namespace tav::ui {

class DirectoryTree;

class SelectDirDialog : public QDialog {
    Q_OBJECT
public:
    SelectDirDialog(const ListSelection& selection, MessageHost& host, IniStore& ini, QWidget* parent = nullptr);

    // The dialog's state as it stands.
    ListSelection selection() const;
    // As handed over by the last Apply or OK (the state it opened with before).
    const ListSelection& lastApplied() const { return applied_; }
    const ListSpecLines& lines() const { return lines_; }
    // The status line of the last change ("Added to list of dirs/files to read: ...").
    QString lastStatus() const { return status_; }

    // Makes `path` the chosen directory, as a move in the tree does.
    void chooseDirectory(const QString& path);
    // The chosen directory with a final '/'; empty when none.
    QString chosenDirectory() const { return chosen_; }
    // Full paths of the files selected in the file list.
    QStringList selectedFiles() const;
    // Selects lines of the list (rows from 0).
    void selectLines(const std::vector<int>& rows);
    std::vector<int> selectedLines() const;

    DirectoryTree* tree() const { return tree_; }

    static constexpr const char* kTitle = " - [Select Directories/Files]";

signals:
    // Apply or OK: the window stores the selection and refreshes.
    void applied(const tav::ListSelection& selection);

protected:
    void done(int result) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void build();
    void loadTypes();
    void restoreWidth();
    void saveWidth();
    void showLines(const std::vector<int>& select);
    void showLinesSelecting(const QString& line);
    // Shows the prompt (when there is one) and the status of an edit.
    void report(const LineEdit& edit);
    void tell(std::string_view prompt);
    void updateTreeMarks();

    void addDir();
    void addFiles();
    void addWith();
    void changeType();
    void inclSubDirs();
    void delDir();
    void clearList();
    void enterFileType();
    void apply();
    void ok();

    MessageHost& host_;
    IniStore& ini_;
    ListSelection applied_;
    ListSelection extra_;  // the values this dialog has no control for
    ListSpecLines lines_;
    FileTypeList types_;
    QString chosen_;
    QString status_;

    DirectoryTree* tree_ = nullptr;
    QListView* files_ = nullptr;
    QFileSystemModel* fileModel_ = nullptr;
    QListWidget* dirsList_ = nullptr;
    QComboBox* setType_ = nullptr;
    QCheckBox* setSubdirs_ = nullptr;
    QComboBox* defaultType_ = nullptr;
    QCheckBox* defaultSubdirs_ = nullptr;
    QCheckBox* multiDirs_ = nullptr;
    QCheckBox* autoRefresh_ = nullptr;
    QCheckBox* newWindow_ = nullptr;
    QLabel* statusLabel_ = nullptr;
};

}  // namespace tav::ui
