// Show Info and the hex display as the user meets them in real message
// boxes: the buttons of Show Info copy the name, show and hide the byte
// lines (kept in the INI file) and open the hex dump of the selected bytes;
// the hex display shows the text as it reads and its dump in the fixed font,
// line for line; a cell's text is dumped as its UTF-8 bytes.
#include <QtTest>

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <deque>
#include <functional>
#include <memory>

#include "dialogs/MessageBoxState.h"
#include "settings/IniStore.h"
#include "support/TempDir.h"
#include "ui/MessageBoxDialog.h"
#include "ui/QtMessageHost.h"
#include "ui/ShowDataWindow.h"
#include "ui/ShowInfoAction.h"
#include "ui/TextSectionView.h"
#include "viewer/TextBlockCache.h"

using namespace tav;
using tav::ui::MessageBoxDialog;

namespace {

// Answers the message boxes that open, one step a box, in order.
class BoxScript : public QObject {
public:
    using Step = std::function<void(MessageBoxDialog&)>;
    explicit BoxScript(std::initializer_list<Step> steps) : steps_(steps) {
        timer_.setInterval(10);
        connect(&timer_, &QTimer::timeout, this, &BoxScript::poll);
        timer_.start();
    }
    bool done() const { return steps_.empty(); }
    int boxesSeen() const { return seen_; }

private:
    void poll() {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<MessageBoxDialog*>(w);
            if (!box || !box->isVisible() || box == last_.data()) continue;
            last_ = box;
            ++seen_;
            if (steps_.empty()) {
                box->pressButton(1);
                return;
            }
            Step step = std::move(steps_.front());
            steps_.pop_front();
            step(*box);
            // A step that failed leaves its box open: close it, so the test ends.
            if (QTest::currentTestFailed() && box->isVisible()) box->pressButton(1);
            return;
        }
    }
    std::deque<Step> steps_;
    QTimer timer_;
    QPointer<MessageBoxDialog> last_;
    int seen_ = 0;
};

// Passes prompts to the real host and keeps their answers.
class RecordingHost : public MessageHost {
public:
    explicit RecordingHost(MessageHost& inner) : inner_(inner) {}
    int show(MessageRequest& request) override {
        const int answer = inner_.show(request);
        answers << answer;
        return answer;
    }
    QList<int> answers;

private:
    MessageHost& inner_;
};

QString messageOf(MessageBoxDialog& box) { return box.messageLabel()->text(); }

QPushButton* buttonNamed(MessageBoxDialog& box, const QString& caption) {
    for (int n = 1; n <= box.buttonCount(); ++n)
        if (box.button(n)->text() == caption) return box.button(n);
    return nullptr;
}

void click(MessageBoxDialog& box, const QString& caption) {
    QPushButton* b = buttonNamed(box, caption);
    QVERIFY2(b, qPrintable(caption));
    QTest::mouseClick(b, Qt::LeftButton);
}

void keepPicture(QWidget& w, const QString& name) {
    // TAVELO_SHOTS=DIR keeps a picture of the box for a person to look at.
    if (qEnvironmentVariableIsSet("TAVELO_SHOTS")) w.grab().save(qEnvironmentVariable("TAVELO_SHOTS") + "/" + name);
}

}  // namespace

class ShowInfoTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void buttonsCopyTheNameToggleTheBytesAndOpenTheDump();
    void byteLinesStartAsTheOptionSays();
    void hexDisplayShowsTextAndDumpInTheFixedFont();
    void missingFileGivesTheReadersMessage();
    void cellTextIsDumpedAsItsUtf8Bytes();
    void popupCommandsReachTheBoxes();

private:
    std::unique_ptr<tavtest::TempDir> dir_;
    std::unique_ptr<ProfileService> service_;
    std::unique_ptr<QWidget> window_;
    std::unique_ptr<ui::QtMessageHost> host_;
    std::unique_ptr<IniStore> ini_;
    std::unique_ptr<TextBlockCache> cache_;
};

void ShowInfoTest::init() {
    resetMbState();
    dir_ = std::make_unique<tavtest::TempDir>();
    service_ = std::make_unique<ProfileService>();
    // The boxes stand over a window of their own, as over the main window
    // in the program (a box must not stand over the box before it, which
    // goes away after its answer).
    window_ = std::make_unique<QWidget>();
    window_->resize(300, 200);
    window_->show();
    host_ = std::make_unique<ui::QtMessageHost>(window_.get());
    ini_ = std::make_unique<IniStore>(*service_, host_.get());
    ini_->setDataDir(dir_->str());
    ini_->setRoleFile(IniRole::Main, ini_->qualify("Tavelo.ini"));
    ini_->missingDefault = kMissingEmpty;
    cache_ = std::make_unique<TextBlockCache>();
}

