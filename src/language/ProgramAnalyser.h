#pragma once
// Answers what is known of a program, after every change of its lines anew: what a line says is kept, and only what
// follows from all lines together is found again.

#include "language/IncludeSource.h"
#include "language/ProgramFlow.h"
#include "language/ProgramNames.h"

namespace nib {

class ProgramAnalyser {
public:
    /// `file` and `item` name the program; the dialect, if any, outlives this.
    ProgramAnalyser(const Dialect* dialect, Text file, Text item);
    ProgramAnalyser(const ProgramAnalyser&) = delete;
    ProgramAnalyser& operator=(const ProgramAnalyser&) = delete;

    void Replace(int32_t first, int32_t removed, std::span<const Text> lines);
    /// Good until the next change.
    const ProgramFacts& Analyse(IncludeSource& includes);
    /// As it was last analysed.
    const ProgramFacts& Known() const { return program_; }
    /// The names and words of some lines, as they look; of a program that was analysed since its last change.
    std::vector<LookedWord> Words(int32_t firstLine, int32_t lastLine) const;

    const std::shared_ptr<ProgramText>& Lines() const { return text_; }
    const ProgramFlow& Flow() const { return flow_; }
    const ProgramNames& Names() const { return names_; }
    /// All that it includes was found.
    bool Complete() const { return complete_; }
    /// Names that it does not set may be set by what includes it.
    void SetIncluded(bool included) { included_ = included; }
    bool Included() const { return included_; }
    /// A part of the system itself ($INTERNAL): called as it is run, and with words that programs do not have.
    bool Internal() const { return internal_; }

private:
    /// A text on the way through its lines.
    struct Source {
        const ProgramText& text;
        Text file;
        Text item;
        int32_t number;                    ///< 1 + the include of the program that it came by, 0 for the program
        const std::vector<int32_t>* words; ///< what its words are called in the program
        const Source* includedBy;
        int32_t lines; ///< that are looked at
    };
    /// The words of an included text as the program numbers them.
    struct Import {
        std::shared_ptr<const ProgramText> text;
        uint32_t version;
        std::vector<int32_t> words;
    };

    void Walk(const Source& source, IncludeSource& includes);
    void Include(const Source& source, int32_t line, IncludeSource& includes);
    const std::vector<int32_t>* WordsOf(const std::shared_ptr<const ProgramText>& text);
    void Finish(int32_t lines);
    void Outline();

    std::shared_ptr<ProgramText> text_;
    Text file_;
    Text item_;
    ProgramFacts program_;
    ProgramFlow flow_;
    ProgramNames names_;
    std::vector<std::unique_ptr<Import>> imports_;
    int32_t includeCount_ = 0;
    bool complete_ = true;
    bool included_ = false;
    bool internal_ = false;
};

} // namespace nib
