#include "ui/MessageBoxDialog.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QFontDialog>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTableWidget>
#include <QTextEdit>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <cmath>

#include "core/ListText.h"
#include "dialogs/MessageText.h"
#include "dialogs/PictureTable.h"
#include "ui/MessageBoxControls.h"

namespace tav::ui {

namespace {

// Measures of the layout, in twips of an eight point font.
constexpr int kControlGap = 60;
constexpr int kMinRowHeight = 285;
constexpr int kMargin = 120;
constexpr int kButtonExtra = 180;
constexpr int kButtonWidthRef = 600;
constexpr int kRightMargin = 240;
constexpr int kDesignedWidth = 2400;  // TextBox, ListBox, ComboBox without a width
constexpr int kListRows = 6;          // rows a ListBox shows without a height
constexpr int kFrameAllowance = 48;   // pixels of caption and frame below the screen height

QString qs(const std::string& s) { return QString::fromStdString(s); }

QColor colourOf(long bgr) {
    return QColor(static_cast<int>(bgr & 0xff), static_cast<int>((bgr >> 8) & 0xff),
                  static_cast<int>((bgr >> 16) & 0xff));
}

bool isTextInput(const QWidget* w) {
    return qobject_cast<const QLineEdit*>(w) || qobject_cast<const QPlainTextEdit*>(w) ||
           qobject_cast<const QTextEdit*>(w) || qobject_cast<const QAbstractSpinBox*>(w);
}

bool isLoneModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
           key == Qt::Key_AltGr || key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

// The format keys of a box: Shift+Alt with F (font), I (larger), D (smaller).
bool isFormatKey(int code, int shift) {
    constexpr int kShiftAlt = 1 | 4;
    return shift == kShiftAlt && (code == 'F' || code == 'I' || code == 'D');
}

bool isFormatKey(const QKeyEvent* event) {
    return isFormatKey(messageBoxKeyCode(event->key()), messageBoxShiftMask(event->modifiers()));
}

// The width a spec gives, scaled up for a large font.
std::optional<double> givenWidth(const ControlSpec& spec) {
    auto w = spec.width();
    if (!w) return std::nullopt;
    double width = *w;
    if (auto size = spec.fontSize(); size && *size / 8.0 > 1.2) width = width * *size / 8.0;
    return width;
}

// The start value a list control takes from its own result: a ComboBox's
// "text|ListIndex" becomes its ListIndex, or its text behind "CBtxt"; the
// others read their result as they write it.
std::string startValueOf(const ControlSpec& spec, const std::string& result) {
    if (spec.kind != ControlKind::ComboBox) return result;
    const size_t bar = result.rfind('|');
    if (bar == std::string::npos) return result;
    const std::string index = result.substr(bar + 1);
    if (!index.empty() && index != "-1") return index;
    return "CBtxt" + result.substr(0, bar);
}

}  // namespace

MessageBoxDialog::MessageBoxDialog(MessageRequest& request, const QString& appTitle, const QString& mainCaption,
                                   QWidget* parent, const QFont* boxFont)
    : QDialog(parent), request_(&request) {
    setObjectName("Msgbxform");
    if (boxFont) setFont(*boxFont);
    options_ = isNumericText(request.options) ? MessageOptions::parse(std::lround(optionNumber(request.options)))
                                              : MessageOptions::parse(request.options);
    set_ = resolveButtons(request);
    noHide_ = options_.noHide().has_value();
    size_t n = std::max({request.ctlSpecs.size(), size_t{1}});
    if (request.values.size() < n) request.values.resize(n);
    if (request.lists.size() < n) request.lists.resize(n);
    setWindowTitle(qs(resolveTitle(request.title, appTitle.toStdString(), mainCaption.toStdString())));
    build();
    layoutBox();
    setInitialFocus();
    for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);
}

MessageBoxDialog::~MessageBoxDialog() {
    disconnect(this, &QDialog::finished, nullptr, nullptr);
}

int MessageBoxDialog::px(double twips) const {
    double points = font().pointSizeF();
    if (points <= 0) points = QFontInfo(font()).pointSizeF();
    if (points <= 0) points = 8.0;
    double dpi = logicalDpiY() > 0 ? logicalDpiY() : 96;
    return static_cast<int>(std::lround(twips / 1440.0 * dpi * points / 8.0));
}

QPushButton* MessageBoxDialog::button(int number) const {
    if (number < 1 || number > static_cast<int>(buttons_.size())) return nullptr;
    return buttons_[static_cast<size_t>(number - 1)];
}

QWidget* MessageBoxDialog::control(int index) const {
    for (const Control& c : controls_)
        if (c.index == index) return c.widget;
    return nullptr;
}

