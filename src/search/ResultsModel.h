#pragma once
#include "documents/mvDocument.h"
#include "persistence/store/SettingsStore.h"

#include <functional>
#include <map>
#include <optional>

namespace nib {

/// How a line of the results is shown.
struct ResultsLine {
    int32_t highlightStart = 0;
    int32_t highlightLength = 0; ///< 0: nothing is highlighted
    bool bold = false;
    bool underlined = false;
};

/// Place and size of a window, in twips.
struct ResultsBounds {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;

    friend bool operator==(const ResultsBounds&, const ResultsBounds&) = default;
};

/// The contents of the results window: lines of text, and the way from a line back to its source.
class ResultsModel {
public:
    /// `services` outlive the model.
    explicit ResultsModel(DocumentServices& services) : services_(services) {}

    void ShowResults(TextView text);
    /// `first` begins the list.
    void AddOutput(TextView lines, bool first);
    void ResetResults(TextView title);
    void AddResultLine(TextView text, int32_t highlightStart, int32_t highlightLength, bool emphasis);
    void AddItemHeader(TextView text, TextView path);
    void AddItemLine(TextView text, int32_t highlightStart, int32_t highlightLength, int32_t line);
    int32_t ListNumber() const { return listNumber_; }

    /// Opens the item of a path, or brings its window to the front; false when it did not.
    std::function<bool(TextView path)> openPath;

    /// Lines joined with LF.
    const Text& Contents() const { return text_; }
    int32_t LineCount() const { return static_cast<int32_t>(rows_.size()); }
    TextView LineText(int32_t line) const;
    ResultsLine LineStyle(int32_t line) const;

    /// The source line, 1-based, that is meant by a caret and the word selected there; 0 when there is none.
    int32_t SourceLine(Position caret, TextView selected) const;
    /// Takes the user to it. A failure is logged, no more.
    void JumpToSource(Position caret, TextView selected);
    /// Goes on from the error that the user was at last. Answers its row here; nothing when it was the last one, or the
    /// list is none of a compiler.
    std::optional<int32_t> GoToError(bool backward);

    Text FontName() const;
    double FontSize() const;
    void SetFont(TextView name, double size);

private:
    struct Row {
        size_t start;
        ResultsLine style;
        int32_t sourceLine = 0; ///< of the item that a header above names by its path
    };

    void Clear(bool hasHeaders);
    void Append(TextView line, const ResultsLine& style);
    void AppendLines(TextView text);
    /// The document whose header is the nearest at or above the line, else the active one.
    std::shared_ptr<mvDocument> DocumentAbove(Position caret) const;

    int32_t RowAt(size_t unit) const;
    /// True when that settles where the line leads, be it nowhere.
    bool JumpByOutput(int32_t line);
    /// Opens it, at a line that its compiler has told.
    void ShowCompiled(TextView path, int32_t line);
    void GoToCompiled(mvDocument& document, int32_t line);
    /// Opens it, at the line unless that is 0.
    void Show(TextView path, int32_t line);
    /// Where lines lead into items by their paths.
    void JumpToItem(int32_t line);

    DocumentServices& services_;
    Text text_;
    std::vector<Row> rows_{Row{}};
    std::map<int32_t, Text> paths_; ///< by the line of the header
    bool hasHeaders_ = false;
    int32_t listNumber_ = 0;
    int32_t visited_ = -1; ///< the row that the user went from
};

/// Where the results window comes up: as large as it was kept, unless that exceeds the main window, in whose bottom
/// right corner it lies.
ResultsBounds PlaceResults(SettingsStore& store, const ResultsBounds& present, const ResultsBounds& mainWindow);
void SaveResultsSize(SettingsStore& store, const ResultsBounds& bounds);

} // namespace nib
