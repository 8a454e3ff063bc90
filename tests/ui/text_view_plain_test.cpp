// The plain text of a large file is made off the UI thread: the event loop
// keeps turning while it is made, the view shows what it showed with the
// busy status until the text is ready, a newer request wins over an older
// one, and Esc or the view's end drops it.
#include <QtTest>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QThreadPool>
#include <QTimer>
#include <string>

#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "ui/TextSectionView.h"
#include "viewer/TextBlockCache.h"

using namespace tav;

Q_DECLARE_METATYPE(tav::ShowFileResult)

namespace {

constexpr int kParagraphs = 500000;  // some 16 MB of markup

QString para(int n) { return QString("para %1 & more").arg(n, 6, 10, QChar('0')); }

std::string markupFile(int paragraphs, const char* word) {
    std::string s;
    s.reserve(static_cast<size_t>(paragraphs) * 34);
    s += "<html><body>\n";
    for (int i = 1; i <= paragraphs; ++i)
        s += "<p>" + std::string(word) + " " + QString::number(i).rightJustified(6, '0').toStdString() +
             " &amp; more</p>\n";
    s += "</body></html>\n";
    return s;
}

// The last line on screen with text (the plain text ends in a line break).
QString lastText(const QStringList& lines) {
    for (auto it = lines.rbegin(); it != lines.rend(); ++it)
        if (!it->isEmpty()) return *it;
    return {};
}

// Lets the workers still running end, then serves what they posted.
void settle() {
    QThreadPool::globalInstance()->waitForDone(120000);
    QCoreApplication::processEvents();
    QTest::qWait(20);
}

}  // namespace

class TextViewPlainTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void uiThreadKeepsTurningWhileTheTextIsMade();
    void newerRequestWinsOverAnOlderOne_data();
    void newerRequestWinsOverAnOlderOne();
    void escStopsItAndWhatShowedStays();
    void endOfTheViewDropsTheResult();
    void fileBeyondTheLimitShowsItsFirstPart();
    void smallFileIsMadeAtOnce();

private:
    std::unique_ptr<tavtest::TempDir> dir_;
    std::unique_ptr<TextBlockCache> cache_;
    std::unique_ptr<tavtest::ScriptedHost> host_;
    std::unique_ptr<ui::TextSectionView> w_;
    QString big_;
    QString small_;

    // Opens the small raw file, so that there is something to keep showing.
    void openSmall();
    bool waitShown(QSignalSpy& spy);
};

void TextViewPlainTest::initTestCase() {
    qRegisterMetaType<tav::ShowFileResult>();
    dir_ = std::make_unique<tavtest::TempDir>();
    big_ = QString::fromStdString(dir_->write("big.html", markupFile(kParagraphs, "para")).string());
    small_ = QString::fromStdString(dir_->write("small.txt", "small one\nsmall two\n").string());
}

void TextViewPlainTest::init() {
    cache_ = std::make_unique<TextBlockCache>();
    host_ = std::make_unique<tavtest::ScriptedHost>();
    w_ = std::make_unique<ui::TextSectionView>(*cache_, *host_);
    w_->resize(500, 300);
    w_->show();
}

void TextViewPlainTest::cleanup() {
    w_.reset();
    settle();
    host_.reset();
    cache_.reset();
}

void TextViewPlainTest::openSmall() {
    QVERIFY(w_->showFile(small_).shown);
    QCOMPARE(w_->shownLines().front(), QString("small one"));
}

bool TextViewPlainTest::waitShown(QSignalSpy& spy) { return spy.count() > 0 || spy.wait(120000); }