void MessageBoxDialog::build() {
    if (auto back = options_.backColor()) {
        QPalette p = palette();
        p.setColor(QPalette::Window, colourOf(*back));
        setPalette(p);
        setAutoFillBackground(true);
    }
    if (auto fore = options_.foreColor()) {
        QPalette p = palette();
        p.setColor(QPalette::WindowText, colourOf(*fore));
        setPalette(p);
    }

    // Everything stands on one content widget, which scrolls when the box
    // would be taller than the screen.
    scroll_ = new QScrollArea(this);
    scroll_->setObjectName("fArea");
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(false);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    content_ = new QWidget;
    scroll_->setWidget(content_);
    scroll_->viewport()->setAutoFillBackground(false);
    content_->setAutoFillBackground(false);

    icon_ = new QLabel(content_);
    icon_->setObjectName("fIcon");
    QStyle::StandardPixmap pixmap = QStyle::SP_CustomBase;
    switch (options_.icon()) {
    case MessageIcon::Critical: pixmap = QStyle::SP_MessageBoxCritical; break;
    case MessageIcon::Question: pixmap = QStyle::SP_MessageBoxQuestion; break;
    case MessageIcon::Exclamation: pixmap = QStyle::SP_MessageBoxWarning; break;
    case MessageIcon::Information: pixmap = QStyle::SP_MessageBoxInformation; break;
    case MessageIcon::None: break;
    }
    QPixmap picture;
    if (auto slot = options_.pictureSlot()) picture = boxPicture(PictureTable::shared().take(*slot));
    if (!picture.isNull()) {
        icon_->setPixmap(picture);
        pictureGiven_ = true;
    } else if (options_.iconFromForm() && parentWidget() && !parentWidget()->window()->windowIcon().isNull()) {
        icon_->setPixmap(parentWidget()->window()->windowIcon().pixmap(32, 32));
    } else if (pixmap != QStyle::SP_CustomBase) {
        int side = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
        icon_->setPixmap(style()->standardIcon(pixmap, nullptr, this).pixmap(side, side));
    } else {
        icon_->hide();
    }
    if (!icon_->pixmap().isNull()) icon_->resize(icon_->pixmap().deviceIndependentSize().toSize());

    message_ = new QLabel(content_);
    message_->setObjectName("fMsg");
    message_->setWordWrap(true);
    message_->setTextFormat(Qt::RichText);
    message_->setTextInteractionFlags(Qt::NoTextInteraction);
    message_->setText(messageRichText(request_->message));
    if (pictureGiven_) message_->setAttribute(Qt::WA_TranslucentBackground);
    QFont msgFont = font();
    if (options_.textBold()) msgFont.setBold(true);
    if (auto size = options_.textSize(); size && *size > 0) msgFont.setPointSize(*size);
    if (!options_.textFont().empty()) msgFont.setFamily(qs(options_.textFont()));
    message_->setFont(msgFont);
    textGiven_ = !request_->message.empty();
    if (!textGiven_) message_->hide();

    const auto bold = options_.boldButtons();
    const auto italic = options_.italicButtons();
    const auto underlined = options_.underlinedButtons();
    for (size_t i = 0; i < set_.captions.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        auto* b = new QPushButton(qs(set_.captions[i]), content_);
        b->setObjectName(QString("fButton(%1)").arg(number));
        b->setAutoDefault(false);
        QFont f = font();
        auto in = [number](const std::vector<int>& list) {
            return std::find(list.begin(), list.end(), number) != list.end();
        };
        if (in(bold)) f.setBold(true);
        if (in(italic)) f.setItalic(true);
        if (in(underlined)) f.setUnderline(true);
        b->setFont(f);
        if (number == set_.defaultButton) b->setDefault(true);
        connect(b, &QPushButton::clicked, this, [this, number] { pressButton(number); });
        buttons_.push_back(b);
    }

    for (size_t i = 1; i < request_->ctlSpecs.size(); ++i) {
        Control c;
        c.spec = parseControlSpec(request_->ctlSpecs[i]);
        c.index = static_cast<int>(i);
        c.widget = makeBoxControl(c.spec, c.index, request_->values[i], request_->lists[i], content_,
                                  [this](double twips) { return px(twips); });
        c.label = c.spec.kind == ControlKind::Label ? qobject_cast<QLabel*>(c.widget) : nullptr;
        connectControl(c);
        controls_.push_back(c);
    }
}

void MessageBoxDialog::connectControl(const Control& c) {
    if (auto* b = qobject_cast<QPushButton*>(c.widget)) {
        const int number = c.index;
        connect(b, &QPushButton::clicked, this, [this, number] { pressButton(number); });
    } else if (auto* lb = qobject_cast<QListWidget*>(c.widget)) {
        const ListActionSpec action = c.spec.doubleClickAction();
        connect(lb, &QListWidget::itemDoubleClicked, this,
                [this, action](QListWidgetItem* item) { runListAction(action, item->text()); });
    } else if (auto* grid = qobject_cast<QTableWidget*>(c.widget)) {
        const ListActionSpec action = c.spec.doubleClickAction();
        connect(grid, &QTableWidget::cellDoubleClicked, this, [this, grid, action](int r, int col) {
            runListAction(action, grid->item(r, col) ? grid->item(r, col)->text() : QString());
        });
    }
}

