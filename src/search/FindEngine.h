#pragma once
#include "diagnostics/Guarded.h"
#include "persistence/store/SettingsStore.h"
#include "search/FindWalk.h"
#include "search/OpReplaceAll.h"

#include <optional>

namespace nib {

/// Values of optLookIn.
enum class LookIn : int32_t { Nothing = 0, Document = 1, AllDocuments = 2, Selection = 3 };

/// What the dialog shows and what the user has set in it.
struct FindDialog {
    bool replaceMode = false;
    LookIn lookIn = LookIn::Nothing;
    bool allDocumentsEnabled = false;
    bool selectionEnabled = false;
    bool up = false;
    bool upEnabled = true;
    bool matchCase = false;
    bool wholeWord = false;
    bool regex = false;
    Text findText;
    Text replaceText;

    TextView Caption() const { return replaceMode ? u"Replace" : u"Find"; }
    FindOptions Options() const { return {.matchCase = matchCase, .wholeWord = wholeWord, .regex = regex}; }
    /// Of the search text, where it is an expression.
    std::optional<PatternFault> Fault() const
    {
        return regex ? RegexSearch::FaultOf(findText) : std::optional<PatternFault>();
    }
};

/// Hits of one document that wait for their replacement.
struct Replacing {
    FindQuery query;
    Replacement replacement;
    std::vector<Position> hits;
    // Where they differ from hit to hit:
    HitTexts found;
    HitTexts put;
    std::optional<OrderedSelection> selection; ///< to be put back, moved by what was replaced in it
    int32_t count = 0;
    std::shared_ptr<const int32_t> sweep = std::make_shared<const int32_t>(); ///< names it, whatever it was done in
};

/// Everything behind the Find and Replace dialog: how it comes up, the steps, the lists, what the user is told.
class FindEngine {
public:
    /// All outlive the engine.
    FindEngine(DocumentServices& services, ResultsWindow& results, clsRecentList& recentSearches)
        : services_(services), results_(results), recentSearches_(recentSearches),
          walk_(services.openDocuments,
                {[this] { PassEnds(); }, [this](const FindQuery& query) { return MayWrap(query); }})
    {
    }

    FindEngine(const FindEngine&) = delete;
    FindEngine& operator=(const FindEngine&) = delete;

    /// The dialog's state for a new appearance; false when there is no document to search.
    bool Find();
    bool Replace();
    /// One step; true when it came to a hit.
    bool FindNext();
    bool ReplaceNext();
    /// `mode` is List or Bookmark; answers the number of hits.
    int32_t FindAll(FindMode mode);
    int32_t ReplaceAll();
    /// The user chose a direction, be it the present one.
    void SetSearchUp(bool up);
    /// The dialog came to the front.
    void GetActiveDocument();
    void Cancel() { ClearStatus(); }
    /// Keeps the text among the recent ones.
    void Remember() { GetSearchText(); }
    /// Where a search through the selection goes in a document; of all of it where it is none.
    std::optional<TextRange> RangeIn(mvDocument& document);
    /// The rows of cboFind.
    std::vector<Text> FindList() const;

    FindDialog& Dialog() { return dialog_; }
    /// The editor's settings, for the fonts of the form.
    const MvEdit& Settings() const { return services_.settings; }
    const DebugLog& Log() const { return services_.log; }

private:
    bool PrepareDialog(bool isReplace);
    void TakeSelection();
    void TakeCaretWord();
    bool IsAllDocuments() const;
    bool IsInSelection() const { return dialog_.lookIn == LookIn::Selection; }
    /// Nothing when there is no text to search for, or none that can be understood: then the user is told.
    std::optional<FindQuery> MakeQuery(FindMode mode);
    Text GetSearchText();
    bool FindNextMatch(const FindQuery& query);
    bool StepTo(const FindQuery& query);
    void ShowHit(const FindQuery& query);
    void Front(mvDocument& document);
    struct DocumentHits {
        std::shared_ptr<mvDocument> document;
        std::vector<FindHit> hits;
    };
    /// Nothing is listed or marked before all have been found.
    std::vector<DocumentHits> AllHits(const FindQuery& query);
    void ListHits(const DocumentHits& found);
    void ReplaceSelected(const FindQuery& query);
    void BeginReplacing(FindQuery query);
    void KeepHit();
    void Prove(const FindQuery& query);
    Position CommitReplacements(mvDocument& document);
    bool IsNextBehindHit(const FindQuery& query) const;
    void CommitBeforeNext(const FindQuery& query);
    void MoveSelection(const ReplacePass& pass);
    void RestoreSelection(mvDocument& document);
    void PassEnds();
    bool MayWrap(const FindQuery& query);
    void ReportNotFound();
    void Inform(TextView text);
    void ClearStatus() { services_.frame.SetStatusText(kStatusPane, u""); }
    /// The door of every operation: a failure ends the walk, and no document is held when it is through.
    template <typename Body>
    auto Operation(TextView name, Body&& body) -> decltype(body())
    {
        auto result = Guarded(services_.log, name, std::forward<Body>(body), [&](const Error& error) {
            walk_.Reset();
            if (error.number == error_number::kSearch) Inform(error.description);
            return decltype(body()){};
        });
        walk_.LetGo();
        replacing_.reset();
        return result;
    }

    static constexpr int32_t kStatusPane = 1;

    DocumentServices& services_;
    ResultsWindow& results_;
    clsRecentList& recentSearches_;
    FindWalk walk_;
    FindDialog dialog_;
    std::weak_ptr<mvDocument> current_;
    std::optional<Replacing> replacing_; ///< while all hits are replaced
};

/// The word that the caret stands in or behind, as it is offered for a search; empty on blanks.
Text GetCaretWord(TextView line, int32_t column);

} // namespace nib
