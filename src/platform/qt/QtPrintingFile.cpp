#include "platform/qt/QtPrintingFile.h"

#include "diagnostics/Guarded.h"
#include "platform/qt/QtText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>
#include <memory>
#include <optional>

namespace nib {

namespace {

constexpr int kResolution = 1200;

[[noreturn]] void Refuse(const QString& path, const QString& reason)
{
    throw Error(error_number::kStorage,
                ToText(QStringLiteral("Cannot write \"%1\": %2.").arg(QDir::toNativeSeparators(path), reason)));
}

} // namespace

void WritePdf(const PdfTarget& target, const std::function<void(QPagedPaintDevice&)>& draw)
{
    // What is no plain file, a pipe or a device, must not be replaced by one.
    QFileInfo info(target.path);
    bool plain = !info.exists() || info.isFile();
    std::unique_ptr<QFileDevice> file;
    if (plain)
        file = std::make_unique<QSaveFile>(target.path);
    else
        file = std::make_unique<QFile>(target.path);
    if (!file->open(QIODevice::WriteOnly)) Refuse(target.path, file->errorString());
    std::optional<Error> failure;
    {
        QPdfWriter writer(file.get());
        writer.setResolution(kResolution);
        writer.setPageLayout(target.layout);
        writer.setPageRanges(target.pages);
        writer.setTitle(target.title);
        writer.setCreator(QStringLiteral("Nib"));
        failure = FailureOf([&] { draw(writer); });
    }
    // A disk that is full comes out as a page that could not be begun; the file knows better.
    if (failure && file->error() == QFileDevice::NoError) throw Error(*failure);
    bool written = file->flush() && file->error() == QFileDevice::NoError;
    QString reason = file->errorString();
    if (plain && written) {
        written = static_cast<QSaveFile&>(*file).commit();
        reason = file->errorString();
    }
    if (!written) Refuse(target.path, reason);
}

void CheckPdf(const QString& path)
{
    constexpr qint64 tail = 64;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) Refuse(path, file.errorString());
    file.seek(std::max<qint64>(file.size() - tail, 0));
    if (!file.readAll().contains("%%EOF"))
        Refuse(path, QStringLiteral("the file breaks off; there may be no space left on the disk"));
}

} // namespace nib