void MessageBoxDialog::setVisible(bool visible) {
    const bool first = visible && !shown_;
    QDialog::setVisible(visible);
    if (!first) return;
    shown_ = true;
    // Showing a dialog hands its focus widget a Tab focus, which selects a
    // line edit's whole text: the text boxes get the selection of their spec.
    for (const Control& c : controls_) {
        if (c.spec.kind == ControlKind::TextBox && c.widget) applyTextSelection(c.spec, c.widget);
        if (c.spec.kind == ControlKind::Grid && c.widget) applyGridScrollPlace(c.widget);
    }
}

void MessageBoxDialog::layoutBox() {
    const QScreen* screen = parentWidget() ? parentWidget()->screen() : QGuiApplication::primaryScreen();
    const int screenWidth = screen ? screen->availableGeometry().width() : 1024;
    const int margin = px(kMargin);
    const int gap = px(kControlGap);
    const bool hasControls = std::any_of(controls_.begin(), controls_.end(), [](const Control& c) {
        return c.widget != nullptr;
    });
    const ButtonGaps gaps = options_.buttonGaps(hasControls);

    // Button width: the widest caption in its own font, plus the extra.
    int buttonWidth = px(kButtonWidthRef);
    int buttonHeight = px(kMinRowHeight);
    auto measureButton = [&](QPushButton* b) {
        QFontMetrics fm(b->font());
        buttonWidth = std::max(buttonWidth, fm.horizontalAdvance(b->text().remove('&')) + px(kButtonExtra));
        buttonHeight = std::max(buttonHeight, b->sizeHint().height());
    };
    for (QPushButton* b : buttons_) measureButton(b);
    for (const Control& c : controls_)
        if (c.spec.kind == ControlKind::CommandButton && c.widget) measureButton(static_cast<QPushButton*>(c.widget));
    buttonWidth_ = buttonWidth;
    buttonHeight_ = buttonHeight;

    const bool iconShown = !icon_->isHidden();
    const int iconW = iconShown ? icon_->width() : 0;
    const int iconH = iconShown ? icon_->height() : 0;
    const int msgLeft = margin + (iconShown ? iconW + gap : 0);

    // Box width.
    const int limit = screenWidth * 2 / 3;
    int width = 0;
    if (auto fixed = options_.fixedWidth(); fixed && *fixed > 0) {
        width = px(*fixed);
    } else {
        QFontMetrics fm(message_->font());
        int textWidth = 0;
        int longestWord = 0;
        for (const QString& line : qs(messagePlainText(request_->message)).split('\n')) {
            textWidth = std::max(textWidth, fm.horizontalAdvance(line));
            for (const QString& word : line.split(' ', Qt::SkipEmptyParts))
                longestWord = std::max(longestWord, fm.horizontalAdvance(word));
        }
        int content = textGiven_ ? msgLeft + textWidth + margin + 2 : 0;
        const int perLine = std::min<int>(static_cast<int>(buttons_.size()), options_.maxButtonsPerLine());
        if (perLine > 0)
            content = std::max(content, 2 * margin + perLine * buttonWidth + (perLine - 1) * px(gaps.between));
        const int ctlLeft = options_.controlsUnderMessage() ? margin : msgLeft;
        int rowWidth = 0;
        for (const Control& c : controls_) {
            if (!c.widget) continue;
            if (!c.spec.sharesRow) rowWidth = 0; else rowWidth += gap;
            int w = 0;
            if (auto given = givenWidth(c.spec)) w = px(*given);
            else if (c.spec.kind == ControlKind::TextBox || c.spec.kind == ControlKind::ListBox ||
                     c.spec.kind == ControlKind::ComboBox || c.spec.kind == ControlKind::Grid) w = px(kDesignedWidth);
            else if (c.spec.kind == ControlKind::CommandButton) w = buttonWidth;
            else if (c.spec.kind != ControlKind::Shape) w = std::min(c.widget->sizeHint().width(), limit);
            rowWidth += w;
            content = std::max(content, ctlLeft + rowWidth + px(kRightMargin));
        }
        width = std::min(content, limit);
        if (auto minWidth = options_.defaultAndMinWidth(); minWidth && *minWidth > 0)
            width = std::max(width, px(*minWidth));
        if (textGiven_) width = std::max(width, std::min(msgLeft + longestWord + margin, screenWidth));
        width = std::max(width, 2 * margin + buttonWidth);
    }
    width = std::min(width, screenWidth);

    // Icon and message.
    int bottom = margin;
    if (iconShown) {
        icon_->move(margin, margin);
        bottom = std::max(bottom, margin + iconH);
    }
    int msgBottom = margin;
    if (textGiven_) {
        const int msgWidth = std::max(1, width - msgLeft - margin);
        message_->setGeometry(msgLeft, margin, msgWidth, message_->heightForWidth(msgWidth));
        msgBottom = margin + message_->height();
        bottom = std::max(bottom, msgBottom);
    }
    const int iconBottom = iconShown ? margin + iconH : margin;

    // Controls, in list order, row by row.
    // Under the taller of icon and message; beside the icon when there is no
    // message, unless the controls go under it.
    const int ctlLeft = options_.controlsUnderMessage() ? margin : msgLeft;
    int top = textGiven_ || (iconShown && options_.controlsUnderMessage()) ? bottom + gap : margin;
    const int ctlTop = top;
    const int usableRight = width - px(kRightMargin);
    bool buttonsPlaced = false;
    int buttonsBottom = 0;
    int controlsBottom = 0;
    for (size_t i = 0; i < controls_.size();) {
        const Control& head = controls_[i];
        if (head.spec.kind == ControlKind::JustAddHeight) {
            top += (head.spec.addHeight() ? px(*head.spec.addHeight()) : px(gaps.lines)) - gap;
            ++i;
            continue;
        }
        if (head.spec.kind == ControlKind::AddButtonsBeforeRest) {
            if (!options_.buttonsAtBottom() && !buttonsPlaced) {
                buttonsBottom = placeButtons(top - gap + px(gaps.above), margin, width - 2 * margin, gaps);
                buttonsPlaced = true;
                top = buttonsBottom + gap;
            }
            ++i;
            continue;
        }
        // The row: this control and the ones behind it that share it.
        size_t end = i + 1;
        while (end < controls_.size() && controls_[end].spec.sharesRow &&
               controls_[end].spec.kind != ControlKind::JustAddHeight &&
               controls_[end].spec.kind != ControlKind::AddButtonsBeforeRest)
            ++end;
        std::vector<const Control*> row;
        for (size_t k = i; k < end; ++k)
            if (controls_[k].widget) row.push_back(&controls_[k]);
        i = end;
        if (row.empty()) continue;

        const int available = std::max(1, usableRight - ctlLeft);
        std::vector<int> widths(row.size(), -1);
        int taken = 0;
        int open = 0;
        for (size_t k = 0; k < row.size(); ++k) {
            const Control& c = *row[k];
            if (auto given = givenWidth(c.spec)) widths[k] = std::min(px(*given), available);
            else if (c.spec.kind == ControlKind::CommandButton) widths[k] = buttonWidth;
            else if (c.spec.kind == ControlKind::Shape) widths[k] = row.size() == 1 ? available : -1;
            else if (c.spec.kind == ControlKind::Label || c.spec.kind == ControlKind::CheckBox ||
                     c.spec.kind == ControlKind::OptionButton) {
                int hint = c.widget->sizeHint().width();
                if (c.label) {
                    c.label->setWordWrap(false);
                    hint = c.label->sizeHint().width();
                    c.label->setWordWrap(true);
                }
                widths[k] = std::min(hint + 2, available);
                if (row.size() == 1 && c.label) widths[k] = available;
            } else if (row.size() == 1) {
                widths[k] = std::min(px(kDesignedWidth), available);
            }
            if (widths[k] >= 0) taken += widths[k]; else ++open;
        }
        const int gapsWidth = gap * static_cast<int>(row.size() - 1);
        const int share = open > 0 ? std::max(px(kMinRowHeight), (available - taken - gapsWidth) / open) : 0;
        for (int& w : widths)
            if (w < 0) w = share;

        std::vector<int> heights(row.size());
        int rowHeight = px(kMinRowHeight);
        for (size_t k = 0; k < row.size(); ++k) {
            const Control& c = *row[k];
            int h = 0;
            if (auto given = c.spec.height()) h = px(*given);
            else if (c.label) h = c.label->heightForWidth(widths[k]);
            else if (c.spec.kind == ControlKind::TextBox && c.spec.multiLine())
                h = QFontMetrics(c.widget->font()).lineSpacing() * 4 + 2 * c.widget->style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + 8;
            else if (c.spec.kind == ControlKind::ListBox || c.spec.kind == ControlKind::Grid)
                h = QFontMetrics(c.widget->font()).lineSpacing() * kListRows + 2 * c.widget->style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + 4;
            else if (c.spec.kind == ControlKind::CommandButton) h = buttonHeight;
            else if (c.spec.kind == ControlKind::Shape) h = std::max(2, px(kMinRowHeight) * c.spec.intField(1).value_or(100) / 100);
            else h = c.widget->sizeHint().height();
            if (c.spec.kind == ControlKind::Shape) h = std::min(h, px(kMinRowHeight));
            heights[k] = h;
            rowHeight = std::max(rowHeight, h);
        }
        int x = ctlLeft;
        for (size_t k = 0; k < row.size(); ++k) {
            int y = top + (rowHeight - heights[k]) / 2;
            row[k]->widget->setGeometry(x, y, widths[k], heights[k]);
            x += widths[k] + gap;
        }
        controlsBottom = top + rowHeight;
        top += rowHeight + gap;
    }
    bottom = std::max(bottom, controlsBottom);
    if (buttonsPlaced) bottom = std::max(bottom, buttonsBottom);

    // The button lines.
    int firstTop = -1;
    if (!buttonsPlaced && !buttons_.empty()) {
        firstTop = bottom + px(gaps.above);
        int areaLeft = margin;
        if (options_.buttonsNextToIcon() && controlsBottom == 0) firstTop = iconBottom + px(gaps.above);
        if (options_.buttonsUnderTextOnly()) {
            areaLeft = msgLeft;
            firstTop = std::max(msgBottom, controlsBottom) + px(gaps.above);
        }
        buttonsBottom = placeButtons(firstTop, areaLeft, width - areaLeft - margin, gaps);
        bottom = std::max(bottom, buttonsBottom);
    }

    const int contentHeight = bottom + margin;
    int height = contentHeight;
    if (auto fixed = options_.fixedHeight(); fixed && fixed->height > 0) {
        if (fixed->controlArea) height = height - std::max(0, controlsBottom - ctlTop) + px(fixed->height);
        else height = px(fixed->height);
    }
    // The frame and caption of the window take some of the screen's height.
    const int screenHeight = screen ? screen->availableGeometry().height() : height;
    height = std::min(height, std::max(px(kMinRowHeight) * 4, screenHeight - kFrameAllowance));
    content_->resize(width, contentHeight);
    if (height >= contentHeight) {
        scroll_->setGeometry(0, 0, width, height);
        setFixedSize(width, height);
    } else {
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        int viewHeight = height;
        if (options_.buttonsAtBottom() && firstTop >= 0) {
            // The buttons leave the scrolling controls and stay at the bottom.
            const int block = buttonsBottom - firstTop;
            viewHeight = std::max(px(kMinRowHeight), height - block - px(gaps.above) - margin);
            content_->resize(width, firstTop - px(gaps.above) + margin);
            for (QPushButton* b : buttons_) {
                const QRect g = b->geometry();
                const bool isDefault = b->isDefault();
                b->setParent(this);
                b->setGeometry(g.x(), g.y() - firstTop + viewHeight + px(gaps.above), g.width(), g.height());
                b->setDefault(isDefault);
                b->show();
            }
        }
        scroll_->setGeometry(0, 0, width + bar, viewHeight);
        setFixedSize(width + bar, height);
    }

    if (auto place = options_.topLeft()) {
        const double dpi = logicalDpiY() > 0 ? logicalDpiY() : 96;
        move(static_cast<int>(place->left / 1440.0 * dpi), static_cast<int>(place->top / 1440.0 * dpi));
    }
}

