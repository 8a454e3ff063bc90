#include "dialogs/MessageOptions.h"

#include <cmath>
#include <cstdlib>

#include "core/ListText.h"
#include "settings/IniNumbers.h"

namespace tav {

namespace {

std::string_view trimBlanks(std::string_view s) {
    size_t b = 0, e = s.size();
    while (b < e && (s[b] == ' ' || s[b] == '\t')) ++b;
    while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t')) --e;
    return s.substr(b, e - b);
}

// Length of the number at the start of s (sign, digits, one decimal point).
size_t numberLength(std::string_view s) {
    size_t i = 0;
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) ++i;
    size_t digits = 0;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i, ++digits;
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i, ++digits;
    }
    return digits ? i : 0;
}

std::optional<int> asInt(std::optional<double> d) {
    if (!d) return std::nullopt;
    return static_cast<int>(std::lround(*d));
}

int intAt(const std::vector<std::string>& v, size_t i, int fallback) {
    if (i >= v.size() || trimBlanks(v[i]).empty()) return fallback;
    return static_cast<int>(std::lround(optionNumber(v[i])));
}

}  // namespace

double optionNumber(std::string_view text) { return numberAtStart(text).value_or(0); }

bool isNumericText(std::string_view text) {
    std::string_view t = trimBlanks(text);
    return !t.empty() && numberLength(t) == t.size();
}

MessageOptions MessageOptions::parse(std::string_view options) {
    MessageOptions out;
    // The two prefixes, in either order.
    for (bool again = true; again;) {
        again = false;
        if (options.starts_with("No show|")) {
            out.noShow_ = true;
            options.remove_prefix(8);
            again = true;
        }
        if (options.starts_with("IconFromForm|")) {
            out.iconFromForm_ = true;
            options.remove_prefix(13);
            again = true;
        }
    }
    if (trimBlanks(options).empty()) return out;
    for (const std::string& raw : splitItems(options)) {
        std::string_view element = trimBlanks(raw);
        if (element.empty()) continue;
        OptionItem item;
        if (isNumericText(element)) {
            item.isNumber = true;
            item.number = static_cast<long>(optionNumber(element));
            out.flags_ |= item.number;
            out.items_.push_back(std::move(item));
            continue;
        }
        size_t eq = element.find('=');
        if (eq == std::string_view::npos) {
            item.name = std::string(element);
        } else {
            item.name = std::string(trimBlanks(element.substr(0, eq)));
            std::string_view value = element.substr(eq + 1);
            if (value.find('|') != std::string_view::npos)
                item.values = splitItems(value);
            else
                item.values.emplace_back(value);
        }
        out.items_.push_back(std::move(item));
    }
    return out;
}

MessageOptions MessageOptions::parse(long number) { return parse(std::to_string(number) + " "); }

MessageIcon MessageOptions::icon() const {
    if (flags_ & 64) return MessageIcon::Information;
    if ((flags_ & 48) == 48) return MessageIcon::Exclamation;
    if (flags_ & 32) return MessageIcon::Question;
    if (flags_ & 16) return MessageIcon::Critical;
    return MessageIcon::None;
}

const OptionItem* MessageOptions::find(std::string_view name) const {
    for (const auto& item : items_)
        if (!item.isNumber && item.name == name) return &item;
    return nullptr;
}

bool MessageOptions::has(std::string_view name) const { return find(name) != nullptr; }

std::vector<const OptionItem*> MessageOptions::findAll(std::string_view name) const {
    std::vector<const OptionItem*> all;
    for (const auto& item : items_)
        if (!item.isNumber && item.name == name) all.push_back(&item);
    return all;
}

std::string MessageOptions::value(std::string_view name, std::string_view fallback) const {
    const OptionItem* item = find(name);
    if (!item || item->values.empty()) return std::string(fallback);
    return item->values.front();
}

std::optional<double> MessageOptions::number(std::string_view name) const {
    const OptionItem* item = find(name);
    if (!item || item->values.empty() || trimBlanks(item->values.front()).empty()) return std::nullopt;
    return optionNumber(item->values.front());
}

std::vector<int> MessageOptions::numberList(std::string_view name) const {
    std::vector<int> out;
    const OptionItem* item = find(name);
    if (!item) return out;
    for (const auto& v : item->values)
        if (!trimBlanks(v).empty()) out.push_back(static_cast<int>(std::lround(optionNumber(v))));
    return out;
}

int MessageOptions::defaultButton() const {
    if (auto n = asInt(number("DfltButton")); n && *n > 0) return *n;
    if (flags_ & 512) return 3;
    if (flags_ & 256) return 2;
    return 1;
}

std::optional<int> MessageOptions::escButton() const { return asInt(number("Esc")); }
std::optional<int> MessageOptions::focusButton() const { return asInt(number("FocBut")); }

int MessageOptions::maxButtonsPerLine() const {
    auto n = asInt(number("MBButtspec.MaxBpl"));
    return n && *n > 0 ? *n : 99;
}

std::optional<int> MessageOptions::textSize() const { return asInt(number("TextSize")); }

ButtonGaps MessageOptions::buttonGaps(bool boxHasControls) const {
    ButtonGaps gaps;
    gaps.above = boxHasControls ? 120 : 240;
    if (const OptionItem* item = find("Buttons gap/gap betw lines")) {
        gaps.between = intAt(item->values, 0, gaps.between);
        gaps.lines = intAt(item->values, 1, gaps.lines);
        gaps.above = intAt(item->values, 2, gaps.above);
    }
    return gaps;
}

std::vector<KeyHide> MessageOptions::keyHides() const {
    std::vector<KeyHide> out;
    for (const OptionItem* item : findAll("KeyHides"))
        out.push_back({intAt(item->values, 0, 0), intAt(item->values, 1, 0)});
    return out;
}

std::optional<NoHideSpec> MessageOptions::noHide() const {
    const OptionItem* item = find("NoHide");
    if (!item) return std::nullopt;
    NoHideSpec spec;
    if (!item->values.empty()) spec.text = item->values[0];
    if (item->values.size() > 1) spec.removeOthers = textIsTrue(item->values[1]);
    if (item->values.size() > 2) spec.secondInstance = textIsTrue(item->values[2]);
    return spec;
}

std::optional<int> MessageOptions::fixedWidth() const { return asInt(number("Fixed Width")); }

std::optional<FixedHeight> MessageOptions::fixedHeight() const {
    const OptionItem* item = find("Fixed Height");
    if (!item || item->values.empty()) return std::nullopt;
    FixedHeight h;
    h.height = intAt(item->values, 0, 0);
    h.controlArea = item->values.size() > 1 && textIsTrue(item->values[1]);
    return h;
}

std::optional<int> MessageOptions::defaultAndMinWidth() const {
    return asInt(number("Default and Min Width"));
}

std::optional<long> MessageOptions::backColor() const {
    auto n = number("BackColor");
    if (!n) return std::nullopt;
    return static_cast<long>(*n);
}

std::optional<long> MessageOptions::foreColor() const {
    auto n = number("ForeColor");
    if (!n) return std::nullopt;
    return static_cast<long>(*n);
}

std::optional<BoxPosition> MessageOptions::topLeft() const {
    const OptionItem* item = find("Top, left of form");
    if (!item || item->values.empty()) return std::nullopt;
    return BoxPosition{intAt(item->values, 0, 0), intAt(item->values, 1, 0)};
}

std::optional<int> MessageOptions::pictureSlot() const { return asInt(number("SetPic")); }

}  // namespace tav
