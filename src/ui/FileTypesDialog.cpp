#include "ui/FileTypesDialog.h"
#include "ui/NamedControls.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMimeDatabase>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <string>

#include "dialogs/MessageShortcuts.h"
#include "filelist/ShellFileTypes.h"
#include "settings/IniStore.h"

namespace tav::ui {

namespace {

QString fromStd(std::string_view s) { return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size())); }

// The kinds of file of the platform's MIME database with their name patterns.
const std::vector<KnownFileType>& knownFileTypes() {
    static const std::vector<KnownFileType> known = [] {
        std::vector<KnownFileType> out;
        for (const QMimeType& m : QMimeDatabase().allMimeTypes()) {
            KnownFileType k;
            for (const QString& p : m.globPatterns()) k.patterns.push_back(p.toStdString());
            if (k.patterns.empty()) continue;
            k.name = (m.comment().isEmpty() ? m.name() : m.comment()).toStdString();
            out.push_back(std::move(k));
        }
        return out;
    }();
    return known;
}

}  // namespace

FileTypesDialog::FileTypesDialog(const ListSelection& selection, MessageHost& host, IniStore& ini, QWidget* parent)
    : QDialog(parent), host_(host), ini_(ini), start_(selection), types_(readFileTypes(ini)) {
    setObjectName("SelectFileTypeform");
    setWindowTitle(kTitle);

    list_ = new QListWidget(this);
    list_->setObjectName("fFileTypesLB");
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    auto* caption = new QLabel(kCaption, this);
    caption->setObjectName("fCaption");
    caption->setBuddy(list_);

    hidden_ = namedCheck("fHiddenCheck", "Show &Hidden Files", selection.showHidden, this);
    system_ = namedCheck("fSystemCheck", "Show Syste&m Files", selection.showSystem, this);
    subdirs_ = namedCheck("fSubdirsCheck", "Include &Subdirs", selection.includeSubdirs, this);
    dirs_ = namedCheck("fDirsCheck", "Show Di&rectories", selection.showDirectories, this);

    shell_ = new QListWidget(this);
    shell_->setObjectName("fShellTypesLB");
    shell_->setSelectionMode(QAbstractItemView::SingleSelection);
    auto* shellLabel = new QLabel("File types known to the system:", this);
    shellLabel->setBuddy(shell_);
    separate_ = ini_.mode(kMissingEmpty).getBool(kSeperateFTListSection, kSeperateFTListEntry);
    shellButton_ = namedButton("fShellTypesButton", "", this);

    auto* okButton = namedButton("fOK", "&OK", this);
    okButton->setDefault(true);
    auto* cancelButton = namedButton("fCancel", "&Cancel", this);
    auto* applyButton = namedButton("fApply", "Appl&y (F5)", this);
    auto* newButton = namedButton("fNewType", "New Ty&pe", this);
    auto* editButton = namedButton("fEditType", "Edi&t Type", this);
    auto* removeButton = namedButton("fRemoveType", "R&emove Type", this);
    auto* sequenceButton = namedButton("fSequence", "Change Se&quence", this);

    auto* left = new QVBoxLayout;
    left->addWidget(caption);
    left->addWidget(list_, 2);
    left->addWidget(shellLabel);
    left->addWidget(shell_, 1);
    auto* switches = new QHBoxLayout;
    switches->addWidget(hidden_);
    switches->addWidget(system_);
    switches->addWidget(subdirs_);
    switches->addWidget(dirs_);
    left->addLayout(switches);

    auto* right = new QVBoxLayout;
    for (QPushButton* b : {okButton, cancelButton, applyButton}) right->addWidget(b);
    right->addSpacing(12);
    for (QPushButton* b : {newButton, editButton, removeButton, sequenceButton}) right->addWidget(b);
    right->addSpacing(12);
    right->addWidget(shellButton_);
    right->addStretch(1);

    auto* all = new QHBoxLayout(this);
    all->addLayout(left, 1);
    all->addLayout(right);

    connect(okButton, &QPushButton::clicked, this, [this] {
        if (store()) accept();
    });
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(applyButton, &QPushButton::clicked, this, &FileTypesDialog::store);
    auto* f5 = new QShortcut(QKeySequence(Qt::Key_F5), this);
    connect(f5, &QShortcut::activated, this, &FileTypesDialog::store);
    connect(newButton, &QPushButton::clicked, this, &FileTypesDialog::newType);
    connect(editButton, &QPushButton::clicked, this, &FileTypesDialog::editType);
    connect(removeButton, &QPushButton::clicked, this, &FileTypesDialog::removeType);
    connect(sequenceButton, &QPushButton::clicked, this, &FileTypesDialog::changeSequence);
    connect(shellButton_, &QPushButton::clicked, this, &FileTypesDialog::flipShellForm);
    for (QListWidget* l : {list_, shell_}) {
        connect(l, &QListWidget::itemDoubleClicked, this, [this] {
            if (store()) accept();
        });
    }
    // One type is chosen: a choice in one list clears the other.
    connect(list_, &QListWidget::itemSelectionChanged, this, [this] {
        if (!list_->selectedItems().isEmpty()) shell_->clearSelection();
    });
    connect(shell_, &QListWidget::itemSelectionChanged, this, [this] {
        if (!shell_->selectedItems().isEmpty()) list_->clearSelection();
    });

    showShellTypes();
    showTypes(types_.find(selection.defaultType));
    resize(620, 480);
}

