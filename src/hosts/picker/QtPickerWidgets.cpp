#include "hosts/picker/QtPickerWidgets.h"

#include "platform/qt/QtText.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOption>
#include <QStylePainter>
#include <QToolButton>

#include <utility>

namespace nib {

namespace {

constexpr const char* kPathProperty = "path";

bool IsMove(int key)
{
    return key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

PickerListView::PickerListView(QWidget* parent) : QTreeView(parent)
{
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideMiddle);
    setSortingEnabled(false);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(true);
    header()->setSortIndicatorShown(true);
    header()->setStretchLastSection(false);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &PickerListView::SightChanged);
}

void PickerListView::SetEmptyText(const QString& text)
{
    emptyText_ = text;
    viewport()->update();
}

std::pair<int, int> PickerListView::RowsInSight() const
{
    const int rows = model() ? model()->rowCount() : 0;
    const QModelIndex first = indexAt({0, 0});
    const QModelIndex last = indexAt({0, viewport()->height() - 1});
    return {first.isValid() ? first.row() : 0, last.isValid() ? last.row() : rows - 1};
}

void PickerListView::Type(const QString& text)
{
    if (!sinceTyped_.isValid() || sinceTyped_.hasExpired(QApplication::keyboardInputInterval())) typed_.clear();
    sinceTyped_.start();
    typed_ += text;
    // The same letter again leads from one row to the next.
    const bool repeats = typed_.size() > 1 && typed_.count(typed_.front(), Qt::CaseInsensitive) == typed_.size();
    const QString looked = repeats ? typed_.left(1) : typed_;
    if (!model()->match(model()->index(0, 0), Qt::DisplayRole, looked, 1, Qt::MatchStartsWith).isEmpty())
        return keyboardSearch(text);
    emit TypedOn(std::exchange(typed_, {}));
}

void PickerListView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Backspace && event->modifiers() == Qt::NoModifier) {
        emit UpWanted();
        return;
    }
    // In a list just entered the first key takes the row that has the focus rather than the one after it.
    if (IsMove(event->key()) && currentIndex().isValid() && !selectionModel()->hasSelection()) {
        const auto flags = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
        selectionModel()->select(currentIndex(), flags);
        if (event->key() == Qt::Key_Down || event->key() == Qt::Key_Up) return;
    }
    const bool plain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    const QString text = event->text();
    const bool searching = sinceTyped_.isValid() && !sinceTyped_.hasExpired(QApplication::keyboardInputInterval());
    if (plain && !text.isEmpty() && text.at(0).isPrint() && (text.at(0) != u' ' || (searching && !typed_.isEmpty())))
        return Type(text);
    QTreeView::keyPressEvent(event);
}

void PickerListView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (emptyText_.isEmpty()) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText_);
}

void PickerListView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    emit SightChanged();
}

PickerMessageLine::PickerMessageLine(QWidget* parent) : QWidget(parent), text_(new QLabel)
{
    auto* icon = new QLabel;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(QSize(side, side), devicePixelRatioF()));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(text_, 1);
}

void PickerMessageLine::Say(const QString& text)
{
    text_->setText(text);
    setVisible(!text.isEmpty());
    if (text.isEmpty()) return;
    QAccessibleEvent alert(text_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

PickerPathBar::PickerPathBar(QWidget* parent) : QWidget(parent), more_(new QToolButton(this))
{
    setAccessibleName(tr("Path"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    more_->setText(QStringLiteral("\u2026"));
    more_->setAutoRaise(true);
    more_->setAccessibleName(tr("Places above"));
    more_->setToolTip(more_->accessibleName());
    more_->setPopupMode(QToolButton::InstantPopup);
    more_->setMenu(new QMenu(more_));
    connect(more_->menu(), &QMenu::aboutToShow, this, [this] {
        more_->menu()->clear();
        for (size_t i = hidden_; i-- > 0;) {
            const QString path = steps_[i]->property(kPathProperty).toString();
            more_->menu()->addAction(steps_[i]->text(), this, [this, path] { emit Chosen(path); });
        }
    });
}

QToolButton* PickerPathBar::AddButton(const QString& name, const QString& path)
{
    auto* button = new QToolButton(this);
    // A "&" in a name is no access key.
    button->setText(QString(name).replace(QLatin1Char('&'), QStringLiteral("&&")));
    button->setProperty(kPathProperty, path);
    button->setAccessibleName(name);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, [this, path] { emit Chosen(path); });
    steps_.push_back(button);
    return button;
}

void PickerPathBar::SetTrail(const std::vector<PlaceStep>& trail)
{
    for (QToolButton* button : steps_) {
        // A click on this very button may be under way.
        button->hide();
        button->deleteLater();
    }
    steps_.clear();
    AddButton(tr("All places"), QString());
    for (const PlaceStep& step : trail) AddButton(ToQString(step.name), ToQString(step.path));
    QFont bold = font();
    bold.setBold(true);
    steps_.back()->setFont(bold);
    Arrange();
}

int PickerPathBar::Gap() const
{
    return fontMetrics().averageCharWidth() * 3 / 2;
}

QSize PickerPathBar::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 60, more_->sizeHint().height()};
}

QSize PickerPathBar::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 20, more_->sizeHint().height()};
}

void PickerPathBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Arrange();
}

void PickerPathBar::Arrange()
{
    const int gap = Gap();
    const int moreWidth = more_->sizeHint().width();
    int needed = -gap;
    for (const QToolButton* button : steps_) needed += button->sizeHint().width() + gap;
    hidden_ = 0;
    while (hidden_ + 1 < steps_.size() && needed + (hidden_ ? moreWidth + gap : 0) > width()) {
        needed -= steps_[hidden_]->sizeHint().width() + gap;
        ++hidden_;
    }
    int x = 0;
    const auto place = [&](QToolButton* button) {
        const int wide = std::min(button->sizeHint().width(), std::max(width() - x, 1));
        const QRect at(x, 0, wide, height());
        button->setGeometry(QStyle::visualRect(layoutDirection(), rect(), at));
        button->show();
        x += wide + gap;
    };
    more_->setVisible(hidden_ > 0);
    if (hidden_ > 0) place(more_);
    for (size_t i = 0; i < steps_.size(); ++i) {
        if (i < hidden_)
            steps_[i]->hide();
        else
            place(steps_[i]);
    }
    update();
}

void PickerPathBar::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    const bool leftward = layoutDirection() == Qt::RightToLeft;
    for (size_t i = hidden_; i < steps_.size(); ++i) {
        if (i == 0) continue;
        const QRect button = steps_[i]->geometry();
        const int side = std::min(Gap(), height());
        option.rect = {leftward ? button.right() + 1 : button.left() - Gap(), (height() - side) / 2, side, side};
        painter.drawPrimitive(leftward ? QStyle::PE_IndicatorArrowLeft : QStyle::PE_IndicatorArrowRight, option);
    }
}

} // namespace nib
