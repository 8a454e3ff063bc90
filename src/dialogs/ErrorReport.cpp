#include "dialogs/ErrorReport.h"

#include <ctime>

namespace tav {

std::string controlKindName(std::string_view kind) {
    static constexpr std::string_view kinds[] = {
        "CheckBox", "ComboBox", "CommandButton", "DirListBox", "DriveListBox", "FileListBox",
        "Frame",    "HScrollBar", "Image",      "Label",      "Line",         "ListBox",
        "OptionButton", "PictureBox", "Shape",  "TextBox",    "Timer",        "VScrollBar",
    };
    for (auto k : kinds)
        if (k == kind) return std::string(k);
    return "Unrecognised.";
}

std::string errorTimeStamp(std::chrono::system_clock::time_point when) {
    std::time_t t = std::chrono::system_clock::to_time_t(when);
    std::tm tm{};
#ifdef _WIN32
    localtime_s(&tm, &t);
#else
    localtime_r(&t, &tm);
#endif
    char buf[32];
    std::strftime(buf, sizeof buf, "%Y-%m-%d %H:%M:%S", &tm);
    return buf;
}

std::vector<std::string> errorBlockLines(const ErrorInfo& error, const ErrorPlace& place,
                                         std::string_view timeStamp, std::string_view logName) {
    std::vector<std::string> lines;
    lines.emplace_back("<<<ERROR IN PROGRAM>>>");
    std::string text = error.text.empty() ? std::string("Unknown error") : error.text;
    std::string runtime = "Runtime reports Error:<<" + std::to_string(error.number) + " - " + text + ">>.";
    if (error.systemError != 0) runtime += "<<" + std::to_string(error.systemError) + " - Windows Error>>.";
    lines.push_back(std::move(runtime));
    lines.push_back("Proc: " + place.procedure);
    lines.push_back("Form: " + (place.form.empty() ? std::string("Form Not defined") : place.form));
    if (place.control.empty())
        lines.emplace_back("Control: Not defined");
    else
        lines.push_back("Control: " + place.control + " / " + controlKindName(place.controlKind));
    lines.push_back("Error Logged at >> " + std::string(timeStamp) + " <<" + " to file >>" +
                    std::string(logName) + "<<");
    return lines;
}

std::string joinLines(const std::vector<std::string>& lines) {
    std::string out;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i) out += '\r';
        out += lines[i];
    }
    return out;
}

}  // namespace tav
