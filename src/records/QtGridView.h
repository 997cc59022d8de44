#pragma once
#include "records/QtGridModel.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>

namespace nib {

/// Edits a value in its cell; a text that means none stays there to be mended.
class QtGridCells final : public QStyledItemDelegate {
public:
    explicit QtGridCells(QtGridModel& model) : model_(model) {}

    /// The last one that was made; null when it has gone.
    QLineEdit* Editor() const { return editor_; }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* editor, QEvent* event) override;

private:
    bool IsStale(const QModelIndex& index) const;

    QtGridModel& model_;
    mutable QPointer<QLineEdit> editor_;
    mutable QPersistentModelIndex edited_;
    mutable QString before_; ///< of that, as it was before anything was typed
};

/// One table of a record with the keys and the menu for its values.
class QtGridView final : public QTableView {
    Q_DECLARE_TR_FUNCTIONS(QtGridView)
public:
    QtGridView(RecordGrid& grid, size_t table, SourceView& view);

    QtGridModel& Model() { return model_; }
    /// Makes a value the current cell, if it is one of this table.
    bool ShowValue(int32_t attribute, int32_t value);
    /// Takes in what has changed; the current cell stays with its value.
    void Follow();
    void Filter(const QString& text);
    /// Of the cell that is open; null while none is.
    QLineEdit* Editor() const { return state() == EditingState ? cells_.Editor() : nullptr; }
    /// What stands in the editor of a cell, which stays open; false when it was refused.
    bool Commit();
    void SizeColumns();

    std::function<void(const GridCell& cell)> onCurrent;
    /// An arrow key leads out of the table.
    std::function<void(bool down)> onLeave;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void AddActions();
    QAction* AddKey(const QString& caption, const QKeySequence& key, const std::function<void()>& run, bool edits);
    QAction* ActionOf(QKeyEvent* event) const;
    void EnableActions();
    void Grow(const QModelIndex& at);
    void SortBy(int column);
    void Move(bool back);
    void CopyCell();
    void PasteCell();
    void KeepCell(const std::function<void()>& change);

    QtGridModel model_;
    QtGridCells cells_{model_};
    QMenu menu_;
    QList<QAction*> edits_;
    int sorted_ = -1;
    bool following_ = false;
};

} // namespace nib
