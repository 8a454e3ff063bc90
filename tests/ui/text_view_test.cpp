// The text section widget shows a file far larger than the text cache: its
// keys and scroll bar reach every part, the lines it paints are those of
// the file, and the number of lines follows the widget's size and font.
#include <QtTest>

#include <QFontMetricsF>
#include <QScrollBar>
#include <string>

#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "ui/FontLineMeasure.h"
#include "ui/TextSectionView.h"
#include "viewer/TextBlockCache.h"

using namespace tav;

namespace {

constexpr int kLines = 20000;  // 240000 bytes: eight times the cache

QString numbered(int n) { return QString("line %1").arg(n, 6, 10, QChar('0')); }

std::string numberedFile(int lines) {
    std::string s;
    s.reserve(static_cast<size_t>(lines) * 12);
    for (int i = 1; i <= lines; ++i) s += numbered(i).toStdString() + "\n";
    return s;
}

// The number in "line 001234", or -1 when the line is not such a line.
int numberOf(const QString& line) {
    if (!line.startsWith("line ") || line.size() != 11) return -1;
    bool ok = false;
    const int n = line.mid(5).toInt(&ok);
    return ok ? n : -1;
}

void shoot(QWidget& w, const QString& name) {
    // TAVELO_SHOTS=DIR keeps a picture of the widget for a person to look at.
    if (!qEnvironmentVariableIsSet("TAVELO_SHOTS")) return;
    QTest::qWait(20);
    w.grab().save(qEnvironmentVariable("TAVELO_SHOTS") + "/" + name + ".png");
}

}  // namespace

class TextViewTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void opensAtTheFirstLineWithAFullScreen();
    void ctrlEndShowsTheLastLineAndCtrlHomeTheFirst();
    void pageDownMovesByAScreenAndReadsCorrectly();
    void pageDownThroughTheWholeFileAndBackUp();
    void lineKeysMoveByOneLine();
    void scrollBarEndsReachTheFileEnds();
    void scrollBarArrowsAndPagesMoveLinesAndScreens();
    void scrollBarMiddleJumpsIntoTheMiddle();
    void emptyFileShowsTheNotice();
    void emptyFileDropsTheLastSelection();
    void shortFileDoesNotMove();
    void resizingChangesTheVisibleLines();
    void growingAtTheEndKeepsTheLastLineAtTheBottom();
    void biggerFontShowsFewerLines();
    void longLinesWrapWithinTheWidth();
    void shiftExtendsTheSelection();
    void missingFileGoesToTheHost();
    void measureBreaksLinesAsPainted();
    void wheelMovesThreeLinesANotch();
    void selectionIsPaintedHighlighted();
    void binaryFileWrapsAndMarksControls();
    void barMoveWithASelectionAsksFirst();
    void twoViewsShareOneCache();
    void plainTextOfAMarkupFile();

private:
    std::unique_ptr<tavtest::TempDir> dir_;
    std::unique_ptr<TextBlockCache> cache_;
    std::unique_ptr<tavtest::ScriptedHost> host_;
    std::unique_ptr<ui::TextSectionView> w_;
    QString bigFile_;

    ui::TextSectionView& openBig(int width = 500, int height = 300);
    void checkConsecutive(const QStringList& lines, const char* where);
};

void TextViewTest::init() {
    dir_ = std::make_unique<tavtest::TempDir>();
    cache_ = std::make_unique<TextBlockCache>();
    host_ = std::make_unique<tavtest::ScriptedHost>();
    w_ = std::make_unique<ui::TextSectionView>(*cache_, *host_);
    bigFile_ = QString::fromStdString(dir_->write("big.txt", numberedFile(kLines)).string());
}

void TextViewTest::cleanup() {
    w_.reset();
    host_.reset();
    cache_.reset();
    dir_.reset();
}

ui::TextSectionView& TextViewTest::openBig(int width, int height) {
    w_->resize(width, height);
    w_->show();
    const ShowFileResult r = w_->showFile(bigFile_);
    if (!r.shown) qFatal("the test file did not show");
    return *w_;
}

