#include "ui/SelectDirDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QScreen>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "core/TextTrim.h"
#include "dialogs/MessageShortcuts.h"
#include "filelist/ListSpec.h"
#include "settings/IniStore.h"
#include "ui/DirectoryTree.h"
#include "ui/FileTypesDialog.h"
#include "ui/NamedControls.h"

namespace tav::ui {

namespace {

// Widths are stored in twips, 15 to a pixel at the usual 96 dots an inch.
constexpr int kTwipsPerPixel = 15;
constexpr int kNarrowest = 480;

QString fromStd(std::string_view s) { return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size())); }
std::string toStd(const QString& s) { return s.toStdString(); }

QComboBox* typeCombo(const char* name, QWidget* parent) {
    auto* c = new QComboBox(parent);
    c->setObjectName(name);
    c->setEditable(true);
    c->setInsertPolicy(QComboBox::NoInsert);
    c->setMinimumContentsLength(12);
    return c;
}

}  // namespace

SelectDirDialog::SelectDirDialog(const ListSelection& selection, MessageHost& host, IniStore& ini, QWidget* parent)
    : QDialog(parent), host_(host), ini_(ini), applied_(selection), extra_(selection), lines_(selection.listSpec) {
    setObjectName("SelectDirform");
    setWindowTitle(kTitle);
    build();
    loadTypes();
    defaultType_->setEditText(fromStd(selection.defaultType));
    showLines({});
    // Start where the list is, else in the user's home.
    QString start = QDir::homePath();
    for (const ListEntry& e : parseListSpec(lines_.spec(), "*", false))
        if (!e.directory.empty() && QDir(fromStd(e.directory)).exists()) {
            start = fromStd(e.directory);
            break;
        }
    chooseDirectory(start);
    restoreWidth();
}

