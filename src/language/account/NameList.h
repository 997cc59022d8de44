#pragma once
#include "language/account/IndexStore.h"

#include <map>

namespace nib {

/// Names of an account's items, subroutines and labels, to be found by some of their letters.
class NameList {
public:
    struct Hit {
        ItemName item;
        Text name;
        SymbolKind kind = SymbolKind::Program;
        TextRange at;
        int32_t score = 0; ///< higher is better
    };

    void Set(const ItemName& item, const std::vector<OutlineEntry>& outline);
    void Remove(const ItemName& item) { items_.erase(item); }
    /// Those that hold the letters in this order, in any case, best first. A query that begins with "@" asks for names
    /// within items alone, any other for items first.
    std::vector<Hit> Find(TextView query, size_t most) const;

    /// All that can be called, by the names that they give themselves.
    template <typename Each>
    void EachRoutine(Each&& each) const
    {
        for (const auto& [item, names] : items_)
            for (const Row& row : names.rows)
                if (row.isCalled) each(item, TextView(names.text).substr(row.start, row.length));
    }

private:
    struct Row {
        uint32_t start = 0; ///< in the names
        uint32_t length = 0;
        SymbolKind kind = SymbolKind::Label;
        bool isCalled = false; ///< by other items
        TextRange at;
    };
    struct Names {
        Text text; ///< all of them, as they are written
        std::vector<Row> rows;
    };
    std::map<ItemName, Names> items_;
};

/// How well the letters of `query`, which is in capitals, fit a name that holds them in this order; 0 when it does not.
int32_t FitOf(TextView query, TextView name);

} // namespace nib
