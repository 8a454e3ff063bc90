#include "ui/TextSectionView.h"

#include <QFontDatabase>
#include <QFuture>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPromise>
#include <QSignalBlocker>
#include <QThreadPool>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "viewer/FileBlockReader.h"
#include "viewer/LineMeasure.h"

namespace tav::ui {

namespace {

constexpr int kMargin = 2;         // pixels around the text
constexpr int kWheelLines = 3;     // lines a wheel notch moves
constexpr int kWheelNotch = 120;   // angle delta of one notch

}  // namespace

TextSectionView::TextSectionView(TextBlockCache& cache, MessageHost& host, ViewSettings settings, QWidget* parent)
    : QWidget(parent),
      measure_(QFontDatabase::systemFont(QFontDatabase::FixedFont)),
      view_(cache, measure_, host, settings),
      host_(host) {
    setFocusPolicy(Qt::StrongFocus);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);

    bar_ = new QScrollBar(Qt::Vertical, this);
    bar_->setObjectName("fTextScroll");
    bar_->setFocusPolicy(Qt::NoFocus);
    bar_->setRange(kBarPageUp, kBarPageDown);
    bar_->setSingleStep(1);
    bar_->setPageStep(1);
    bar_->setEnabled(false);
    connect(bar_, &QAbstractSlider::actionTriggered, this, &TextSectionView::barAction);
    connect(bar_, &QAbstractSlider::valueChanged, this, &TextSectionView::barValueChanged);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    measure_.setFont(font());
    updateMeasure();
}

QSize TextSectionView::sizeHint() const {
    const QFontMetrics fm(font());
    return {fm.horizontalAdvance(QLatin1Char('0')) * 80 + bar_->sizeHint().width() + 2 * kMargin,
            fm.lineSpacing() * 25 + 2 * kMargin};
}

QRect TextSectionView::textArea() const {
    const int barWidth = bar_ ? bar_->sizeHint().width() : 0;
    return QRect(kMargin, kMargin, std::max(0, width() - barWidth - 2 * kMargin), std::max(0, height() - 2 * kMargin));
}

bool TextSectionView::updateMeasure() {
    const QRect area = textArea();
    const bool changed = area.width() != measure_.areaWidth() || area.height() != measure_.areaHeight();
    measure_.setArea(area.width(), area.height());
    return changed;
}

TextSectionView::~TextSectionView() { dropPlain(); }

// ------------------------------------------------------------- showing a file

ShowFileResult TextSectionView::showFile(const QString& path, TextKind kind, int64_t startByte, const QString& title,
                                         const ShowFileOptions& options) {
    dropPlain();
    updateMeasure();
    ShownText shown;
    shown.pafn = path.toStdString();
    shown.kind = kind;
    shown.title = title.toStdString();
    if (kind == TextKind::Plain && fileLengthOf(shown.pafn) >= std::max<int64_t>(1, plainWorkerFrom_))
        return startPlain(shown, startByte, options);
    setBusyStatus({});
    busy_ = true;
    ShowFileResult result = tav::showFile(view_, shown, startByte, host_, options);
    busy_ = false;
    if (result.shown) shown_ = shown;
    afterMove();
    return result;
}

ShowFileResult TextSectionView::startPlain(const ShownText& shown, int64_t startByte, const ShowFileOptions& options) {
    auto job = std::make_unique<PlainJob>();
    job->shown = shown;
    job->startByte = startByte;
    job->options = options;
    job->stop = std::make_shared<std::atomic<bool>>(false);

    // The worker holds only its own copies: the path, the limit, the flag.
    auto promise = std::make_shared<QPromise<PlainSource>>();
    job->watcher = new QFutureWatcher<PlainSource>(this);
    connect(job->watcher, &QFutureWatcherBase::finished, this, &TextSectionView::plainReady);
    job->watcher->setFuture(promise->future());
    promise->start();
    QThreadPool::globalInstance()->start(
        [promise, path = shown.pafn, limit = options.plainSourceLimit, stop = job->stop] {
            PlainSource plain;
            try {
                plain = makePlainSource(path, limit, stop.get());
            } catch (const std::bad_alloc&) {
                plain = {};
                plain.error = "File >>" + path + "<< cannot be processed. Insufficient space.";
            }
            promise->addResult(std::move(plain));
            promise->finish();
        });
    plain_ = std::move(job);

    ShowFileResult result;
    result.shown = true;
    result.pending = true;
    result.busyStatus = busyStatusOf(shown.kind, shown.pafn);
    result.status = result.busyStatus;
    setBusyStatus(QString::fromStdString(result.busyStatus));
    return result;
}

