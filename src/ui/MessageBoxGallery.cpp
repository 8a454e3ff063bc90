#include "ui/MessageBoxGallery.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>
#include <thread>

#include "dialogs/MessageBuilder.h"
#include "dialogs/MessageShortcuts.h"

namespace tav::ui {

namespace {

MessageRequest make(const std::string& message, const std::string& buttons, const std::string& options,
                    const std::string& title = {}) {
    MessageRequest r;
    r.message = message;
    r.buttons = buttons;
    r.options = options;
    r.title = title;
    return r;
}

}  // namespace

QStringList MessageBoxGallery::sampleNames() {
    return {"Yes No Cancel", "Retry Cancel", "Text buttons, no Esc", "Fourteen buttons", "Input",
            "Options and check", "List multi-select", "Combo and label row", "Any key hides",
            "Long message", "In-box buttons", "Grid", "Tall box, buttons at bottom"};
}

MessageRequest MessageBoxGallery::sample(const QString& name) {
    if (name == "Yes No Cancel")
        return make("The file \"report.htm\" exists.\rReplace it?", "3", "32", "- [Copy]");
    if (name == "Retry Cancel")
        return make("The disk is not ready.", "5", "16");
    if (name == "Text buttons, no Esc") {
        std::string buttons;
        MBAddButton("&Skip", buttons, true);
        MBAddButton("Skip &All", buttons, false);
        MBAddButton("&Stop", buttons, false);
        return make("Esc and the close box do nothing here.\rCopy & move: #H160#underlined letter.", buttons, "48");
    }
    if (name == "Fourteen buttons") {
        std::string buttons;
        for (int i = 1; i <= 14; ++i) MBAddButton("Button &" + std::to_string(i % 10), buttons, i == 1);
        return make("Fourteen buttons, three a line.", buttons, "MBButtspec.MaxBpl=3|Esc=14|");
    }
    if (name == "Input") {
        MessageRequest r = make("New name:", "1", "", "- [Rename]");
        MBAddCtl("TextBox", "10000||||||-1|-1", "old name.txt", r, true);
        return r;
    }
    if (name == "Options and check") {
        MessageRequest r = make("How should the files go?", "1", "64|Controls under msg|");
        MBAddCtl("Label", "", "Mode:", r, true);
        MBAddOptionGroup("&Copy|&Move|&Link", 1, nullptr, r);
        MBAddCtl("CheckBox", "Keep &backup in the recycle directory||||||", "-1", r);
        return r;
    }
    if (name == "List multi-select") {
        MessageRequest r = make("Select the files (Ctrl and Shift extend):", "1", "");
        MBAddCtl("ListBox", "4000|2000||||||||2", "0|2", r, true);
        for (const char* item : {"index.htm", "about.htm", "links.htm", "notes.txt", "style.css"})
            MBAddListItem(item, -1, r);
        return r;
    }
    if (name == "Combo and label row") {
        MessageRequest r = make("Find files", "1", "Default and Min Width=7000|");
        MBAddCtl("Label", "", "File types [t]:", r, true);
        MBAddCtl("_ComboBox", "", "CBtxt*.htm", r);
        for (const char* item : {"*.txt", "*.htm", "*.*"}) MBAddListItem(item, -1, r);
        MBAddCtl("Label", "", "Containing [c]:", r);
        MBAddCtl("_TextBox", "", "", r);
        MBAddCtl("Shape", "", "", r);
        MBAddCtl("CheckBox", "&Whole words|2500", "0", r);
        MBAddCtl("_CheckBox", "&Match case|2500", "0", r);
        return r;
    }
    if (name == "Any key hides")
        return make("Press any key.", "0", "Any Key Hides|");
    if (name == "Long message") {
        std::string text;
        for (int i = 0; i < 12; ++i) text += "A long message wraps at the width limit of the box. ";
        text += "\rAVeryLongWordWithoutAnyBlankThatSetsTheMinimumWidthOfTheBox";
        return make(text, "4", "48");
    }
    if (name == "In-box buttons") {
        MessageRequest r = make("Select Item and Press Up/Down to change sequence.", "&OK|&Cancel", "Esc=2|");
        MBAddCtl("ListBox", "3000|1500", "0", r, true);
        for (const char* item : {"first", "second", "third"}) MBAddListItem(item, -1, r);
        MBAddButtons(false, "", "&Up|Do&wn", r);
        return r;
    }
    if (name == "Grid") {
        MessageRequest r = make("Pick the cells (double click shows a cell):", "1", "");
        MBAddCtl("Grid", "6000|2400||||||||1||{2400|1200|1800}|{1|7|4}", "1|0|2|1|0|0", r, true);
        for (const char* row : {"Name\tSize\tDate", "index.htm\t2 310\t2024-05-01", "about.htm\t880\t2024-05-02",
                                "links.htm\t12 004\t2024-06-11", "notes.txt\t97\t2025-01-09"})
            MBAddListItem(row, -1, r);
        return r;
    }
    if (name == "Tall box, buttons at bottom") {
        MessageRequest r = make("Tick the options you want:", "1", "Buttons At Bottom|");
        for (int i = 1; i <= 60; ++i)
            MBAddCtl(i % 2 ? "CheckBox" : "_CheckBox", "Option " + std::to_string(i) + "|3000|||||", "0", r, i == 1);
        return r;
    }
    return {};
}

MessageBoxGallery::MessageBoxGallery(QWidget* parent) : QWidget(parent), host_(this) {
    setWindowTitle("Message boxes");
    auto* layout = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    auto* worker = new QCheckBox("Ask from a worker thread", this);
    int n = 0;
    for (const QString& name : sampleNames()) {
        auto* b = new QPushButton(name, this);
        connect(b, &QPushButton::clicked, this, [this, name, worker] { run(name, worker->isChecked()); });
        grid->addWidget(b, n / 3, n % 3);
        ++n;
    }
    // The prompt calls that show their box again between steps.
    for (const QString& name : promptNames()) {
        auto* b = new QPushButton(name, this);
        connect(b, &QPushButton::clicked, this, [this, name, worker] { runPrompt(name, worker->isChecked()); });
        grid->addWidget(b, n / 3, n % 3);
        ++n;
    }
    layout->addLayout(grid);
    layout->addWidget(worker);
    log_ = new QPlainTextEdit(this);
    log_->setReadOnly(true);
    layout->addWidget(log_);
    resize(640, 420);
}

void MessageBoxGallery::run(const QString& name, bool fromWorker) {
    if (!fromWorker) {
        MessageRequest r = sample(name);
        report(name, host_.show(r), r);
        return;
    }
    // The worker asks and waits; the answer comes back to the UI thread.
    QPointer<MessageBoxGallery> self(this);
    std::thread([self, name, host = &host_] {
        MessageRequest r = sample(name);
        int answer = host->show(r);
        QMetaObject::invokeMethod(qApp, [self, name, answer, r] {
            if (self) self->report(name + " (worker)", answer, r);
        }, Qt::QueuedConnection);
    }).detach();
}

QStringList MessageBoxGallery::promptNames() { return {"Sequence of columns", "Lines"}; }

void MessageBoxGallery::runPrompt(const QString& name, bool fromWorker) {
    auto ask = [name](MessageHost& host) {
        std::vector<std::string> items = name == "Lines" ? std::vector<std::string>{"first line"}
                                                         : std::vector<std::string>{"Name", "Size", "Date", "Title"};
        const bool ok = name == "Lines" ? MBLines(host, items, "Lines") : MBSequence(host, "Columns", "", items);
        QStringList shown;
        for (const auto& item : items) shown << QString::fromStdString(item);
        return QString("%1: %2, %3").arg(name, ok ? "OK" : "Cancel", shown.join(" | "));
    };
    if (!fromWorker) {
        log_->appendPlainText(ask(host_));
        return;
    }
    QPointer<MessageBoxGallery> self(this);
    std::thread([self, ask, host = &host_] {
        const QString line = ask(*host);
        QMetaObject::invokeMethod(qApp, [self, line] {
            if (self) self->log_->appendPlainText(line + " (worker)");
        }, Qt::QueuedConnection);
    }).detach();
}

void MessageBoxGallery::report(const QString& name, int answer, const MessageRequest& request) {
    QString line = QString("%1: answer %2").arg(name).arg(answer);
    if (!request.values.empty() && !request.values[0].empty())
        line += QString(", key %1").arg(QString::fromStdString(request.values[0]));
    for (size_t i = 1; i < request.values.size(); ++i) {
        if (!request.values[i].empty()) line += QString(", value %1 = %2").arg(i).arg(QString::fromStdString(request.values[i]));
        if (i < request.lists.size() && !request.lists[i].empty())
            line += QString(", list %1 = %2").arg(i).arg(QString::fromStdString(request.lists[i][0]));
    }
    log_->appendPlainText(line);
}

QString MessageBoxGallery::log() const { return log_->toPlainText(); }

int runMessageBoxGallery() {
    QApplication::setApplicationName("Tavelo");
    MessageBoxGallery gallery;
    gallery.show();
    return QApplication::exec();
}

}  // namespace tav::ui
