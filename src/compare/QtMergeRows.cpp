#include "compare/QtMergeRows.h"

#include "platform/qt/QtText.h"
#include "text/Signs.h"

#include <QApplication>
#include <QFont>

#include <algorithm>
#include <array>
#include <iterator>

namespace nib {

namespace {

using Kind = MergeBlock::Kind;

struct KindRow {
    const char* name;
    QRgb color; ///< none: that of the page
};

constexpr KindRow kKinds[] = {
    {QT_TRANSLATE_NOOP("MergeLooks", "Unchanged"), 0},
    {QT_TRANSLATE_NOOP("MergeLooks", "Theirs"), 0xFF2F7FD6U},
    {QT_TRANSLATE_NOOP("MergeLooks", "Mine"), 0xFF3C9A3CU},
    {QT_TRANSLATE_NOOP("MergeLooks", "Both alike"), 0xFF7A6FB0U},
    {QT_TRANSLATE_NOOP("MergeLooks", "Conflict"), 0xFFD9822BU},
};

constexpr const char* kChoices[] = {
    QT_TRANSLATE_NOOP("MergeLooks", "nothing is chosen yet"),
    QT_TRANSLATE_NOOP("MergeLooks", "theirs is taken"),
    QT_TRANSLATE_NOOP("MergeLooks", "mine is taken"),
    QT_TRANSLATE_NOOP("MergeLooks", "theirs is taken, then mine"),
    QT_TRANSLATE_NOOP("MergeLooks", "mine is taken, then theirs"),
    QT_TRANSLATE_NOOP("MergeLooks", "neither is taken"),
};

constexpr MergeSide kColumns[] = {MergeSide::Theirs, MergeSide::Base, MergeSide::Mine};

constexpr float kWeak = 0.2F;
constexpr float kStrong = 0.4F;

/// Letters in circles, since those that share their codes with the marks can be letters of a text.
constexpr char16_t kShownMarks[] = u"\u24E3\u24E2\u24E5\u24D0\u24D8";
constexpr char16_t kControlPictures = 0x2400;
constexpr char16_t kNoPicture = 0xFFFD;

char16_t ShownUnit(char16_t c)
{
    if (IsMark(c)) return kShownMarks[c - kTextMark];
    if (!IsShownControl(c)) return c;
    return c < 0x20 ? static_cast<char16_t>(kControlPictures + c) : kNoPicture;
}

QFont Bold()
{
    QFont font;
    font.setBold(true);
    return font;
}

} // namespace

QString MergeLooks::NameOf(Kind kind)
{
    return tr(kKinds[static_cast<size_t>(kind)].name);
}

QString MergeLooks::NameOf(MergeChoice choice)
{
    return tr(kChoices[static_cast<size_t>(choice)]);
}

QColor MergeLooks::Ground(const QPalette& palette, Kind kind, bool strong)
{
    const QColor base = palette.color(QPalette::Base);
    const QRgb own = kKinds[static_cast<size_t>(kind)].color;
    if (own == 0) return base;
    const QColor color(own);
    const float share = strong ? kStrong : kWeak;
    const auto mix = [share](float a, float b) { return a * (1 - share) + b * share; };
    return QColor::fromRgbF(mix(base.redF(), color.redF()), mix(base.greenF(), color.greenF()),
                            mix(base.blueF(), color.blueF()));
}

QString MergeLooks::Folded(int32_t lines)
{
    return QStringLiteral("\u22EF ") + tr("%1 lines are the same").arg(lines);
}

QString MergeLooks::Shown(TextView line)
{
    Text shown(line);
    std::transform(shown.begin(), shown.end(), shown.begin(), ShownUnit);
    return ToQString(shown);
}

MergeSide SidesTable::SideOf(int column)
{
    return kColumns[column];
}

int SidesTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(merge_.Rows().size());
}