void SelectDirDialog::build() {
    // Left: the tree and the files of the chosen directory.
    tree_ = new DirectoryTree(this);
    tree_->setObjectName("fSelectDir");
    tree_->setShowHidden(extra_.showHidden);
    auto* treeLabel = new QLabel("&1. Select Dir", this);
    treeLabel->setBuddy(tree_);

    fileModel_ = new QFileSystemModel(this);
    fileModel_->setFilter(QDir::Files | (extra_.showHidden ? QDir::Hidden : QDir::Filters()));
    fileModel_->setReadOnly(true);
    files_ = new QListView(this);
    files_->setObjectName("fSelectFile");
    files_->setModel(fileModel_);
    files_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    files_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* filesLabel = new QLabel("&2. Select File", this);
    filesLabel->setBuddy(files_);

    auto* left = new QVBoxLayout;
    left->addWidget(treeLabel);
    left->addWidget(tree_, 3);
    left->addWidget(filesLabel);
    left->addWidget(files_, 2);

    // Middle: the buttons that change the list.
    auto* addDirButton = namedButton("fAddDir", "&Add Dir", this);
    auto* addFileButton = namedButton("fAddFile", "Add Fi&le", this);
    auto* addWithButton = namedButton("fAddWith", "Add wit&h type && subdirs", this);
    setType_ = typeCombo("fSetFTCombo", this);
    setType_->setToolTip("The type for Add with type, Set Type and Set Subdirs");
    setSubdirs_ = namedCheck("fSetIncludeSubdirscheck", "<+> Subdirs", extra_.includeSubdirs, this);
    auto* changeTypeButton = namedButton("fChangeType", "Set &Type", this);
    auto* subdirsButton = namedButton("fInclSubDirs", "Set Su&bdirs", this);
    auto* delButton = namedButton("fDelDir", "R&emove ", this);
    auto* clearButton = namedButton("fClearList", "&New List", this);
    auto* typesButton = namedButton("fEnterFileType", "Enter Ty&pe", this);

    auto* middle = new QVBoxLayout;
    middle->addSpacing(treeLabel->sizeHint().height());
    middle->addWidget(addDirButton);
    middle->addWidget(addFileButton);
    middle->addSpacing(8);
    middle->addWidget(addWithButton);
    middle->addWidget(setType_);
    middle->addWidget(setSubdirs_);
    middle->addWidget(changeTypeButton);
    middle->addWidget(subdirsButton);
    middle->addSpacing(8);
    middle->addWidget(delButton);
    middle->addWidget(clearButton);
    middle->addSpacing(8);
    middle->addWidget(typesButton);
    middle->addStretch(1);

    // Right: the list, the window's defaults, and the closing buttons.
    dirsList_ = new QListWidget(this);
    dirsList_->setObjectName("fDirsLB");
    dirsList_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    defaultType_ = typeCombo("fFileTypecombo", this);
    auto* defaultLabel = new QLabel("Default F&ile Type && <+/-> (when not specified):", this);
    defaultLabel->setBuddy(defaultType_);
    defaultSubdirs_ = namedCheck("fIncSubdirscheck", "Include &Subdirs", extra_.includeSubdirs, this);
    multiDirs_ = namedCheck("fMultiDirCheck", "&Multiple Directories", extra_.multiDirs, this);
    autoRefresh_ = namedCheck("fReadFilescheck", "&AutoRefresh File List", extra_.autoRefresh, this);
    newWindow_ = namedCheck("fNewWindowcheck", "New window", extra_.newWindow, this);
    statusLabel_ = new QLabel(this);
    statusLabel_->setObjectName("fStatus");
    statusLabel_->setWordWrap(true);
    auto* okButton = namedButton("fOK", "&OK", this);
    auto* cancelButton = namedButton("fCancel", "&Cancel", this);
    auto* applyButton = namedButton("fApply", "Appl&y (F5)", this);

    auto* defaults = new QHBoxLayout;
    defaults->addWidget(defaultType_, 1);
    defaults->addWidget(defaultSubdirs_);
    auto* flags = new QHBoxLayout;
    flags->addWidget(multiDirs_);
    flags->addWidget(autoRefresh_);
    flags->addWidget(newWindow_);
    flags->addStretch(1);
    auto* closing = new QHBoxLayout;
    closing->addStretch(1);
    closing->addWidget(okButton);
    closing->addWidget(cancelButton);
    closing->addWidget(applyButton);

    auto* right = new QVBoxLayout;
    right->addSpacing(treeLabel->sizeHint().height());
    right->addWidget(dirsList_, 1);
    right->addWidget(defaultLabel);
    right->addLayout(defaults);
    right->addLayout(flags);
    right->addWidget(statusLabel_);
    right->addLayout(closing);

    auto* all = new QHBoxLayout(this);
    all->addLayout(left, 3);
    all->addLayout(middle, 0);
    all->addLayout(right, 4);

    connect(tree_, &DirectoryTree::directoryChosen, this, &SelectDirDialog::chooseDirectory);
    connect(tree_, &DirectoryTree::directoryActivated, this, [this](const QString& path) {
        chooseDirectory(path);
        addDir();
    });
    connect(files_, &QListView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!index.isValid()) return;
        report(lines_.add(toStd(fileModel_->filePath(index))));
        showLinesSelecting(fileModel_->filePath(index));
    });
    connect(addDirButton, &QPushButton::clicked, this, &SelectDirDialog::addDir);
    connect(addFileButton, &QPushButton::clicked, this, &SelectDirDialog::addFiles);
    connect(addWithButton, &QPushButton::clicked, this, &SelectDirDialog::addWith);
    connect(changeTypeButton, &QPushButton::clicked, this, &SelectDirDialog::changeType);
    connect(subdirsButton, &QPushButton::clicked, this, &SelectDirDialog::inclSubDirs);
    connect(delButton, &QPushButton::clicked, this, &SelectDirDialog::delDir);
    connect(clearButton, &QPushButton::clicked, this, &SelectDirDialog::clearList);
    connect(typesButton, &QPushButton::clicked, this, &SelectDirDialog::enterFileType);
    connect(okButton, &QPushButton::clicked, this, &SelectDirDialog::ok);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(applyButton, &QPushButton::clicked, this, &SelectDirDialog::apply);
    // With multiple directories the tree no longer lists by itself.
    connect(multiDirs_, &QCheckBox::toggled, this, [this](bool on) {
        if (on) autoRefresh_->setChecked(false);
    });
    auto* f5 = new QShortcut(QKeySequence(Qt::Key_F5), this);
    connect(f5, &QShortcut::activated, this, &SelectDirDialog::apply);
    auto* del = new QShortcut(QKeySequence(Qt::Key_Delete), dirsList_);
    del->setContext(Qt::WidgetShortcut);
    connect(del, &QShortcut::activated, this, &SelectDirDialog::delDir);
}

