#pragma once
// Pages in a PDF file, whole or not at all.

#include <QPagedPaintDevice>
#include <QString>

#include <functional>
#include <string>
#include <string_view>

namespace nib {

/// Writes a file whole or not at all, or throws; the path is in the encoding of the system.
using SaveFile = std::function<void(const std::string& path, std::string_view bytes)>;

struct PdfTarget {
    QString path;
    QString title;
    QPageLayout layout;
    QPageRanges pages; ///< empty: all
};

/// Has `draw` make the pages and saves them; what stood there stays when this throws.
void WritePdf(const PdfTarget& target, const SaveFile& save, const std::function<void(QPagedPaintDevice&)>& draw);

} // namespace nib
