#pragma once
// A record as tables: the list of its attributes, and beside that one for each association of them.

#include "records/GridCell.h"
#include "records/Record.h"

namespace nib {

class RecordGrid;

/// The list of attributes has a row for each, with their values across. An association has a row for each value, with
/// its attributes across. Either goes on by one behind the last, so that there is a place to type what comes next.
class GridTable {
public:
    enum class Order : uint8_t { Own, Up, Down };

    /// `grid` outlives it.
    GridTable(RecordGrid& grid, std::vector<int32_t> attributes, Text association);

    bool IsList() const { return association_.empty(); }
    const Text& Association() const { return association_; }
    const std::vector<int32_t>& Attributes() const { return attributes_; }
    void SetAttributes(std::vector<int32_t> attributes);
    int32_t Rows() const { return static_cast<int32_t>(rows_.size()); }
    int32_t Columns() const { return columns_; }
    GridCell At(int32_t row, int32_t column) const;
    /// The row and column of a value; row -1 where the filter hides it or it is of another table.
    std::pair<int32_t, int32_t> Find(int32_t attribute, int32_t value) const;
    Text RowTitle(int32_t row) const;
    Text ColumnTitle(int32_t column) const;

    // What is seen of the table, and in which order: nothing of that is stored.
    void Sort(int32_t column, Order order);
    void Filter(TextView text);
    /// Rows can be moved.
    bool IsInOwnOrder() const { return order_ == Order::Own && filter_.empty(); }
    /// Takes in what has changed; true when rows or columns came, went or are others.
    bool Refresh();

    // Of values: of all attributes of an association at once.
    void Insert(int32_t row, int32_t column);
    void Delete(int32_t row, int32_t column);
    /// A value further on or back; false where it cannot go.
    bool Move(int32_t row, int32_t column, bool back);

private:
    std::vector<int32_t> Affected(const GridCell& cell) const;
    std::vector<int32_t> AllRows();
    bool Passes(int32_t line) const;
    void SortRows(std::vector<int32_t>& rows) const;

    RecordGrid* grid_;
    std::vector<int32_t> attributes_;
    Text association_; ///< empty: the list
    int32_t values_ = 0;
    int32_t columns_ = 0;
    std::vector<int32_t> rows_; ///< attributes or values
    Text filter_;
    int32_t sortColumn_ = 0;
    Order order_ = Order::Own;
};

class RecordGrid {
public:
    /// `document` outlives it. Throws Error when the record is too large for tables.
    RecordGrid(SourceDocument& document, Dictionary dictionary);

    Record& Content() { return record_; }
    const Dictionary& Names() const { return dictionary_; }
    const DictionaryField* FieldOf(int32_t attribute) const;
    /// The list first.
    std::vector<GridTable>& Tables() { return tables_; }
    /// Takes in what has changed. True when tables came or went, or attributes went into another one; each of them
    /// takes in the rest by itself.
    bool Refresh();

    Text Stored(const GridCell& cell) { return record_.Value(cell.attribute, cell.value); }
    ShownValue Show(const GridCell& cell) { return ShowValue(Stored(cell), cell.field); }
    /// Why a text cannot take the place of what the cell shows; empty when it can.
    Text Refusal(const GridCell& cell, TextView typed);
    /// One step of undo, or none where nothing changes. Throws Error.
    void Type(const GridCell& cell, TextView typed);

private:
    std::vector<std::pair<Text, std::vector<int32_t>>> Plan() const;

    Record record_;
    Dictionary dictionary_;
    std::map<int32_t, const DictionaryField*> fields_;
    std::vector<GridTable> tables_;
};

} // namespace nib
