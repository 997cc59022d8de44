#pragma once
#include "hosts/mvConnect.h"
#include "persistence/store/SettingsStore.h"

namespace nib {

/// The path of the item's file.
Text GridFileOf(const mvItem& item);

/// The files whose records the user looks at as grids.
class GridFiles {
public:
    /// `store` outlives it.
    explicit GridFiles(SettingsStore& store) : store_(store) {}

    bool Holds(const mvItem& item) const;
    void Set(const mvItem& item, bool grid);

private:
    std::vector<Text> All() const;

    SettingsStore& store_;
};

} // namespace nib
