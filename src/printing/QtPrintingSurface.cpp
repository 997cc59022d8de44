#include "printing/QtPrintingSurface.h"

#include "base/Error.h"
#include "base/Text.h"
#include "platform/qt/QtText.h"
#include "text/TextSearch.h"
#include "text/widget/LineLayout.h"
#include "text/widget/ScreenColors.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <utility>

namespace nib {

std::vector<int32_t> ChosenPages(const Paper& paper, int32_t count)
{
    std::vector<PrintRange> ranges;
    const QPageRanges chosen = paper.device.pageRanges();
    for (const auto& range : chosen.toRangeList()) ranges.push_back({range.from, range.to});
    std::vector<int32_t> pages = PagesToPrint(ranges, count, paper.lastFirst);
    if (pages.empty()) {
        const QString refusal =
            QCoreApplication::translate("Printing", "The text ends on page %1; the pages asked for lie behind it.");
        throw Error(error_number::kInvalidCall, ToText(refusal.arg(count)));
    }
    return pages;
}

void RefuseDevice()
{
    throw Error(error_number::kDeviceUnavailable,
                ToText(QCoreApplication::translate("Printing", "The printer does not take the pages.")));
}

namespace {

constexpr int kSample = 64;
/// To white paper; the grey of the marks, 150, has more.
constexpr double kLeastContrast = 2.8;
constexpr int kGreyish = 40;
/// Letters of the marks U+F8FB to U+F8FF.
constexpr char kLetters[] = {'t', 's', 'v', '^', 'i'};

QFont BaseFont(const SourceFont& source, QPaintDevice& device)
{
    QFont font =
        source.name.empty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QFont(ToQString(source.name));
    if (!source.name.empty()) font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(std::clamp(source.size, 4.0, 144.0));
    font.setBold(source.bold);
    font.setItalic(source.italic);
    font.setKerning(false);
    return QFont(font, &device);
}

qreal Advance(const QFontMetricsF& metrics, QChar c)
{
    return metrics.horizontalAdvance(QString(kSample, c)) / kSample;
}

/// A colour for a dark screen, as it can be read on paper: light greys as black, others as dark as need be.
QColor ReadableOnPaper(const QColor& ink)
{
    if (Contrast(ink, Qt::white) >= kLeastContrast) return ink;
    return ink.hsvSaturation() < kGreyish ? QColor(Qt::black) : Legible(ink, Qt::white);
}

} // namespace

/// Colours of the system are meant for a screen.
QColor QtPrintingSurface::InkOf(int32_t color) const
{
    auto bits = static_cast<uint32_t>(color);
    if (bits & 0x80000000U) return Qt::black;
    const QColor ink = ReadableOnPaper(
        QColor(static_cast<int>(bits & 0xFF), static_cast<int>(bits >> 8 & 0xFF), static_cast<int>(bits >> 16 & 0xFF)));
    const int grey = qGray(ink.rgb());
    return paper_.grey ? QColor(grey, grey, grey) : ink;
}

QtPrintingSurface::Face QtPrintingSurface::MakeFace(const QFont& base, int32_t style) const
{
    QFont font = base;
    if (style & token_style::kBold) font.setBold(true);
    if (style & token_style::kItalic) font.setItalic(true);
    QFontMetricsF metrics(font, &paper_.device);
    return {font, metrics, Advance(metrics, u'0')};
}

QtPrintingSurface::QtPrintingSurface(QPainter& painter, const Paper& paper, const SourceFont& font)
    : painter_(painter), paper_(paper),
      small_(BaseFont(font, paper.device)), faces_{MakeFace(small_, 0), MakeFace(small_, 1), MakeFace(small_, 2),
                                                   MakeFace(small_, 3)}
{
    const Face& plain = faces_[0];
    auto same = [&](char c) { return std::abs(Advance(plain.metrics, QLatin1Char(c)) - plain.advance) < 0.5; };
    fixedPitch_ = std::all_of(std::begin("iMW.|"), std::end("iMW.|") - 1, same);
    small_.setBold(false);
    small_.setItalic(false);
    small_.setPointSizeF(small_.pointSizeF() * 0.7);
    ascent_ = plain.metrics.ascent();
    QSize size = paper.device.pageLayout().paintRectPixels(paper.device.logicalDpiX()).size();
    shape_.width = size.width();
    shape_.height = size.height();
    shape_.charWidth = std::max(static_cast<int32_t>(std::lround(plain.advance)), 1);
    shape_.lineHeight = std::max(static_cast<int32_t>(std::ceil(plain.metrics.height() * 1.02)), 1);
}

bool QtPrintingSurface::OnGrid(TextView text) const
{
    return fixedPitch_ && std::all_of(text.begin(), text.end(), [](char16_t c) {
               return (c >= 0x20 && c < 0x7F) || (c > 0xA0 && c < 0x180) || IsSign(c);
           });
}

qreal QtPrintingSurface::Width(const Face& face, TextView text) const
{
    if (OnGrid(text)) return static_cast<qreal>(text.size()) * face.advance;
    qreal width = 0;
    for (size_t at = 0; at < text.size();) {
        auto end = static_cast<size_t>(std::find_if(text.begin() + at, text.end(), IsSign) - text.begin());
        if (end > at) width += face.metrics.horizontalAdvance(ToQString(text.substr(at, end - at)));
        for (; end < text.size() && IsSign(text[end]); ++end) width += face.advance;
        at = end;
    }
    return width;
}

int32_t QtPrintingSurface::TextWidth(TextView text)
{
    return static_cast<int32_t>(std::ceil(Width(faces_[0], text)));
}

int32_t QtPrintingSurface::Fit(TextView text, int32_t width)
{
    const qreal advance = faces_[0].advance;
    auto cells = static_cast<size_t>(std::max(std::floor(width / advance), 1.0));
    if (OnGrid(text.substr(0, cells + 1))) return static_cast<int32_t>(std::min(cells, text.size()));
    // No script packs more units into a cell than this.
    TextView part = text.substr(0, cells * 4);
    auto within = [&](TextView piece) {
        // Keywords may be bold.
        return std::max(Width(faces_[0], piece), Width(faces_[token_style::kBold], piece)) <= width;
    };
    if (within(part)) return static_cast<int32_t>(part.size());
    int32_t fits = 0;
    auto beyond = static_cast<int32_t>(part.size());
    while (fits + 1 < beyond) {
        int32_t middle = (fits + beyond) / 2;
        (within(part.substr(0, static_cast<size_t>(middle))) ? fits : beyond) = middle;
    }
    return GraphemeStart(text, fits);
}

void QtPrintingSurface::DrawText(int32_t x, int32_t y, TextView text)
{
    painter_.setPen(Qt::black);
    Draw(faces_[0], x, y, text);
}

double QtPrintingSurface::DrawRun(double x, int32_t y, TextView text, const TokenStyle& style)
{
    painter_.setPen(InkOf(style.color));
    return Draw(faces_[static_cast<size_t>(style.style) & 3], x, y, text);
}

qreal QtPrintingSurface::Draw(const Face& face, qreal x, qreal y, TextView text)
{
    const qreal baseline = y + ascent_;
    bool grid = OnGrid(text);
    for (size_t at = 0; at < text.size();) {
        if (IsSign(text[at])) {
            DrawSign(x, baseline, text[at]);
            x += face.advance;
            ++at;
            continue;
        }
        auto end = static_cast<size_t>(std::find_if(text.begin() + at, text.end(), IsSign) - text.begin());
        TextView piece = text.substr(at, end - at);
        // Ink begins behind the blanks; an indent costs nothing in the file.
        size_t ink = std::min(piece.find_first_not_of(u' '), piece.size());
        x += static_cast<qreal>(ink) * face.metrics.horizontalAdvance(u' ');
        piece.remove_prefix(ink);
        if (!piece.empty()) {
            QString shown = ToQString(piece);
            if (painter_.font() != face.font) painter_.setFont(face.font);
            painter_.drawText(QPointF(x, baseline), shown);
            x += grid ? static_cast<qreal>(piece.size()) * face.advance : face.metrics.horizontalAdvance(shown);
        }
        at = end;
    }
    return x;
}

void QtPrintingSurface::DrawSign(qreal x, qreal baseline, char16_t c)
{
    painter_.save();
    painter_.setBrush(Qt::NoBrush);
    const qreal cell = faces_[0].advance;
    const qreal hair = cell / 14;
    const qreal tall = ascent_ * 0.8;
    QRectF box(x + hair, baseline - tall, cell - 2 * hair, tall * 1.15);
    painter_.setPen(QPen(Qt::darkGray, hair));
    painter_.drawRoundedRect(box, cell / 5, cell / 5);
    if (IsMark(c)) {
        painter_.setFont(small_);
        painter_.setPen(Qt::black);
        QString letter{QLatin1Char(kLetters[c - kTextMark])};
        QRectF ink = QFontMetricsF(small_, &paper_.device).tightBoundingRect(letter);
        painter_.drawText(box.center() - ink.center(), letter);
    } else {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(Qt::black);
        painter_.drawEllipse(box.center(), cell / 8, cell / 8);
    }
    painter_.restore();
}

void QtPrintingSurface::NewPage()
{
    if (!paper_.device.newPage()) RefuseDevice();
}

void DrawTextPages(QTextDocument& text, const Paper& paper)
{
    QPagedPaintDevice& device = paper.device;
    const QSizeF sheet = device.pageLayout().paintRectPixels(device.logicalDpiX()).size();
    const QFont font(text.defaultFont(), &device);
    const QFontMetricsF metrics(font, &device);
    const QSizeF body(sheet.width(), sheet.height() - 2 * metrics.lineSpacing());
    text.documentLayout()->setPaintDevice(&device);
    text.setDocumentMargin(0);
    text.setPageSize(body);
    const std::vector<int32_t> pages = ChosenPages(paper, text.pageCount());

    QPainter painter;
    if (!painter.begin(&device)) RefuseDevice();
    bool first = true;
    for (const int32_t page : pages) {
        if (!std::exchange(first, false) && !device.newPage()) RefuseDevice();
        const QRectF part(QPointF(0, (page - 1) * body.height()), body);
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette.setColor(QPalette::Text, Qt::black);
        context.clip = part;
        painter.save();
        painter.translate(-part.topLeft());
        painter.setClipRect(part);
        text.documentLayout()->draw(&painter, context);
        painter.restore();
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(QRectF(QPointF(0, 0), sheet), Qt::AlignRight | Qt::AlignBottom, QString::number(page));
    }
    if (!painter.end()) RefuseDevice();
}

namespace {

constexpr int kResolution = 1200;

/// What is no plain file, a pipe or a device, cannot be replaced by one.
void Feed(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush()) return;
    const QString refusal = QCoreApplication::translate("Printing", "%1 cannot be written: %2");
    throw Error(error_number::kStorage, ToText(refusal.arg(path, file.errorString())));
}

} // namespace

void WritePdf(const PdfTarget& target, const FileWriter& save, const std::function<void(QPagedPaintDevice&)>& draw)
{
    // Kept in memory, so that the disk sees a whole file or none.
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&bytes);
        writer.setResolution(kResolution);
        writer.setPageLayout(target.layout);
        writer.setPageRanges(target.pages);
        writer.setTitle(target.title);
        writer.setCreator(QStringLiteral("Nib"));
        draw(writer);
    }
    const QByteArray& written = bytes.data();
    const QFileInfo info(target.path);
    if (info.exists() && !info.isFile())
        Feed(target.path, written);
    else
        save(QFile::encodeName(target.path).toStdString(), {written.constData(), static_cast<size_t>(written.size())});
}

} // namespace nib
