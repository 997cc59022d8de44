#pragma once
// What this program adds to a printed text: a header on each page, a number before each line.

#include "diagnostics/DebugLog.h"
#include "documents/PrintHeader.h"
#include "text/SourceView.h"

#include <functional>

namespace nib {

class PrintClass final : public PrintHeader {
public:
    /// `shortDate` answers the present date in the system's short form. All three outlive the object.
    PrintClass(SourceView& view, const DebugLog& log, std::function<Text()> shortDate);

    SourceView& View;
    Text Filename;
    Text ItemID;

    void SetNames(TextView filename, TextView itemId) override;
    Text Title() const;

    void PreDraw(DrawContext&) override {}
    void PreDrawPage(DrawContext& context) override;
    void PreDrawLine(DrawContext& context) override;
    void PostDrawPage(DrawContext&) override {}
    void PostDraw(DrawContext&) override {}

private:
    const DebugLog& log_;
    std::function<Text()> shortDate_;
};

} // namespace nib
