#include "search/ResultsModel.h"

#include "diagnostics/Guarded.h"
#include "documents/CompilerOutput.h"
#include "persistence/store/SettingsStore.h"
#include "text/Units.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <unordered_map>

namespace nib {

namespace {

constexpr TextView kWidth{u"ResultsWidth"};
constexpr TextView kHeight{u"ResultsHeight"};
/// Between the corners of the two windows.
constexpr int32_t kCornerGap = 120;
constexpr int32_t kSmallestSize = 1440;
constexpr double kDefaultPoints = 10;

/// Digits ahead of the column, else those that end nearest before it.
int32_t NumberNear(TextView line, size_t column)
{
    column = std::min(column, line.size());
    auto ahead = std::find_if(line.begin() + static_cast<std::ptrdiff_t>(column), line.end(), units::IsDigit);
    if (ahead != line.end()) {
        int32_t number = LeadingInt(line.substr(static_cast<size_t>(ahead - line.begin())));
        if (number > 0) return number;
    }
    size_t end = column;
    while (end > 0 && !units::IsDigit(line[end - 1])) --end;
    size_t start = end;
    while (start > 0 && units::IsDigit(line[start - 1])) --start;
    return start == end ? 0 : LeadingInt(line.substr(start));
}

double Points(TextView size)
{
    std::string digits = ToUtf8(Trim(size));
    double points = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), points);
    return points >= 1 ? points : kDefaultPoints;
}

/// A size that was kept may be any text.
int32_t KeptSize(SettingsStore& store, TextView name, int32_t present, int32_t limit)
{
    int32_t size = ToInt(store.Get(name, Decimal(present)));
    return size > limit - kCornerGap || size < kSmallestSize ? present : size;
}

} // namespace

void ResultsModel::Append(TextView line, const ResultsLine& style)
{
    rows_.push_back({text_.size(), style});
    text_ += line;
}

void ResultsModel::Clear(bool hasHeaders)
{
    text_.clear();
    rows_.clear();
    paths_.clear();
    hasHeaders_ = hasHeaders;
    ++listNumber_;
    visited_ = -1;
}

void ResultsModel::ShowResults(TextView text)
{
    if (text.empty()) return;
    Clear(false);
    AppendLines(text);
}

void ResultsModel::AddOutput(TextView lines, bool first)
{
    if (first) Clear(false);
    AppendLines(lines);
}

void ResultsModel::AppendLines(TextView text)
{
    for (bool more = true; more;) {
        size_t end = text.find_first_of(u"\r\n");
        more = end != TextView::npos;
        if (!rows_.empty()) text_ += u'\n';
        Append(text.substr(0, end), {});
        if (more) text.remove_prefix(end + (text.substr(end, 2) == u"\r\n" ? 2 : 1));
    }
}

void ResultsModel::ResetResults(TextView title)
{
    Clear(true);
    ResultsLine style;
    style.bold = true;
    Append(title, style);
}

void ResultsModel::AddResultLine(TextView text, int32_t highlightStart, int32_t highlightLength, bool emphasis)
{
    ResultsLine style;
    if (highlightLength >= 1) {
        style.highlightStart = highlightStart;
        style.highlightLength = highlightLength;
    } else {
        style.underlined = emphasis;
    }
    text_ += u'\n';
    Append(text, style);
    text_ += u' ';
}

void ResultsModel::AddItemHeader(TextView text, TextView path)
{
    AddResultLine(text, 0, 0, true);
    paths_.emplace(LineCount() - 1, path);
}

void ResultsModel::AddItemLine(TextView text, int32_t highlightStart, int32_t highlightLength, int32_t line)
{
    AddResultLine(text, highlightStart, highlightLength, false);
    rows_.back().sourceLine = line;
}

TextView ResultsModel::LineText(int32_t line) const
{
    auto index = static_cast<size_t>(line);
    size_t end = index + 1 < rows_.size() ? rows_[index + 1].start - 1 : text_.size();
    return TextView(text_).substr(rows_[index].start, end - rows_[index].start);
}

ResultsLine ResultsModel::LineStyle(int32_t line) const
{
    return rows_[static_cast<size_t>(line)].style;
}

int32_t ResultsModel::SourceLine(Position caret, TextView selected) const
{
    int32_t number = LeadingInt(selected);
    if (number > 0) return number;
    if (caret.line < 0 || caret.line >= LineCount()) return 0;
    return std::max(NumberNear(LineText(caret.line), static_cast<size_t>(std::max(caret.col, 0))), 0);
}

std::shared_ptr<mvDocument> ResultsModel::DocumentAbove(Position caret) const
{
    if (hasHeaders_) {
        std::unordered_map<Text, std::shared_ptr<mvDocument>> headers;
        for (auto& document : services_.openDocuments.All()) headers.emplace(document->ListName() + u" ", document);
        for (int32_t line = std::min(caret.line, LineCount() - 1); line >= 0; --line) {
            if (!LineStyle(line).underlined) continue;
            auto found = headers.find(Text(LineText(line)));
            if (found != headers.end()) return found->second;
        }
    }
    return services_.openDocuments.ById(services_.frame.ActiveDocument());
}

