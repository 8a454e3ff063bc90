#pragma once
// The option string of a message box, parsed once into a form that the
// renderer and the hosts query by name.
//
// The string is a "|" list with "{ }" brackets. Each element is a number
// (the flags of the standard message box), a switch "Name", a single value
// "Name=value", or a value list "{Name=v1|v2|v3}". "No show|" and
// "IconFromForm|" count only at the start of the string.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

enum class MessageIcon { None, Critical, Question, Exclamation, Information };

struct OptionItem {
    std::string name;                 // empty for a numeric item
    std::vector<std::string> values;  // none: a switch; one: Name=value; more: a value list
    bool isNumber = false;
    long number = 0;                  // the flags, for a numeric item
};

struct ButtonGaps {
    int between = 120;  // between buttons on a line
    int lines = 120;    // between button lines
    int above = 240;    // above the first button line
};

struct NoHideSpec {
    std::string text;     // validation text shown on the kept box; empty: just keep it
    bool removeOthers = false;   // remove other kept boxes before showing again
    bool secondInstance = false; // show a second instance while the first is rebuilt
};

struct FixedHeight {
    int height = 0;
    bool controlArea = false;  // true: the height of the control area; false: the whole box
};

struct KeyHide {
    int keyCode = 0;
    int shift = 0;
};

struct BoxPosition {
    int top = 0;
    int left = 0;
};

// A number the way the option values are read: leading blanks, an optional
// sign, digits and a decimal part; anything behind is ignored; none gives 0.
double optionNumber(std::string_view text);

// True when the whole text (blanks aside) is a decimal number.
bool isNumericText(std::string_view text);

class MessageOptions {
public:
    MessageOptions() = default;
    static MessageOptions parse(std::string_view options);
    static MessageOptions parse(long number);  // a plain number: one numeric item

    const std::vector<OptionItem>& items() const { return items_; }

    bool noShow() const { return noShow_; }
    bool iconFromForm() const { return iconFromForm_; }

    // All numeric items or-ed together.
    long numericFlags() const { return flags_; }
    // The picture of the numeric flags, tested from 64 down to 16.
    MessageIcon icon() const;

    // Lookups by exact name; the first item of that name counts.
    bool has(std::string_view name) const;
    const OptionItem* find(std::string_view name) const;
    std::vector<const OptionItem*> findAll(std::string_view name) const;
    std::string value(std::string_view name, std::string_view fallback = {}) const;
    std::optional<double> number(std::string_view name) const;
    std::vector<int> numberList(std::string_view name) const;

    // The options by meaning.
    int defaultButton() const;                 // DfltButton, else 256/512 in the flags, else 1
    std::optional<int> escButton() const;      // Esc
    std::optional<int> focusButton() const;    // FocBut
    int maxButtonsPerLine() const;             // MBButtspec.MaxBpl, default 99
    std::vector<int> boldButtons() const { return numberList("BoldButts"); }
    std::vector<int> italicButtons() const { return numberList("ItiButts"); }
    std::vector<int> underlinedButtons() const { return numberList("UndrButts"); }
    bool textBold() const { return has("TextBold"); }
    std::optional<int> textSize() const;
    std::string textFont() const { return value("TextFont"); }
    ButtonGaps buttonGaps(bool boxHasControls) const;
    bool buttonsNextToIcon() const { return has("BNextToIcon"); }
    bool buttonsUnderTextOnly() const { return has("BUnderTextOnly"); }
    bool controlsUnderMessage() const { return has("Controls under msg"); }
    bool buttonsAtBottom() const { return has("Buttons At Bottom"); }
    bool anyKeyHides() const { return has("Any Key Hides"); }
    std::vector<KeyHide> keyHides() const;
    std::optional<NoHideSpec> noHide() const;
    std::optional<int> fixedWidth() const;
    std::optional<FixedHeight> fixedHeight() const;
    std::optional<int> defaultAndMinWidth() const;
    std::optional<long> backColor() const;
    std::optional<long> foreColor() const;
    std::optional<BoxPosition> topLeft() const;
    std::optional<int> pictureSlot() const;    // SetPic

private:
    std::vector<OptionItem> items_;
    bool noShow_ = false;
    bool iconFromForm_ = false;
    long flags_ = 0;
};

}  // namespace tav
