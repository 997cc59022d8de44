#include "records/QtGridModel.h"

#include "diagnostics/Guarded.h"
#include "platform/qt/QtText.h"
#include "text/SourceView.h"

#include <QIcon>

namespace nib {

namespace {

/// More of a value is not painted in a cell.
constexpr size_t kShownUnits = 500;
/// A longer one is edited in the text.
constexpr size_t kEditedUnits = 100'000;

QString InUsersLanguage(const Text& reason)
{
    return TranslatedMessage(ToQString(reason)).value_or(ToQString(reason));
}

QString Shortened(const Text& text)
{
    return text.size() <= kShownUnits ? ToQString(text)
                                      : ToQString(TextView(text).substr(0, kShownUnits)) + QChar(0x2026);
}

} // namespace

QtGridModel::QtGridModel(RecordGrid& grid, size_t table, SourceView& view)
    : grid_(grid), table_(table), view_(view), rows_(Table().Rows()), columns_(Table().Columns())
{
}

bool QtGridModel::IsThere(const QModelIndex& index) const
{
    return index.isValid() && index.row() < Table().Rows() && index.column() < Table().Columns();
}

GridCell QtGridModel::CellAt(const QModelIndex& index) const
{
    return IsThere(index) ? Table().At(index.row(), index.column()) : GridCell();
}

QString QtGridModel::Refusal(const QModelIndex& index, const QString& typed) const
{
    return IsThere(index) ? InUsersLanguage(grid_.Refusal(CellAt(index), ViewOf(typed))) : QString();
}

void QtGridModel::Resize(int& shown, int now, bool rows)
{
    if (now > shown) {
        rows ? beginInsertRows({}, shown, now - 1) : beginInsertColumns({}, shown, now - 1);
        shown = now;
        rows ? endInsertRows() : endInsertColumns();
    } else if (now < shown) {
        rows ? beginRemoveRows({}, now, shown - 1) : beginRemoveColumns({}, now, shown - 1);
        shown = now;
        rows ? endRemoveRows() : endRemoveColumns();
    }
}

void QtGridModel::Follow()
{
    // In their own order rows and columns come and go at the end, and what is being edited stays open.
    if (Table().Refresh() && !Table().IsInOwnOrder()) return Rearrange([] {});
    Resize(rows_, Table().Rows(), true);
    Resize(columns_, Table().Columns(), false);
    if (rows_ == 0 || columns_ == 0) return;
    emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
    emit headerDataChanged(Qt::Vertical, 0, rows_ - 1);
}

void QtGridModel::Rearrange(const std::function<void()>& change)
{
    beginResetModel();
    change();
    rows_ = Table().Rows();
    columns_ = Table().Columns();
    endResetModel();
}

QVariant QtGridModel::data(const QModelIndex& index, int role) const
{
    if (!IsThere(index)) return {};
    const GridCell cell = CellAt(index);
    if (role == Qt::TextAlignmentRole) {
        const bool right = cell.field && cell.field->right;
        return QVariant::fromValue((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::DecorationRole && role != Qt::ToolTipRole &&
        role != Qt::AccessibleTextRole)
        return {};
    const ShownValue shown = grid_.Show(cell);
    if (role == Qt::EditRole) return ToQString(shown.text);
    if (role == Qt::DisplayRole) return Shortened(shown.text);
    if (role == Qt::AccessibleTextRole)
        return shown.odd ? tr("%1, as it is stored").arg(Shortened(shown.text)) : Shortened(shown.text);
    if (!shown.odd) return {};
    if (role == Qt::DecorationRole) return QIcon::fromTheme(QStringLiteral("dialog-warning"));
    const QString code = ToQString(cell.field->conversion.Code());
    return cell.field->conversion.IsKnown()
               ? tr("Shown as it is stored: the conversion %1 does not fit this value.").arg(code)
               : tr("Shown as it is stored: the conversion %1 is not known.").arg(code);
}

QVariant QtGridModel::Tip(const DictionaryField* field, int32_t attribute) const
{
    if (!field) return tr("Attribute %1, which the dictionary does not tell of").arg(attribute);
    const QString code = ToQString(field->conversion.Code());
    const QString name = ToQString(field->name);
    return code.isEmpty() ? tr("%1, attribute %2").arg(name).arg(attribute)
                          : tr("%1, attribute %2, conversion %3").arg(name).arg(attribute).arg(code);
}

QVariant QtGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const GridTable& table = Table();
    const bool across = orientation == Qt::Horizontal;
    if (section < 0 || section >= (across ? table.Columns() : table.Rows())) return {};
    if (role == Qt::DisplayRole) return Shortened(across ? table.ColumnTitle(section) : table.RowTitle(section));
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::ToolTipRole || across == table.IsList()) return {};
    const int32_t attribute =
        across ? table.Attributes()[static_cast<size_t>(section)] : table.At(section, 0).attribute;
    return Tip(grid_.FieldOf(attribute), attribute);
}

Qt::ItemFlags QtGridModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!view_.ReadOnly() && IsThere(index) && grid_.Stored(CellAt(index)).size() <= kEditedUnits)
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool QtGridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !IsThere(index)) return false;
    if (!view_.MayEdit()) return false;
    const auto failure = FailureOf([&] { grid_.Type(CellAt(index), ToText(value.toString())); });
    if (onRefused) onRefused(failure ? InUsersLanguage(failure->description) : QString());
    if (!failure) emit dataChanged(index, index);
    return !failure;
}

} // namespace nib