void TextSectionView::plainReady() {
    if (!plain_) return;
    // Taken off first: a handler of plainShown may start the next one.
    std::unique_ptr<PlainJob> job = std::move(plain_);
    QFutureWatcher<PlainSource>* watcher = job->watcher;
    watcher->disconnect(this);
    watcher->deleteLater();
    const QFuture<PlainSource> future = watcher->future();
    if (future.resultCount() < 1) {
        setBusyStatus({});
        return;
    }
    const PlainSource plain = future.result();
    busy_ = true;
    ShowFileResult result = tav::showFile(view_, job->shown, job->startByte, host_, job->options, &plain);
    busy_ = false;
    if (result.shown) shown_ = job->shown;
    setBusyStatus({});
    afterMove();
    emit plainShown(result);
}

void TextSectionView::dropPlain() {
    if (!plain_) return;
    plain_->stop->store(true);
    plain_->watcher->disconnect(this);
    plain_->watcher->deleteLater();
    plain_.reset();
}

void TextSectionView::stopPlain() {
    if (!plain_) return;
    dropPlain();
    setBusyStatus({});
}

void TextSectionView::setBusyStatus(const QString& status) {
    if (status == busyStatus_) return;
    busyStatus_ = status;
    update();
    emit busyChanged(status);
}

void TextSectionView::refill() {
    if (!view_.source() || view_.showsFixedText()) return;
    busy_ = true;
    view_.repositionText(view_.topByte());
    busy_ = false;
}

void TextSectionView::afterMove() {
    updateBar();
    update();
    emit moved();
}

void TextSectionView::updateBar() {
    const bool movable = view_.source() && !view_.showsFixedText() && view_.fileLength() > 0 && !view_.wholeFileShown();
    const int value = movable ? view_.scrollBarValue() : 0;
    int step = 1;
    if (movable) {
        // The slider's size tells how much of the file shows.
        const double shownBytes = static_cast<double>(view_.screenEndByte() - view_.topByte());
        const double part = shownBytes / static_cast<double>(std::max<int64_t>(1, view_.fileLength()));
        step = std::clamp(static_cast<int>(part * (kBarLast - kBarFirst)), 1, kBarLast);
    }
    const QSignalBlocker block(bar_);
    bar_->setEnabled(movable);
    bar_->setPageStep(step);
    bar_->setValue(value);
    bar_->setSliderPosition(value);
    barShown_ = value;
}

QStringList TextSectionView::shownLines() const {
    QStringList out;
    for (const ScreenLine& line : view_.screen()) out << measure_.shown(line.text);
    return out;
}

QStringList TextSectionView::selectedParts() const {
    QStringList out;
    for (const ScreenLine& line : view_.screen()) {
        const auto [from, to] = view_.selectedPart(line);
        out << measure_.shown(std::string_view(line.text).substr(from, to - from));
    }
    return out;
}

void TextSectionView::setWordWrap(bool on) {
    if (on == measure_.wordWrap()) return;
    measure_.setWordWrap(on);
    refill();
    afterMove();
}

void TextSectionView::setMarkControls(bool on) {
    if (on == measure_.markControls()) return;
    measure_.setMarkControls(on);
    refill();
    afterMove();
}

// ------------------------------------------------------------------ painting