void SelectDirDialog::loadTypes() {
    types_ = readFileTypes(ini_);
    for (QComboBox* combo : {setType_, defaultType_}) {
        const QString text = combo->currentText();
        combo->clear();
        for (const NamedFileType& t : types_.items()) {
            combo->addItem(fromStd(t.types));
            combo->setItemData(combo->count() - 1, fromStd(t.name), Qt::ToolTipRole);
        }
        combo->setEditText(text);
    }
}

void SelectDirDialog::restoreWidth() {
    const int twips = ini_.mode(kMissingEmpty).getInt("Main", "Width SelectDirForm");
    int width = std::max(kNarrowest, twips / kTwipsPerPixel);
    if (const QScreen* s = screen()) width = std::min(width, std::max(kNarrowest, s->availableGeometry().width()));
    resize(width, std::max(sizeHint().height(), 420));
}

void SelectDirDialog::saveWidth() { ini_.putNumber("Main", "Width SelectDirForm", width() * kTwipsPerPixel); }

void SelectDirDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* b = qobject_cast<QPushButton*>(focusWidget()); b && b->isEnabled()) b->click();
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void SelectDirDialog::done(int result) {
    saveWidth();
    QDialog::done(result);
}

ListSelection SelectDirDialog::selection() const {
    ListSelection s = extra_;
    s.listSpec = lines_.spec();
    const std::string type(trimBlanks(toStd(defaultType_->currentText())));
    s.defaultType = type.empty() ? "*" : type;
    s.includeSubdirs = defaultSubdirs_->isChecked();
    s.multiDirs = multiDirs_->isChecked();
    s.autoRefresh = autoRefresh_->isChecked();
    s.newWindow = newWindow_->isChecked();
    return s;
}

void SelectDirDialog::chooseDirectory(const QString& path) {
    chosen_ = DirectoryTree::dirText(path);
    if (chosen_.isEmpty()) {
        tree_->setCurrentIndex(QModelIndex());
        files_->setRootIndex(QModelIndex());
        return;
    }
    if (tree_->currentDirectory() != chosen_) tree_->showDirectory(chosen_);
    fileModel_->setRootPath(chosen_);
    files_->setRootIndex(fileModel_->index(QDir::cleanPath(chosen_)));
}

QStringList SelectDirDialog::selectedFiles() const {
    QStringList out;
    for (const QModelIndex& index : files_->selectionModel()->selectedIndexes())
        if (index.column() == 0 && !fileModel_->isDir(index)) out << fileModel_->filePath(index);
    out.sort();
    return out;
}

void SelectDirDialog::selectLines(const std::vector<int>& rows) {
    dirsList_->clearSelection();
    for (int r : rows)
        if (r >= 0 && r < dirsList_->count()) dirsList_->item(r)->setSelected(true);
    if (!rows.empty() && rows.front() >= 0 && rows.front() < dirsList_->count())
        dirsList_->setCurrentRow(rows.front(), QItemSelectionModel::NoUpdate);
}

std::vector<int> SelectDirDialog::selectedLines() const {
    std::vector<int> rows;
    for (int r = 0; r < dirsList_->count(); ++r)
        if (dirsList_->item(r)->isSelected()) rows.push_back(r);
    return rows;
}

