#include "ui/FontLineMeasure.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "viewer/DisplayText.h"

namespace tav::ui {

FontLineMeasure::FontLineMeasure(const QFont& font, bool markControls, bool wordWrap)
    : font_(font), metrics_(font), markControls_(markControls), wordWrap_(wordWrap) {
    resetWidths();
}

void FontLineMeasure::setFont(const QFont& font) {
    font_ = font;
    metrics_ = QFontMetricsF(font);
    resetWidths();
}

void FontLineMeasure::setMarkControls(bool on) {
    if (on == markControls_) return;
    markControls_ = on;
    resetWidths();
}

void FontLineMeasure::setArea(int width, int height) {
    width_ = std::max(0, width);
    height_ = std::max(0, height);
}

void FontLineMeasure::resetWidths() {
    wideWidths_.clear();
    narrowest_ = 0;
    for (int c = 0; c < 256; ++c) {
        const char byte = static_cast<char>(c);
        const qreal w = metrics_.horizontalAdvance(shown(std::string_view(&byte, 1)));
        singleWidths_[static_cast<size_t>(c)] = w;
        if (c >= 32 && c < 127 && w > 0 && (narrowest_ <= 0 || w < narrowest_)) narrowest_ = w;
    }
    if (narrowest_ <= 0) narrowest_ = 1;
}

qreal FontLineMeasure::lineHeight() const { return std::max<qreal>(1, std::ceil(metrics_.lineSpacing())); }

int FontLineMeasure::visibleLines() const {
    return std::max(1, static_cast<int>(std::floor(static_cast<qreal>(height_) / lineHeight())));
}

QString FontLineMeasure::shown(std::string_view bytes) const {
    return QString::fromStdString(displayText(bytes, markControls_));
}

qreal FontLineMeasure::charWidth(std::string_view text) const {
    const size_t n = displayCharLength(text);
    if (n == 0) return 0;
    if (n == 1) return singleWidths_[static_cast<unsigned char>(text[0])];
    const QString s = shown(text.substr(0, n));
    const auto found = wideWidths_.constFind(s);
    if (found != wideWidths_.constEnd()) return found.value();
    const qreal w = metrics_.horizontalAdvance(s);
    wideWidths_.insert(s, w);
    return w;
}

qreal FontLineMeasure::widthOf(std::string_view bytes) const {
    qreal w = 0;
    size_t pos = 0;
    while (pos < bytes.size()) {
        const std::string_view rest = bytes.substr(pos);
        w += charWidth(rest);
        pos += std::max<size_t>(1, displayCharLength(rest));
    }
    return w;
}

namespace {

// Length of the line break at the start of text: 0 when there is none.
size_t breakAt(std::string_view text, size_t pos) {
    if (pos >= text.size()) return 0;
    if (text[pos] == '\n') return 1;
    if (text[pos] == '\r') return (pos + 1 < text.size() && text[pos + 1] == '\n') ? 2 : 1;
    return 0;
}

}  // namespace

size_t FontLineMeasure::lineLength(std::string_view text) const {
    const auto room = static_cast<qreal>(width_);
    size_t pos = 0;
    qreal used = 0;
    size_t lastBlankEnd = 0;  // position behind the last blank of the line
    while (pos < text.size()) {
        if (const size_t b = breakAt(text, pos)) return pos + b;
        const std::string_view rest = text.substr(pos);
        const qreal w = charWidth(rest);
        if (pos > 0 && used + w > room + 0.01) {
            // The line is full. Blanks at its end hang over the edge, and a
            // break right behind it belongs to it.
            if (wordWrap_ && text[pos] != ' ' && lastBlankEnd > 0) return lastBlankEnd;
            if (wordWrap_ && text[pos] == ' ') {
                while (pos < text.size() && text[pos] == ' ') ++pos;
            }
            return pos + breakAt(text, pos);
        }
        if (text[pos] == ' ') lastBlankEnd = pos + 1;
        used += w;
        pos += std::max<size_t>(1, displayCharLength(rest));
    }
    return text.size();
}

size_t FontLineMeasure::maxLineBytes() const {
    const auto columns = static_cast<size_t>(std::ceil(std::max(1, width_) / narrowest_)) + 1;
    return columns * 4 + 2;
}

}  // namespace tav::ui
