#include "shell/help/QtAboutBox.h"

#include <unicode/uversion.h>

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>

namespace nib {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(AboutBox)
};

constexpr int kIconSide = 48;

struct LicenceRow {
    const char* component;
    const char* licence;
};

constexpr LicenceRow kLicences[] = {
    {"Qt", QT_TRANSLATE_NOOP(
               "AboutBox",
               "GNU Lesser General Public License, version 3. Linked as shared libraries, which may be replaced.")},
    {"ICU", QT_TRANSLATE_NOOP("AboutBox", "Unicode License (ICU).")},
    {"DejaVu fonts",
     QT_TRANSLATE_NOOP("AboutBox",
                       "Bitstream Vera and Arev licences; changes by the DejaVu project are in the public domain.")},
    {"libacl", QT_TRANSLATE_NOOP("AboutBox", "GNU Lesser General Public License, version 2.1 or later.")},
};

QString VersionOf(const char* component)
{
    const QLatin1String name(component);
    if (name == QLatin1String("Qt")) return QString::fromLatin1(qVersion());
    return name == QLatin1String("ICU") ? QStringLiteral(U_ICU_VERSION) : QString();
}

QLabel* Selectable(const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QString LicenceText()
{
    QString text = QStringLiteral("<p>%1</p>").arg(Texts::tr("Nib is built with these components:"));
    for (const LicenceRow& row : kLicences) {
        text += QStringLiteral("<p><b>%1</b> %2<br>%3</p>")
                    .arg(QLatin1String(row.component), VersionOf(row.component), Texts::tr(row.licence));
    }
    return text;
}

} // namespace

void ShowAboutBox(QWidget* owner)
{
    QDialog box(owner);
    box.setWindowTitle(Texts::tr("About Nib"));
    auto* icon = new QLabel;
    icon->setPixmap(QGuiApplication::windowIcon().pixmap(kIconSide));
    auto* name = Selectable(QStringLiteral("Nib"));
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    name->setFont(large);
    auto* version =
        Selectable(Texts::tr("Version %1\nQt %2").arg(QStringLiteral(NIB_VERSION), QString::fromLatin1(qVersion())));
    auto* purpose = Selectable(Texts::tr("An editor for programs and records of MultiValue databases"));
    auto* licences = new QTextBrowser;
    licences->setHtml(LicenceText());
    licences->setAccessibleName(Texts::tr("Licences"));
    licences->setTabChangesFocus(true);
    licences->setMinimumSize(box.fontMetrics().averageCharWidth() * 72, box.fontMetrics().height() * 15);
    auto* buttons = new QDialogButtonBox;
    QPushButton* close = buttons->addButton(QStringLiteral("&Close"), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);

    auto* grid = new QGridLayout(&box);
    grid->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(name, 0, 1);
    grid->addWidget(version, 1, 1);
    grid->addWidget(purpose, 2, 1);
    grid->addWidget(licences, 3, 0, 1, 2);
    grid->addWidget(buttons, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
    grid->setHorizontalSpacing(box.fontMetrics().averageCharWidth() * 2);
    close->setFocus();
    box.exec();
}

} // namespace nib