void ShowInfoTest::cleanup() {
    cache_.reset();
    ini_.reset();
    host_.reset();
    window_.reset();
    service_.reset();
    dir_.reset();
}

void ShowInfoTest::buttonsCopyTheNameToggleTheBytesAndOpenTheDump() {
    const std::string text = "0123456789ABCDEFGHIJ\tTab here\nsecond line\n";
    const QString path = QString::fromStdString(dir_->write("info.txt", text).string());
    ui::TextSectionView view(*cache_, *host_);
    view.resize(500, 300);
    view.show();
    QVERIFY(view.showFile(path, TextKind::Raw, 1, "Info title").shown);
    view.view().setSelection(11, 23);  // "ABCDEFGHIJ\tT"

    QString dump;
    BoxScript script{
        [&](MessageBoxDialog& box) {
            QVERIFY(box.windowTitle().endsWith("Show Info for text"));
            QVERIFY(messageOf(box).contains("Text Shown is Raw text from:"));
            QVERIFY(messageOf(box).contains("Title:        Info title"));
            QVERIFY(!messageOf(box).contains("Total Length"));
            QVERIFY(buttonNamed(box, "> &Bytes"));
            click(box, "&Clip FileName");
        },
        [&](MessageBoxDialog& box) {
            QVERIFY(messageOf(box).contains("(Copied to Clipboard)"));
            click(box, "> &Bytes");
        },
        [&](MessageBoxDialog& box) {
            const QString m = messageOf(box);
            QVERIFY2(m.contains("Total Length:  " + QString::number(text.size()) + ". "), qPrintable(m));
            QVERIFY2(m.contains("Bytes Selected: (12) 11 to 22. "), qPrintable(m));
            QVERIFY(buttonNamed(box, "< &Bytes"));
            keepPicture(box, "show-info.png");
            click(box, "Show &Hex Dump");
        },
        [&](MessageBoxDialog& box) {
            QVERIFY(box.windowTitle().endsWith("Cell Contents|Hex Dump"));
            auto* lines = qobject_cast<QPlainTextEdit*>(box.control(2));
            QVERIFY(lines);
            dump = lines->toPlainText();
            click(box, "&OK");
        },
    };
    RecordingHost recording(*host_);
    ui::showInfoForView(view, recording, *ini_);
    QCOMPARE(recording.answers, (QList<int>{2, 4, 3, 1}));
    QCOMPARE(script.boxesSeen(), 4);
    QVERIFY(script.done());
    QCOMPARE(QGuiApplication::clipboard()->text(), path);
    // The byte lines stay on for the next time.
    QCOMPARE(ini_->get("Main", "(Intrnl) Show bytes ON IDDATA"), std::string("-1"));
    // The dump holds the selected bytes from their byte number, the tab as 09.
    QCOMPARE(dump.split('\n').front(), QString("        11: 41 42 43 44 45 46 47 48  49 4A 09 54              ABCDEFGHIJ.T"));
}

void ShowInfoTest::byteLinesStartAsTheOptionSays() {
    ini_->put("Main", "(Intrnl) Show bytes ON IDDATA", "-1");
    const QString path = QString::fromStdString(dir_->write("b.txt", "bytes\n").string());
    ui::TextSectionView view(*cache_, *host_);
    view.resize(400, 200);
    QVERIFY(view.showFile(path).shown);
    BoxScript script{
        [](MessageBoxDialog& box) {
            QVERIFY(messageOf(box).contains("Bytes Selected: ** none **"));
            click(box, "< &Bytes");
        },
        [](MessageBoxDialog& box) {
            QVERIFY(!messageOf(box).contains("Bytes Selected"));
            QTest::keyClick(&box, Qt::Key_Escape);
        },
    };
    ui::showInfoForView(view, *host_, *ini_);
    QVERIFY(script.done());
    QCOMPARE(ini_->get("Main", "(Intrnl) Show bytes ON IDDATA"), std::string("0"));
}

