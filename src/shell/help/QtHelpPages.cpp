#include "shell/help/QtHelpPages.h"

#include "platform/qt/QtText.h"
#include "shell/help/HelpIndex.h"

#include <QCoreApplication>
#include <QFile>

/// Outside of any namespace: the macro declares a function of the resource compiler.
static void LoadHelpResource()
{
    Q_INIT_RESOURCE(help);
}

namespace nib {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(HelpPages)
};

QString TitleOf(const QString& html)
{
    const QString begin = QStringLiteral("<title>");
    const qsizetype at = html.indexOf(begin) + begin.size();
    return html.mid(at, html.indexOf(QStringLiteral("</title>"), at) - at);
}

} // namespace

std::vector<ShownHelpPage> ReadHelpPages()
{
    LoadHelpResource();
    // Told by the translation itself, so that the pages speak as the menus do, whatever the desktop's languages are.
    //: Where the help in this language stands, such as help/de; help itself where there is none.
    const QString own = Texts::tr("help");
    std::vector<ShownHelpPage> pages;
    for (const HelpPage& page : kHelpPages) {
        const QString name = QLatin1Char('/') + QString::fromUtf16(page.file);
        const QString path =
            QFile::exists(QStringLiteral(":/") + own + name) ? own + name : QStringLiteral("help") + name;
        QFile file(QStringLiteral(":/") + path);
        const QString html = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        pages.push_back({Translated(page.group), TitleOf(html), QUrl(QStringLiteral("qrc:/") + path), html});
    }
    return pages;
}

QUrl FindHelp(const std::vector<ShownHelpPage>& pages, TextView topic)
{
    const QString name = ToQString(topic);
    const QString mark = QStringLiteral("<a name=\"%1\">").arg(name);
    for (const ShownHelpPage& page : pages) {
        if (page.url.fileName() == name) return page.url;
        if (!page.html.contains(mark)) continue;
        QUrl url = page.url;
        url.setFragment(name);
        return url;
    }
    return {};
}

} // namespace nib
