#pragma once
// What is wrong in a program and where, and the checks of its labels and parentheses.

#include "language/BasicLine.h"
#include "language/Phrase.h"

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace nib {

/// A line of the program, or of an item that it includes.
struct Place {
    int32_t line = 0; ///< 1-based
    int32_t item = 0; ///< 0: the program itself
};

struct Finding {
    int32_t line = 0; ///< of the program, 1-based
    Phrase text;
    TextView code; ///< of the table of findings
};

/// What is wrong, and where. What is wrong in an included item is told at the line that includes it.
class FindingList {
public:
    /// Names an included item; answers its number.
    int32_t AddItem(Text name, Place includedAt);
    void Add(Place place, TextView code, Phrase text);
    /// "line 12", or "line 3 of BP COMMON.INC".
    Phrase Describe(Place place) const;
    /// The line of the program that stands for a place.
    int32_t ProgramLine(Place place) const;
    /// What follows a line of the program is no part of it.
    void DropBehind(int32_t line);
    /// In the order of the lines, each finding once.
    std::vector<Finding> Take();

private:
    struct Item {
        Text name;
        int32_t line;
    };
    std::vector<Item> items_;
    std::vector<Finding> findings_;
};

/// Labels that are defined twice, and branches to labels that are not there.
///
/// Dialects differ in whether case tells labels apart: those of the same case are the same label everywhere, and those
/// that differ in more than case are different ones.
class LabelCheck {
public:
    explicit LabelCheck(FindingList& findings) : findings_(findings) {}

    /// `continued`: the line goes on with the statement of the one before.
    void Line(const BasicLine& line, Place place, bool continued);
    /// Labels of the routine that begins here are its own.
    void NewRoutine() { defined_.clear(); }
    /// Within, only one of several definitions may be compiled.
    void SetConditional(bool conditional) { conditional_ = conditional; }
    /// A part of the program cannot be read: labels may be there.
    void SetIncomplete() { incomplete_ = true; }
    /// `surely`: not when labels may be in what cannot be read.
    void Finish(bool surely);

private:
    struct Reference {
        Text name;
        TextView statement; ///< GOTO or GOSUB
        Place place;
    };

    void Define(const BasicLine& line, const BasicToken& label, Place place, bool continued);
    void Suppose(const BasicLine& line);
    size_t Targets(const BasicLine& line, size_t at, Place place);
    void Refer(const BasicLine& line, const BasicToken& target, Place place);

    FindingList& findings_;
    std::unordered_map<Text, Place> defined_; ///< as written, of the present routine
    std::unordered_set<Text> known_;          ///< all, and whatever could be one, in capitals
    std::vector<Reference> references_;
    TextView statement_;
    bool inList_ = false;
    bool conditional_ = false;
    bool incomplete_ = false;
};

/// Parentheses of a statement, which may go on over line ends where it cannot end yet.
class ParenCheck {
public:
    explicit ParenCheck(FindingList& findings) : findings_(findings) {}

    void Line(const BasicLine& line, Place place);
    void Finish();
    /// A parenthesis is open behind the last line.
    bool IsOpen() const { return depth_ > 0; }

private:
    bool GoesOnWith(const BasicLine& line) const;

    FindingList& findings_;
    int32_t depth_ = 0;
    Place opened_;
    bool mustGoOn_ = false;
};

} // namespace nib
