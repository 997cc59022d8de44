#pragma once
// An open text as its client sees it. Positions of the protocol count bytes or UTF-16 units within a line, as the two
// sides have agreed.

#include "language/server/Message.h"
#include "text/SourceDocument.h"

namespace nib {

enum class Units : uint8_t { Utf16, Utf8 };

/// Units of the client up to `col`, and back: into the line, and never between the halves of a character.
int32_t ToClient(TextView line, int32_t col, Units units);
int32_t FromClient(TextView line, int64_t character, Units units);

/// Lines that were replaced: `count` from `first` on now stand where `removed` stood.
struct LinesChanged {
    int32_t first = 0;
    int32_t removed = 0;
    int32_t count = 0;
};

class ClientText {
public:
    ClientText(TextView text, Json version, Units units);

    /// An element of `contentChanges`. Throws for one that is none. `clamped` is set where it lay outside the text.
    LinesChanged Change(const Json& change, bool& clamped);

    const Json& Version() const { return version_; }
    void SetVersion(Json version) { version_ = std::move(version); }
    const SourceDocument& Document() const { return *document_; }
    int32_t LineCount() const { return document_->LineCount(); }
    Text Line(int32_t line) const { return document_->GetLine(line); }
    int32_t LineLength(int32_t line) const { return document_->LineLength(line); }
    std::vector<Text> Lines(int32_t first, int32_t count) const;

    /// Throws for what is no position; one outside the text is taken into it.
    Position Read(const Json& position, bool* clamped = nullptr) const;
    TextRange ReadRange(const Json& range, bool* clamped = nullptr) const;
    Json Write(Position at) const;
    Json Write(const TextRange& range) const;

private:
    std::unique_ptr<SourceDocument> document_;
    Json version_;
    Units units_;
};

} // namespace nib
