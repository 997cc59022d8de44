#pragma once
// Pages in a PDF file, whole or not at all.

#include <QPagedPaintDevice>
#include <QString>

#include <functional>
#include <string>
#include <string_view>

namespace nib {

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
