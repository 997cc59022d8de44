#include "shell/menus/QtTabRow.h"

#include "platform/qt/QtText.h"
#include "shell/menus/QtToolActions.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPixmap>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

constexpr int kLine = 3;
constexpr int kSwatch = 12;
constexpr int kListed = 80; ///< characters of a title

QIcon Swatch(const QColor& color)
{
    if (!color.isValid()) return {};
    QPixmap swatch(kSwatch, kSwatch);
    swatch.fill(color);
    return QIcon(swatch);
}

} // namespace

QtTabRow::QtTabRow(const MenuTool& root, QWidget* parent)
    : QWidget(parent), root_(root), tabs_(new QtDocumentTabs(this)), all_(new QToolButton(this)),
      list_(new QMenu(this)), line_(new QWidget(this))
{
    tabs_->setAccessibleName(ToQString(root.caption));
    all_->setObjectName(QStringLiteral("AllDocuments"));
    all_->setAutoRaise(true);
    all_->setArrowType(Qt::DownArrow);
    all_->setPopupMode(QToolButton::InstantPopup);
    all_->setMenu(list_);
    all_->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }"));
    all_->setToolTip(tr("All Documents"));
    all_->setAccessibleName(all_->toolTip());
    list_->setWindowTitle(all_->toolTip());
    LetScroll(*list_);
    connect(list_, &QMenu::aboutToShow, this, &QtTabRow::FillList);
    line_->setFixedHeight(kLine);
    line_->setAutoFillBackground(true);

    auto* column = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    for (QLayout* layout : {static_cast<QLayout*>(column), static_cast<QLayout*>(row)}) {
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
    }
    row->addWidget(tabs_, 1);
    row->addWidget(all_);
    column->addLayout(row);
    column->addWidget(line_);
    Follow();
}

void QtTabRow::SetEvents(MenuEvents* events)
{
    events_ = events;
    tabs_->SetEvents(events);
}

/// The line stands as soon as one document has a colour, so that nothing jumps between this one and the next.
void QtTabRow::Follow(const MenuTool* gone)
{
    QColor front;
    bool any = false;
    for (auto& tab : root_.tools) {
        if (tab.get() == gone) continue;
        const QColor color = ToColor(tab->color);
        any = any || color.isValid();
        if (tab->checked) front = color;
    }
    QPalette palette = line_->palette();
    palette.setColor(QPalette::Window, front.isValid() ? front : Qt::transparent);
    line_->setPalette(palette);
    line_->setVisible(any);
    setVisible(tabs_->count() > 0);
}

void QtTabRow::FillList()
{
    list_->clear();
    const int width = list_->fontMetrics().averageCharWidth() * kListed;
    for (auto& tab : root_.tools) {
        const QString title = list_->fontMetrics().elidedText(ToQString(tab->tip.empty() ? tab->caption : tab->tip),
                                                              Qt::ElideMiddle, width);
        QAction* action =
            list_->addAction(Swatch(ToColor(tab->color)), QString(title).replace(u'&', QLatin1String("&&")));
        QFont font = action->font();
        font.setBold(tab->checked);
        action->setFont(font);
        connect(action, &QAction::triggered, this, [this, number = MenuModel::TabOf(*tab)] {
            if (events_) events_->TabActivate(number);
        });
    }
}

} // namespace nib
