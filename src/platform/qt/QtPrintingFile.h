#pragma once
// Pages in a PDF file, whole or not at all.

#include <QPagedPaintDevice>
#include <QString>

#include <functional>

namespace nib {

class FileSaver;

struct PdfTarget {
    QString path;
    QString title;
    QPageLayout layout;
    QPageRanges pages; ///< empty: all
};

/// Has `draw` make the pages and saves them; what stood there stays when this throws.
void WritePdf(const PdfTarget& target, const FileSaver& saver, const std::function<void(QPagedPaintDevice&)>& draw);

} // namespace nib
