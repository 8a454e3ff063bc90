#pragma once
// The popup text window (`ShowDataform`): a window of its own beside the
// main window that shows a file through the chunked text view (`ShowData`),
// or the text of a grid cell held in memory (`ShowCell`).
//
// One popup of each role is open at a time: instance() gives the open one,
// so a new show reuses it where it stands and at its size, or makes a new
// one (deleted when it closes) at the standard size of section "Main":
// `Std Size Show File Width`/`Height` or `Std Size Show Cell Width`/`Height`,
// in twips, set from the popup's own size by "Set Std Size Show Te&xt" and
// "Set Std Size Show Cel&l".
//
// The popup keeps a link to the File List window that opened it: keys that
// the view does not take go to that window through ShowDataOwner. Once that
// window is gone such a key only gives a notice. Esc closes the popup.
//
// Threads: UI thread only.
#include <QPointer>
#include <QString>
#include <QWidget>
#include <cstdint>

#include "core/MessageRequest.h"
#include "viewer/ShowFile.h"

class QAction;
class QPlainTextEdit;
class QStatusBar;

namespace tav {
class IniStore;
class TextBlockCache;
}  // namespace tav

namespace tav::ui {

class ShowDataOwner;
class TextSectionView;

// How a file is shown: plain text, raw text, or the hex display.
enum class ShowKind { Plain, Raw, Hex };

class ShowDataWindow : public QWidget {
    Q_OBJECT
public:
    enum class Role { ShowData, ShowCell };

    static constexpr int kTwipsPerPixel = 15;
    static constexpr const char* kOwnerGone =
        "File List used to display this text no longer exists. Keys and menus cannot be used.";

    ShowDataWindow(Role role, TextBlockCache& cache, MessageHost& host, IniStore& ini, QWidget* parent = nullptr);
    ~ShowDataWindow() override;

    // The popup of that role that is open now, or nullptr.
    static ShowDataWindow* openPopup(Role role);
    // The open popup of that role, or a new one, deleted when it closes.
    // A parent keeps the popup above that window.
    static ShowDataWindow* instance(Role role, TextBlockCache& cache, MessageHost& host, IniStore& ini,
                                    QWidget* parent = nullptr);

    Role role() const { return role_; }

    // The File List window that opened the popup; the popup does not own it.
    void setOwner(QWidget* window, ShowDataOwner* callbacks);
    QWidget* owner() const { return owner_.data(); }
    // The popup was opened by a window that has since gone.
    bool ownerGone() const { return linked_ && !owner_; }

    // ShowData: shows the file from `startByte` and brings the popup up;
    // the owner keeps it as its last text. Hex shows the hex display of the
    // file and leaves the popup as it is. False when it could not be shown
    // (the message has been shown).
    bool showFile(const QString& path, ShowKind kind = ShowKind::Raw, const QString& title = {},
                  int64_t startByte = 1);
    // ShowCell: shows the text, read-only, and brings the popup up.
    void showCell(const QString& text, const QString& title = {});

    // The standard size of this role, in pixels.
    QSize standardSize() const;
    // "Set Std Size Show Te&xt" / "Set Std Size Show Cel&l": the popup's
    // size becomes the standard size.
    void saveStandardSize();
    // `EQZ` "Popup Text - Resi&ze to std size".
    void resizeToStandardSize();

    // `OB` for the text shown (ShowData).
    void showInfo();
    // `OM`: the hex display of the selected bytes, else of the file (its
    // bytes, also under plain text), or of the cell's text.
    void showHexDump();

    QString statusText() const;
    TextSectionView* textView() const { return text_; }
    QPlainTextEdit* cellView() const { return cell_; }
    const ShownText& shown() const;

signals:
    // After a show, with the status text.
    void statusChanged(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildActions();
    void setStatus(const QString& text);
    void bringUp();
    // `File maximised to filled` / `Cell maximised to filled`.
    void fillScreenWhenMaximised();
    const char* widthEntry() const;
    const char* heightEntry() const;
    const char* filledEntry() const;

    Role role_;
    MessageHost& host_;
    IniStore& ini_;
    TextSectionView* text_ = nullptr;  // ShowData
    QPlainTextEdit* cell_ = nullptr;   // ShowCell
    QStatusBar* status_ = nullptr;
    QPointer<QWidget> owner_;
    ShowDataOwner* callbacks_ = nullptr;
    bool linked_ = false;  // an owner was set
    bool everShown_ = false;
};

}  // namespace tav::ui