int MessageBoxDialog::placeButtons(int top, int left, int areaWidth, const ButtonGaps& gaps) {
    const int count = static_cast<int>(buttons_.size());
    if (count == 0) return top;
    const int between = px(gaps.between);
    const int lineGap = px(gaps.lines);
    const int buttonWidth = buttonWidth_;
    const int buttonHeight = buttonHeight_;
    int perLine = (areaWidth + between) / (buttonWidth + between);
    perLine = std::max(1, std::min({perLine, count, options_.maxButtonsPerLine()}));
    int y = top;
    for (int first = 0; first < count; first += perLine) {
        const int inLine = std::min(perLine, count - first);
        const int lineWidth = inLine * buttonWidth + (inLine - 1) * between;
        int x = std::max(left, left + (areaWidth - lineWidth) / 2);
        for (int k = 0; k < inLine; ++k) {
            buttons_[static_cast<size_t>(first + k)]->setGeometry(x, y, buttonWidth, buttonHeight);
            buttons_[static_cast<size_t>(first + k)]->show();
            x += buttonWidth + between;
        }
        y += buttonHeight + (first + perLine < count ? lineGap : 0);
    }
    return y;
}

void MessageBoxDialog::setInitialFocus() {
    for (const Control& c : controls_) {
        if (c.widget && c.spec.firstFocus() && c.widget->isEnabled()) {
            c.widget->setFocus();
            return;
        }
    }
    if (set_.focusButton) {
        if (QPushButton* b = button(*set_.focusButton)) {
            b->setFocus();
            return;
        }
    }
    if (QPushButton* b = button(set_.defaultButton)) b->setFocus();
}

