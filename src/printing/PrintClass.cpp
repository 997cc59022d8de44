#include "printing/PrintClass.h"

#include "diagnostics/Guarded.h"

#include <unicode/utf16.h>

#include <algorithm>

namespace nib {

namespace {

constexpr int32_t kHeaderGap = 4; ///< characters
constexpr int32_t kFewestDigits = 4;
constexpr int32_t kBehindNumber = 2; ///< blanks

int32_t Width(const DrawContext& context, TextView text)
{
    int32_t measured = OrDefault([&] { return context.surface->TextWidth(text); }, -1);
    return measured >= 0 ? measured : static_cast<int32_t>(text.size()) * context.charWidth;
}

/// A title wider than its room loses the front of its name: the end tells more.
Text Fitted(const DrawContext& context, Text title, int32_t room)
{
    constexpr TextView label = u"File: ";
    auto from = static_cast<int32_t>(label.size());
    while (from < static_cast<int32_t>(title.size()) && Width(context, title) > room) {
        bool shortened = title[label.size()] == u'\u2026';
        int32_t end = from + (shortened ? 1 : 0);
        if (end >= static_cast<int32_t>(title.size())) break;
        U16_FWD_1(title.data(), end, static_cast<int32_t>(title.size()));
        title.replace(label.size(), static_cast<size_t>(end - from), u"\u2026");
    }
    return title;
}

} // namespace

void PrintClass::PreDrawPage(DrawContext& context)
{
    DrawSurface& surface = *context.surface;
    const int32_t gap = kHeaderGap * context.charWidth;
    const int32_t y = context.y - 2 * context.lineHeight;

    const Text page = u"Page " + Decimal(context.page);
    const int32_t pageStart = context.left + gap;
    surface.DrawText(pageStart, y, page);

    const int32_t dateStart = context.right - gap - Width(context, date_);
    surface.DrawText(dateStart, y, date_);

    const int32_t roomStart = pageStart + Width(context, page) + gap;
    const int32_t room = dateStart - gap - roomStart;
    const Text title = Fitted(context, title_, room);
    surface.DrawText(roomStart + std::max((room - Width(context, title)) / 2, 0), y, title);
}

void PrintClass::PreDrawLine(DrawContext& context)
{
    auto draw = [&] {
        Text lines = Decimal(view_.Document().LineCount());
        const auto width = std::max(static_cast<int32_t>(lines.size()), kFewestDigits);
        Text text(static_cast<size_t>(width + kBehindNumber), u' ');
        if (!context.continuation) {
            Text number = Decimal(context.line + 1);
            auto zeros = static_cast<size_t>(std::max(width - static_cast<int32_t>(number.size()), 0));
            text = Text(zeros, u'0') + number + Text(kBehindNumber, u' ');
        }
        context.surface->DrawText(context.charWidth, context.y, text);
        context.x = (width + kBehindNumber) * context.charWidth + context.charWidth;
    };
    Guarded(log_, u"PrintClass.PreDrawLine", draw, [](const Error&) {});
}

} // namespace nib