void FileTypesDialog::showTypes(int select) {
    list_->clear();
    for (std::size_t i = 0; i < types_.size(); ++i) {
        list_->addItem(fromStd(types_.displayLine(i)));
        list_->item(static_cast<int>(i))->setToolTip(fromStd(types_[i].types));
    }
    selectType(select);
}

int FileTypesDialog::currentType() const {
    const QList<QListWidgetItem*> chosen = list_->selectedItems();
    return chosen.isEmpty() ? -1 : list_->row(chosen.front());
}

void FileTypesDialog::selectType(int row) {
    list_->clearSelection();
    if (row < 0 || row >= list_->count()) return;
    list_->setCurrentRow(row);
    list_->item(row)->setSelected(true);
}

int FileTypesDialog::currentShellType() const {
    const QList<QListWidgetItem*> chosen = shell_->selectedItems();
    return chosen.isEmpty() ? -1 : shell_->row(chosen.front());
}

void FileTypesDialog::selectShellType(int row) {
    shell_->clearSelection();
    if (row < 0 || row >= shell_->count()) return;
    shell_->setCurrentRow(row);
    shell_->item(row)->setSelected(true);
}

void FileTypesDialog::showShellTypes() {
    shellTypes_ = shellFileTypes(knownFileTypes(), separate_);
    shellButton_->setText(fromStd(shellTypesButtonCaption(separate_)));
    shell_->clear();
    for (std::size_t i = 0; i < shellTypes_.size(); ++i) shell_->addItem(fromStd(shellTypes_.displayLine(i)));
}

void FileTypesDialog::flipShellForm() {
    separate_ = !separate_;
    ini_.put(kSeperateFTListSection, kSeperateFTListEntry, separate_ ? "-1" : "0");
    showShellTypes();
}

std::string FileTypesDialog::chosenTypes() const {
    if (const int row = currentType(); row >= 0) return types_[static_cast<std::size_t>(row)].types;
    if (const int row = currentShellType(); row >= 0) return shellTypes_[static_cast<std::size_t>(row)].types;
    return {};
}

ListSelection FileTypesDialog::selection() const {
    ListSelection s = start_;
    if (const std::string chosen = chosenTypes(); !chosen.empty()) s.defaultType = chosen;
    s.showHidden = hidden_->isChecked();
    s.showSystem = system_->isChecked();
    s.includeSubdirs = subdirs_->isChecked();
    s.showDirectories = dirs_->isChecked();
    return s;
}

bool FileTypesDialog::needType() {
    if (currentType() >= 0) return true;
    MBOk(host_, kNoFileTypeChosen);
    return false;
}

bool FileTypesDialog::needChosenType() {
    if (!chosenTypes().empty()) return true;
    MBOk(host_, kNoFileTypeChosen);
    return false;
}

bool FileTypesDialog::store() {
    if (!needChosenType()) return false;
    if (typesChanged_) {
        writeFileTypes(ini_, types_);
        typesChanged_ = false;
    }
    const ListSelection s = selection();
    status_ = fromStd(fileTypeStatus(s.defaultType, s.showHidden, s.showSystem));
    emit applied(s);
    return true;
}

void FileTypesDialog::newType() {
    NamedFileType t;
    if (!askFileType(host_, t, kTitle)) return;
    types_.add(t);
    typesChanged_ = true;
    showTypes(static_cast<int>(types_.size()) - 1);
}

void FileTypesDialog::editType() {
    if (!needType()) return;
    const int row = currentType();
    NamedFileType t = types_[static_cast<std::size_t>(row)];
    if (!askFileType(host_, t, kTitle)) return;
    types_.replace(static_cast<std::size_t>(row), t);
    typesChanged_ = true;
    showTypes(row);
}

void FileTypesDialog::removeType() {
    if (!needType()) return;
    const int row = currentType();
    types_.remove(static_cast<std::size_t>(row));
    typesChanged_ = true;
    showTypes(std::min(row, static_cast<int>(types_.size()) - 1));
}

void FileTypesDialog::changeSequence() {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < types_.size(); ++i) lines.push_back(std::to_string(i + 1) + ". " + types_.displayLine(i));
    if (!MBSequence(host_, "File Types", "", lines)) return;
    // Each line starts with its old place.
    std::vector<std::size_t> order;
    for (const std::string& line : lines) order.push_back(static_cast<std::size_t>(std::stoul(line)) - 1);
    const int row = currentType();
    const std::string chosen = row >= 0 ? types_[static_cast<std::size_t>(row)].types : std::string();
    if (!types_.reorder(order)) return;
    typesChanged_ = true;
    showTypes(chosen.empty() ? -1 : types_.find(chosen));
}

}  // namespace tav::ui