void MessageBoxDialog::runListAction(const ListActionSpec& action, const QString& text) {
    switch (action.action) {
    case ListAction::PressButton: {
        // Deferred, so that the list's own click handling finishes first.
        const int number = action.button;
        QTimer::singleShot(0, this, [this, number] { pressButton(number); });
        break;
    }
    case ListAction::ShowText: {
        // As a plain OK box that Esc closes.
        auto shown = std::make_shared<MessageRequest>(
            MessageRequest{text.toStdString(), std::string(1, '0'), std::string("Esc=1|"), {}, {}, {}, {}});
        auto* box = new MessageBoxDialog(*shown, windowTitle(), windowTitle(), this);
        box->setWindowTitle(windowTitle());
        connect(box, &QDialog::finished, box, [box, shown](int) { box->deleteLater(); });
        box->open();
        break;
    }
    case ListAction::OpenLink:
        QDesktopServices::openUrl(QUrl::fromUserInput(text));
        break;
    case ListAction::Nothing:
        break;
    }
}

void MessageBoxDialog::abandon() {
    detached_ = true;
    hide();
}

void MessageBoxDialog::pressButton(int number) {
    if (answer_ != 0 || detached_ || (vali_ && vali_->isVisible())) return;
    answer_ = number;
    writeBack();
    if (noHide_) {
        emit pressed(number);  // the box stays on screen
        return;
    }
    done(number);
}

