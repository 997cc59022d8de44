#include "text/widget/ViewMetrics.h"

#include "text/widget/CharacterKind.h"

#include <QFontDatabase>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace nib {

namespace {

constexpr int kSample = 64;

qreal Advance(const QFont& font, QChar c)
{
    return QFontMetricsF(font).horizontalAdvance(QString(kSample, c)) / kSample;
}

QFont BaseFont(const SourceFont& source, int zoom)
{
    QFont font = source.name.empty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                     : QFont(QString::fromStdU16String(source.name));
    if (!source.name.empty()) font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(std::clamp(source.size + zoom, 4.0, 144.0));
    font.setBold(source.bold);
    font.setItalic(source.italic);
    font.setKerning(false);
    return font;
}

} // namespace

void ViewMetrics::BuildFace(Face& face, const QFont& base, int32_t style)
{
    face.font = base;
    if (style & token_style::kBold) face.font.setBold(true);
    if (style & token_style::kItalic) face.font.setItalic(true);
    // A bold face of another width would leave the grid.
    qreal advance = Advance(face.font, u'0');
    if (fixedPitch_ && std::abs(advance - charWidth_) > 0.01) {
        face.font.setLetterSpacing(QFont::AbsoluteSpacing, charWidth_ - advance);
    }
    face.raw = QRawFont::fromFont(face.font);
    face.glyphs.fill(0);
    if (!fixedPitch_ || !face.raw.isValid()) return;
    QString characters;
    for (char16_t c = 0; c < kGlyphs; ++c) characters.append(c < 0x20 ? u' ' : c);
    QList<quint32> glyphs = face.raw.glyphIndexesForString(characters);
    if (glyphs.size() != static_cast<qsizetype>(kGlyphs)) return;
    QList<QPointF> advances = face.raw.advancesForGlyphIndexes(glyphs);
    for (char16_t c = 0x20; c < kGlyphs; ++c) {
        bool sameWidth = std::abs(advances[c].x() - advances[u'0'].x()) < 0.01;
        if (sameWidth && !IsShownControl(c)) face.glyphs[c] = glyphs[c];
    }
}

void ViewMetrics::Build(const SourceFont& font, int zoom)
{
    QFont base = BaseFont(font, zoom);
    if (faces_[0].raw.isValid() && base == faces_[0].font) return;
    QFontMetricsF metrics(base);
    charWidth_ = Advance(base, u'0');
    fixedPitch_ = std::all_of(std::begin("iMW.|"), std::end("iMW.|") - 1,
                              [&](char c) { return std::abs(Advance(base, QLatin1Char(c)) - charWidth_) < 0.01; });
    ascent_ = std::ceil(metrics.ascent());
    lineHeight_ = ascent_ + std::ceil(metrics.descent()) + std::max(1.0, std::ceil(metrics.leading()));
    // The plain face is left as asked for, so that the same font is known again.
    for (int32_t style = 0; style < 4; ++style) BuildFace(faces_[Index(style)], base, style);
}

} // namespace nib
