#include "records/QtGridView.h"

#include "platform/qt/QtText.h"
#include "text/SourceView.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>

namespace nib {

namespace {

constexpr int kMeasuredColumns = 40;
constexpr int kMeasuredRows = 60;
constexpr int kLeastChars = 9;
constexpr int kMostChars = 44;
constexpr int kRoomInRow = 9;

} // namespace

QtGridView::QtGridView(RecordGrid& grid, size_t table, SourceView& view) : model_(grid, table, view)
{
    setModel(&model_);
    setItemDelegate(&cells_);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setWordWrap(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRoomInRow);
    verticalHeader()->setHighlightSections(false);
    horizontalHeader()->setHighlightSections(false);
    if (!model_.Table().IsList()) {
        horizontalHeader()->setSectionsClickable(true);
        connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) { SortBy(column); });
    }
    AddActions();
    SizeColumns();
    connect(&model_, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first, const QModelIndex& last) {
        if (first == last) Grow(first);
    });
}

void QtGridView::SizeColumns()
{
    const int unit = fontMetrics().averageCharWidth();
    horizontalHeader()->setResizeContentsPrecision(kMeasuredRows);
    const int count = std::min(model_.columnCount(), kMeasuredColumns);
    for (int column = 0; column < count; ++column) {
        const int wanted = std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)) + unit;
        setColumnWidth(column, std::clamp(wanted, kLeastChars * unit, kMostChars * unit));
    }
}

/// To what a cell shows; one that the user has made wider stays.
void QtGridView::Grow(const QModelIndex& at)
{
    const int unit = fontMetrics().averageCharWidth();
    const int wanted = std::min(sizeHintForIndex(at).width() + unit, kMostChars * unit);
    if (wanted > columnWidth(at.column())) setColumnWidth(at.column(), wanted);
}

QAction* QtGridView::AddKey(const QString& caption, const QKeySequence& key, const std::function<void()>& run,
                            bool edits)
{
    QAction* action = menu_.addAction(caption);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, run);
    if (edits) edits_ += action;
    return action;
}

void QtGridView::AddActions()
{
    const bool list = model_.Table().IsList();
    const auto onCell = [this](void (GridTable::*change)(int32_t, int32_t)) {
        return [this, change] {
            const QModelIndex at = currentIndex();
            if (at.isValid() && model_.View().MayEdit()) (model_.Table().*change)(at.row(), at.column());
        };
    };
    AddKey(list ? tr("&Insert Value") : tr("&Insert Row"), Qt::Key_Insert, onCell(&GridTable::Insert), true);
    AddKey(list ? tr("&Delete Value") : tr("&Delete Row"), Qt::CTRL | Qt::Key_Delete, onCell(&GridTable::Delete), true);
    AddKey(
        list ? tr("Move &Left") : tr("Move &Up"), Qt::ALT | (list ? Qt::Key_Left : Qt::Key_Up), [this] { Move(true); },
        true);
    AddKey(
        list ? tr("Move &Right") : tr("Move D&own"), Qt::ALT | (list ? Qt::Key_Right : Qt::Key_Down),
        [this] { Move(false); }, true);
    menu_.addSeparator();
    AddKey(
        tr("&Copy"), QKeySequence::Copy, [this] { CopyCell(); }, false);
    AddKey(
        tr("&Paste"), QKeySequence::Paste, [this] { PasteCell(); }, true);
    AddKey(
        tr("&Empty the Cell"), Qt::Key_Delete, [this] { model_.setData(currentIndex(), QString(), Qt::EditRole); },
        true);
}

QAction* QtGridView::ActionOf(QKeyEvent* event) const
{
    for (QAction* action : menu_.actions())
        if (!action->isSeparator() && action->shortcut() == QKeySequence(event->keyCombination())) return action;
    return nullptr;
}

