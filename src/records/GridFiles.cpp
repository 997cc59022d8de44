#include "records/GridFiles.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kValueName{u"GridFiles"};
/// Those that were chosen last.
constexpr size_t kMost = 200;

} // namespace

Text GridFileOf(const mvItem& item)
{
    return nib::ComposeHostPath({item.Provider(), ToUpper(item.ServerName()), item.Database(), item.Folder(), {}});
}

std::vector<Text> GridFiles::All() const
{
    return Split(store_.Get(kValueName, u""), kValueMark);
}

bool GridFiles::Holds(const mvItem& item) const
{
    const std::vector<Text> files = All();
    return std::find(files.begin(), files.end(), GridFileOf(item)) != files.end();
}

void GridFiles::Set(const mvItem& item, bool grid)
{
    const Text file = GridFileOf(item);
    std::vector<Text> files = All();
    std::erase(files, file);
    if (grid) files.insert(files.begin(), file);
    if (files.size() > kMost) files.resize(kMost);
    Text kept;
    for (const Text& one : files) kept += (kept.empty() ? Text() : Text(ValueMark)) + one;
    store_.Save(kValueName, kept);
}

} // namespace nib
