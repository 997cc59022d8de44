#include "shell/menus/QtToolIcons.h"

#include "platform/qt/QtText.h"

#include <QGuiApplication>
#include <QPalette>
#include <QStandardPaths>
#include <QStringList>

namespace nib {

namespace {

bool DarkPalette()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Without a desktop Qt looks for themes nowhere but in the program itself.
void FindThemes()
{
    QStringList paths = QIcon::themeSearchPaths();
    for (const QString& folder : QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("icons"),
                                                           QStandardPaths::LocateDirectory))
        if (!paths.contains(folder)) paths += folder;
    QIcon::setThemeSearchPaths(paths);
}

} // namespace

void UseIconTheme()
{
    FindThemes();
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
