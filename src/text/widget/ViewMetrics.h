#pragma once
// The measures of a view's font: cell size, baseline, and glyph numbers for text that needs no shaping.

#include "text/SourceContract.h"

#include <QFont>
#include <QRawFont>

#include <array>

namespace nib {

class ViewMetrics {
public:
    /// Cheap when nothing changed.
    void Build(const SourceFont& font, int zoom);

    qreal CharWidth() const { return charWidth_; }
    /// Whole, so that rows meet without seams at scale 1.
    qreal LineHeight() const { return lineHeight_; }
    qreal Ascent() const { return ascent_; }
    /// All printable ASCII characters have one width.
    bool FixedPitch() const { return fixedPitch_; }

    /// `style` holds bits of token_style.
    const QFont& StyledFont(int32_t style) const { return faces_[Index(style)].font; }
    const QRawFont& StyledRawFont(int32_t style) const { return faces_[Index(style)].raw; }
    /// 0 when the character must be shaped or is drawn as a sign.
    quint32 Glyph(int32_t style, char16_t c) const { return c < kGlyphs ? faces_[Index(style)].glyphs[c] : 0; }

private:
    static constexpr size_t kGlyphs = 0x180;
    struct Face {
        QFont font;
        QRawFont raw;
        std::array<quint32, kGlyphs> glyphs{};
    };
    static size_t Index(int32_t style) { return static_cast<size_t>(style) & 3; }
    void BuildFace(Face& face, const QFont& base, int32_t style);

    std::array<Face, 4> faces_;
    qreal charWidth_ = 8;
    qreal lineHeight_ = 16;
    qreal ascent_ = 12;
    bool fixedPitch_ = true;
};

} // namespace nib
