#pragma once
// The message box: renders one MessageRequest (message, icon, buttons in
// lines, the controls of the request with their values) and, when a button
// is pressed, writes the controls' results back into the request.
//
// Threads: built, shown and answered on the UI thread only. The request must
// outlive the box's answer; after finished() the box no longer touches it.
#include <QDialog>
#include <QFont>
#include <QPointer>
#include <string>
#include <vector>

#include "core/MessageRequest.h"
#include "dialogs/ControlSpec.h"
#include "dialogs/MessageOptions.h"
#include "dialogs/StandardButtons.h"

class QFrame;
class QLabel;
class QPushButton;
class QScrollArea;

namespace tav::ui {

class MessageBoxDialog : public QDialog {
    Q_OBJECT
public:
    // appTitle: the application's message title; mainCaption: the caption
    // of the main window, used when the title and appTitle are empty.
    // boxFont: the user's message box font; none: the box's own font.
    MessageBoxDialog(MessageRequest& request, const QString& appTitle, const QString& mainCaption,
                     QWidget* parent = nullptr, const QFont* boxFont = nullptr);
    // A box destroyed unanswered (its window went away) reports no finish.
    ~MessageBoxDialog() override;

    // The answer a box gives when the user changed the font with a format
    // key: the host builds the same box again with changedFont(). Callers
    // of the host never see it.
    static constexpr int kFontChanged = -1;

    // The answer: the button pressed (from 1), -2 when a key hid the box,
    // kFontChanged, 0 while none.
    int answer() const { return answer_; }
    // The font the user chose with a format key (after kFontChanged).
    const QFont& changedFont() const { return changedFont_; }
    // The request the box answers.
    MessageRequest& request() const { return *request_; }

    // The buttons of the button lines, from 1; nullptr beyond.
    QPushButton* button(int number) const;
    int buttonCount() const { return static_cast<int>(buttons_.size()); }
    const ButtonSet& buttonSet() const { return set_; }
    // The widget of control `index` (the index into Values); nullptr for none.
    QWidget* control(int index) const;
    QLabel* messageLabel() const { return message_; }
    QLabel* iconLabel() const { return icon_; }
    // The scrolling area of the box; its widget holds what the box shows.
    QScrollArea* area() const { return scroll_; }

    // Presses button n: writes the results back and closes the box.
    void pressButton(int number);

    // The format keys (Shift+Alt with F: choose a font, I: one point
    // larger, D: one point smaller) end here: the box keeps what the user
    // entered as the start values of its request and closes with
    // kFontChanged, so that it can be built again in that font.
    void changeFont(const QFont& font);

    // This box replaces `old` (a rebuild in another font, or a second
    // instance of a kept box): it stands at old's place and the focus goes
    // to the same button or control.
    void takePlaceOf(const MessageBoxDialog& old);

    // NoHide: the box stays on screen after a press and reports it by
    // pressed(); rearm makes it answer the next press into `request`, first
    // showing the validation text, when there is one, on a panel with "OK".
    void rearm(MessageRequest& request, const std::string& validationText);
    bool keepsOnScreen() const { return noHide_; }
    bool validationShown() const;

    // Lets go of the request unanswered (the program is ending): the box
    // hides and no longer writes to the request.
    void abandon();
    bool isAbandoned() const { return detached_; }

    // Pixels for a measure in twips, at the proportion of the box's font to
    // an eight point font.
    int px(double twips) const;

    void setVisible(bool visible) override;

signals:
    void pressed(int number);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    struct Control {
        ControlSpec spec;
        int index = 0;            // into Values and Lists
        QWidget* widget = nullptr;
        QLabel* label = nullptr;  // a Label control
    };

    void build();
    void connectControl(const Control& control);
    void layoutBox();
    int placeButtons(int top, int left, int width, const ButtonGaps& gaps);
    void setInitialFocus();
    void writeBack();
    void writeStartValues();
    bool formatKey(int code, int shift);
    void showValidation(const QString& text);
    void dismissValidation();
    void runListAction(const ListActionSpec& action, const QString& text);
    bool handleKey(QKeyEvent* event);
    bool hidesOn(const QKeyEvent* event) const;
    bool acceleratorKey(int key);
    void hideByKey();
    QString activeControlName() const;

    MessageRequest* request_;  // the request being answered; rearm changes it
    MessageOptions options_;
    ButtonSet set_;
    QScrollArea* scroll_ = nullptr;  // holds content_
    QWidget* content_ = nullptr;     // the icon, message, controls and (mostly) the buttons
    QLabel* icon_ = nullptr;
    QLabel* message_ = nullptr;
    std::vector<QPushButton*> buttons_;
    std::vector<Control> controls_;
    int answer_ = 0;
    std::string keyData_;  // "keycode|shift|control" of the last key down
    bool textGiven_ = false;
    bool shown_ = false;
    bool pictureGiven_ = false;  // SetPic
    bool detached_ = false;
    bool noHide_ = false;
    int buttonWidth_ = 0;   // one width for all buttons of the box, in and under the controls
    int buttonHeight_ = 0;
    QFrame* vali_ = nullptr;  // the validation panel of the NoHide cycle
    QLabel* valiLabel_ = nullptr;
    QPushButton* valiButton_ = nullptr;
    QPointer<QWidget> valiFocus_;
    QSize valiGrownFrom_;  // the box's size before the panel made it taller
    QFont changedFont_;
    QPointer<QWidget> closingFocus_;  // the focus when the font changed
};

}  // namespace tav::ui
