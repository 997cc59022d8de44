#pragma once
// The names of a program: what each one is, where it stands, and whether anything sets or reads it.

#include "language/ProgramFlow.h"

namespace nib {

/// What happens to a name, in included items too.
struct NameFacts {
    int32_t sets = 0;
    int32_t outputs = 0; ///< set by a clause that asks for a variable
    int32_t parts = 0;   ///< a part of it is set
    int32_t changes = 0; ///< by what it is itself: A += 1
    int32_t reads = 0;
    int32_t given = 0;
    int32_t jumps = 0;  ///< to a label
    int32_t gosubs = 0; ///< of these by GOSUB
    bool declared = false;
    bool unsure = false; ///< seen by others, or what it is cannot be told
    int32_t first = -1;  ///< occurrence that reads or, where none does, sets it
    int32_t label = -1;  ///< occurrence that defines the label
};

class ProgramNames {
public:
    ProgramNames(const WordTable& words, ProgramFacts& program) : words_(words), program_(program) {}

    void Clear();
    /// `firstLine` of the text is where the step's statement begins, in a routine of the program.
    void Take(const FlowNode& node, const ProgramText& text, int32_t firstLine, int32_t routine);
    void Finish();

    const std::vector<NameFacts>& Facts() const { return facts_; }
    /// The variable of a word; -1 when there is none.
    int32_t VariableOf(int32_t word) const { return Known(global_, word); }
    int32_t LabelOf(int32_t routine, int32_t word) const;
    /// The number that a constant stands for, or -1.
    int32_t NumberOf(int32_t index, const std::vector<int32_t>* words) const;
    bool IsFunctionWord(int32_t word) const { return words_.FactsOf(word).function; }

private:
    struct Here {
        const FlowNode& node;
        const ProgramText& text;
        int32_t firstLine;
    };

    static int32_t Known(const std::vector<int32_t>& symbols, int32_t word)
    {
        return word >= 0 && static_cast<size_t>(word) < symbols.size() ? symbols[static_cast<size_t>(word)] : -1;
    }
    static void Set(std::vector<int32_t>& symbols, int32_t word, int32_t symbol);
    int32_t Add(const Here& here, const NameUse& use, SymbolKind kind);
    Text Written(const Here& here, const NameUse& use) const;
    TextRange Range(const Here& here, const NameUse& use) const;
    void Occur(const Here& here, const NameUse& use, int32_t symbol);
    int32_t Variable(const Here& here, const NameUse& use);
    void Label(const Here& here);
    void Jumps(const Here& here, const NameUse& use);
    void BeginRoutine(const Here& here, int32_t number);
    void Declare(const Here& here, const NameUse& use, SymbolKind kind);
    void Common(const Here& here);
    void Constant(const Here& here);
    void Call(const Here& here, const NameUse& use);
    void TakeUse(const Here& here, const NameUse& use);
    void Count(const NameUse& use, int32_t symbol);
    bool MaySet(int32_t function) const;
    void Resolve();

    struct LabelKey {
        int32_t routine;
        int32_t word;
        int32_t symbol;
    };
    struct Jump {
        int32_t routine;
        int32_t word;
        int32_t occurrence; ///< -1 in an included item
        bool sub;
        Text written;
        int32_t symbol = -1;
    };

    const WordTable& words_;
    ProgramFacts& program_;
    std::vector<NameFacts> facts_;
    std::vector<int32_t> global_;                    ///< by word
    std::vector<int32_t> external_;                  ///< what is called, by word
    std::vector<std::pair<int32_t, int32_t>> local_; ///< words and symbols of the present local routine
    std::vector<LabelKey> labels_;
    std::vector<Jump> jumps_;
    int32_t routine_ = 0;
};

} // namespace nib