void TextSectionView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const QRect area = textArea();
    p.setClipRect(area);
    p.setFont(measure_.font());
    const qreal lineHeight = measure_.lineHeight();
    const qreal ascent = measure_.ascent();
    const QPalette& pal = palette();
    int row = 0;
    for (const ScreenLine& line : view_.screen()) {
        const qreal top = area.top() + row * lineHeight;
        const qreal baseline = top + ascent;
        const std::string_view text(line.text);
        const auto [from, to] = view_.selectedPart(line);
        const qreal x0 = area.left();
        const std::string_view before = text.substr(0, from);
        const std::string_view picked = text.substr(from, to - from);
        const std::string_view after = text.substr(to);
        const qreal x1 = x0 + measure_.widthOf(before);
        const qreal x2 = x1 + measure_.widthOf(picked);
        p.setPen(pal.color(QPalette::Text));
        if (!before.empty()) p.drawText(QPointF(x0, baseline), measure_.shown(before));
        if (!picked.empty()) {
            p.fillRect(QRectF(x1, top, x2 - x1, lineHeight), pal.brush(QPalette::Highlight));
            p.setPen(pal.color(QPalette::HighlightedText));
            p.drawText(QPointF(x1, baseline), measure_.shown(picked));
            p.setPen(pal.color(QPalette::Text));
        }
        if (!after.empty()) p.drawText(QPointF(x2, baseline), measure_.shown(after));
        // A selected line break shows as a blank cell behind the line.
        const ByteSelection& sel = view_.selection();
        const int64_t breakByte = line.firstByte + static_cast<int64_t>(text.size());
        if (!sel.empty() && breakByte < line.endByte && sel.first() <= breakByte && sel.behind() > breakByte) {
            const qreal x3 = x0 + measure_.widthOf(text);
            p.fillRect(QRectF(x3, top, measure_.widthOf(" "), lineHeight), pal.brush(QPalette::Highlight));
        }
        ++row;
    }
    if (!busyStatus_.isEmpty()) {
        // The busy status stands at the foot, over what still shows.
        const QFontMetrics fm(font());
        const QRect band(area.left(), area.bottom() - fm.height() - 1, area.width(), fm.height() + 2);
        p.fillRect(band, pal.brush(QPalette::ToolTipBase));
        p.setPen(pal.color(QPalette::ToolTipText));
        p.setFont(font());
        p.drawText(band.adjusted(2, 0, -2, 0), Qt::AlignLeft | Qt::AlignVCenter,
                   fm.elidedText(busyStatus_, Qt::ElideMiddle, band.width() - 4));
    }
}

// ---------------------------------------------------------------- area events

void TextSectionView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int barWidth = bar_->sizeHint().width();
    bar_->setGeometry(width() - barWidth, 0, barWidth, height());
    if (updateMeasure()) refill();
    afterMove();
}

void TextSectionView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        measure_.setFont(font());
        updateMeasure();
        refill();
        afterMove();
    }
}

// ---------------------------------------------------------------------- keys

void TextSectionView::keyPressEvent(QKeyEvent* event) {
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    const bool alt = event->modifiers().testFlag(Qt::AltModifier);
    if (event->key() == Qt::Key_Escape && plain_ && !alt) {
        stopPlain();
        event->accept();
        return;
    }
    if (alt || busy_) {
        QWidget::keyPressEvent(event);
        return;
    }
    busy_ = true;
    // A selection begun by a key starts where the screen started.
    const ByteSelection& sel = view_.selection();
    if (shift && sel.empty() && sel.caret <= 0 && view_.source() && !view_.showsFixedText())
        view_.setSelection(view_.topByte(), view_.topByte());
    bool taken = true;
    switch (event->key()) {
    case Qt::Key_PageDown: view_.pageDown(shift); break;
    case Qt::Key_PageUp: view_.pageUp(shift); break;
    case Qt::Key_Down: view_.lineDown(shift); break;
    case Qt::Key_Up: view_.lineUp(shift); break;
    case Qt::Key_End:
        if (ctrl) view_.toEnd(shift);
        else taken = false;
        break;
    case Qt::Key_Home:
        if (ctrl) view_.toStart(shift);
        else taken = false;
        break;
    default: taken = false; break;
    }
    busy_ = false;
    if (!taken) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    afterMove();
}

