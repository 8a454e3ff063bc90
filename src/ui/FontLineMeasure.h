#pragma once
// Display lines as a widget paints them: a font, an area in pixels, and the
// text of each character as displayText() gives it. Lines break at CR LF,
// CR or LF, and wrap where the next character would pass the area's right
// edge: at the last blank of the line when word wrap is on and the line
// holds one, else right before that character. Every line holds at least
// one character, however narrow the area.
#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QString>
#include <array>
#include <string_view>

#include "viewer/LineMeasure.h"

namespace tav::ui {

class FontLineMeasure : public LineMeasure {
public:
    explicit FontLineMeasure(const QFont& font, bool markControls = true, bool wordWrap = true);

    void setFont(const QFont& font);
    // The text area, in pixels.
    void setArea(int width, int height);
    void setWordWrap(bool on) { wordWrap_ = on; }
    void setMarkControls(bool on);

    int visibleLines() const override;
    size_t lineLength(std::string_view text) const override;
    size_t maxLineBytes() const override;

    const QFont& font() const { return font_; }
    bool markControls() const { return markControls_; }
    bool wordWrap() const { return wordWrap_; }
    int areaWidth() const { return width_; }
    int areaHeight() const { return height_; }
    // Height of a display line, and the baseline within it.
    qreal lineHeight() const;
    qreal ascent() const { return metrics_.ascent(); }
    // Width of the character at the start of `text` (displayCharLength bytes).
    qreal charWidth(std::string_view text) const;
    // The characters painted for bytes, as a QString.
    QString shown(std::string_view bytes) const;
    // Width of the painted text of bytes, character by character.
    qreal widthOf(std::string_view bytes) const;

private:
    void resetWidths();

    QFont font_;
    QFontMetricsF metrics_;
    bool markControls_;
    bool wordWrap_;
    int width_ = 0;
    int height_ = 0;
    qreal narrowest_ = 1;
    std::array<qreal, 256> singleWidths_{};  // width of each one-byte character
    mutable QHash<QString, qreal> wideWidths_;  // widths of multi-byte characters met so far
};

}  // namespace tav::ui
