#pragma once
// What the editor knows of the programs that are open: it tells the language service of their changes, and brings its
// answers to whoever shows them. No call waits for the service.

#include "documents/CompilerOutput.h"
#include "documents/DocumentServices.h"
#include "platform/Desktop.h"
#include "shell/assist/FollowedText.h"
#include "shell/assist/LanguageWorker.h"

#include <atomic>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace nib {

class mvDocument;

struct AssistPorts {
    LanguageWorker::Make makeService; ///< empty: nothing is known of programs
    ToWindows toWindows;
};

/// What is shown over the text or beside it, at the caret of a document.
enum class AssistForm { Completion, Mends, Rename, QuickOpen };

/// Where a finding is.
struct FindingPlace {
    std::shared_ptr<mvDocument> document;
    ProgramFinding finding;
};

class Assistance {
public:
    /// All outlive it. The service is made when the first document is followed.
    Assistance(DocumentServices& services, Timers& timers, const Clock& clock, AssistPorts ports);
    ~Assistance();
    Assistance(const Assistance&) = delete;
    Assistance& operator=(const Assistance&) = delete;

    /// From when its window is made until that goes.
    void Follow(mvDocument& document, SourceDocument& text);
    void Forget(int32_t documentId);
    /// It may have another path, or another say in whether it is a program.
    void DocumentChanged(const mvDocument& document);
    void SettingsChanged();
    /// Nothing is followed or asked any more.
    void Stop();

    /// As they are shown, ascending.
    const std::vector<ProgramFinding>& Findings(int32_t documentId) const;
    /// The lines with errors of the last compiles, ascending.
    const std::vector<CompileMark>& Marks(int32_t documentId) const;
    /// What mends the findings of a line; then what silences each of them there.
    std::vector<QuickMend> Mends(const mvDocument& document, int32_t line) const;
    /// The documents that are followed, in the order of their making.
    std::vector<std::shared_ptr<mvDocument>> Documents() const;
    /// The next finding from the caret of the active document, round through the others.
    std::optional<FindingPlace> NextFinding(int32_t documentId, bool backward) const;

    /// Puts a question about a text as it is now; an answer to a text that has changed meanwhile is dropped. False when
    /// nobody is there to answer. `question` runs on the service's thread.
    template <typename Question, typename Take>
    bool Ask(const mvDocument& document, Question question, Take take)
    {
        Followed* followed = AskedOf(document);
        if (!followed) return false;
        worker_->Ask(
            [path = followed->told, question = std::move(question)](LanguageService& service) {
                return question(service, path);
            },
            [this, id = followed->id, revision = followed->text->Revision(), take = std::move(take)](auto& answer) {
                if (IsAt(id, revision)) take(answer);
            });
        return true;
    }
    /// The same of no text.
    template <typename Question, typename Take>
    bool AskAll(Question question, Take take)
    {
        if (!Start()) return false;
        Flush();
        worker_->Ask(std::move(question), std::move(take));
        return true;
    }
    /// Takes the user there, and says why in the status bar.
    void GoTo(int32_t documentId, Position at, const Phrase& why);
    /// From the caret of the active document.
    void GoToFinding(int32_t documentId, bool backward);
    /// The open document of a path that an answer names; null when none is open.
    std::shared_ptr<mvDocument> OpenDocument(TextView path) const;

    /// The account whose items are known before one of them is open; that of the present place without it.
    std::function<Location()> usualPlace;
    /// What is said of programs, in the user's language.
    std::function<Text(const Phrase&)> said = English;
    /// The findings or the marks of a document are others.
    std::function<void(int32_t documentId)> FindingsChanged;
    /// They have moved with its text.
    std::function<void()> FindingsMoved;
    /// The service has been told of a change of a text.
    std::function<void(int32_t documentId)> TextTold;
    /// `document` is the active one; may be null where a form needs none.
    std::function<void(AssistForm form, mvDocument* document)> Show;
    /// The settings want other panels.
    std::function<void()> PanelsChanged;
    /// There is none on what the user asks about, but there are pages.
    std::function<void()> HelpWanted;
    /// Commands have to be drawn afresh.
    std::function<void()> StateChanged;

private:
    struct Followed {
        int32_t id = 0;
        std::weak_ptr<mvDocument> document;
        std::unique_ptr<FollowedText> text;
        Text told; ///< path that the service knows it by; empty while it knows none
        std::shared_ptr<std::atomic<int64_t>> asked = std::make_shared<std::atomic<int64_t>>(-1);
        std::vector<ProgramFinding> found; ///< with those that wait
        int64_t foundAt = -1;              ///< revision that they are of
        int64_t typedMs = 0;               ///< when it was last changed
        bool stale = false;                ///< its findings
        bool program = false;              ///< it reads like one; that stays, whatever it is edited to
    };

    /// A mark in an item that may be open later.
    struct UnplacedMark {
        ItemPlace item;
        CompileMark mark;
    };

    void Compiled(TextView output);
    void MarkLines(ItemPlace item, const CompilerError& error, const Text& compiled);
    void PlaceMarks();
    Followed* FollowedOn(const ItemPlace& item);
    int32_t CompiledLine(const mvDocument& document, int32_t line) const;
    bool Start();
    bool IsProgram(Followed& followed, const mvDocument& document) const;
    Followed* AskedOf(const mvDocument& document);
    bool IsAt(int32_t id, int64_t revision) const;
    bool Wants(Followed& followed, const mvDocument& document) const;
    void Changed(Followed& followed);
    void WakeSoon();
    void Flush();
    void Tell(Followed& followed);
    void Close(Followed& followed);
    void AddAccount(const ItemPlace& place);
    void AskFindings(Followed& followed);
    void Present(Followed& followed);
    void SetShown(Followed& followed, std::vector<ProgramFinding> findings);
    void AskAgain();

    DocumentServices& services_;
    Timers& timers_;
    const Clock& clock_;
    const AssistPorts ports_;
    std::map<int32_t, Followed> followed_;                 ///< by DocumentID
    std::map<Text, std::shared_ptr<ItemReader>> accounts_; ///< by path
    std::vector<ItemPlace> newAccounts_;                   ///< of texts that were told
    std::unique_ptr<Timers::Timer> turn_;                  ///< while anything is to be told
    std::unique_ptr<Timers::Timer> waiting_;               ///< while findings wait for the end of typing
    std::unique_ptr<Timers::Timer> others_;                ///< while the findings of other texts may have changed
    std::vector<UnplacedMark> unplaced_;
    std::unique_ptr<LanguageWorker> worker_;
    bool stopped_ = false;
};

} // namespace nib
