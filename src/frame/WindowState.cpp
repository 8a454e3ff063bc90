#include "frame/WindowState.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <optional>

#include "core/AppError.h"
#include "core/ListText.h"
#include "settings/IniNumbers.h"

namespace tav {

namespace {

constexpr int kBadKeyDigit = 9710;
constexpr std::string_view kTopListEntry = "Top List ID showing";

std::string flagText(bool on) { return on ? "-1" : "0"; }

// A key of the exchange and the digit behind a menu key (0 for a value key).
struct KeyRef {
    std::string key;
    int digit = 0;
};

// Value keys are read whole: ".9", "-4", or a key of the table that holds a
// value rather than a menu state ("SO"). Every other key is a menu key and
// takes one digit, 1 to 4.
KeyRef parseKey(std::string_view text) {
    if (text.empty()) raiseError(kBadKeyDigit, "Window key missing");
    if (text.front() == '.' || text.front() == '-') return {std::string(text), 0};
    if (const WindowEntry* e = findWindowEntry(text); e && !e->menuFlag) return {std::string(text), 0};
    if (text.size() != 3 || text[2] < '1' || text[2] > '4')
        raiseError(kBadKeyDigit, "Window menu key without a digit of its record: " + std::string(text));
    return {std::string(text.substr(0, 2)), text[2] - '0'};
}

bool sameName(std::string_view a, std::string_view b) { return !CaseLess{}(a, b) && !CaseLess{}(b, a); }

// The section that one of the window section's naming entries names.
std::optional<WindowPart> namedSection(std::string_view entry) {
    if (sameName(entry, kLastColsEntry)) return WindowPart::Cols;
    if (sameName(entry, kLastSelectionsEntry)) return WindowPart::Selections;
    if (sameName(entry, kLastFormatsEntry)) return WindowPart::Formats;
    return std::nullopt;
}

}  // namespace

bool CaseLess::operator()(std::string_view a, std::string_view b) const {
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        const int ca = std::tolower(static_cast<unsigned char>(a[i]));
        const int cb = std::tolower(static_cast<unsigned char>(b[i]));
        if (ca != cb) return ca < cb;
    }
    return a.size() < b.size();
}

const std::string& WindowSections::of(WindowPart part) const {
    switch (part) {
        case WindowPart::Cols: return cols;
        case WindowPart::Selections: return selections;
        case WindowPart::Formats: return formats;
        case WindowPart::Window: break;
    }
    return window;
}

WindowSections newWindowSections(double secondsSinceMidnight) {
    // The timer as the classic single-precision text: seven significant
    // digits, no trailing zeros, no zero in front of the point.
    char buf[32];
    const auto done = std::to_chars(buf, buf + sizeof buf, static_cast<float>(secondsSinceMidnight),
                                    std::chars_format::general, 7);
    std::string t(buf, done.ptr);
    if (t.rfind("0.", 0) == 0) t.erase(0, 1);
    const std::string tail = " " + t;
    return {"--W" + tail, "--C" + tail, "--S" + tail, "--F" + tail};
}

const WindowEntry* WindowState::entryOfKey(std::string_view keyAndDigit) {
    if (keyAndDigit.empty()) return nullptr;
    const std::string_view key =
        keyAndDigit.front() == '.' || keyAndDigit.front() == '-' ? keyAndDigit : keyAndDigit.substr(0, 2);
    const WindowEntry* e = findWindowEntry(key);
    if (e && e->key != key) return nullptr;
    return e;
}

std::string WindowState::value(std::string_view entry) const {
    if (auto part = namedSection(entry)) return sections.of(*part);
    if (auto it = values_.find(entry); it != values_.end()) return it->second;
    const WindowEntry* e = findWindowEntry(entry);
    if (!e) return {};
    if (auto it = values_.find(e->name); it != values_.end()) return it->second;
    return std::string(e->factory);
}

bool WindowState::flag(std::string_view entry) const { return textIsTrue(value(entry)); }

long long WindowState::number(std::string_view entry, long long fallback) const {
    const std::optional<double> d = numberAtStart(value(entry));
    if (!d || !std::isfinite(*d)) return fallback;
    return std::llround(*d);
}

bool WindowState::has(std::string_view entry) const {
    if (values_.count(entry)) return true;
    const WindowEntry* e = findWindowEntry(entry);
    return e && values_.count(e->name);
}

void WindowState::set(std::string_view entry, std::string value) {
    if (auto part = namedSection(entry)) {
        sections.of(*part) = std::move(value);
        return;
    }
    const WindowEntry* e = findWindowEntry(entry);
    values_[std::string(e ? e->name : entry)] = std::move(value);
}

void WindowState::setIn(WindowPart part, std::string_view entry, std::string value) {
    if (!findWindowEntry(entry)) extraParts_[std::string(entry)] = part;
    set(entry, std::move(value));
}

WindowPart WindowState::partOf(std::string_view entry) const {
    if (const WindowEntry* e = findWindowEntry(entry)) return e->part;
    if (auto it = extraParts_.find(entry); it != extraParts_.end()) return it->second;
    return WindowPart::Window;
}

MnuState WindowState::menu(std::string_view key) const {
    MnuState state;
    if (auto it = menus_.find(key); it != menus_.end()) state = it->second;
    if (const WindowEntry* e = findWindowEntry(key); e && e->key == key) {
        state.checked = flag(e->name);
    } else if (char letter = topListLetter(key)) {
        const std::string shown = value(kTopListEntry);
        state.checked = shown.size() == 1 && shown[0] == letter;
    }
    return state;
}

void WindowState::setMenu(std::string_view key, const MnuState& state) {
    menus_[std::string(key)] = state;
    if (const WindowEntry* e = findWindowEntry(key); e && e->key == key) {
        set(e->name, flagText(state.checked));
    } else if (char letter = topListLetter(key); letter && state.checked) {
        set(kTopListEntry, std::string(1, letter));
    }
}

std::string WindowState::get(std::string_view keyAndDigit) const {
    const KeyRef ref = parseKey(keyAndDigit);
    if (ref.digit == 0) {
        if (const WindowEntry* e = findWindowEntry(ref.key); e && e->key == ref.key) return value(e->name);
        auto it = keyValues_.find(ref.key);
        return it == keyValues_.end() ? std::string() : it->second;
    }
    const MnuState state = menu(ref.key);
    switch (ref.digit) {
        case 1: return flagText(state.checked);
        case 2: return flagText(state.enabled);
        case 3: return flagText(state.allowed);
        default: return state.text;
    }
}

void WindowState::put(std::string_view keyAndDigit, std::string value) {
    const KeyRef ref = parseKey(keyAndDigit);
    if (ref.digit == 0) {
        if (const WindowEntry* e = findWindowEntry(ref.key); e && e->key == ref.key)
            set(e->name, std::move(value));
        else
            keyValues_[ref.key] = std::move(value);
        return;
    }
    MnuState state = menu(ref.key);
    switch (ref.digit) {
        case 1: state.checked = textIsTrue(value); break;
        case 2: state.enabled = textIsTrue(value); break;
        case 3: state.allowed = textIsTrue(value); break;
        default: state.text = std::move(value); break;
    }
    setMenu(ref.key, state);
}

}  // namespace tav
