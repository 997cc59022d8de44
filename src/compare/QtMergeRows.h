#pragma once
// The two lists of a merge as tables: the three texts side by side, and the outcome.

#include "compare/MergeModel.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QCoreApplication>
#include <QPalette>

namespace nib {

/// Whose lines they are, to see and to read.
struct MergeLooks final {
    Q_DECLARE_TR_FUNCTIONS(MergeLooks)
public:
    static QString NameOf(MergeBlock::Kind kind);
    static QString NameOf(MergeChoice choice);
    /// Behind lines; `strong` for those in question.
    static QColor Ground(const QPalette& palette, MergeBlock::Kind kind, bool strong);
    static QString Folded(int32_t lines);
    /// Marks and characters that a font shows nothing of as signs.
    static QString Shown(TextView line);
};

class SidesTable final : public QAbstractTableModel {
    Q_DECLARE_TR_FUNCTIONS(SidesTable)
public:
    /// The model outlives it.
    SidesTable(const MergeModel& merge, QObject* parent) : QAbstractTableModel(parent), merge_(merge) {}

    static MergeSide SideOf(int column);
    /// The conflict in question is another one, or something else was chosen for it.
    void Show(int32_t conflict);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return static_cast<int>(kMergeSides); }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& at, int role) const override;

private:
    QVariant Look(const MergeRow& row, MergeSide side, int role) const;
    bool IsTaken(const MergeRow& row, MergeSide side) const;

    const MergeModel& merge_;
    int32_t conflict_ = -1;
};

class OutcomeTable final : public QAbstractTableModel {
    Q_DECLARE_TR_FUNCTIONS(OutcomeTable)
public:
    /// The model outlives it.
    OutcomeTable(const MergeModel& merge, QObject* parent) : QAbstractTableModel(parent), merge_(merge) {}

    static constexpr int kText = 2; ///< the column
    /// Another conflict is in question.
    void Show(int32_t conflict);
    /// Something else was chosen.
    void Changed();
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return kText + 1; }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& at, int role) const override;

private:
    QString TextOf(const OutcomeRow& row) const;
    QString WhoseIs(const OutcomeRow& row) const;

    const MergeModel& merge_;
    int32_t conflict_ = -1;
    int count_ = static_cast<int>(merge_.OutcomeRows().size());
};

} // namespace nib
