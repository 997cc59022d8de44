#pragma once
#include "language/service/NameReach.h"

namespace nib {

/// What may follow at the caret, the likeliest first.
class Completer {
public:
    explicit Completer(Sources& sources) : sources_(sources) {}

    Completions At(OpenText& text, Position at);

private:
    enum class Wanted : uint8_t { Nothing, Statements, Values, Labels, Callees, Files, Includes };
    struct Candidate {
        Completion what;
        int32_t score = 0;
    };
    struct Look {
        OpenText& text;
        const BasicLine& line;
        Position at;
        int32_t start = 0; ///< of the word before the caret
        Text prefix;
        Text includeFile; ///< that has been named already
        std::vector<Candidate> found;
    };

    Wanted WantedAt(Look& look) const;
    Wanted InDirective(Look& look) const;
    void Names(Look& look, Wanted wanted);
    void Words(Look& look, Wanted wanted);
    void Callees(Look& look);
    void Files(Look& look);
    void Includes(Look& look);
    void Closer(Look& look);
    void Add(Look& look, Completion what, int32_t bonus) const;

    Sources& sources_;
};

} // namespace nib