void SidesTable::Show(int32_t conflict)
{
    conflict_ = conflict;
    if (rowCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QVariant SidesTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0   ? tr("Theirs: as it is stored now")
           : section == 1 ? tr("Before: as last read or saved")
                          : tr("Mine");
}

bool SidesTable::IsTaken(const MergeRow& row, MergeSide side) const
{
    switch (merge_.ChoiceOf(row.conflict)) {
    case MergeChoice::Open: return false;
    case MergeChoice::Theirs: return side == MergeSide::Theirs;
    case MergeChoice::Mine: return side == MergeSide::Mine;
    case MergeChoice::Base: return side == MergeSide::Base;
    default: return side != MergeSide::Base;
    }
}

QVariant SidesTable::Look(const MergeRow& row, MergeSide side, int role) const
{
    if (row.kind == Kind::Same) return {};
    if (role == Qt::FontRole) return row.conflict >= 0 && IsTaken(row, side) ? QVariant(Bold()) : QVariant();
    // What was not changed there is coloured nowhere.
    const bool mine = side == MergeSide::Mine && (row.kind == Kind::Mine || row.kind == Kind::Both);
    const bool theirs = side == MergeSide::Theirs && (row.kind == Kind::Theirs || row.kind == Kind::Both);
    if (row.conflict < 0 && !mine && !theirs) return {};
    return MergeLooks::Ground(QApplication::palette(), row.kind, row.conflict >= 0 && row.conflict == conflict_);
}

QVariant SidesTable::data(const QModelIndex& at, int role) const
{
    const MergeRow& row = merge_.Rows()[static_cast<size_t>(at.row())];
    const MergeSide side = SideOf(at.column());
    if (role == Qt::BackgroundRole || role == Qt::FontRole) return Look(row, side, role);
    const bool spoken = role == Qt::AccessibleTextRole;
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole && !spoken) return {};
    const int32_t line = row.lines[static_cast<size_t>(side)];
    QString text;
    if (row.folded > 0)
        text = MergeLooks::Folded(row.folded);
    else if (line >= 0)
        text = MergeLooks::Shown(merge_.Texts()[static_cast<size_t>(side)].At(line));
    if (role == Qt::ToolTipRole) return text.toHtmlEscaped();
    if (!spoken || row.kind == Kind::Same) return text;
    const QString kind = MergeLooks::NameOf(row.kind);
    return (row.conflict < 0 ? kind : kind + QStringLiteral(" %1").arg(row.conflict + 1)) + QStringLiteral(": ") + text;
}

int OutcomeTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count_;
}

void OutcomeTable::Show(int32_t conflict)
{
    conflict_ = conflict;
    if (count_ > 0) emit dataChanged(index(0, 0), index(count_ - 1, kText));
}

void OutcomeTable::Changed()
{
    beginResetModel();
    count_ = static_cast<int>(merge_.OutcomeRows().size());
    endResetModel();
}

QVariant OutcomeTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0 ? tr("Line") : section == 1 ? tr("Of whom") : tr("Outcome");
}

QString OutcomeTable::TextOf(const OutcomeRow& row) const
{
    if (row.folded > 0) return MergeLooks::Folded(row.folded);
    if (row.line >= 0) return MergeLooks::Shown(merge_.Texts()[static_cast<size_t>(row.side)].At(row.line));
    if (row.conflict >= 0 && merge_.ChoiceOf(row.conflict) == MergeChoice::Open)
        return QStringLiteral("\u22EF ") + tr("conflict %1: choose above").arg(row.conflict + 1);
    return QStringLiteral("\u22EF ") + tr("lines are gone here");
}

QString OutcomeTable::WhoseIs(const OutcomeRow& row) const
{
    if (row.kind == Kind::Same) return {};
    if (row.conflict < 0) return MergeLooks::NameOf(row.kind);
    if (row.line < 0) return QStringLiteral("?");
    if (row.side == MergeSide::Base) return tr("Before");
    return MergeLooks::NameOf(row.side == MergeSide::Theirs ? Kind::Theirs : Kind::Mine);
}

QVariant OutcomeTable::data(const QModelIndex& at, int role) const
{
    const OutcomeRow& row = merge_.OutcomeRows()[static_cast<size_t>(at.row())];
    const bool text = at.column() == kText;
    if (role == Qt::TextAlignmentRole && at.column() == 0) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::BackgroundRole && row.kind != Kind::Same) {
        const bool chosen = row.conflict >= 0 && row.line >= 0 && row.side != MergeSide::Base;
        const Kind kind = !chosen ? row.kind : row.side == MergeSide::Theirs ? Kind::Theirs : Kind::Mine;
        return MergeLooks::Ground(QApplication::palette(), kind, row.conflict >= 0 && row.conflict == conflict_);
    }
    if (role == Qt::AccessibleTextRole && text && row.kind != Kind::Same)
        return WhoseIs(row) + QStringLiteral(": ") + TextOf(row);
    if (role != Qt::DisplayRole && !(role == Qt::ToolTipRole && text)) return {};
    if (text) return role == Qt::ToolTipRole ? TextOf(row).toHtmlEscaped() : TextOf(row);
    if (at.column() == 1) return WhoseIs(row);
    return row.line < 0 ? QString() : QString::number(row.number + 1);
}

} // namespace nib
