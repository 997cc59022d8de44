#pragma once
// A painter on paper, in the face of a view.

#include "printing/PageLayout.h"
#include "printing/QtPaper.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <array>

namespace nib {

class QtPrintingSurface final : public PageSurface {
public:
    /// The painter is at work on the paper when something is drawn, not before; both outlive the surface.
    QtPrintingSurface(QPainter& painter, const Paper& paper, const SourceFont& font);

    const PageShape& Shape() const { return shape_; }

    // PageSurface
    int32_t TextWidth(TextView text) override;
    void DrawText(int32_t x, int32_t y, TextView text) override;
    int32_t Fit(TextView text, int32_t width) override;
    double DrawRun(double x, int32_t y, TextView text, const TokenStyle& style) override;
    void NewPage() override;

private:
    struct Face {
        QFont font;
        QFontMetricsF metrics;
        qreal advance;
    };
    Face MakeFace(const QFont& base, int32_t style) const;
    /// Every unit takes one cell of a fixed grid.
    bool OnGrid(TextView text) const;
    qreal Width(const Face& face, TextView text) const;
    QColor InkOf(int32_t color) const;
    qreal Draw(const Face& face, qreal x, qreal y, TextView text);
    void DrawSign(qreal x, qreal baseline, char16_t c);

    QPainter& painter_;
    Paper paper_;
    QFont small_; ///< of the letters in signs
    std::array<Face, 4> faces_;
    bool fixedPitch_;
    qreal ascent_;
    PageShape shape_;
};

} // namespace nib