void MessageBoxDialog::rearm(MessageRequest& request, const std::string& validationText) {
    request_ = &request;
    size_t n = std::max({request.ctlSpecs.size(), size_t{1}});
    if (request.values.size() < n) request.values.resize(n);
    if (request.lists.size() < n) request.lists.resize(n);
    answer_ = 0;
    if (!validationText.empty()) showValidation(qs(validationText));
}

void MessageBoxDialog::showValidation(const QString& text) {
    if (!vali_) {
        vali_ = new QFrame(this);
        vali_->setObjectName("fValiPic");
        vali_->setFrameShape(QFrame::Box);
        vali_->setAutoFillBackground(true);
        valiLabel_ = new QLabel(vali_);
        valiLabel_->setObjectName("fValiLabel");
        valiLabel_->setWordWrap(true);
        valiLabel_->setTextFormat(Qt::PlainText);
        valiLabel_->setAlignment(Qt::AlignCenter);
        QFont bold = valiLabel_->font();
        bold.setBold(true);
        valiLabel_->setFont(bold);
        valiButton_ = new QPushButton("OK", vali_);
        valiButton_->setObjectName("fValiButton");
        valiButton_->setAutoDefault(false);
        connect(valiButton_, &QPushButton::clicked, this, &MessageBoxDialog::dismissValidation);
    }
    // Kept while the panel shows: the focus to give back.
    valiFocus_ = QApplication::focusWidget();
    QString lines = text;  // lines joined with CR
    lines.replace("\r\n", "\n").replace('\r', '\n');
    valiLabel_->setText(lines);
    const int margin = px(kMargin);
    // Across the box, inside its margins; a box too low for the text grows
    // while the panel shows.
    const int w = std::min(width(), std::max(px(kButtonWidthRef) * 3, width() - 2 * margin));
    const int labelHeight = valiLabel_->heightForWidth(w - 2 * margin);
    const int buttonHeight = valiButton_->sizeHint().height();
    const int buttonWidth = std::max(px(kButtonWidthRef), valiButton_->sizeHint().width());
    const int h = margin + labelHeight + px(kControlGap) * 2 + buttonHeight + margin;
    valiLabel_->setGeometry(margin, margin, w - 2 * margin, labelHeight);
    valiButton_->setGeometry((w - buttonWidth) / 2, h - margin - buttonHeight, buttonWidth, buttonHeight);
    if (h + 2 * margin > height()) {
        if (!valiGrownFrom_.isValid()) valiGrownFrom_ = size();
        setFixedSize(width(), h + 2 * margin);
    }
    vali_->setGeometry((width() - w) / 2, std::max(0, (height() - h) / 2), w, h);
    vali_->show();
    vali_->raise();
    valiButton_->setDefault(true);
    valiButton_->setFocus();
}

void MessageBoxDialog::dismissValidation() {
    if (!vali_ || !vali_->isVisible()) return;
    vali_->hide();
    if (valiGrownFrom_.isValid()) setFixedSize(valiGrownFrom_);
    valiGrownFrom_ = QSize();
    valiButton_->setDefault(false);
    if (QPushButton* b = button(set_.defaultButton)) b->setDefault(true);
    if (valiFocus_) valiFocus_->setFocus();
    else setInitialFocus();
}

