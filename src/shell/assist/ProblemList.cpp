#include "shell/assist/ProblemList.h"

#include "documents/mvDocument.h"

#include <utility>

namespace nib {

bool ProblemList::Refresh()
{
    std::vector<Row> rows;
    counts_.fill(0);
    for (const auto& document : assistance_.Documents()) {
        const Text name = document->DisplayName();
        for (const ProgramFinding& finding : assistance_.Findings(document->DocumentID())) {
            ++counts_[static_cast<size_t>(finding.level)];
            if (IsShown(finding.level) && rows.size() < kMostRows)
                rows.push_back({document->DocumentID(), name, finding.level, finding.at.start, finding.message});
        }
    }
    return std::exchange(rows_, std::move(rows)) != rows_;
}

} // namespace nib
