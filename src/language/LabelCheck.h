#pragma once
#include "language/BasicLine.h"
#include "language/FindingList.h"

#include <unordered_map>
#include <unordered_set>

namespace nib {

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
    void Finish();

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

} // namespace nib