bool MessageBoxDialog::validationShown() const { return vali_ && vali_->isVisible(); }

void MessageBoxDialog::hideByKey() {
    if (answer_ != 0 || detached_) return;
    answer_ = -2;
    writeBack();
    done(-2);
}

void MessageBoxDialog::writeBack() {
    request_->values[0] = keyData_;
    for (const Control& c : controls_) {
        if (!c.widget) continue;
        auto& value = request_->values[static_cast<size_t>(c.index)];
        auto& list = request_->lists[static_cast<size_t>(c.index)];
        switch (c.spec.kind) {
        case ControlKind::TextBox:
            if (auto* line = qobject_cast<QLineEdit*>(c.widget)) value = line->text().toStdString();
            else if (auto* edit = qobject_cast<QPlainTextEdit*>(c.widget)) value = edit->toPlainText().toStdString();
            break;
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
            value = static_cast<QAbstractButton*>(c.widget)->isChecked() ? "-1" : "0";
            break;
        case ControlKind::ListBox:
        case ControlKind::ComboBox:
        case ControlKind::Grid:
            if (list.empty()) list.emplace_back();
            list[0] = listControlResult(c.spec, c.widget);
            break;
        default:
            break;
        }
    }
}

void MessageBoxDialog::writeStartValues() {
    writeBack();
    for (const Control& c : controls_) {
        if (!c.widget) continue;
        auto& list = request_->lists[static_cast<size_t>(c.index)];
        if (!list.empty()) list[0] = startValueOf(c.spec, list[0]);
    }
}

bool MessageBoxDialog::formatKey(int code, int shift) {
    if (!isFormatKey(code, shift)) return false;
    QFont next = font();
    const double size = next.pointSizeF() > 0 ? next.pointSizeF() : QFontInfo(next).pointSizeF();
    switch (code) {
    case 'F': {
        bool ok = false;
        next = QFontDialog::getFont(&ok, font(), this, "Message Box Font");
        if (!ok) return true;
        break;
    }
    case 'I':
        next.setPointSizeF(std::min(size + 1, 48.0));
        break;
    case 'D':
        next.setPointSizeF(std::max(size - 1, 6.0));
        break;
    default:
        return false;
    }
    changeFont(next);
    return true;
}

void MessageBoxDialog::changeFont(const QFont& font) {
    if (answer_ != 0 || detached_) return;
    changedFont_ = font;
    closingFocus_ = focusWidget();
    answer_ = kFontChanged;
    writeStartValues();
    done(kFontChanged);
}

void MessageBoxDialog::takePlaceOf(const MessageBoxDialog& old) {
    if (!options_.topLeft()) move(old.pos());
    QWidget* focus = old.closingFocus_ ? old.closingFocus_.data() : old.focusWidget();
    if (!focus) return;
    for (size_t i = 0; i < old.buttons_.size(); ++i) {
        if (old.buttons_[i] == focus) {
            if (QPushButton* b = button(static_cast<int>(i) + 1)) b->setFocus();
            return;
        }
    }
    for (const Control& c : old.controls_) {
        if (!c.widget || (c.widget != focus && !c.widget->isAncestorOf(focus))) continue;
        if (QWidget* w = control(c.index); w && w->isEnabled()) w->setFocus();
        return;
    }
}

QString MessageBoxDialog::activeControlName() const {
    for (QWidget* w = QApplication::focusWidget(); w && w != this; w = w->parentWidget())
        if (!w->objectName().isEmpty() && w->objectName().startsWith('f')) return w->objectName();
    return objectName();
}

bool MessageBoxDialog::handleKey(QKeyEvent* event) {
    if (validationShown()) {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape) {
            dismissValidation();
            return true;
        }
        return false;
    }
    const int key = event->key();
    const int code = messageBoxKeyCode(key);
    const int shift = messageBoxShiftMask(event->modifiers());
    keyData_ = std::to_string(code) + "|" + std::to_string(shift) + "|" + activeControlName().toStdString();
    if (answer_ != 0) return false;

    // The format keys come first: the user changes the box's font.
    if (formatKey(code, shift)) return true;

    if (hidesOn(event)) {
        hideByKey();
        return true;
    }

    // Accelerators without Alt, unless typing goes into a text control.
    if (event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier)) return false;
    if (!(event->modifiers() & Qt::AltModifier) && isTextInput(QApplication::focusWidget())) return false;
    if (code < 32 || code > 96) return false;
    return acceleratorKey(code);
}

