// Menus and status bar of the frame; part of frmMain.

#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"
#include "shell/MenuTable.h"
#include "shell/Program.h"
#include "shell/frmDocument.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>

namespace nib {

void frmMain::LoadBands()
{
    BuildMenus();
    BuildStatusBar();
}

void frmMain::BuildMenus()
{
    std::map<Text, QMenu*> menus;
    for (const MenuRow& row : kMainMenu) {
        QMenu*& menu = menus[row.menu];
        if (!menu) {
            menu = menuBar()->addMenu(QString::fromUtf16(row.menu));
            QObject::connect(menu, &QMenu::aboutToShow, this, [this] { UpdateToolBar(); });
        }
        if (row.beginsGroup) menu->addSeparator();
        QAction* action = menu->addAction(QString::fromUtf16(row.caption));
        action->setShortcut(QKeySequence(QString::fromUtf16(row.shortcut), QKeySequence::PortableText));
        action->setCheckable(IsCheckable(row.key));
        QObject::connect(action, &QAction::triggered, this, [this, key = row.key] { Run(key); });
        actions_[row.key] = action;
    }
}

void frmMain::BuildStatusBar()
{
    // The texts that the widths are made for.
    constexpr const char* kTemplates[] = {"", "Ln 100000, Col 100", "Ovr"};
    for (const char* widest : kTemplates) {
        auto* label = new QLabel(this);
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QLatin1String(widest)) + 12);
        label->setAccessibleName(panels_.empty()       ? tr("Server status")
                                 : panels_.size() == 1 ? tr("Insertion point")
                                                       : tr("Overwrite or insert"));
        statusBar()->addWidget(label, panels_.empty() ? 1 : 0);
        panels_.push_back(label);
    }
    ShowStatusPanel(2, false);
    ShowStatusPanel(3, false);
}

void frmMain::ShowBands()
{
    statusBar()->setVisible(placement_.statusbarVisible);
}

void frmMain::NoteBands()
{
    placement_.statusbarVisible = !statusBar()->isHidden();
}

void frmMain::SetStatusText(int32_t panel, TextView text)
{
    if (panel >= 1 && panel <= static_cast<int32_t>(panels_.size()))
        panels_[static_cast<size_t>(panel - 1)]->setText(ToQString(text));
}

void frmMain::ShowStatusPanel(int32_t panel, bool visible)
{
    if (panel >= 1 && panel <= static_cast<int32_t>(panels_.size()))
        panels_[static_cast<size_t>(panel - 1)]->setVisible(visible);
}

void frmMain::UpdateToolBar()
{
    if (!loaded_ || unloading_) return;
    CommandContext context = Context();
    for (auto& [key, action] : actions_) {
        CommandState state = StateOfCommand(key, context);
        action->setEnabled(state.enabled);
        if (action->isCheckable()) action->setChecked(state.checked);
    }
    UpdateCaption();
}

CommandContext frmMain::Context()
{
    frmDocument* form = ActiveForm();
    mvDocument* document = form ? form->ViewObject() : nullptr;
    return {*program_, *this, document ? document->shared_from_this() : nullptr};
}

bool frmMain::Run(TextView key)
{
    CommandContext context = Context();
    return RunCommand(key, context);
}

bool frmMain::CanRun(TextView key)
{
    return StateOfCommand(key, Context()).enabled;
}

void frmMain::ShowContextMenu(HitKind, QPoint) {}

} // namespace nib
