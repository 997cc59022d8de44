// One table of a record; declared with the grid.

#include "records/RecordGrid.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

namespace nib {

namespace {

/// By what values are sorted: numbers before texts, and nothing last.
struct SortKey {
    int32_t rank = 2;
    double number = 0;
    Text text;

    bool operator<(const SortKey& other) const
    {
        return std::tie(rank, number, text) < std::tie(other.rank, other.number, other.text);
    }
};

SortKey KeyOf(const Text& stored, const DictionaryField* field)
{
    if (stored.empty()) return {};
    if (stored.find_first_not_of(u"0123456789.-+") == Text::npos) {
        const std::string bytes = ToUtf8(stored);
        char* end = nullptr;
        const double number = std::strtod(bytes.c_str(), &end);
        if (*end == 0) return {0, number, {}};
    }
    return {1, 0, ToUpper(ShowValue(stored, field).text)};
}

} // namespace

GridTable::GridTable(RecordGrid& grid, std::vector<int32_t> attributes, Text association)
    : grid_(&grid), attributes_(std::move(attributes)), association_(std::move(association))
{
    Refresh();
}

void GridTable::SetAttributes(std::vector<int32_t> attributes)
{
    if (attributes == attributes_) return;
    attributes_ = std::move(attributes);
    rows_.clear();
}

GridCell GridTable::At(int32_t row, int32_t column) const
{
    const int32_t line = rows_[static_cast<size_t>(row)];
    const int32_t attribute = IsList() ? line : attributes_[static_cast<size_t>(column)];
    return {attribute, IsList() ? column + 1 : line, grid_->FieldOf(attribute)};
}

std::pair<int32_t, int32_t> GridTable::Find(int32_t attribute, int32_t value) const
{
    const auto own = std::find(attributes_.begin(), attributes_.end(), attribute);
    if (own == attributes_.end()) return {-1, 0};
    const auto row = std::find(rows_.begin(), rows_.end(), IsList() ? attribute : value);
    if (row == rows_.end()) return {-1, 0};
    return {static_cast<int32_t>(row - rows_.begin()),
            IsList() ? std::min(value, columns_) - 1 : static_cast<int32_t>(own - attributes_.begin())};
}

Text GridTable::RowTitle(int32_t row) const
{
    const int32_t line = rows_[static_cast<size_t>(row)];
    const DictionaryField* field = IsList() ? grid_->FieldOf(line) : nullptr;
    return Decimal(line) + (field ? u"  " + field->heading : Text());
}

Text GridTable::ColumnTitle(int32_t column) const
{
    if (IsList()) return Decimal(column + 1);
    const int32_t attribute = attributes_[static_cast<size_t>(column)];
    return grid_->FieldOf(attribute)->heading;
}

void GridTable::Sort(int32_t column, Order order)
{
    sortColumn_ = column;
    order_ = IsList() ? Order::Own : order;
    rows_.clear();
    Refresh();
}

void GridTable::Filter(TextView text)
{
    filter_ = ToUpper(text);
    rows_.clear();
    Refresh();
}

bool GridTable::Passes(int32_t line) const
{
    const auto holds = [&](const Text& text) { return ToUpper(text).find(filter_) != Text::npos; };
    const DictionaryField* field = IsList() ? grid_->FieldOf(line) : nullptr;
    if (IsList() && (holds(Decimal(line)) || (field && (holds(field->heading) || holds(field->name))))) return true;
    const int32_t count = IsList() ? grid_->Content().ValueCount(line) : static_cast<int32_t>(attributes_.size());
    for (int32_t i = 0; i < count; ++i) {
        const int32_t attribute = IsList() ? line : attributes_[static_cast<size_t>(i)];
        if (holds(grid_->Show({attribute, IsList() ? i + 1 : line, grid_->FieldOf(attribute)}).text)) return true;
    }
    return false;
}

std::vector<int32_t> GridTable::AllRows()
{
    if (IsList()) return attributes_;
    std::vector<int32_t> rows(static_cast<size_t>(values_) + 1);
    for (size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<int32_t>(i) + 1;
    return rows;
}

void GridTable::SortRows(std::vector<int32_t>& rows) const
{
    const int32_t attribute = attributes_[static_cast<size_t>(sortColumn_)];
    const DictionaryField* field = grid_->FieldOf(attribute);
    std::vector<std::pair<SortKey, int32_t>> keys;
    keys.reserve(rows.size());
    for (int32_t row : rows) keys.emplace_back(KeyOf(grid_->Stored({attribute, row, field}), field), row);
    std::stable_sort(keys.begin(), keys.end(), [&](const auto& a, const auto& b) {
        return order_ == Order::Up || a.first.rank == 2 || b.first.rank == 2 ? a.first < b.first : b.first < a.first;
    });
    for (size_t i = 0; i < rows.size(); ++i) rows[i] = keys[i].second;
}

bool GridTable::Refresh()
{
    const int32_t valuesBefore = values_;
    const int32_t columnsBefore = columns_;
    values_ = 0;
    for (int32_t attribute : attributes_) values_ = std::max(values_, grid_->Content().ValueCount(attribute));
    columns_ = IsList() ? values_ + 1 : static_cast<int32_t>(attributes_.size());
    // What is edited keeps its row, wherever it belongs now.
    if (!rows_.empty() && values_ == valuesBefore && columns_ == columnsBefore) return false;
    if (IsList() && filter_.empty() && rows_ == attributes_) return columns_ != columnsBefore;
    std::vector<int32_t> rows = AllRows();
    if (!filter_.empty()) std::erase_if(rows, [&](int32_t line) { return !Passes(line); });
    if (order_ != Order::Own) SortRows(rows);
    rows_ = std::move(rows);
    return true;
}

std::vector<int32_t> GridTable::Affected(const GridCell& cell) const
{
    return IsList() ? std::vector{cell.attribute} : attributes_;
}

void GridTable::Insert(int32_t row, int32_t column)
{
    const GridCell cell = At(row, column);
    grid_->Content().InsertValues(Affected(cell), cell.value);
}

void GridTable::Delete(int32_t row, int32_t column)
{
    const GridCell cell = At(row, column);
    grid_->Content().DeleteValues(Affected(cell), cell.value);
}

bool GridTable::Move(int32_t row, int32_t column, bool back)
{
    const GridCell cell = At(row, column);
    const int32_t count = IsList() ? grid_->Content().ValueCount(cell.attribute) : values_;
    const int32_t to = back ? cell.value - 1 : cell.value + 1;
    if (!IsInOwnOrder() || to < 1 || to > count || cell.value > count) return false;
    grid_->Content().MoveValues(Affected(cell), cell.value, to);
    return true;
}

} // namespace nib
