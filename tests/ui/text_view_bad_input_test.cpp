// Files that do not behave: one that shrinks or vanishes while it shows,
// one that cannot be read, binary bytes without a line break. Each gives a
// clear message or a wrapped screen, never a failure, and the view goes on
// to show the next file.
#include <QtTest>

#include <QSignalSpy>
#include <QThreadPool>
#include <filesystem>
#include <random>
#include <string>

#include "support/ScriptedHost.h"
#include "support/TempDir.h"
#include "ui/TextSectionView.h"
#include "viewer/TextBlockCache.h"

using namespace tav;

Q_DECLARE_METATYPE(tav::ShowFileResult)

namespace {

QString numbered(int n) { return QString("line %1").arg(n, 6, 10, QChar('0')); }

std::string numberedFile(int lines) {
    std::string s;
    for (int i = 1; i <= lines; ++i) s += numbered(i).toStdString() + "\n";
    return s;
}

// Bytes of every value but the line breaks.
std::string binaryWithoutBreaks(size_t size) {
    std::mt19937 rng(7);
    std::string s(size, ' ');
    for (char& c : s) {
        auto b = static_cast<unsigned char>(rng() & 0xFF);
        if (b == '\n' || b == '\r') b = 'x';
        c = static_cast<char>(b);
    }
    return s;
}

}  // namespace

class TextViewBadInputTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void fileChangingUnderTheView_data();
    void fileChangingUnderTheView();
    void unreadableFile_data();
    void unreadableFile();
    void binaryWithoutLineBreaks_data();
    void binaryWithoutLineBreaks();

private:
    std::unique_ptr<tavtest::TempDir> dir_;
    std::unique_ptr<TextBlockCache> cache_;
    std::unique_ptr<tavtest::ScriptedHost> host_;
    std::unique_ptr<ui::TextSectionView> w_;

    QString write(const std::string& name, const std::string& bytes) {
        return QString::fromStdString(dir_->write(name, bytes).string());
    }
    // After the trouble the next file shows as it should.
    void nextFileShows();
};

void TextViewBadInputTest::init() {
    qRegisterMetaType<tav::ShowFileResult>();
    dir_ = std::make_unique<tavtest::TempDir>();
    cache_ = std::make_unique<TextBlockCache>();
    host_ = std::make_unique<tavtest::ScriptedHost>();
    w_ = std::make_unique<ui::TextSectionView>(*cache_, *host_);
    w_->resize(400, 300);
    w_->show();
}

void TextViewBadInputTest::cleanup() {
    w_.reset();
    QThreadPool::globalInstance()->waitForDone(60000);
    host_.reset();
    cache_.reset();
    dir_.reset();
}

void TextViewBadInputTest::nextFileShows() {
    const QString good = write("good.txt", "good one\ngood two\n");
    host_->clear();
    QVERIFY(w_->showFile(good).shown);
    QCOMPARE(w_->shownLines(), (QStringList{"good one", "good two"}));
    QVERIFY(host_->asked().empty());
}

void TextViewBadInputTest::fileChangingUnderTheView_data() {
    QTest::addColumn<int>("newSize");  // -1: the file is removed
    QTest::addColumn<QString>("message");
    QTest::newRow("shrinks") << 5000 << "Start at byte specified is after end of file. File length: 5000.";
    QTest::newRow("shrinks to nothing") << 0 << "Start at byte specified is after end of file. File length: 0.";
    QTest::newRow("vanishes") << -1 << "Error opening file >>";
}

void TextViewBadInputTest::fileChangingUnderTheView() {
    QFETCH(int, newSize);
    QFETCH(QString, message);
    const QString path = write("f.txt", numberedFile(20000));
    QVERIFY(w_->showFile(path).shown);
    if (newSize < 0)
        std::filesystem::remove(path.toStdString());
    else
        std::filesystem::resize_file(path.toStdString(), static_cast<uintmax_t>(newSize));

    for (int i = 0; i < 40; ++i) QTest::keyClick(w_.get(), Qt::Key_PageDown);
    QTest::keyClick(w_.get(), Qt::Key_End, Qt::ControlModifier);
    w_->scrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    w_->scrollBar()->setValue(5000);
    QVERIFY(!host_->asked().empty());
    const QString first = QString::fromStdString(host_->messages().front());
    QVERIFY2(first.startsWith(message), qPrintable(first));
    // What was read stays on screen, and the keys still work on it.
    QVERIFY(!w_->shownLines().isEmpty());
    QTest::keyClick(w_.get(), Qt::Key_Home, Qt::ControlModifier);
    QVERIFY(!w_->shownLines().isEmpty());
    nextFileShows();
}

void TextViewBadInputTest::unreadableFile_data() {
    QTest::addColumn<int>("kindNumber");
    QTest::newRow("raw") << static_cast<int>(TextKind::Raw);
    QTest::newRow("plain") << static_cast<int>(TextKind::Plain);
}

void TextViewBadInputTest::unreadableFile() {
    QFETCH(int, kindNumber);
    const auto kind = static_cast<TextKind>(kindNumber);
    QVERIFY(w_->showFile(write("before.txt", "before\n")).shown);
    // A name below a file can be opened by no one, whatever the rights.
    const QString blocked = write("plain.txt", "x") + "/inner.txt";
    const ShowFileResult r = w_->showFile(blocked, kind);
    QVERIFY(!r.shown);
    QVERIFY(!r.pending);
    QVERIFY(r.status.empty());
    QVERIFY(!host_->asked().empty());
    const QString first = QString::fromStdString(host_->messages().front());
    QCOMPARE(first, "Error opening file >>" + blocked + "<<.");
    QTest::keyClick(w_.get(), Qt::Key_PageDown);
    QTest::keyClick(w_.get(), Qt::Key_End, Qt::ControlModifier);
    nextFileShows();
}

void TextViewBadInputTest::binaryWithoutLineBreaks_data() {
    QTest::addColumn<int>("kindNumber");
    QTest::newRow("raw") << static_cast<int>(TextKind::Raw);
    QTest::newRow("plain") << static_cast<int>(TextKind::Plain);
}

void TextViewBadInputTest::binaryWithoutLineBreaks() {
    QFETCH(int, kindNumber);
    const auto kind = static_cast<TextKind>(kindNumber);
    const QString path = write("bin.dat", binaryWithoutBreaks(300000));
    QSignalSpy shownSpy(w_.get(), &ui::TextSectionView::plainShown);
    const ShowFileResult r = w_->showFile(path, kind);
    QVERIFY(r.shown);
    if (r.pending) {
        QVERIFY(shownSpy.wait(60000));
        QVERIFY(shownSpy.front().front().value<ShowFileResult>().shown);
    }
    // One long line, wrapped to fill the screen, in every place.
    QCOMPARE(w_->shownLines().size(), w_->visibleLines());
    QTest::keyClick(w_.get(), Qt::Key_End, Qt::ControlModifier);
    QVERIFY(w_->view().atEnd());
    for (int i = 0; i < 5; ++i) QTest::keyClick(w_.get(), Qt::Key_PageUp);
    QCOMPARE(w_->shownLines().size(), w_->visibleLines());
    w_->scrollBar()->setValue(5000);
    QCOMPARE(w_->shownLines().size(), w_->visibleLines());
    for (const QString& line : w_->shownLines()) QVERIFY(!line.contains(QChar(0)) && !line.contains('\t'));
    QVERIFY(host_->asked().empty());
    nextFileShows();
}

QTEST_MAIN(TextViewBadInputTest)
#include "text_view_bad_input_test.moc"