void ResultsModel::JumpToSource(Position caret, TextView selected)
{
    visited_ = caret.line;
    Guarded(
        services_.log, u"frmResults.DblClkTimer_Timer",
        [&] {
            if (!paths_.empty()) return JumpToItem(caret.line);
            if (!hasHeaders_ && JumpByOutput(caret.line)) return;
            // What a search has listed knows its line, whatever numbers stand in the text.
            const bool inList = caret.line >= 0 && caret.line < LineCount();
            int32_t line = inList ? rows_[static_cast<size_t>(caret.line)].sourceLine : 0;
            if (line <= 0) line = SourceLine(caret, selected);
            if (line <= 0) return;
            auto document = DocumentAbove(caret);
            if (!document) return;
            hasHeaders_ ? document->GotoLine(line) : GoToCompiled(*document, line);
            document->Activate();
        },
        [](const Error&) {});
}

int32_t ResultsModel::RowAt(size_t unit) const
{
    const auto behind =
        std::upper_bound(rows_.begin(), rows_.end(), unit, [](size_t at, const Row& row) { return at < row.start; });
    return static_cast<int32_t>(behind - rows_.begin()) - 1;
}

std::optional<int32_t> ResultsModel::GoToError(bool backward)
{
    if (hasHeaders_ || !paths_.empty()) return std::nullopt;
    const std::vector<CompilerError> errors = ErrorsIn(text_);
    const auto rowOf = [&](const CompilerError& error) {
        return RowAt(static_cast<size_t>(error.message.data() - text_.data()));
    };
    const auto ahead = std::partition_point(errors.begin(), errors.end(), [&](const CompilerError& error) {
        return rowOf(error) < visited_ + (backward ? 0 : 1);
    });
    if (ahead == (backward ? errors.begin() : errors.end())) return std::nullopt;
    const CompilerError& error = backward ? *std::prev(ahead) : *ahead;
    const int32_t row = visited_ = rowOf(error);
    Guarded(
        services_.log, u"frmResults.GoToError",
        [&] {
            // Another document than the one that was compiled may be in front.
            if (!JumpByOutput(row))
                ShowCompiled(services_.connection.ComposeHostPath(services_.compiled), error.target.lines.front());
            services_.frame.SetStatusText(1, Trim(LineText(row)));
        },
        [](const Error&) {});
    return row;
}

bool ResultsModel::JumpByOutput(int32_t line)
{
    if (line < 0 || line >= LineCount()) return false;
    const OutputTarget target = TargetOfOutput(text_, rows_[static_cast<size_t>(line)].start);
    if (target.kind != OutputTarget::Kind::Program) return target.kind == OutputTarget::Kind::Nowhere;
    const std::optional<SourcePlace> place = FindSource(services_, target, services_.compiled);
    if (!place || !openPath) return false;
    ShowCompiled(place->path, place->line);
    return true;
}

void ResultsModel::ShowCompiled(TextView path, int32_t line)
{
    if (!openPath || !openPath(path)) return;
    if (auto document = services_.openDocuments.ById(services_.frame.ActiveDocument())) GoToCompiled(*document, line);
}

void ResultsModel::GoToCompiled(mvDocument& document, int32_t line)
{
    document.GotoLine(services_.compiledLine ? services_.compiledLine(document, line) : line);
}

void ResultsModel::Show(TextView path, int32_t line)
{
    if (!openPath || !openPath(path) || line == 0) return;
    if (auto document = services_.openDocuments.ById(services_.frame.ActiveDocument())) document->GotoLine(line);
}

void ResultsModel::JumpToItem(int32_t line)
{
    auto header = paths_.upper_bound(line);
    if (line < 0 || line >= LineCount() || header == paths_.begin()) return;
    --header;
    const int32_t target = rows_[static_cast<size_t>(line)].sourceLine;
    if (target > 0 || header->first == line) Show(header->second, target);
}

Text ResultsModel::FontName() const
{
    const MvEdit& settings = services_.settings;
    return settings.ResultsFontName.empty() ? settings.FontName : settings.ResultsFontName;
}

double ResultsModel::FontSize() const
{
    const MvEdit& settings = services_.settings;
    return Points(settings.ResultsFontSize.empty() ? settings.FontSize : settings.ResultsFontSize);
}

void ResultsModel::SetFont(TextView name, double size)
{
    auto tenths = static_cast<int32_t>(std::lround(size * 10));
    services_.settings.ResultsFontName = name;
    services_.settings.ResultsFontSize = Decimal(tenths / 10);
    if (tenths % 10 > 0) services_.settings.ResultsFontSize += u"." + Decimal(tenths % 10);
}

ResultsBounds PlaceResults(SettingsStore& store, const ResultsBounds& present, const ResultsBounds& mainWindow)
{
    ResultsBounds bounds;
    bounds.width = KeptSize(store, kWidth, present.width, mainWindow.width);
    bounds.height = KeptSize(store, kHeight, present.height, mainWindow.height);
    bounds.left = mainWindow.left + mainWindow.width - bounds.width - kCornerGap;
    bounds.top = mainWindow.top + mainWindow.height - bounds.height - kCornerGap;
    return bounds;
}

void SaveResultsSize(SettingsStore& store, const ResultsBounds& bounds)
{
    store.Save(kWidth, Decimal(bounds.width));
    store.Save(kHeight, Decimal(bounds.height));
}

} // namespace nib
