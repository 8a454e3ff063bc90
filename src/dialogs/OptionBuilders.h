#pragma once
// One function a message box option: each returns the option item with its
// trailing "|", so that items are simply concatenated:
//     mbopt::dfltButton(iNo) + mbopt::esc(iCancel) + mbopt::textBold()
// "No show|" and "IconFromForm|" count only at the start of the options.
#include <any>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

class PictureTable;

namespace mbopt {

std::string noShow();
std::string iconFromForm();
// The flags of the standard box (16, 32, 48, 64; 256, 512) as one item.
std::string flags(long flags);
// Registers the picture in the first free slot (AppError 8172 when full).
std::string setPic(std::any picture, PictureTable& table);
std::string setPic(std::any picture);  // the shared table
std::string topLeftOfForm(int top, int left);
std::string maxButtonsPerLine(int count);
std::string dfltButton(int button);
std::string esc(int button);
std::string focBut(int button);
std::string boldButts(const std::vector<int>& buttons);
std::string itiButts(const std::vector<int>& buttons);
std::string undrButts(const std::vector<int>& buttons);
std::string textBold();
std::string textSize(int points);
std::string textFont(std::string_view name);
std::string buttonGaps(int between, int lines, int above);
std::string bNextToIcon();
std::string bUnderTextOnly();
std::string controlsUnderMsg();
// The switch alone, or with the text of the validation panel. The text may
// not hold "|", "{" or "}".
std::string noHide();
std::string noHide(std::string_view text, bool removeOthers = false, bool secondInstance = false);
std::string fixedWidth(int twips);
std::string fixedHeight(int twips, bool controlArea);
std::string defaultAndMinWidth(int twips);
// A percentage of the screen width, converted to twips.
std::string defaultAndMinWidthPercent(double percent, int screenWidthTwips);
std::string backColor(long colour);
std::string foreColor(long colour);
std::string anyKeyHides();
std::string keyHides(int keyCode, int shift);
std::string buttonsAtBottom();

}  // namespace mbopt
}  // namespace tav
