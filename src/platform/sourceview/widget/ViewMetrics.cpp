#include "platform/sourceview/widget/ViewMetrics.h"

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
    for (char16_t c = 0x20; c < kGlyphs; ++c) {
        if ((c >= 0x7F && c < 0xA0) || c == 0xAD) continue;
        QList<quint32> glyphs = face.raw.glyphIndexesForString(QString(QChar(c)));
        if (glyphs.size() != 1 || glyphs[0] == 0) continue;
        if (c >= 0x7F && std::abs(Advance(face.font, QChar(c)) - charWidth_) > 0.01) continue;
        face.glyphs[c] = glyphs[0];
    }
}

void ViewMetrics::Build(const SourceFont& font, int zoom)
{
    QFont base = BaseFont(font, zoom);
    QFontMetricsF metrics(base);
    charWidth_ = Advance(base, u'0');
    fixedPitch_ = std::all_of(std::begin("iMW.|"), std::end("iMW.|") - 1,
                              [&](char c) { return std::abs(Advance(base, QLatin1Char(c)) - charWidth_) < 0.01; });
    ascent_ = std::ceil(metrics.ascent());
    lineHeight_ = ascent_ + std::ceil(metrics.descent()) + std::max(1.0, std::ceil(metrics.leading()));
    for (int32_t style = 0; style < 4; ++style) BuildFace(faces_[Index(style)], base, style);
}

} // namespace nib
