#include "printing/QtPaper.h"

#include "base/Error.h"
#include "platform/qt/QtText.h"
#include "printing/PageLayout.h"

#include <QCoreApplication>

namespace nib {

std::vector<int32_t> ChosenPages(const Paper& paper, int32_t count)
{
    std::vector<PrintRange> ranges;
    const QPageRanges chosen = paper.device.pageRanges();
    for (const auto& range : chosen.toRangeList()) ranges.push_back({range.from, range.to});
    std::vector<int32_t> pages = PagesToPrint(ranges, count, paper.lastFirst);
    if (pages.empty()) {
        const QString refusal =
            QCoreApplication::translate("Printing", "The text ends on page %1; the pages asked for lie behind it.");
        throw Error(error_number::kInvalidCall, ToText(refusal.arg(count)));
    }
    return pages;
}

void RefuseDevice()
{
    throw Error(error_number::kDeviceUnavailable,
                ToText(QCoreApplication::translate("Printing", "The printer does not take the pages.")));
}

} // namespace nib