void TextViewPlainTest::uiThreadKeepsTurningWhileTheTextIsMade() {
    openSmall();
    QSignalSpy shownSpy(w_.get(), &ui::TextSectionView::plainShown);
    QSignalSpy busySpy(w_.get(), &ui::TextSectionView::busyChanged);
    int ticksWhilePending = 0;
    QTimer ticker;
    ticker.setInterval(10);
    connect(&ticker, &QTimer::timeout, this, [&] {
        if (w_->plainPending()) ++ticksWhilePending;
    });
    ticker.start();

    QElapsedTimer clock;
    clock.start();
    const ShowFileResult r = w_->showFile(big_, TextKind::Plain, 1, "Big");
    const qint64 callMs = clock.elapsed();
    QVERIFY(r.shown);
    QVERIFY(r.pending);
    const QString busy = "Show Plain text. <<>>" + big_;
    QCOMPARE(QString::fromStdString(r.busyStatus), busy);
    QCOMPARE(w_->busyStatus(), busy);
    QCOMPARE(busySpy.count(), 1);
    QVERIFY(w_->plainPending());
    // Until the text is ready the view shows what it showed.
    QCOMPARE(w_->shownLines().front(), QString("small one"));

    QVERIFY(waitShown(shownSpy));
    const qint64 workMs = clock.elapsed();
    QVERIFY2(ticksWhilePending >= 5, qPrintable(QString("%1 ticks in %2 ms").arg(ticksWhilePending).arg(workMs)));
    QVERIFY2(callMs * 4 < workMs, qPrintable(QString("call %1 ms, work %2 ms").arg(callMs).arg(workMs)));

    const auto result = shownSpy.front().front().value<ShowFileResult>();
    QVERIFY(result.shown);
    QVERIFY(!result.pending);
    QVERIFY(!result.plainCut);
    QCOMPARE(QString::fromStdString(result.status), QString("Plain text from Big"));
    QVERIFY(!w_->plainPending());
    QVERIFY(w_->busyStatus().isEmpty());
    QCOMPARE(busySpy.back().front().toString(), QString());
    QCOMPARE(w_->shownLines().front(), para(1));
    QCOMPARE(w_->shownText().kind, TextKind::Plain);
    QTest::keyClick(w_.get(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(lastText(w_->shownLines()), para(kParagraphs));
    QVERIFY(host_->asked().empty());
}

void TextViewPlainTest::newerRequestWinsOverAnOlderOne_data() {
    QTest::addColumn<int>("second");  // 0: a plain text through the worker, 1: raw text
    QTest::newRow("plain after plain") << 0;
    QTest::newRow("raw after plain") << 1;
}

void TextViewPlainTest::newerRequestWinsOverAnOlderOne() {
    QFETCH(int, second);
    openSmall();
    w_->setPlainWorkerFrom(1);  // the small file goes through the worker too
    QSignalSpy shownSpy(w_.get(), &ui::TextSectionView::plainShown);
    QVERIFY(w_->showFile(big_, TextKind::Plain).pending);
    if (second == 0) {
        QVERIFY(w_->showFile(small_, TextKind::Plain).pending);
        QVERIFY(waitShown(shownSpy));
    } else {
        const ShowFileResult r = w_->showFile(small_, TextKind::Raw);
        QVERIFY(r.shown && !r.pending);
        QVERIFY(!w_->plainPending());
        QVERIFY(w_->busyStatus().isEmpty());
    }
    settle();
    QCOMPARE(shownSpy.count(), second == 0 ? 1 : 0);
    QCOMPARE(w_->shownLines().front(), QString("small one"));
    QCOMPARE(w_->shownText().pafn, small_.toStdString());
    QCOMPARE(w_->shownText().kind, second == 0 ? TextKind::Plain : TextKind::Raw);
    QVERIFY(w_->busyStatus().isEmpty());
}

void TextViewPlainTest::escStopsItAndWhatShowedStays() {
    openSmall();
    QSignalSpy shownSpy(w_.get(), &ui::TextSectionView::plainShown);
    QSignalSpy busySpy(w_.get(), &ui::TextSectionView::busyChanged);
    QVERIFY(w_->showFile(big_, TextKind::Plain).pending);
    QTest::keyClick(w_.get(), Qt::Key_Escape);
    QVERIFY(!w_->plainPending());
    QVERIFY(w_->busyStatus().isEmpty());
    QCOMPARE(busySpy.count(), 2);
    QCOMPARE(busySpy.back().front().toString(), QString());
    settle();
    QCOMPARE(shownSpy.count(), 0);
    QCOMPARE(w_->shownLines().front(), QString("small one"));
    QCOMPARE(w_->shownText().kind, TextKind::Raw);
    // The view goes on working, and the next request is served.
    QTest::keyClick(w_.get(), Qt::Key_PageDown);
    QVERIFY(w_->showFile(big_, TextKind::Plain).pending);
    QVERIFY(waitShown(shownSpy));
    QCOMPARE(w_->shownLines().front(), para(1));
    QVERIFY(host_->asked().empty());
}

void TextViewPlainTest::endOfTheViewDropsTheResult() {
    openSmall();
    QVERIFY(w_->showFile(big_, TextKind::Plain).pending);
    w_.reset();
    settle();  // the worker ends with nobody to take its text: nothing may fail
    QVERIFY(host_->asked().empty());
}

void TextViewPlainTest::fileBeyondTheLimitShowsItsFirstPart() {
    QSignalSpy shownSpy(w_.get(), &ui::TextSectionView::plainShown);
    ShowFileOptions options;
    options.plainSourceLimit = 100000;
    QVERIFY(w_->showFile(big_, TextKind::Plain, 1, {}, options).pending);
    QVERIFY(waitShown(shownSpy));
    const auto result = shownSpy.front().front().value<ShowFileResult>();
    QVERIFY(result.shown);
    QVERIFY(result.plainCut);
    QTest::keyClick(w_.get(), Qt::Key_End, Qt::ControlModifier);
    // 100000 bytes hold some 3000 paragraphs of the half million.
    const QString last = lastText(w_->shownLines());
    QVERIFY2(last.startsWith("para 00") && last < para(4000), qPrintable(last));
}

void TextViewPlainTest::smallFileIsMadeAtOnce() {
    const QString page = QString::fromStdString(dir_->write("page.html", "<p>Hello <b>there</b></p>").string());
    QSignalSpy shownSpy(w_.get(), &ui::TextSectionView::plainShown);
    const ShowFileResult r = w_->showFile(page, TextKind::Plain, 1, "Page");
    QVERIFY(r.shown && !r.pending);
    QCOMPARE(QString::fromStdString(r.status), QString("Plain text from Page"));
    QCOMPARE(w_->shownLines().front(), QString("Hello there"));
    QCOMPARE(shownSpy.count(), 0);
}

QTEST_MAIN(TextViewPlainTest)
#include "text_view_plain_test.moc"
