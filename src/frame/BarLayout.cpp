#include "frame/BarLayout.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "core/ListText.h"
#include "settings/IniNumbers.h"

namespace tav {

namespace {

constexpr int kLeft = 37, kUp = 38, kRight = 39, kDown = 40;
constexpr int kTopListProvisionalExtra = 1000;

// The leading number of a list element; 0 for none.
double elementNumber(std::string_view text, int n) {
    const std::optional<double> d = numberAtStart(listElement(text, n));
    return d && std::isfinite(*d) ? *d : 0;
}

int twips(double v) { return static_cast<int>(std::llround(v)); }

bool startsWith(std::string_view s, std::string_view prefix) { return s.substr(0, prefix.size()) == prefix; }

}  // namespace

std::optional<Bar> barOfDragName(std::string_view dragName) {
    for (Bar b : {Bar::TextLists, Bar::DirFiles, Bar::TopListDirList})
        if (dragNameOf(b) == dragName) return b;
    return std::nullopt;
}

std::string_view dragNameOf(Bar bar) {
    switch (bar) {
        case Bar::DirFiles: return "Sep_DirFiles";
        case Bar::TopListDirList: return "Sep_TopListDirList";
        case Bar::TextLists: break;
    }
    return "Sep_DFListsText";
}

std::string_view toggleEntryOf(Bar bar) {
    switch (bar) {
        case Bar::DirFiles: return "% tree";
        case Bar::TopListDirList: return "% toplist";
        case Bar::TextLists: break;
    }
    return "% text";
}

int barLimit(Bar bar, const BarGeometry& g) {
    switch (bar) {
        case Bar::DirFiles: return g.innerWidth - g.dirFilesBarWidth;
        case Bar::TopListDirList:
            // What the left column has under the Text section, less the bars.
            return g.innerHeight - g.textFrameHeight - g.textBarHeight - g.topListBarHeight;
        case Bar::TextLists: break;
    }
    return g.innerHeight - g.textBarHeight;
}

int clampBar(Bar bar, int size, const BarGeometry& g) {
    const int limit = barLimit(bar, g);
    if (size > limit) size = limit;
    if (size < 0) size = 0;
    return size;
}

BarMove MoveBar(Bar bar, int position, const BarGeometry& g) {
    BarMove move;
    if (bar == Bar::TopListDirList) move.provisional = std::max(0, position + kTopListProvisionalExtra);
    move.size = clampBar(bar, position, g);
    return move;
}

int keyStepOf(bool shift, bool ctrl) {
    if (shift && !ctrl) return kKeyStep / 3;
    if (ctrl && !shift) return kKeyStep * 3;
    return kKeyStep;
}

std::optional<int> keyedBarMove(Bar bar, int keyCode, bool shift, bool ctrl, int current, const BarGeometry& g) {
    int direction = 0;
    if (barIsVertical(bar)) {
        if (keyCode == kLeft) direction = -1;
        if (keyCode == kRight) direction = 1;
    } else {
        if (keyCode == kUp) direction = -1;
        if (keyCode == kDown) direction = 1;
    }
    if (direction == 0) return std::nullopt;
    return clampBar(bar, current + direction * keyStepOf(shift, ctrl), g);
}

std::optional<RepositionCommand> parseRepositionCommand(std::string_view name) {
    struct Head {
        std::string_view text;
        Bar bar;
        std::string_view decrease, increase;
    };
    static const Head heads[] = {
        {"Reposition Text bar", Bar::TextLists, " - Move Up", " - Move Down"},
        {"Reposition Tree bar", Bar::DirFiles, " - Move Left", " - Move Right"},
        {"Reposition List bar", Bar::TopListDirList, " - Move Up", " - Move Down"},
    };
    for (const Head& h : heads) {
        if (!startsWith(name, h.text)) continue;
        const std::string_view rest = name.substr(h.text.size());
        if (rest == " - Toggle") return RepositionCommand{h.bar, BarAction::Toggle};
        if (rest == h.decrease) return RepositionCommand{h.bar, BarAction::Decrease};
        if (rest == h.increase) return RepositionCommand{h.bar, BarAction::Increase};
    }
    return std::nullopt;
}

int barTotal(Bar bar, const BarGeometry& g) { return barIsVertical(bar) ? g.innerWidth : g.innerHeight; }

int percentBarMove(Bar bar, int current, int percentChange, int direction, const BarGeometry& g) {
    const double step = static_cast<double>(barTotal(bar, g)) * percentChange / 100.0;
    return clampBar(bar, twips(current + (direction < 0 ? -step : direction > 0 ? step : 0.0)), g);
}

TogglePositions togglePositions(std::string_view entryValue, int total) {
    return {twips(total * elementNumber(entryValue, 1) / 100.0), twips(total * elementNumber(entryValue, 2) / 100.0)};
}

int ToggleBar(int current, std::string_view entryValue, int total) {
    const TogglePositions p = togglePositions(entryValue, total);
    const long long toP1 = std::llabs(static_cast<long long>(current) - p.p1);
    const long long toP2 = std::llabs(static_cast<long long>(current) - p.p2);
    return toP1 > toP2 ? p.p1 : p.p2;
}

std::optional<int> wholePercent(double size, double total) {
    if (total == 0) return std::nullopt;
    const double v = size / total * 100.0;
    if (!std::isfinite(v)) return std::nullopt;
    const int kept = std::fegetround();
    std::fesetround(FE_TONEAREST);
    const double r = std::nearbyint(v);
    std::fesetround(kept);
    if (r < -32768 || r > 32767) return std::nullopt;
    return static_cast<int>(r);
}

std::optional<std::string> SaveTogglePosition(std::string_view entryValue, double size, double total, int which) {
    const std::optional<int> pct = wholePercent(size, total);
    if (!pct || (which != 1 && which != 2)) return std::nullopt;
    std::vector<std::string> items = {listElement(entryValue, 1), listElement(entryValue, 2)};
    items[static_cast<size_t>(which - 1)] = std::to_string(*pct);
    return joinList(items);
}

SavePairState savePairEnabled(std::string_view entryValue, double size, double total) {
    const std::optional<int> pct = wholePercent(size, total);
    if (!pct) return {};
    SavePairState s{true, true};
    if (elementNumber(entryValue, 2) < *pct) s.first = false;
    if (elementNumber(entryValue, 1) > *pct) s.second = false;
    return s;
}

TextFrameResize resizeTextFrame(int innerHeight, std::string_view textOptions, bool minimized, bool closing) {
    TextFrameResize r;
    r.textOptions = std::string(textOptions);
    if (minimized || closing) return r;
    r.acted = true;
    const int room = innerHeight - kTextFrameMargin;
    int wanted = twips(elementNumber(textOptions, 2));
    if (wanted > room) {
        wanted = std::max(0, room);
        std::vector<std::string> items = splitItems(textOptions);
        if (items.size() < 2) items.resize(2);
        items[1] = std::to_string(wanted);
        r.textOptions = joinList(items);
        r.reduced = true;
    }
    r.frameHeight = wanted;
    return r;
}

}  // namespace tav
