#include "platform/qt/QtToolIcons.h"

#include "platform/qt/QtText.h"

#include <QGuiApplication>
#include <QPalette>

namespace nib {

namespace {

bool DarkPalette()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

void UseIconTheme()
{
    const QString light = QStringLiteral("breeze");
    const QString dark = QStringLiteral("breeze-dark");
    const QString& fitting = DarkPalette() ? dark : light;
    QIcon::setFallbackThemeName(fitting);
    const QString current = QIcon::themeName();
    if (current.isEmpty() || current == QLatin1String("hicolor") || current == light || current == dark)
        QIcon::setThemeName(fitting);
}

QIcon ToolIcon(TextView name)
{
    if (name.empty()) return {};
    if (!name.starts_with(u"nib-")) return QIcon::fromTheme(ToQString(name));
    return QIcon(QStringLiteral(":/icons/") + ToQString(name) +
                 (DarkPalette() ? QStringLiteral("-dark.svg") : QStringLiteral(".svg")));
}

} // namespace nib