void ShowInfoTest::hexDisplayShowsTextAndDumpInTheFixedFont() {
    std::string bytes;
    for (int i = 0; i < 40; ++i) bytes += static_cast<char>('a' + i % 26);
    bytes += std::string("\0\r\n", 3);
    const QString path = QString::fromStdString(dir_->write("h.bin", bytes).string());
    BoxScript script{
        [&](MessageBoxDialog& box) {
            QVERIFY2(messageOf(box).contains("Bytes 1 to 43"), qPrintable(messageOf(box)));
            auto* asText = qobject_cast<QPlainTextEdit*>(box.control(1));
            auto* dump = qobject_cast<QPlainTextEdit*>(box.control(2));
            QVERIFY(asText && dump);
            QVERIFY(asText->toPlainText().startsWith("abcdefghijklmnopqrstuvwxyzabcd"));
            // The dump: one line for each 16 bytes, unwrapped, in the fixed font.
            const QStringList lines = dump->toPlainText().split('\n', Qt::SkipEmptyParts);
            QCOMPARE(lines.size(), 3);
            QCOMPARE(lines[0], QString("         1: 61 62 63 64 65 66 67 68  69 6A 6B 6C 6D 6E 6F 70  abcdefghijklmnop"));
            QCOMPARE(lines[2], QString("        33: 67 68 69 6A 6B 6C 6D 6E  00 0D 0A                 ghijklmn..."));
            QCOMPARE(dump->lineWrapMode(), QPlainTextEdit::NoWrap);
            QVERIFY(QFontInfo(dump->font()).fixedPitch());
            QCOMPARE(dump->font().family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
            QCOMPARE(asText->lineWrapMode(), QPlainTextEdit::WidgetWidth);
            keepPicture(box, "hex-display.png");
            click(box, "&OK");
        },
    };
    QVERIFY(ui::showHexDumpOfFile(path, *host_));
    QVERIFY(script.done());
}

void ShowInfoTest::missingFileGivesTheReadersMessage() {
    const QString path = QString::fromStdString((*dir_ / "h.bin").string());
    QString said;
    BoxScript missing{[&](MessageBoxDialog& box) {
        said = messageOf(box);
        click(box, "&OK");
    }};
    QVERIFY(!ui::showHexDumpOfFile(path + ".gone", *host_));
    QVERIFY(missing.done());
    QVERIFY2(said.contains("h.bin.gone"), qPrintable(said));
}

void ShowInfoTest::cellTextIsDumpedAsItsUtf8Bytes() {
    QString dump;
    QString asText;
    BoxScript script{[&](MessageBoxDialog& box) {
        QVERIFY(messageOf(box).contains("Cell B2"));
        asText = qobject_cast<QPlainTextEdit*>(box.control(1))->toPlainText();
        dump = qobject_cast<QPlainTextEdit*>(box.control(2))->toPlainText();
        QTest::keyClick(&box, Qt::Key_Escape);
    }};
    ui::showHexDumpOfText(QString::fromUtf8("caf\xC3\xA9 \xE2\x82\xAC"), "Cell B2", *host_);
    QVERIFY(script.done());
    QCOMPARE(asText, QString::fromUtf8("caf\xC3\xA9 \xE2\x82\xAC"));
    QCOMPARE(dump.split('\n').front(), QString("         1: 63 61 66 C3 A9 20 E2 82  AC                       caf.. ..."));
}

void ShowInfoTest::popupCommandsReachTheBoxes() {
    // OB and OM of the popups: the file's info, and the cell's dump.
    const QString path = QString::fromStdString(dir_->write("p.txt", "popup text\n").string());
    auto* file = ui::ShowDataWindow::instance(ui::ShowDataWindow::Role::ShowData, *cache_, *host_, *ini_);
    QVERIFY(file->showFile(path, ui::ShowKind::Raw, "Popup"));
    QStringList titles;
    BoxScript script{
        [&](MessageBoxDialog& box) {
            titles << box.windowTitle();
            click(box, "&OK");
        },
        [&](MessageBoxDialog& box) {
            titles << box.windowTitle();
            QCOMPARE(qobject_cast<QPlainTextEdit*>(box.control(1))->toPlainText(), QString("in the cell"));
            click(box, "&OK");
        },
    };
    file->findChild<QAction*>("OB")->trigger();
    auto* cell = ui::ShowDataWindow::instance(ui::ShowDataWindow::Role::ShowCell, *cache_, *host_, *ini_);
    cell->showCell("in the cell", "Row 1");
    QVERIFY(!cell->findChild<QAction*>("OB"));
    cell->findChild<QAction*>("OM")->trigger();
    QVERIFY(script.done());
    QCOMPARE(titles.size(), 2);
    QVERIFY(titles[0].endsWith("Show Info for text"));
    QVERIFY(titles[1].endsWith("Cell Contents|Hex Dump"));
    delete file;
    delete cell;
}

QTEST_MAIN(ShowInfoTest)
#include "show_info_test.moc"
