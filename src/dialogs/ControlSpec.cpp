#include "core/TextTrim.h"
#include "dialogs/ControlSpec.h"

#include <algorithm>
#include <cmath>

#include "core/ListText.h"
#include "dialogs/MessageOptions.h"
#include "dialogs/SpecText.h"

namespace tav {

namespace {


ListActionSpec actionOf(std::optional<int> n, ListAction fallback) {
    ListActionSpec spec;
    spec.action = fallback;
    if (!n) return spec;
    if (*n > 0) {
        spec.action = ListAction::PressButton;
        spec.button = *n;
    } else if (*n == -1) {
        spec.action = ListAction::Nothing;
    } else if (*n == -2) {
        spec.action = ListAction::ShowText;
    } else if (*n == -3) {
        spec.action = ListAction::OpenLink;
    }
    return spec;
}

std::vector<int> numbers(const std::string& text) {
    std::vector<int> out;
    if (trimBlanks(text).empty()) return out;
    for (const auto& item : splitItems(text)) out.push_back(static_cast<int>(std::lround(optionNumber(item))));
    return out;
}

}  // namespace

ControlKind controlKindOf(std::string_view type) {
    if (type.starts_with("_")) type.remove_prefix(1);
    struct Name {
        std::string_view name;
        ControlKind kind;
    };
    static constexpr Name names[] = {
        {"TextBox", ControlKind::TextBox},
        {"Label", ControlKind::Label},
        {"OptionButton", ControlKind::OptionButton},
        {"CheckBox", ControlKind::CheckBox},
        {"ListBox", ControlKind::ListBox},
        {"ComboBox", ControlKind::ComboBox},
        {"Grid", ControlKind::Grid},
        {"CommandButton", ControlKind::CommandButton},
        {"Shape", ControlKind::Shape},
        {"JustAddHeight", ControlKind::JustAddHeight},
        {"AddButtons before RestCtls", ControlKind::AddButtonsBeforeRest},
    };
    for (const auto& n : names)
        if (n.name == type) return n.kind;
    return ControlKind::Unknown;
}

bool isListKind(ControlKind kind) {
    return kind == ControlKind::ListBox || kind == ControlKind::ComboBox || kind == ControlKind::Grid;
}

bool isListType(std::string_view type) { return isListKind(controlKindOf(type)); }

ControlSpec parseControlSpec(std::string_view stored) {
    ControlSpec spec;
    std::vector<std::string> parts = splitStoredSpec(stored);
    std::string_view type = parts.front();
    if (type.starts_with("_")) {
        spec.sharesRow = true;
        type.remove_prefix(1);
    }
    spec.type = std::string(type);
    spec.kind = controlKindOf(type);
    size_t first = 1;
    if (spec.kind == ControlKind::OptionButton || spec.kind == ControlKind::CheckBox) {
        if (parts.size() > 1) spec.caption = parts[1];
        first = 2;
    }
    spec.fields.emplace_back();
    for (size_t i = first; i < parts.size(); ++i) spec.fields.push_back(parts[i]);
    return spec;
}

std::string ControlSpec::field(int n) const {
    if (n < 1 || static_cast<size_t>(n) >= fields.size()) return {};
    return fields[n];
}

std::optional<int> ControlSpec::intField(int n) const {
    std::string f = field(n);
    if (trimBlanks(f).empty()) return std::nullopt;
    return static_cast<int>(std::lround(optionNumber(f)));
}

bool ControlSpec::boolField(int n, bool fallback) const {
    std::string f = field(n);
    if (trimBlanks(f).empty()) return fallback;
    return textIsTrue(f);
}

std::optional<int> ControlSpec::width() const {
    auto w = intField(1);
    if (w && *w > 0) return w;
    return std::nullopt;
}

std::optional<int> ControlSpec::height() const {
    auto h = intField(2);
    if (h && *h > 0) return h;
    return std::nullopt;
}

std::optional<int> ControlSpec::fontSize() const {
    auto s = intField(5);
    if (s && *s > 0) return s;
    return std::nullopt;
}

int ControlSpec::rowsToFill() const {
    auto n = intField(8);
    return n && *n > 0 ? *n : 0;
}

ListActionSpec ControlSpec::doubleClickAction() const { return actionOf(intField(9), ListAction::ShowText); }
ListActionSpec ControlSpec::enterAction() const { return actionOf(intField(19), ListAction::Nothing); }

int ControlSpec::multiSelect() const {
    if (kind != ControlKind::ListBox) return 0;
    int n = intField(10).value_or(0);
    return n >= 0 && n <= 2 ? n : 0;
}

int ControlSpec::comboStyle() const {
    return kind == ControlKind::ComboBox ? intField(10).value_or(0) : 0;
}

int ControlSpec::fixedRows() const {
    return kind == ControlKind::Grid ? std::max(0, intField(10).value_or(0)) : 0;
}

int ControlSpec::fixedColumns() const {
    if (kind != ControlKind::Grid) return 0;
    auto n = intField(11);
    return n ? std::max(0, *n - 1) : 0;
}

std::vector<int> ControlSpec::columnWidths() const {
    return kind == ControlKind::Grid ? numbers(field(12)) : std::vector<int>{};
}

std::vector<int> ControlSpec::columnAlignments() const {
    return kind == ControlKind::Grid ? numbers(field(13)) : std::vector<int>{};
}

std::optional<std::pair<int, int>> ControlSpec::initialColumns() const {
    if (kind != ControlKind::Grid || !boolField(17)) return std::nullopt;
    std::string range = field(18);
    size_t cut = range.find('_');
    if (cut == std::string::npos) return std::nullopt;
    return std::pair<int, int>{static_cast<int>(optionNumber(range.substr(0, cut))),
                               static_cast<int>(optionNumber(range.substr(cut + 1)))};
}

}  // namespace tav
