#pragma once
// Pages on paper: a painter in the face of a view, a formatted text, and the PDF file that takes them.

#include "printing/PageLayout.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QTextDocument;

namespace nib {

/// Where pages go, and what was chosen for them beside the device's own layout and page ranges.
struct Paper {
    QPagedPaintDevice& device;
    bool grey = false;
    bool lastFirst = false;
};

/// The pages of a text of `count` pages that were asked for, in the order of their printing. Throws when the text ends
/// before all of them.
std::vector<int32_t> ChosenPages(const Paper& paper, int32_t count);
/// Throws what a user is told of a device that does not do as it should.
[[noreturn]] void RefuseDevice();

/// A painter on paper, in the face of a view.
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

/// A formatted text between the margins of the sheet, with the number of the page below it. The paper's page ranges
/// count. Lays the text out anew.
void DrawTextPages(QTextDocument& text, const Paper& paper);

/// Replaces a file as a whole or throws and leaves the old one whole.
using FileWriter = std::function<void(const std::string& path, std::string_view bytes)>;

struct PdfTarget {
    QString path;
    QString title;
    QPageLayout layout;
    QPageRanges pages; ///< empty: all
};

/// Has `draw` make the pages and saves them; what stood there stays when this throws.
void WritePdf(const PdfTarget& target, const FileWriter& save, const std::function<void(QPagedPaintDevice&)>& draw);

} // namespace nib
