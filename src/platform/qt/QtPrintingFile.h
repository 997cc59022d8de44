#pragma once
// Pages in a PDF file, whole or not at all.

#include <QPagedPaintDevice>
#include <QString>

#include <functional>

namespace nib {

struct PdfTarget {
    QString path;
    QString title;
    QPageLayout layout;
    QPageRanges pages; ///< empty: all
};

/// Has `draw` fill the file; what stood there stays when this throws.
void WritePdf(const PdfTarget& target, const std::function<void(QPagedPaintDevice&)>& draw);
/// Throws when a PDF file that others wrote is missing or breaks off.
void CheckPdf(const QString& path);

} // namespace nib