/// Its keys mean the cells, not the text behind them.
bool QtGridView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && state() != EditingState) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (ActionOf(key) || key->keyCombination() == QKeyCombination(Qt::Key_F2)) {
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

void QtGridView::keyPressEvent(QKeyEvent* event)
{
    if (QAction* action = ActionOf(event)) {
        EnableActions();
        return action->trigger();
    }
    // Menus know the key of the text alone.
    if (event->keyCombination() == (Qt::CTRL | Qt::SHIFT | Qt::Key_Z)) return model_.View().Redo();
    const bool down = event->key() == Qt::Key_Down;
    const int edge = down ? model_.rowCount() - 1 : 0;
    if ((down || event->key() == Qt::Key_Up) && !event->modifiers() && currentIndex().row() == edge && onLeave)
        return onLeave(down);
    // Says why nothing is typed.
    if (model_.View().ReadOnly() && !event->text().isEmpty() && event->text()[0].isPrint()) {
        model_.View().MayEdit();
        return;
    }
    QTableView::keyPressEvent(event);
}

void QtGridView::EnableActions()
{
    for (QAction* action : std::as_const(edits_)) action->setEnabled(!model_.View().ReadOnly());
    const bool moves = !model_.View().ReadOnly() && model_.Table().IsInOwnOrder();
    for (int i : {2, 3}) edits_[i]->setEnabled(moves);
}

void QtGridView::contextMenuEvent(QContextMenuEvent* event)
{
    EnableActions();
    const QPoint below = visualRect(currentIndex()).bottomLeft();
    menu_.popup(event->reason() == QContextMenuEvent::Keyboard ? viewport()->mapToGlobal(below) : event->globalPos());
}

void QtGridView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    if (!following_ && current.isValid() && onCurrent) onCurrent(model_.CellAt(current));
}

bool QtGridView::Commit()
{
    QLineEdit* line = Editor();
    if (line) commitData(line);
    return !line || !line->isModified();
}

/// A text that was refused stays to be mended, wherever the focus goes; Esc gives it up.
void QtGridView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    const bool revert = hint == QAbstractItemDelegate::RevertModelCache;
    if (!revert && editor == Editor() && Editor()->isModified()) return;
    QTableView::closeEditor(editor, hint);
    if (revert && model_.onRefused) model_.onRefused({});
}

bool QtGridView::ShowValue(int32_t attribute, int32_t value)
{
    const auto [row, column] = model_.Table().Find(attribute, value);
    const QModelIndex index = row < 0 ? QModelIndex() : model_.index(row, column);
    if (!index.isValid()) return false;
    following_ = true;
    setCurrentIndex(index);
    following_ = false;
    return true;
}

/// Runs a change of rows with the current cell, and puts it back to its value.
void QtGridView::KeepCell(const std::function<void()>& change)
{
    const GridCell cell = model_.CellAt(currentIndex());
    following_ = true;
    change();
    following_ = false;
    if (cell.attribute > 0 && !currentIndex().isValid()) ShowValue(cell.attribute, cell.value);
}

void QtGridView::Follow()
{
    KeepCell([this] { model_.Follow(); });
}

void QtGridView::Filter(const QString& text)
{
    KeepCell([&] { model_.Rearrange([&] { model_.Table().Filter(ViewOf(text)); }); });
}

void QtGridView::SortBy(int column)
{
    using Order = GridTable::Order;
    QHeaderView* header = horizontalHeader();
    const bool again = column == sorted_;
    const bool up = again && header->sortIndicatorOrder() == Qt::AscendingOrder;
    const Order order = !again ? Order::Up : up ? Order::Down : Order::Own;
    sorted_ = order == Order::Own ? -1 : column;
    header->setSortIndicatorShown(sorted_ >= 0);
    header->setSortIndicator(sorted_, order == Order::Down ? Qt::DescendingOrder : Qt::AscendingOrder);
    KeepCell([&] { model_.Rearrange([&] { model_.Table().Sort(column, order); }); });
}

void QtGridView::Move(bool back)
{
    const GridCell cell = model_.CellAt(currentIndex());
    if (cell.attribute == 0 || !model_.View().MayEdit()) return;
    const QModelIndex at = currentIndex();
    if (model_.Table().Move(at.row(), at.column(), back)) ShowValue(cell.attribute, cell.value + (back ? -1 : 1));
}

void QtGridView::CopyCell()
{
    if (currentIndex().isValid()) QApplication::clipboard()->setText(currentIndex().data(Qt::EditRole).toString());
}

void QtGridView::PasteCell()
{
    const QString text = QApplication::clipboard()->text();
    if (currentIndex().isValid() && !text.isEmpty()) model_.setData(currentIndex(), text, Qt::EditRole);
}

} // namespace nib
