#pragma once
// The working parts of SourceBuffer: the two primitives that every change of the text goes through, and what follows
// them.

#include "diagnostics/Guarded.h"
#include "text/BlockFolder.h"
#include "text/LineScanner.h"
#include "text/SourceBuffer.h"
#include "text/TextSearch.h"
#include "text/UndoStack.h"

#include <optional>

namespace nib {

struct SourceBuffer::Impl {
    explicit Impl(SourceBuffer& buffer) : scanner(buffer, lines), folder(lines) {}

    LineStore lines;
    UndoStack undo;
    LineScanner scanner;
    BlockFolder folder;
    std::vector<BufferListener*> listeners;
    int32_t bookmarks = 0;
    /// Above 0 inside a group, an operation or an undo: what was changed is scanned once at the end.
    int32_t depth = 0;

    int32_t ClampLine(int32_t line) const;
    Position ClampPosition(Position p) const;

    void Load(TextView text);
    Position Insert(Position at, TextView text);
    void Erase(Position start, Position end);
    void Execute(std::unique_ptr<ISourceOp> operation);
    void Undo();
    void Redo();
    void ClearUndo();
    void NotifyChange(int32_t first, int32_t last, Position caret);

    /// Whoever walks from hit to hit asks for the same text each time.
    const TextSearch& Prepared(TextView text, FindOptions options);

    void Leave();
    void FlushPending();
    /// True when all that waits for a scan lies within these lines; the caller then scans them.
    bool TakePendingWithin(int32_t first, int32_t last);
    /// Puts the folds right after these lines changed, if need be.
    void RefreshFolding(bool always, int32_t first, int32_t last);
    void TellModified();
    void TellFolding();
    /// A listener that fails neither stops the others nor the change that is being told.
    template <typename Call>
    void Tell(Call&& call)
    {
        ++telling_;
        for (size_t i = 0; i < listeners.size(); ++i) IgnoringErrors([&] { call(*listeners[i]); });
        --telling_;
    }

private:
    class Batch;

    void RefuseInCallback() const;
    void RefuseInStep() const;
    Position PutText(Position at, TextView text);
    TextEdit TakeText(Position start, Position end);
    std::vector<KeptWords> CountOut(int32_t first, int32_t last);
    void RestoreWords(const TextEdit& edit);
    void Record(TextEdit edit);
    void TextReplaced(Position start, Position oldEnd, Position newEnd);
    /// Applies an edit, or its inverse; answers where the caret belongs then.
    Position Apply(TextEdit& edit, bool forward);
    /// Answers where the caret belongs, unless the operation said so itself or changed nothing.
    template <typename Body>
    std::optional<Position> RunOp(Body&& body);
    std::optional<Position> Replay(UndoStep& step, bool forward);
    bool FoldsReach(int32_t first, int32_t last) const;

    std::optional<TextSearch> search_;
    Text searchText_;
    FindOptions searchOptions_;
    std::vector<TextEdit>* journal_ = nullptr; ///< of the operation under way
    bool replaying_ = false;
    int32_t telling_ = 0;
    bool knownModified_ = false;
    bool linesChanged_ = false;
    bool foldsTouched_ = false; ///< hidden lines or heads came, went or moved apart
    bool caretTold_ = false;    ///< by the operation under way
    // Lines touched since the last scan: from the first one to so many before the end.
    int32_t pendingFirst_ = -1;
    int32_t pendingTail_ = 0;
};

} // namespace nib
