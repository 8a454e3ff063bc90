#include "ui/ShowInfoAction.h"

#include <QClipboard>
#include <QGuiApplication>
#include <string>

#include "settings/IniStore.h"
#include "ui/TextSectionView.h"
#include "viewer/HexDump.h"
#include "viewer/ShowInfo.h"

namespace tav::ui {

namespace {

constexpr const char* kShowBytesEntry = "(Intrnl) Show bytes ON IDDATA";

void tell(MessageHost& host, const std::string& text) {
    MessageRequest m = makeRequest(text, "0", "Esc=1|");
    host.show(m);
}

}  // namespace

void showInfoForView(const TextSectionView& section, MessageHost& host, IniStore& ini) {
    const bool showBytes = ini.mode(kMissingEmpty).getBool("Main", kShowBytesEntry);
    const ShowInfoOutcome out =
        showBytesInfo(section.view(), section.shownText(), showBytes, host, [](const std::string& pafn) {
            if (QClipboard* clip = QGuiApplication::clipboard()) clip->setText(QString::fromStdString(pafn));
        });
    if (out.showBytes != showBytes) ini.put("Main", kShowBytesEntry, out.showBytes ? "-1" : "0");
    if (out.hexDumpWanted) showHexDumpOfView(section, host);
}

bool showHexDumpOfView(const TextSectionView& section, MessageHost& host) {
    MessageRequest request;
    std::string error;
    if (!hexDumpForView(section.view(), request, error)) {
        tell(host, error);
        return false;
    }
    host.show(request);
    return true;
}

bool showHexDumpOfFile(const QString& path, MessageHost& host) {
    MessageRequest request;
    std::string error;
    if (!hexDumpOfFile(path.toStdString(), 1, 0, request, error)) {
        tell(host, error);
        return false;
    }
    host.show(request);
    return true;
}

void showHexDumpOfText(const QString& text, const QString& name, MessageHost& host) {
    const QByteArray bytes = text.toUtf8();
    const auto count = std::min<qsizetype>(bytes.size(), static_cast<qsizetype>(kHexDumpLimit));
    MessageRequest request =
        hexDumpRequest(std::string_view(bytes.constData(), static_cast<size_t>(count)), 1, name.toStdString());
    host.show(request);
}

}  // namespace tav::ui
