#include "ui/ShowDataWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "settings/IniStore.h"
#include "ui/ShowDataOwner.h"
#include "ui/ShowInfoAction.h"
#include "ui/TextSectionView.h"

namespace tav::ui {

namespace {

// The open popup of each role.
std::array<QPointer<ShowDataWindow>, 2> gOpen;

QPointer<ShowDataWindow>& openSlot(ShowDataWindow::Role role) {
    return gOpen[role == ShowDataWindow::Role::ShowData ? 0 : 1];
}

// Standard sizes of a fresh data directory, in twips.
constexpr int kFileWidth = 9000;
constexpr int kFileHeight = 6500;
constexpr int kCellWidth = 6000;
constexpr int kCellHeight = 4000;

bool isLoneModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
           key == Qt::Key_AltGr || key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

void tell(MessageHost& host, const std::string& text) {
    MessageRequest m = makeRequest(text, "0", "Esc=1|");
    host.show(m);
}

}  // namespace

ShowDataWindow::ShowDataWindow(Role role, TextBlockCache& cache, MessageHost& host, IniStore& ini, QWidget* parent)
    : QWidget(parent, Qt::Window), role_(role), host_(host), ini_(ini) {
    setObjectName(role == Role::ShowData ? "ShowData" : "ShowCell");
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (role == Role::ShowData) {
        text_ = new TextSectionView(cache, host, ViewSettings{}, this);
        text_->setObjectName("fText");
        layout->addWidget(text_, 1);
        setFocusProxy(text_);
        // A plain text made on a worker arrives later: its title and status then.
        connect(text_, &TextSectionView::plainShown, this, [this](const ShowFileResult& result) {
            const QString status = QString::fromStdString(result.status);
            setWindowTitle(status);
            setStatus(status);
        });
        connect(text_, &TextSectionView::busyChanged, this, [this](const QString& busy) {
            if (!busy.isEmpty()) setStatus(busy);
        });
    } else {
        cell_ = new QPlainTextEdit(this);
        cell_->setObjectName("fText");
        cell_->setReadOnly(true);
        cell_->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
        layout->addWidget(cell_, 1);
        setFocusProxy(cell_);
    }
    status_ = new QStatusBar(this);
    status_->setObjectName("fStatus");
    layout->addWidget(status_);
    setWindowTitle(role == Role::ShowData ? tr("Show Text") : tr("Show Cell"));
    buildActions();
    resize(standardSize());
    openSlot(role_) = this;
}

ShowDataWindow::~ShowDataWindow() {
    if (openSlot(role_) == this) openSlot(role_) = nullptr;
}

ShowDataWindow* ShowDataWindow::openPopup(Role role) { return openSlot(role).data(); }

ShowDataWindow* ShowDataWindow::instance(Role role, TextBlockCache& cache, MessageHost& host, IniStore& ini,
                                         QWidget* parent) {
    if (ShowDataWindow* open = openPopup(role)) return open;
    auto* popup = new ShowDataWindow(role, cache, host, ini, parent);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    return popup;
}

void ShowDataWindow::buildActions() {
    setContextMenuPolicy(Qt::ActionsContextMenu);
    auto add = [this](const QString& name, const QString& caption, auto slot) {
        auto* a = new QAction(caption, this);
        a->setObjectName(name);
        connect(a, &QAction::triggered, this, slot);
        addAction(a);
        return a;
    };
    if (role_ == Role::ShowData) add("OB", tr("Show &Bytes/Info for text"), [this] { showInfo(); });
    add("OM", tr("Show Hex Du&mp for File"), [this] { showHexDump(); });
    auto* line = new QAction(this);
    line->setSeparator(true);
    addAction(line);
    add("SetStdSize", role_ == Role::ShowData ? tr("Set Std Size Show Te&xt") : tr("Set Std Size Show Cel&l"),
        [this] { saveStandardSize(); });
    add("EQZ", tr("Popup Text - Resi&ze to std size"), [this] { resizeToStandardSize(); });
    QAction* filled = add("MaximisedToFilled",
                          role_ == Role::ShowData ? tr("Popup e&ven when maximised (Show File).")
                                                  : tr("Popup eve&n when maximised (Show Cell)."),
                          [this](bool on) {
                              ini_.put("Main", filledEntry(), on ? "-1" : "0");
                              fillScreenWhenMaximised();
                          });
    filled->setCheckable(true);
    filled->setChecked(ini_.mode(kMissingEmpty).getBool("Main", filledEntry()));
}

// ------------------------------------------------------------------ the owner

void ShowDataWindow::setOwner(QWidget* window, ShowDataOwner* callbacks) {
    owner_ = window;
    callbacks_ = callbacks;
    linked_ = window != nullptr;
}

// ------------------------------------------------------------------- showing

const ShownText& ShowDataWindow::shown() const {
    static const ShownText none;
    return text_ ? text_->shownText() : none;
}

bool ShowDataWindow::showFile(const QString& path, ShowKind kind, const QString& title, int64_t startByte) {
    if (kind == ShowKind::Hex) return showHexDumpOfFile(path, host_);
    if (!text_) return false;
    ShowFileOptions options;
    options.removeBlank = ini_.mode(kMissingEmpty).getBool("Main", "Show Raw remove blank");
    const int maxTitle = ini_.mode(kMissingEmpty).getInt("Main", "Text - max len title in status bar");
    if (maxTitle > 0) options.maxTitleInStatus = static_cast<size_t>(maxTitle);
    const ShowFileResult result =
        text_->showFile(path, kind == ShowKind::Plain ? TextKind::Plain : TextKind::Raw, startByte, title, options);
    if (!result.shown) {
        setStatus({});
        return false;
    }
    const QString status = QString::fromStdString(result.status);
    setWindowTitle(status);
    setStatus(status);
    bringUp();
    if (owner_ && callbacks_) callbacks_->popupTextShown(path);
    return true;
}

void ShowDataWindow::showCell(const QString& text, const QString& title) {
    if (!cell_) return;
    cell_->setPlainText(text);
    cell_->moveCursor(QTextCursor::Start);
    setWindowTitle(title.isEmpty() ? tr("Show Cell") : title);
    setStatus(title);
    bringUp();
}

void ShowDataWindow::bringUp() {
    openSlot(role_) = this;
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
    fillScreenWhenMaximised();
    if (QWidget* proxy = focusProxy()) proxy->setFocus(Qt::OtherFocusReason);
}

void ShowDataWindow::fillScreenWhenMaximised() {
    if (!isMaximized() || !ini_.mode(kMissingEmpty).getBool("Main", filledEntry())) return;
    if (!screen()) {
        tell(host_, "Windows error. Cannot change maximised window to Fill screen.");
        return;
    }
    setWindowState((windowState() & ~Qt::WindowMaximized) | Qt::WindowFullScreen);
}

void ShowDataWindow::setStatus(const QString& text) {
    if (text.isEmpty()) status_->clearMessage();
    else status_->showMessage(text);
    emit statusChanged(text);
}

QString ShowDataWindow::statusText() const { return status_->currentMessage(); }

// ------------------------------------------------------------------ the size

const char* ShowDataWindow::widthEntry() const {
    return role_ == Role::ShowData ? "Std Size Show File Width" : "Std Size Show Cell Width";
}

const char* ShowDataWindow::heightEntry() const {
    return role_ == Role::ShowData ? "Std Size Show File Height" : "Std Size Show Cell Height";
}

const char* ShowDataWindow::filledEntry() const {
    return role_ == Role::ShowData ? "File maximised to filled" : "Cell maximised to filled";
}

QSize ShowDataWindow::standardSize() const {
    int w = ini_.mode(kMissingEmpty).getInt("Main", widthEntry());
    int h = ini_.mode(kMissingEmpty).getInt("Main", heightEntry());
    if (w <= 0) w = role_ == Role::ShowData ? kFileWidth : kCellWidth;
    if (h <= 0) h = role_ == Role::ShowData ? kFileHeight : kCellHeight;
    return {std::max(1, w / kTwipsPerPixel), std::max(1, h / kTwipsPerPixel)};
}

void ShowDataWindow::saveStandardSize() {
    ini_.putNumber("Main", widthEntry(), width() * kTwipsPerPixel);
    ini_.putNumber("Main", heightEntry(), height() * kTwipsPerPixel);
}

void ShowDataWindow::resizeToStandardSize() {
    if (isMaximized() || isFullScreen()) showNormal();
    resize(standardSize());
}

// ------------------------------------------------------------------ commands

void ShowDataWindow::showInfo() {
    if (text_) showInfoForView(*text_, host_, ini_);
}

void ShowDataWindow::showHexDump() {
    if (cell_) {
        showHexDumpOfText(cell_->toPlainText(), windowTitle(), host_);
        return;
    }
    // The selected bytes as the view holds them; without a selection the file.
    const std::string& pafn = text_->shownText().pafn;
    if (text_->view().selection().empty() && !pafn.empty())
        showHexDumpOfFile(QString::fromStdString(pafn), host_);
    else
        showHexDumpOfView(*text_, host_);
}

// ---------------------------------------------------------------------- keys

// Keys reach here that the view did not take.
void ShowDataWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        event->accept();
        close();
        return;
    }
    if (isLoneModifier(event->key())) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (ownerGone()) {
        event->accept();
        tell(host_, kOwnerGone);
        return;
    }
    if (owner_ && callbacks_ && callbacks_->popupKey(event)) {
        event->accept();
        return;
    }
    QWidget::keyPressEvent(event);
}

void ShowDataWindow::closeEvent(QCloseEvent* event) {
    // Closing leaves the text cache: a later view of the same file reads no block again.
    if (openSlot(role_) == this) openSlot(role_) = nullptr;
    event->accept();
}

}  // namespace tav::ui