void TextViewTest::checkConsecutive(const QStringList& lines, const char* where) {
    QVERIFY2(!lines.isEmpty(), where);
    const int first = numberOf(lines.front());
    QVERIFY2(first >= 1, qPrintable(QString("%1: top line %2").arg(where, lines.front())));
    for (int i = 0; i < lines.size(); ++i)
        QVERIFY2(lines[i] == numbered(first + i),
                 qPrintable(QString("%1: line %2 is '%3', wanted '%4'").arg(where).arg(i).arg(lines[i], numbered(first + i))));
}

void TextViewTest::opensAtTheFirstLineWithAFullScreen() {
    auto& w = openBig();
    const QStringList lines = w.shownLines();
    QVERIFY(w.visibleLines() > 5);
    QCOMPARE(lines.size(), w.visibleLines());
    QCOMPARE(lines.front(), QString("line 000001"));
    checkConsecutive(lines, "open");
    QCOMPARE(w.scrollBar()->minimum(), 0);
    QCOMPARE(w.scrollBar()->maximum(), 10002);
    QCOMPARE(w.scrollBar()->value(), 0);
    QVERIFY(w.scrollBar()->isEnabled());
    QVERIFY(cache_->text().size() < 40000);
    QVERIFY(host_->asked().empty());
    shoot(w, "text-view-start");
}

void TextViewTest::ctrlEndShowsTheLastLineAndCtrlHomeTheFirst() {
    auto& w = openBig();
    QTest::keyClick(&w, Qt::Key_End, Qt::ControlModifier);
    QStringList lines = w.shownLines();
    QCOMPARE(lines.size(), w.visibleLines());
    QCOMPARE(lines.back(), numbered(kLines));
    checkConsecutive(lines, "after Ctrl+End");
    QVERIFY(w.view().atEnd());
    QCOMPARE(w.scrollBar()->value(), 10000);
    shoot(w, "text-view-end");

    QTest::keyClick(&w, Qt::Key_Home, Qt::ControlModifier);
    lines = w.shownLines();
    QCOMPARE(lines.front(), QString("line 000001"));
    QCOMPARE(lines.size(), w.visibleLines());
    checkConsecutive(lines, "after Ctrl+Home");
    QCOMPARE(w.scrollBar()->value(), 0);
    QVERIFY(host_->asked().empty());

    // End and Home without Ctrl are not moves of the view.
    QTest::keyClick(&w, Qt::Key_End);
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
}

void TextViewTest::pageDownMovesByAScreenAndReadsCorrectly() {
    auto& w = openBig();
    const int visible = w.visibleLines();
    QTest::keyClick(&w, Qt::Key_PageDown);
    QStringList lines = w.shownLines();
    QCOMPARE(numberOf(lines.front()), 1 + (visible - 1));
    QCOMPARE(lines.size(), visible);
    checkConsecutive(lines, "after PageDown");
    QVERIFY(w.scrollBar()->value() >= 0);

    QTest::keyClick(&w, Qt::Key_PageDown);
    QCOMPARE(numberOf(w.shownLines().front()), 1 + 2 * (visible - 1));
    QTest::keyClick(&w, Qt::Key_PageUp);
    QCOMPARE(numberOf(w.shownLines().front()), 1 + (visible - 1));
    QTest::keyClick(&w, Qt::Key_PageUp);
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
    // At the start PageUp stays.
    QTest::keyClick(&w, Qt::Key_PageUp);
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
}

void TextViewTest::pageDownThroughTheWholeFileAndBackUp() {
    // A tall widget in a small font crosses the cache's limits many times.
    auto& w = openBig(400, 900);
    const int visible = w.visibleLines();
    const int step = visible - 1;
    int expectTop = 1;
    int pages = 0;
    while (!w.view().atEnd()) {
        QTest::keyClick(&w, Qt::Key_PageDown);
        ++pages;
        const QStringList lines = w.shownLines();
        QCOMPARE(lines.size(), visible);
        checkConsecutive(lines, "paging down");
        expectTop = std::min(expectTop + step, kLines - visible + 1);
        QCOMPARE(numberOf(lines.front()), expectTop);
        QVERIFY(cache_->text().size() <= 40000);
        if (pages > kLines) QFAIL("PageDown never reached the end");
    }
    QCOMPARE(w.shownLines().back(), numbered(kLines));
    QCOMPARE(w.scrollBar()->value(), 10000);
    // Down at the end stays.
    QTest::keyClick(&w, Qt::Key_PageDown);
    QCOMPARE(w.shownLines().back(), numbered(kLines));

    int upPages = 0;
    while (numberOf(w.shownLines().front()) > 1) {
        QTest::keyClick(&w, Qt::Key_PageUp);
        ++upPages;
        const QStringList lines = w.shownLines();
        QCOMPARE(lines.size(), visible);
        checkConsecutive(lines, "paging up");
        if (upPages > kLines) QFAIL("PageUp never reached the start");
    }
    QVERIFY(upPages >= pages - 1 && upPages <= pages + 1);
    QVERIFY(host_->asked().empty());
}

