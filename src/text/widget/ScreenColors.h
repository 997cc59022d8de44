#pragma once
// Colours of a view: the palette's, and those of the token styles made readable on its background.

#include "text/SourceView.h"

#include <QColor>
#include <QPalette>

#include <array>
#include <cstdint>
#include <optional>

namespace nib {

/// What a numbered system colour is on this desktop: the palette's where it has one for the purpose, a fixed one where
/// it has none. Invalid beyond the last number.
QColor DesktopColor(const QPalette& palette, int32_t index);

struct ScreenStyle {
    QColor color;
    int32_t style = 0;
};

class ScreenColors {
public:
    /// Anew before each paint: the style tables do not tell of changes.
    void Build(const QPalette& palette, const SourceView& model);

    QColor base;
    QColor text;
    QColor highlight;
    QColor highlightedText;
    QColor faint;    ///< line numbers, fold lines
    QColor sign;     ///< marks and control characters
    QColor hidden;   ///< characters that would hide or reorder others
    QColor strong;   ///< the caret line's number
    QColor line;     ///< separators
    QColor bookmark; ///< behind a number; its text is `onBookmark`
    QColor onBookmark;
    QColor wrong; ///< behind the number of a line that a compiler refused; the number is `onWrong`
    QColor onWrong;
    QColor currentLine; ///< behind the caret's
    QColor match;       ///< behind words and brackets that belong together
    QColor matchFrame;
    QColor occurrence; ///< behind the other places of a name
    QColor found;      ///< behind what is searched for
    QColor foundMark;  ///< on the scroll bar
    QColor guide;      ///< of an indent
    QColor blank;      ///< its dot
    QColor unsaved;    ///< beside lines that were edited
    QColor saved;

    ScreenStyle Style(int32_t tokenType) const;

private:
    ScreenStyle Find(int32_t tokenType) const;
    QColor FromNumber(int32_t color) const;
    QColor Readable(QColor color) const;
    QColor Drawn(const TokenStyle& style) const;
    QColor Visible(const QColor& color) const;

    const SourceView* model_ = nullptr;
    QPalette palette_;
    mutable std::array<std::optional<ScreenStyle>, 16> known_; ///< of the token types that source texts are full of
};

/// Contrast of two colours, 1 to 21.
double Contrast(const QColor& a, const QColor& b);
/// The colour itself where it can be read well on that ground; else moved towards black or white until it can.
QColor Legible(const QColor& color, const QColor& ground, double enough = 4.5);

} // namespace nib
