#include "persistence/settings/frmSettingsGeneral.h"

#include "persistence/settings/frmSettingsFields.h"
#include "platform/qt/QtText.h"

#include <QCheckBox>
#include <QFontDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace nib {

namespace {

/// The order of the check boxes, column by column.
constexpr TextView kChecks[] = {u"chkLineWrap",      u"chkHighlight",     u"chkCollapseBlocks",
                                u"chkCaseSensitive", u"chkColorPrinting", u"chkAutoRecover",
                                u"chkLocking",       u"chkLargeIcons",    u"chkMinMaxClose"};
constexpr int kRows = 5;

const SettingSwitch& SwitchNamed(TextView name)
{
    return *std::find_if(std::begin(kSettingSwitches), std::end(kSettingSwitches),
                         [&](const SettingSwitch& row) { return row.name == name; });
}

} // namespace

GeneralPage::GeneralPage(SettingsModel& model, std::function<void()> changed)
    : model_(model), changed_(std::move(changed))
{
    auto* column = new QVBoxLayout(this);
    auto* hostConfig = AddCheck(u"chkHostConfig", model_.LoadsHostConfig(),
                                [this](QCheckBox& box, bool on) { box.setChecked(model_.ChangeHostConfig(on)); });
    column->addWidget(hostConfig);

    auto* files = new QHBoxLayout;
    auto* recent = new NumberField(model_.RecentLimit(), model_.RecentCapacity());
    files->addWidget(LabelFor(model_, u"txtRecentFiles", *recent));
    files->addWidget(recent);
    files->addStretch(1);
    column->addLayout(files);
    connect(recent, &QSpinBox::valueChanged, this, [this](int value) { model_.SetRecentCapacity(value); });

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    int place = 0;
    for (TextView name : kChecks) {
        QCheckBox* box = nullptr;
        if (name == u"chkMinMaxClose") {
            box = AddCheck(name, model_.Clone().MinMaxClose,
                           [this](QCheckBox& self, bool on) { self.setChecked(model_.ChangeMinMaxClose(on)); });
        } else if (name == u"chkCaseSensitive") {
            box = AddCheck(name, model_.Clone().Keywords.CaseSensitive(),
                           [this](QCheckBox&, bool on) { model_.Clone().Keywords.SetCaseSensitive(on); });
            chkCaseSensitive_ = box;
        } else {
            bool MvEdit::*member = SwitchNamed(name).member;
            box = AddCheck(name, model_.Clone().*member, [this, member](QCheckBox&, bool on) {
                model_.Clone().*member = on;
                changed_();
            });
        }
        grid->addWidget(box, place % kRows, place / kRows);
        ++place;
    }
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    column->addWidget(BuildFont());
    column->addStretch(1);
}

QCheckBox* GeneralPage::AddCheck(TextView name, bool state, std::function<void(QCheckBox&, bool)> clicked)
{
    auto* box = new QCheckBox;
    CaptionButton(model_, name, *box);
    box->setChecked(state);
    // Heard when the user clicks alone, not when the box is put back.
    connect(box, &QCheckBox::clicked, this, [box, heard = std::move(clicked)](bool on) { heard(*box, on); });
    return box;
}

QGroupBox* GeneralPage::BuildFont()
{
    auto* frame = new QGroupBox(tr("Font"));
    auto* grid = new QGridLayout(frame);
    lblFontName_ = new QLabel;
    lblFontName_->setObjectName(QStringLiteral("lblFontName"));
    lblFontName_->setTextFormat(Qt::PlainText);
    lblFontSize_ = new QLabel;
    lblFontSize_->setObjectName(QStringLiteral("lblFontSize"));
    auto* change = new QPushButton;
    CaptionButton(model_, u"cmdChangeFont", *change);
    change->setAutoDefault(false);
    connect(change, &QPushButton::clicked, this, &GeneralPage::ChooseFont);
    bool MvEdit::*member = SwitchNamed(u"chkMonospace").member;
    auto* monospace = AddCheck(u"chkMonospace", model_.Clone().*member,
                               [this, member](QCheckBox&, bool on) { model_.Clone().*member = on; });
    grid->addWidget(lblFontName_, 0, 0);
    grid->addWidget(lblFontSize_, 0, 1);
    grid->addWidget(change, 0, 2);
    grid->addWidget(monospace, 1, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    ShowFont();
    return frame;
}

void GeneralPage::ChooseFont()
{
    MvEdit& settings = model_.Clone();
    QFont font(ToQString(settings.FontName));
    if (double points = ToQString(settings.FontSize).toDouble(); points >= 1) font.setPointSizeF(points);
    QFontDialog::FontDialogOptions options;
    // Some desktops list fonts their own way and leave the filter aside.
    if (settings.FontMono) options = QFontDialog::MonospacedFonts | QFontDialog::DontUseNativeDialog;
    bool chosen = false;
    font = QFontDialog::getFont(&chosen, font, this, tr("Font"), options);
    if (!chosen) return;
    settings.FontName = ToText(font.family());
    settings.FontSize = ToText(QString::number(font.pointSizeF()));
    ShowFont();
    changed_();
}

void GeneralPage::ShowFont()
{
    const MvEdit& settings = model_.Clone();
    lblFontName_->setText(ToQString(settings.FontName));
    lblFontSize_->setText(ToQString(settings.FontSize));
    lblFontName_->setAccessibleName(tr("Font name") + QLatin1String(": ") + lblFontName_->text());
    lblFontSize_->setAccessibleName(tr("Font size") + QLatin1String(": ") + lblFontSize_->text());
}

void GeneralPage::Refresh()
{
    chkCaseSensitive_->setChecked(model_.Clone().Keywords.CaseSensitive());
}

} // namespace nib