void TextSectionView::wheelEvent(QWheelEvent* event) {
    if (busy_ || !view_.source() || view_.showsFixedText()) {
        event->ignore();
        return;
    }
    wheelRest_ += event->angleDelta().y();
    const int lines = wheelRest_ * kWheelLines / kWheelNotch;
    if (lines == 0) {
        event->accept();
        return;
    }
    wheelRest_ -= lines * kWheelNotch / kWheelLines;
    busy_ = true;
    if (lines > 0) view_.scrollLinesUp(lines);
    else view_.scrollLinesDown(-lines);
    busy_ = false;
    event->accept();
    afterMove();
}

// ---------------------------------------------------------------- scroll bar

void TextSectionView::barAction(int action) {
    if (busy_) return;
    int value = -1;
    switch (action) {
    case QAbstractSlider::SliderSingleStepAdd: value = kBarLineDown; break;
    case QAbstractSlider::SliderSingleStepSub: value = kBarLineUp; break;
    case QAbstractSlider::SliderPageStepAdd: value = kBarPageDown; break;
    case QAbstractSlider::SliderPageStepSub: value = kBarPageUp; break;
    case QAbstractSlider::SliderToMinimum:
    case QAbstractSlider::SliderToMaximum:
    case QAbstractSlider::SliderMove: value = std::clamp(bar_->sliderPosition(), kBarFirst, kBarLast); break;
    default: return;
    }
    busy_ = true;
    view_.scrollBarMoved(value);
    busy_ = false;
    afterMove();
}

// A value set from outside the bar's own actions is a place on the slider:
// its ends are the file's start and end.
void TextSectionView::barValueChanged(int value) {
    if (busy_ || value == barShown_) return;
    busy_ = true;
    view_.scrollBarMoved(std::clamp(value, kBarFirst, kBarLast));
    busy_ = false;
    afterMove();
}

// --------------------------------------------------------------------- mouse

int64_t TextSectionView::byteAt(const QPoint& point) const {
    const std::vector<ScreenLine> lines = view_.screen();
    if (lines.empty()) return view_.topByte();
    const QRect area = textArea();
    if (point.y() < area.top()) return lines.front().firstByte;
    const auto row = static_cast<size_t>((point.y() - area.top()) / measure_.lineHeight());
    if (row >= lines.size()) return lines.back().endByte;
    const ScreenLine& line = lines[row];
    const std::string_view text(line.text);
    qreal x = area.left();
    size_t pos = 0;
    while (pos < text.size()) {
        const std::string_view rest = text.substr(pos);
        const qreal w = measure_.charWidth(rest);
        if (point.x() < x + w / 2) break;
        x += w;
        pos += std::max<size_t>(1, displayCharLength(rest));
    }
    return line.firstByte + static_cast<int64_t>(pos);
}

void TextSectionView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !view_.source() || view_.fileLength() <= 0) {
        QWidget::mousePressEvent(event);
        return;
    }
    setFocus(Qt::MouseFocusReason);
    const int64_t byte = byteAt(event->position().toPoint());
    const ByteSelection& sel = view_.selection();
    if (event->modifiers().testFlag(Qt::ShiftModifier) && sel.caret > 0)
        view_.setSelection(sel.empty() ? sel.caret : sel.anchor, byte);
    else
        view_.setSelection(byte, byte);
    update();
}

void TextSectionView::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton) || !view_.source() || view_.fileLength() <= 0) {
        QWidget::mouseMoveEvent(event);
        return;
    }
    view_.setSelection(view_.selection().anchor, byteAt(event->position().toPoint()));
    update();
}

}  // namespace tav::ui