void SelectDirDialog::showLines(const std::vector<int>& select) {
    dirsList_->clear();
    for (const std::string& line : lines_.lines()) dirsList_->addItem(fromStd(line));
    selectLines(select);
}

void SelectDirDialog::showLinesSelecting(const QString& line) {
    std::vector<int> rows;
    const std::string wanted(trimBlanks(toStd(line)));
    for (std::size_t i = 0; i < lines_.lines().size(); ++i)
        if (lines_.lines()[i] == wanted) rows.push_back(static_cast<int>(i));
    showLines(rows);
}

void SelectDirDialog::tell(std::string_view prompt) {
    if (!prompt.empty()) MBOk(host_, prompt);
}

void SelectDirDialog::report(const LineEdit& edit) {
    tell(edit.prompt);
    if (!edit.status.empty()) {
        status_ = fromStd(edit.status);
        statusLabel_->setText(status_);
    }
}

void SelectDirDialog::addDir() {
    if (chosen_.isEmpty()) {
        tell(selectprompt::kNoDirToAdd);
        return;
    }
    report(lines_.add(toStd(chosen_)));
    showLinesSelecting(chosen_);
}

void SelectDirDialog::addFiles() {
    const QStringList chosenFiles = selectedFiles();
    if (chosenFiles.isEmpty()) {
        tell(selectprompt::kNoFilesToAdd);
        return;
    }
    for (const QString& f : chosenFiles) report(lines_.add(toStd(f)));
    showLinesSelecting(chosenFiles.back());
}

void SelectDirDialog::addWith() {
    const bool subdirs = setSubdirs_->isChecked();
    const std::string type = toStd(setType_->currentText());
    report(lines_.addWith(toStd(chosen_), type, subdirs));
    if (!chosen_.isEmpty()) showLinesSelecting(fromStd(lineWithMark(toStd(chosen_), type, subdirs)));
}

void SelectDirDialog::changeType() {
    const std::vector<int> rows = selectedLines();
    report(lines_.setType(rows, toStd(setType_->currentText()), defaultSubdirs_->isChecked()));
    showLines(rows);
}

void SelectDirDialog::inclSubDirs() {
    const std::vector<int> rows = selectedLines();
    report(lines_.setSubdirs(rows, setSubdirs_->isChecked(), toStd(setType_->currentText())));
    showLines(rows);
}

void SelectDirDialog::delDir() {
    const std::vector<int> rows = selectedLines();
    if (rows.empty()) return;
    report(lines_.remove(rows));
    const int next = std::min(rows.front(), static_cast<int>(lines_.lines().size()) - 1);
    showLines(next >= 0 ? std::vector<int>{next} : std::vector<int>{});
}

void SelectDirDialog::clearList() {
    lines_.clear();
    showLines({});
}

void SelectDirDialog::enterFileType() {
    FileTypesDialog types(selection(), host_, ini_, this);
    auto takeOver = [this, &types](const ListSelection& chosen) {
        extra_.showHidden = chosen.showHidden;
        extra_.showSystem = chosen.showSystem;
        extra_.showDirectories = chosen.showDirectories;
        defaultSubdirs_->setChecked(chosen.includeSubdirs);
        defaultType_->setEditText(fromStd(chosen.defaultType));
        status_ = types.statusText();
        statusLabel_->setText(status_);
    };
    connect(&types, &FileTypesDialog::applied, this, takeOver);
    types.exec();
    loadTypes();
    tree_->setShowHidden(extra_.showHidden);
    fileModel_->setFilter(QDir::Files | (extra_.showHidden ? QDir::Hidden : QDir::Filters()));
}

void SelectDirDialog::apply() {
    applied_ = selection();
    emit applied(applied_);
}

void SelectDirDialog::ok() {
    const std::string prompt = lines_.okPrompt();
    if (!prompt.empty()) {
        tell(prompt);
        return;
    }
    apply();
    accept();
}

}  // namespace tav::ui
