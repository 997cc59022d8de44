#pragma once
// The working parts of SourceBuffer: the two primitives that every change of the text goes through, and what follows
// them.

#include "platform/sourceview/BlockFolder.h"
#include "platform/sourceview/LineScanner.h"
#include "platform/sourceview/SourceBuffer.h"
#include "platform/sourceview/TextSearch.h"
#include "platform/sourceview/UndoStack.h"

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

    /// Whoever walks from hit to hit asks for the same text each time.
    const TextSearch& Prepared(TextView text, FindOptions options);

    void Leave();
    void FlushPending();
    /// True when all that waits for a scan lies within these lines; the caller then scans them.
    bool TakePendingWithin(int32_t first, int32_t last);
    void RefreshFolding(bool linesChanged);
    void TellModified();
    void TellFolding();
    template <typename Call>
    void Tell(Call&& call)
    {
        ++telling_;
        for (size_t i = 0; i < listeners.size(); ++i) call(*listeners[i]);
        --telling_;
    }

private:
    void RefuseInCallback() const;
    Position PutText(Position at, TextView text);
    TextEdit TakeText(Position start, Position end);
    std::vector<KeptWords> CountOut(int32_t first, int32_t last);
    void RestoreWords(const TextEdit& edit);
    void Record(TextEdit edit);
    void TextReplaced(Position start, Position oldEnd, Position newEnd);
    /// Applies an edit, or its inverse; answers where the caret belongs then.
    Position Apply(const TextEdit& edit, bool forward);
    template <typename Body>
    void RunOp(Body&& body);
    template <typename Done>
    void Replay(UndoStep& step, bool forward, Done&& done);

    std::optional<TextSearch> search_;
    Text searchText_;
    FindOptions searchOptions_;
    std::vector<TextEdit>* journal_ = nullptr; ///< of the operation under way
    bool replaying_ = false;
    int32_t telling_ = 0;
    bool knownModified_ = false;
    bool linesChanged_ = false;
    // Lines touched since the last scan: from the first one to so many before the end.
    int32_t pendingFirst_ = -1;
    int32_t pendingTail_ = 0;
};

} // namespace nib
