#pragma once
// What this program adds to a printed text: a header on each page, a number before each line.

#include "diagnostics/DebugLog.h"
#include "text/SourceView.h"

namespace nib {

class PrintClass final : public ISourceDraw2 {
public:
    /// `title` names the document, `date` is the present one in the system's short form. The references outlive the
    /// object.
    PrintClass(SourceView& view, const DebugLog& log, Text title, Text date)
        : view_(view), log_(log), title_(std::move(title)), date_(std::move(date))
    {
    }

    void PreDrawPage(DrawContext& context) override;
    void PreDrawLine(DrawContext& context) override;

private:
    SourceView& view_;
    const DebugLog& log_;
    Text title_;
    Text date_;
};

} // namespace nib
