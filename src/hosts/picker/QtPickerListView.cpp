#include "hosts/picker/QtPickerListView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

namespace nib {

namespace {

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

} // namespace nib