void TextViewTest::lineKeysMoveByOneLine() {
    auto& w = openBig();
    for (int i = 0; i < 5; ++i) QTest::keyClick(&w, Qt::Key_Down);
    QCOMPARE(w.shownLines().front(), QString("line 000006"));
    checkConsecutive(w.shownLines(), "after Down");
    QTest::keyClick(&w, Qt::Key_Up);
    QCOMPARE(w.shownLines().front(), QString("line 000005"));
    QTest::keyClick(&w, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(&w, Qt::Key_Up);
    QCOMPARE(w.shownLines().back(), numbered(kLines - 1));
    checkConsecutive(w.shownLines(), "after Up at the end");
    QTest::keyClick(&w, Qt::Key_Down);
    QCOMPARE(w.shownLines().back(), numbered(kLines));
    QTest::keyClick(&w, Qt::Key_Down);
    QCOMPARE(w.shownLines().back(), numbered(kLines));
}

void TextViewTest::scrollBarEndsReachTheFileEnds() {
    auto& w = openBig();
    QScrollBar* bar = w.scrollBar();
    // Dragging the slider to the bottom.
    bar->triggerAction(QAbstractSlider::SliderToMaximum);
    QCOMPARE(w.shownLines().back(), numbered(kLines));
    QCOMPARE(w.shownLines().size(), w.visibleLines());
    checkConsecutive(w.shownLines(), "bar at the bottom");
    QCOMPARE(bar->value(), 10000);
    bar->triggerAction(QAbstractSlider::SliderToMinimum);
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
    QCOMPARE(bar->value(), 0);

    // A value set on the bar from outside: 10002 is the bottom of the slider.
    bar->setValue(10002);
    QCOMPARE(w.shownLines().back(), numbered(kLines));
    QCOMPARE(bar->value(), 10000);
    bar->setValue(0);
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
    QVERIFY(host_->asked().empty());
}

void TextViewTest::scrollBarArrowsAndPagesMoveLinesAndScreens() {
    auto& w = openBig();
    const int visible = w.visibleLines();
    QScrollBar* bar = w.scrollBar();
    bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    QCOMPARE(w.shownLines().front(), QString("line 000002"));
    bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    QCOMPARE(numberOf(w.shownLines().front()), 2 + visible - 1);
    checkConsecutive(w.shownLines(), "bar page down");
    bar->triggerAction(QAbstractSlider::SliderPageStepSub);
    QCOMPARE(w.shownLines().front(), QString("line 000002"));
    bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
    // The bar shows the place, not the step it was given.
    QCOMPARE(bar->value(), 0);
}

void TextViewTest::scrollBarMiddleJumpsIntoTheMiddle() {
    auto& w = openBig();
    QScrollBar* bar = w.scrollBar();
    // Moving the slider with tracking on acts at once.
    bar->setSliderPosition(5001);
    const QStringList lines = w.shownLines();
    QCOMPARE(lines.size(), w.visibleLines());
    checkConsecutive(lines, "bar in the middle");
    const int top = numberOf(lines.front());
    QVERIFY2(std::abs(top - kLines / 2) <= 2, qPrintable(lines.front()));
    QVERIFY(std::abs(bar->value() - 5000) <= 5);
}

void TextViewTest::emptyFileShowsTheNotice() {
    const QString path = QString::fromStdString(dir_->write("empty.txt", "").string());
    w_->resize(400, 300);
    w_->show();
    const ShowFileResult r = w_->showFile(path);
    QVERIFY(r.shown);
    QCOMPARE(w_->shownLines(), QStringList{"<empty file>"});
    QCOMPARE(w_->view().fileLength(), 0);
    QCOMPARE(w_->scrollBar()->value(), 0);
    QVERIFY(!w_->scrollBar()->isEnabled());
    QTest::keyClick(w_.get(), Qt::Key_PageDown);
    QTest::keyClick(w_.get(), Qt::Key_End, Qt::ControlModifier);
    w_->scrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
    QCOMPARE(w_->shownLines(), QStringList{"<empty file>"});
    QCOMPARE(w_->scrollBar()->value(), 0);
    QVERIFY(host_->asked().empty());
    shoot(*w_, "text-view-empty");

    // The next file replaces the notice.
    QVERIFY(w_->showFile(bigFile_).shown);
    QCOMPARE(w_->shownLines().front(), QString("line 000001"));
}

void TextViewTest::emptyFileDropsTheLastSelection() {
    auto& w = openBig();
    QTest::keyClick(&w, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&w, Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(!w.view().selection().empty());
    const QString empty = QString::fromStdString(dir_->write("empty.txt", "").string());
    QVERIFY(w.showFile(empty).shown);
    QCOMPARE(w.shownLines(), QStringList{"<empty file>"});
    QVERIFY(w.view().selection().empty());
    QCOMPARE(w.view().selection().caret, 0);
    QCOMPARE(w.selectedParts(), QStringList{""});
}

void TextViewTest::shortFileDoesNotMove() {
    const QString path = QString::fromStdString(dir_->write("short.txt", "one\r\ntwo\r\nthree").string());
    w_->resize(400, 300);
    w_->show();
    QVERIFY(w_->showFile(path).shown);
    const QStringList all{"one", "two", "three"};
    QCOMPARE(w_->shownLines(), all);
    QVERIFY(w_->view().wholeFileShown());
    QVERIFY(!w_->scrollBar()->isEnabled());
    QTest::keyClick(w_.get(), Qt::Key_PageDown);
    QTest::keyClick(w_.get(), Qt::Key_Down);
    QTest::keyClick(w_.get(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(w_->shownLines(), all);
}

void TextViewTest::resizingChangesTheVisibleLines() {
    auto& w = openBig(500, 400);
    const int tall = w.visibleLines();
    QCOMPARE(w.shownLines().size(), tall);
    const qreal lineHeight = w.measure().lineHeight();
    QVERIFY(tall >= static_cast<int>((400 - 10) / lineHeight) - 1);

    QTest::keyClick(&w, Qt::Key_PageDown);
    const QString top = w.shownLines().front();
    w.resize(500, 200);
    const int shorter = w.visibleLines();
    QVERIFY2(shorter < tall, qPrintable(QString("%1 then %2").arg(tall).arg(shorter)));
    QCOMPARE(w.shownLines().size(), shorter);
    QCOMPARE(w.shownLines().front(), top);
    checkConsecutive(w.shownLines(), "after shrinking");

    w.resize(500, 600);
    QVERIFY(w.visibleLines() > tall);
    QCOMPARE(w.shownLines().size(), w.visibleLines());
    QCOMPARE(w.shownLines().front(), top);
    checkConsecutive(w.shownLines(), "after growing");
}

void TextViewTest::growingAtTheEndKeepsTheLastLineAtTheBottom() {
    auto& w = openBig(500, 200);
    QTest::keyClick(&w, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(w.shownLines().back(), numbered(kLines));
    w.resize(500, 500);
    QCOMPARE(w.shownLines().size(), w.visibleLines());
    QCOMPARE(w.shownLines().back(), numbered(kLines));
    checkConsecutive(w.shownLines(), "grown at the end");
}

void TextViewTest::biggerFontShowsFewerLines() {
    auto& w = openBig(500, 400);
    const int before = w.visibleLines();
    QFont f = w.font();
    f.setPointSizeF(f.pointSizeF() * 2);
    w.setFont(f);
    QVERIFY2(w.visibleLines() < before, qPrintable(QString("%1 then %2").arg(before).arg(w.visibleLines())));
    QCOMPARE(w.shownLines().size(), w.visibleLines());
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
    QTest::keyClick(&w, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(w.shownLines().back(), numbered(kLines));
}

void TextViewTest::longLinesWrapWithinTheWidth() {
    std::string text;
    for (int i = 0; i < 60; ++i) text += "word" + std::to_string(i) + " ";
    text += "\nend\n";
    const QString path = QString::fromStdString(dir_->write("long.txt", text).string());
    w_->resize(300, 600);
    w_->show();
    QVERIFY(w_->showFile(path).shown);
    const QStringList lines = w_->shownLines();
    QVERIFY2(lines.size() > 3, qPrintable(lines.join('|')));
    QCOMPARE(lines.back(), QString("end"));
    const QFontMetricsF fm(w_->measure().font());
    const int room = w_->measure().areaWidth();
    QVERIFY(room > 50 && room < 300);
    QString joined;
    for (int i = 0; i + 1 < lines.size(); ++i) {
        const QString line = lines[i];
        // Blanks at the end of a wrapped line may hang over the edge.
        QVERIFY2(fm.horizontalAdvance(QString(line).remove(QRegularExpression(" +$"))) <= room + 0.5,
                 qPrintable(line));
        // Word wrap: no word is cut.
        if (i + 2 < lines.size()) QVERIFY2(line.endsWith(' '), qPrintable(line));
        joined += line;
    }
    QCOMPARE(joined.toStdString(), text.substr(0, text.find('\n')));
    shoot(*w_, "text-view-wrap");
}

void TextViewTest::shiftExtendsTheSelection() {
    auto& w = openBig();
    QTest::keyClick(&w, Qt::Key_PageDown, Qt::ShiftModifier);
    QVERIFY(!w.view().selection().empty());
    QCOMPARE(w.view().selection().anchor, 1);
    const QStringList parts = w.selectedParts();
    QCOMPARE(parts.size(), w.visibleLines());
    // The selection runs from the file's start past the screen's end: every line is selected.
    for (int i = 0; i < parts.size(); ++i) QCOMPARE(parts[i], w.shownLines()[i]);
    shoot(w, "text-view-selection");

    // Ctrl+Shift+End runs it to the end of the file.
    QTest::keyClick(&w, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(w.view().selection().anchor, 1);
    QCOMPARE(w.view().selection().caret, static_cast<int64_t>(kLines) * 12 + 1);
    // A move without Shift keeps it; Ctrl+Home with Shift shrinks it to nothing.
    QTest::keyClick(&w, Qt::Key_PageUp);
    QCOMPARE(w.view().selection().anchor, 1);
    QCOMPARE(w.view().selection().caret, static_cast<int64_t>(kLines) * 12 + 1);
    for (const QString& p : w.selectedParts()) QVERIFY(!p.isEmpty());
    QTest::keyClick(&w, Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(w.view().selection().empty());
    QStringList none = w.selectedParts();
    for (const QString& p : none) QVERIFY(p.isEmpty());

    // A click and a drag select what lies between.
    const QRect area(2, 2, w.measure().areaWidth(), w.measure().areaHeight());
    const int lh = static_cast<int>(w.measure().lineHeight());
    QTest::mousePress(&w, Qt::LeftButton, {}, QPoint(area.left() + 1, area.top() + lh / 2));
    QMouseEvent move(QEvent::MouseMove, QPointF(area.left() + 1, area.top() + 2 * lh + lh / 2),
                     w.mapToGlobal(QPointF(area.left() + 1, area.top() + 2 * lh + lh / 2)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&w, &move);
    QTest::mouseRelease(&w, Qt::LeftButton, {}, QPoint(area.left() + 1, area.top() + 2 * lh + lh / 2));
    QCOMPARE(w.view().selection().first(), 1);
    QCOMPARE(w.view().selection().behind(), 25);
    const QStringList sel = w.selectedParts();
    QCOMPARE(sel[0], QString("line 000001"));
    QCOMPARE(sel[1], QString("line 000002"));
    QCOMPARE(sel[2], QString());
}

void TextViewTest::missingFileGoesToTheHost() {
    w_->resize(400, 300);
    w_->show();
    const ShowFileResult r = w_->showFile(QString::fromStdString((*dir_ / "none.txt").string()));
    QVERIFY(!r.shown);
    QVERIFY(!host_->asked().empty());
    QVERIFY(w_->shownLines().isEmpty() || w_->shownLines() == QStringList{""});
}

void TextViewTest::measureBreaksLinesAsPainted() {
    QFont font("DejaVu Sans Mono");
    font.setPixelSize(14);
    ui::FontLineMeasure m(font, true, false);
    const QFontMetricsF fm(font);
    const qreal cell = fm.horizontalAdvance(QLatin1Char('x'));
    m.setArea(static_cast<int>(std::ceil(cell * 10)), static_cast<int>(m.lineHeight() * 4.5));
    QCOMPARE(m.visibleLines(), 4);
    // Breaks end lines and belong to them.
    QCOMPARE(m.lineLength("ab\r\ncd"), size_t{4});
    QCOMPARE(m.lineLength("ab\rcd"), size_t{3});
    QCOMPARE(m.lineLength("ab\ncd"), size_t{3});
    QCOMPARE(m.lineLength("abc"), size_t{3});
    // Ten cells fit; a break right behind a full line is its own.
    QCOMPARE(m.lineLength("0123456789abc"), size_t{10});
    QCOMPARE(m.lineLength("0123456789\nabc"), size_t{11});
    QCOMPARE(m.lineLength("0123456789\r\nabc"), size_t{12});
    // A two-byte character is one cell; a lone byte from 128 on is one too.
    QCOMPARE(m.lineLength("\xc3\xa9\xc3\xa9" "345678901"), size_t{12});
    QCOMPARE(m.lineLength("\xe9\xe9" "345678901"), size_t{10});
    // Word wrap breaks behind the last blank.
    m.setWordWrap(true);
    QCOMPARE(m.lineLength("abc defghijkl"), size_t{4});
    QCOMPARE(m.lineLength("abcdefghijklmn"), size_t{10});
    QCOMPARE(m.lineLength("0123456789   x"), size_t{13});
    // However narrow the area, a line holds a character.
    m.setArea(1, 1);
    QCOMPARE(m.visibleLines(), 1);
    QCOMPARE(m.lineLength("abc"), size_t{1});
    QCOMPARE(m.lineLength("\xc3\xa9" "bc"), size_t{2});
    QVERIFY(m.maxLineBytes() >= 6);
    // Control characters are painted as dots, and measured as such.
    QCOMPARE(m.shown(std::string("a\x01" "b\x7f", 4)), QString("a.b."));
    QCOMPARE(m.widthOf(std::string("\x01", 1)), fm.horizontalAdvance(QLatin1Char('.')));
}

void TextViewTest::wheelMovesThreeLinesANotch() {
    auto& w = openBig();
    const QPointF at(20, 20);
    QWheelEvent down(at, w.mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(&w, &down);
    QCOMPARE(w.shownLines().front(), QString("line 000004"));
    QWheelEvent up(at, w.mapToGlobal(at), QPoint(), QPoint(0, 240), Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
    QApplication::sendEvent(&w, &up);
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
}

void TextViewTest::selectionIsPaintedHighlighted() {
    auto& w = openBig(400, 200);
    const QColor highlight = w.palette().color(QPalette::Highlight);
    const int lh = static_cast<int>(w.measure().lineHeight());
    auto highlighted = [&](const QImage& img, int row) {
        int n = 0;
        const int y = 2 + row * lh + lh / 2;
        for (int x = 2; x < 2 + w.measure().areaWidth(); ++x)
            if (QColor(img.pixel(x, y)) == highlight) ++n;
        return n;
    };
    QImage plain = w.grab().toImage();
    QCOMPARE(highlighted(plain, 0), 0);
    // Bytes 3 to 14: the end of line 1 and the start of line 2.
    w.view().setSelection(3, 15);
    w.update();
    QImage marked = w.grab().toImage();
    QVERIFY(highlighted(marked, 0) > 0);
    QVERIFY(highlighted(marked, 1) > 0);
    QCOMPARE(highlighted(marked, 2), 0);
    QCOMPARE(w.selectedParts()[0], QString("ne 000001"));
    QCOMPARE(w.selectedParts()[1], QString("li"));
    // The selected break of line 1 shows behind its text; line 2's break is not selected.
    const int behindText = 2 + static_cast<int>(w.measure().widthOf("line 000001")) + 2;
    QCOMPARE(QColor(marked.pixel(behindText, 2 + lh / 2)), highlight);
    QVERIFY(QColor(marked.pixel(behindText, 2 + lh + lh / 2)) != highlight);
    // The first two characters of line 1 are not selected: the highlight starts after them.
    const int y = 2 + lh / 2;
    const int firstX = [&] {
        for (int x = 0; x < marked.width(); ++x)
            if (QColor(marked.pixel(x, y)) == highlight) return x;
        return -1;
    }();
    const qreal two = w.measure().widthOf("li");
    QVERIFY2(std::abs(firstX - (2 + two)) <= 1.5, qPrintable(QString::number(firstX)));
}

void TextViewTest::binaryFileWrapsAndMarksControls() {
    std::string bytes;
    for (int i = 0; i < 30000; ++i) bytes += static_cast<char>(i % 7 == 0 ? 0 : i % 7 == 1 ? 9 : 'a' + i % 26);
    const QString path = QString::fromStdString(dir_->write("bin.dat", bytes).string());
    w_->resize(300, 300);
    w_->show();
    QVERIFY(w_->showFile(path).shown);
    QStringList lines = w_->shownLines();
    QCOMPARE(lines.size(), w_->visibleLines());
    QVERIFY(lines.front().startsWith(".."));
    for (const QString& l : lines) QVERIFY(!l.contains(QChar(0)) && !l.contains('\t'));
    QTest::keyClick(w_.get(), Qt::Key_End, Qt::ControlModifier);
    lines = w_->shownLines();
    QCOMPARE(lines.size(), w_->visibleLines());
    QVERIFY(w_->view().atEnd());
    QVERIFY(host_->asked().empty());
}

void TextViewTest::barMoveWithASelectionAsksFirst() {
    auto& w = openBig();
    w.view().setSelection(1, 30);
    host_->answer(2);  // cancel: keep the selection
    w.scrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
    QCOMPARE(host_->asked().size(), size_t{1});
    QVERIFY(QString::fromStdString(host_->asked()[0].message)
                .startsWith("By repositioning using scroll bar, you willl lose selection."));
    QCOMPARE(w.shownLines().front(), QString("line 000001"));
    QCOMPARE(w.scrollBar()->value(), 0);
    QVERIFY(!w.view().selection().empty());
    host_->answer(1);  // OK: move and lose it
    w.scrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
    QCOMPARE(w.shownLines().back(), numbered(kLines));
    QVERIFY(w.view().selection().empty());
    // Keys keep the selection without asking.
    w.view().setSelection(1, 30);
    QTest::keyClick(&w, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(host_->asked().size(), size_t{2});
    QVERIFY(!w.view().selection().empty());
}

void TextViewTest::twoViewsShareOneCache() {
    auto& a = openBig();
    std::string other;
    for (int i = 1; i <= 5000; ++i) other += "other " + std::to_string(i) + "\n";
    const QString otherPath = QString::fromStdString(dir_->write("other.txt", other).string());
    ui::TextSectionView b(*cache_, *host_);
    b.resize(400, 300);
    b.show();
    QTest::keyClick(&a, Qt::Key_End, Qt::ControlModifier);
    QVERIFY(b.showFile(otherPath).shown);
    QCOMPARE(b.shownLines().front(), QString("other 1"));
    // The cache now holds the other file: the first view finds its place again.
    QTest::keyClick(&a, Qt::Key_PageUp);
    QCOMPARE(a.shownLines().size(), a.visibleLines());
    QCOMPARE(a.shownLines().back(), numbered(kLines - a.visibleLines() + 1));
    checkConsecutive(a.shownLines(), "first view after the second read");
    QTest::keyClick(&b, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(b.shownLines().back(), QString("other 5000"));
    QTest::keyClick(&a, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(a.shownLines().front(), QString("line 000001"));
    QVERIFY(host_->asked().empty());
}

void TextViewTest::plainTextOfAMarkupFile() {
    const QString path = QString::fromStdString(
        dir_->write("page.html", "<html><body><p>Hello <b>there</b></p></body></html>").string());
    w_->resize(400, 300);
    w_->show();
    const ShowFileResult r = w_->showFile(path, TextKind::Plain, 1, "Page");
    QVERIFY(r.shown);
    QCOMPARE(QString::fromStdString(r.status), QString("Plain text from Page"));
    const QString all = w_->shownLines().join('\n');
    QVERIFY2(all.contains("Hello") && all.contains("there") && !all.contains("<b>"), qPrintable(all));
    QCOMPARE(w_->shownText().kind, TextKind::Plain);
}

QTEST_MAIN(TextViewTest)
#include "text_view_test.moc"
