#pragma once
// The file types dialog: picks the window's default file type from the
// named types, with the hidden, system, subdirectory and directory switches.
// New and changed types are asked through the message box; the list of
// named types is written back to the INI store on Apply and OK.
//
// Apply (F5) and OK hand the choice over (applied); OK with no type
// selected asks for one and the dialog stays. Beside the named types stand
// the types the platform knows, combined or separate by kind of file; a
// type may be chosen from either list.
#include <QDialog>
#include <QString>

#include "core/MessageRequest.h"
#include "filelist/FileTypeList.h"
#include "filelist/ListSelection.h"

class QCheckBox;
class QListWidget;
class QPushButton;

namespace tav {
class IniStore;
}

namespace tav::ui {

class FileTypesDialog : public QDialog {
    Q_OBJECT
public:
    FileTypesDialog(const ListSelection& selection, MessageHost& host, IniStore& ini, QWidget* parent = nullptr);

    // The selection with the chosen type as its default type and the
    // switches as they stand.
    ListSelection selection() const;
    const FileTypeList& types() const { return types_; }
    // The row of the chosen named type; -1 when none.
    int currentType() const;
    void selectType(int row);
    // The types the platform knows, in the form "Seperate FTList" asks for.
    const FileTypeList& shellTypes() const { return shellTypes_; }
    int currentShellType() const;
    void selectShellType(int row);
    // The status line of the last Apply or OK.
    QString statusText() const { return status_; }

    static constexpr const char* kTitle = "- [Select File Types]";
    static constexpr const char* kCaption = "Select File Type and press OK";

signals:
    void applied(const tav::ListSelection& selection);

private:
    void showTypes(int select);
    // False (after the prompt) when no named type is selected.
    bool needType();
    // False (after the prompt) when no type is chosen in either list.
    bool needChosenType();
    bool store();
    void newType();
    void editType();
    void removeType();
    void changeSequence();
    void showShellTypes();
    void flipShellForm();
    // The type chosen in either list; empty when none.
    std::string chosenTypes() const;

    MessageHost& host_;
    IniStore& ini_;
    ListSelection start_;
    FileTypeList types_;
    FileTypeList shellTypes_;
    bool separate_ = false;  // "Seperate FTList"
    bool typesChanged_ = false;
    QString status_;

    QListWidget* list_ = nullptr;
    QListWidget* shell_ = nullptr;
    QPushButton* shellButton_ = nullptr;
    QCheckBox* hidden_ = nullptr;
    QCheckBox* system_ = nullptr;
    QCheckBox* subdirs_ = nullptr;
    QCheckBox* dirs_ = nullptr;
};

}  // namespace tav::ui
