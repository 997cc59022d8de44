#include "printing/QtPrintingFile.h"

#include "base/Error.h"
#include "platform/qt/QtText.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPdfWriter>

namespace nib {

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
