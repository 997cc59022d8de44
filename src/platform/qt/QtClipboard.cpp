#include "platform/qt/QtClipboard.h"

#include "platform/qt/QtText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace nib {

bool QtClipboard::HasText() const
{
    // No content at all is a null pointer on some platforms.
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    return content && content->hasText();
}

Text QtClipboard::GetText() const
{
    return ToText(QGuiApplication::clipboard()->text());
}

void QtClipboard::SetText(TextView text)
{
    QGuiApplication::clipboard()->setText(ToQString(text));
}

Text QtClipboard::GetPrimary() const
{
    const QClipboard* clipboard = QGuiApplication::clipboard();
    return clipboard->supportsSelection() ? ToText(clipboard->text(QClipboard::Selection)) : Text();
}

void QtClipboard::SetPrimary(TextView text)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard->supportsSelection()) clipboard->setText(ToQString(text), QClipboard::Selection);
}

} // namespace nib