bool MessageBoxDialog::acceleratorKey(int code) {
    const char ch = static_cast<char>(std::tolower(code));
    // A Label holding "[x": the focus goes to the next control.
    for (size_t i = 0; i < controls_.size(); ++i) {
        const Control& c = controls_[i];
        if (c.spec.kind != ControlKind::Label) continue;
        const std::string caption = messagePlainText(request_->values[static_cast<size_t>(c.index)]);
        std::string lowered(caption);
        std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                       [](unsigned char x) { return static_cast<char>(std::tolower(x)); });
        if (lowered.find(std::string("[") + ch) == std::string::npos) continue;
        for (size_t k = i + 1; k < controls_.size(); ++k) {
            QWidget* w = controls_[k].widget;
            if (w && w->isEnabled() && w->focusPolicy() != Qt::NoFocus) {
                w->setFocus(Qt::ShortcutFocusReason);
                return true;
            }
        }
    }
    for (size_t i = 0; i < buttons_.size(); ++i) {
        if (acceleratorOf(set_.captions[i]) == ch && buttons_[i]->isEnabled()) {
            pressButton(static_cast<int>(i) + 1);
            return true;
        }
    }
    for (const Control& c : controls_) {
        if (!c.widget || !c.widget->isEnabled()) continue;
        switch (c.spec.kind) {
        case ControlKind::CommandButton:
            if (acceleratorOf(request_->values[static_cast<size_t>(c.index)]) == ch) {
                pressButton(c.index);
                return true;
            }
            break;
        case ControlKind::CheckBox:
            if (acceleratorOf(c.spec.caption) == ch) {
                auto* box = static_cast<QCheckBox*>(c.widget);
                box->setChecked(!box->isChecked());
                box->setFocus(Qt::ShortcutFocusReason);
                return true;
            }
            break;
        case ControlKind::OptionButton:
            if (acceleratorOf(c.spec.caption) == ch) {
                auto* option = static_cast<QRadioButton*>(c.widget);
                option->setChecked(true);
                option->setFocus(Qt::ShortcutFocusReason);
                return true;
            }
            break;
        default:
            break;
        }
    }
    return false;
}

bool MessageBoxDialog::hidesOn(const QKeyEvent* event) const {
    if (isLoneModifier(event->key())) return false;
    if (options_.anyKeyHides()) return true;
    const int code = messageBoxKeyCode(event->key());
    const int shift = messageBoxShiftMask(event->modifiers());
    for (const KeyHide& hide : options_.keyHides())
        if (hide.keyCode == code && hide.shift == shift) return true;
    return false;
}

bool MessageBoxDialog::event(QEvent* event) {
    // A key that hides the box comes before the buttons' own shortcuts.
    if (event->type() == QEvent::ShortcutOverride &&
        (hidesOn(static_cast<QKeyEvent*>(event)) || isFormatKey(static_cast<QKeyEvent*>(event)))) {
        event->accept();
        return true;
    }
    return QDialog::event(event);
}

bool MessageBoxDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && watched != this &&
        (hidesOn(static_cast<QKeyEvent*>(event)) || isFormatKey(static_cast<QKeyEvent*>(event)))) {
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress || watched == this) return QDialog::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    // Keys reach the box's rules before the control that has the focus.
    if (handleKey(key)) return true;
    // Enter on a list runs the list's Enter action, when it has one.
    if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && answer_ == 0) {
        for (const Control& c : controls_) {
            if (!c.widget || (watched != c.widget && watched->parent() != c.widget)) continue;
            const ListActionSpec action = c.spec.enterAction();
            if (action.action == ListAction::Nothing) break;
            if (auto* lb = qobject_cast<QListWidget*>(c.widget)) {
                runListAction(action, lb->currentItem() ? lb->currentItem()->text() : QString());
                return true;
            }
            if (auto* cb = qobject_cast<QComboBox*>(c.widget)) {
                runListAction(action, cb->currentText());
                return true;
            }
            if (auto* grid = qobject_cast<QTableWidget*>(c.widget)) {
                runListAction(action, grid->currentItem() ? grid->currentItem()->text() : QString());
                return true;
            }
            break;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void MessageBoxDialog::keyPressEvent(QKeyEvent* event) {
    QWidget* focus = QApplication::focusWidget();
    if (!focus || focus == this) {
        if (handleKey(event)) return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        auto* focused = qobject_cast<QPushButton*>(focus);
        if (focused && focused->isVisible() && focused->isEnabled()) {
            focused->click();
        } else if (button(set_.defaultButton)) {
            pressButton(set_.defaultButton);
        }
        return;
    }
    QDialog::keyPressEvent(event);
}

void MessageBoxDialog::closeEvent(QCloseEvent* event) {
    if (answer_ != 0 && !noHide_) {
        event->accept();
        return;
    }
    event->ignore();
    if (set_.escButton > 0) pressButton(set_.escButton);
}

void MessageBoxDialog::reject() {
    if (validationShown()) {
        dismissValidation();
        return;
    }
    if (answer_ != 0) return;
    if (set_.escButton > 0) pressButton(set_.escButton);
}

}  // namespace tav::ui
