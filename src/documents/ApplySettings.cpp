#include "documents/ApplySettings.h"

#include "editing/LexClass.h"

#include <algorithm>
#include <charconv>

namespace nib {

namespace {

struct TokenRow {
    int32_t type;
    int32_t MvEdit::*color;
    int16_t MvEdit::*style;
};

constexpr TokenRow kTokens[] = {
    {token_type::kComment, &MvEdit::CommentColor, &MvEdit::CommentStyle},
    {token_type::kReserved, &MvEdit::ReservedColor, &MvEdit::ReservedStyle},
    {token_type::kString, &MvEdit::StringColor, &MvEdit::StringStyle},
    {token_type::kNormal, &MvEdit::NormalColor, &MvEdit::NormalStyle},
    {token_type::kSeparator, &MvEdit::NormalColor, &MvEdit::NormalStyle},
    {token_type::kLabel, &MvEdit::LabelColor, &MvEdit::LabelStyle},
    {token_type::kUserKeyword, &MvEdit::KeywordColor, &MvEdit::KeywordStyle},
};

constexpr int32_t kMarkTypes[] = {token_type::kValueMark, token_type::kSubValueMark};
constexpr int32_t kMarkColor = 150 | 150 << 8 | 150 << 16;
constexpr int32_t kBlack = 0;

void FillTable(TokenStyleTable& table, const MvEdit& settings, bool coloured)
{
    for (const TokenRow& row : kTokens) table.SetColor(row.type, coloured ? settings.*row.color : kBlack);
    for (const TokenRow& row : kTokens) table.SetStyle(row.type, settings.*row.style);
    for (int32_t type : kMarkTypes) table.SetColor(type, kMarkColor);
}

/// Points as text, with a point whatever the locale; `fallback` when it is no number above 0.
double PointSize(TextView text, double fallback)
{
    std::string digits = ToUtf8(Trim(text));
    double size = 0;
    auto result = std::from_chars(digits.data(), digits.data() + digits.size(), size);
    return result.ec == std::errc{} && size > 0 ? std::min(size, 400.0) : fallback;
}

SourceFont FontOf(const MvEdit& settings, SourceFont font)
{
    if (!settings.FontName.empty()) font.name = settings.FontName;
    if (!settings.FontSize.empty()) font.size = PointSize(settings.FontSize, font.size);
    font.bold = settings.NormalStyle & token_style::kBold;
    font.italic = settings.NormalStyle & token_style::kItalic;
    return font;
}

} // namespace

int32_t MarginWidthFor(SourceView& view)
{
    constexpr int32_t kLongText = 10000;
    const int32_t digits = view.Document().LineCount() < kLongText ? 4 : 5;
    return digits + (view.ShowBlocks() ? 3 : 1);
}

void ApplyViewSettings(SourceView& view, const MvEdit& settings, LexClass* lexer)
{
    view.SetFont(FontOf(settings, view.Font()));
    view.SetTabSize(std::max<int32_t>(settings.TabSize, 1));
    view.SetBackColor(settings.BackColor);
    view.SetLineWrap(settings.LineWrap);
    SourceDocument& document = view.Document();
    view.SetShowBlocks(settings.CollapseBlocks);
    view.SetMarginWidth(MarginWidthFor(view));
    FillTable(view.TokenStyles(), settings, true);
    FillTable(view.PrintTokenStyles(), settings, settings.ColorPrinting);
    if (lexer) {
        lexer->SetKeywords(settings.Keywords);
        lexer->SetHighlight(settings.Highlight);
    }
    document.UpdateLines(0, document.LineCount() - 1);
}

} // namespace nib
