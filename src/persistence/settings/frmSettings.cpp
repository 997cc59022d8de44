#include "persistence/settings/frmSettings.h"

#include "persistence/settings/frmSettingsGeneral.h"
#include "persistence/settings/frmSettingsHighlight.h"
#include "persistence/settings/frmSettingsKeywords.h"
#include "persistence/settings/frmSettingsTools.h"
#include "platform/qt/QtText.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace nib {

bool frmSettings::ShowSettings(SettingsModel& model, QWidget* owner, int32_t page)
{
    frmSettings form(model, owner);
    form.ShowPage(page);
    return form.exec() == Accepted;
}

frmSettings::frmSettings(SettingsModel& model, QWidget* owner) : QDialog(owner), model_(model)
{
    setWindowTitle(QStringLiteral("Nib Settings"));
    auto* column = new QVBoxLayout(this);
    tabStrip_ = new QTabWidget;
    tabStrip_->setObjectName(QStringLiteral("TabStrip"));
    column->addWidget(tabStrip_, 1);
    BuildTabs();
    lbHostNote_ = new QLabel(ToQString(kHostNote));
    lbHostNote_->setObjectName(QStringLiteral("lbHostNote"));
    lbHostNote_->setWordWrap(true);
    // Its room is kept while it is away, so that the pages do not jump.
    QSizePolicy keep = lbHostNote_->sizePolicy();
    keep.setRetainSizeWhenHidden(model_.ShowsHostNote(SettingsPage::General) ||
                                 model_.ShowsHostNote(SettingsPage::Tools));
    lbHostNote_->setSizePolicy(keep);
    column->addWidget(lbHostNote_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
    column->addWidget(buttons);
    // Once it is in the dialog, which else would not know of it.
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmSettings::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmSettings::reject);
    PageShown(0);
}

void frmSettings::BuildTabs()
{
    auto preview = [this] {
        if (highlight_) highlight_->ShowPreview();
    };
    general_ = new GeneralPage(model_, preview);
    highlight_ = new HighlightPage(model_);
    keywords_ = new KeywordsPage(model_, [this] { general_->Refresh(); });
    QWidget* const pages[] = {general_, highlight_, new ToolsPage(model_, preview)};
    for (size_t i = 0; i < std::size(kSettingsTabs); ++i) {
        auto* panel = new QWidget;
        panel->setObjectName(ToQString(kSettingsTabs[i].key));
        auto* room = new QVBoxLayout(panel);
        room->addWidget(i < std::size(pages) ? pages[i] : keywords_);
        if (i < std::size(pages)) room->setContentsMargins(0, 0, 0, 0);
        tabStrip_->addTab(panel, ToQString(kSettingsTabs[i].caption));
    }
    connect(tabStrip_, &QTabWidget::currentChanged, this, &frmSettings::PageShown);
}

/// Both tabs of keywords have the one page, which goes where it is looked at.
void frmSettings::PageShown(int index)
{
    const SettingsTab& tab = kSettingsTabs[index];
    if (tab.keywordClass) {
        tabStrip_->widget(index)->layout()->addWidget(keywords_);
        keywords_->ShowClass(tab.keywordClass);
        // By keys the focus came to the room before the page was in it.
        if (tabStrip_->widget(index)->hasFocus()) keywords_->setFocus();
    }
    lbHostNote_->setVisible(model_.ShowsHostNote(static_cast<SettingsPage>(index)));
}

void frmSettings::ShowPage(int32_t page)
{
    tabStrip_->setCurrentIndex(std::clamp<int>(page, 1, tabStrip_->count()) - 1);
}

void frmSettings::accept()
{
    if (model_.Accept()) QDialog::accept();
}

} // namespace nib
