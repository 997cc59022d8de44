#pragma once
#include "records/RecordGrid.h"

#include <QAbstractTableModel>
#include <QCoreApplication>

namespace nib {

class SourceView;

/// One table of a record as Qt's views ask for it.
class QtGridModel final : public QAbstractTableModel {
    Q_DECLARE_TR_FUNCTIONS(QtGridModel)
public:
    /// Both outlive it. The view knows whether the text may be edited.
    QtGridModel(RecordGrid& grid, size_t table, SourceView& view);

    GridTable& Table() const { return grid_.Tables()[table_]; }
    GridCell CellAt(const QModelIndex& index) const;
    SourceView& View() const { return view_; }
    /// Why the text cannot stand in the cell; empty when it can.
    QString Refusal(const QModelIndex& index, const QString& typed) const;
    /// Takes in what has changed.
    void Follow();
    /// The same where rows may have become others.
    void Rearrange(const std::function<void()>& change);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns_; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    /// A text was refused, for this reason.
    std::function<void(const QString& reason)> onRefused;

private:
    bool IsThere(const QModelIndex& index) const;
    QVariant Tip(const DictionaryField* field, int32_t attribute) const;
    void Resize(int& shown, int now, bool rows);

    RecordGrid& grid_;
    size_t table_;
    SourceView& view_;
    int rows_ = 0; ///< as they were told to the views
    int columns_ = 0;
};

} // namespace nib
