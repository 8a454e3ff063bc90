#include "dialogs/OptionBuilders.h"

#include <cmath>

#include "dialogs/PictureTable.h"

namespace tav::mbopt {

namespace {

std::string numberItem(std::string_view name, long n) {
    return std::string(name) + "=" + std::to_string(n) + "|";
}

std::string listItem(std::string_view name, const std::vector<std::string>& values) {
    std::string out = "{" + std::string(name) + "=";
    for (size_t i = 0; i < values.size(); ++i) {
        if (i) out += "|";
        out += values[i];
    }
    return out + "}|";
}

std::string buttonList(std::string_view name, const std::vector<int>& buttons) {
    std::vector<std::string> v;
    for (int b : buttons) v.push_back(std::to_string(b));
    return listItem(name, v);
}

std::string flag(bool b) { return b ? "-1" : "0"; }

}  // namespace

std::string noShow() { return "No show|"; }
std::string iconFromForm() { return "IconFromForm|"; }
std::string flags(long f) { return std::to_string(f) + "|"; }

std::string setPic(std::any picture, PictureTable& table) {
    return numberItem("SetPic", table.put(std::move(picture)));
}
std::string setPic(std::any picture) { return setPic(std::move(picture), PictureTable::shared()); }

std::string topLeftOfForm(int top, int left) {
    return listItem("Top, left of form", {std::to_string(top), std::to_string(left)});
}
std::string maxButtonsPerLine(int count) { return numberItem("MBButtspec.MaxBpl", count); }
std::string dfltButton(int button) { return numberItem("DfltButton", button); }
std::string esc(int button) { return numberItem("Esc", button); }
std::string focBut(int button) { return numberItem("FocBut", button); }
std::string boldButts(const std::vector<int>& b) { return buttonList("BoldButts", b); }
std::string itiButts(const std::vector<int>& b) { return buttonList("ItiButts", b); }
std::string undrButts(const std::vector<int>& b) { return buttonList("UndrButts", b); }
std::string textBold() { return "TextBold|"; }
std::string textSize(int points) { return numberItem("TextSize", points); }
std::string textFont(std::string_view name) { return "TextFont=" + std::string(name) + "|"; }
std::string buttonGaps(int between, int lines, int above) {
    return listItem("Buttons gap/gap betw lines",
                    {std::to_string(between), std::to_string(lines), std::to_string(above)});
}
std::string bNextToIcon() { return "BNextToIcon|"; }
std::string bUnderTextOnly() { return "BUnderTextOnly|"; }
std::string controlsUnderMsg() { return "Controls under msg|"; }
std::string noHide() { return "NoHide|"; }
std::string noHide(std::string_view text, bool removeOthers, bool secondInstance) {
    return listItem("NoHide", {std::string(text), flag(removeOthers), flag(secondInstance)});
}
std::string fixedWidth(int twips) { return numberItem("Fixed Width", twips); }
std::string fixedHeight(int twips, bool controlArea) {
    return listItem("Fixed Height", {std::to_string(twips), flag(controlArea)});
}
std::string defaultAndMinWidth(int twips) { return numberItem("Default and Min Width", twips); }
std::string defaultAndMinWidthPercent(double percent, int screenWidthTwips) {
    return numberItem("Default and Min Width", std::lround(percent / 100.0 * screenWidthTwips));
}
std::string backColor(long colour) { return numberItem("BackColor", colour); }
std::string foreColor(long colour) { return numberItem("ForeColor", colour); }
std::string anyKeyHides() { return "Any Key Hides|"; }
std::string keyHides(int keyCode, int shift) {
    return listItem("KeyHides", {std::to_string(keyCode), std::to_string(shift)});
}
std::string buttonsAtBottom() { return "Buttons At Bottom|"; }

}  // namespace tav::mbopt
