#include "platform/qt/QtClipboard.h"

#include "platform/qt/QtText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace nib {

bool QtClipboard::HasText() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasText();
}

Text QtClipboard::GetText() const { return FromQString(QGuiApplication::clipboard()->text()); }

void QtClipboard::SetText(TextView text) { QGuiApplication::clipboard()->setText(ToQString(text)); }

Text QtClipboard::GetPrimary() const
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    return clipboard->supportsSelection() ? FromQString(clipboard->text(QClipboard::Selection)) : Text();
}

void QtClipboard::SetPrimary(TextView text)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard->supportsSelection()) clipboard->setText(ToQString(text), QClipboard::Selection);
}

} // namespace nib
