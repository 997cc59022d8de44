#pragma once
// What each statement does with the names that stand in it.

#include "base/Text.h"

#include <span>

namespace nib {

/// What a statement means for the way of the program, or for what is known of its names.
enum class StepKind : uint8_t {
    Plain,
    Label,
    If, ///< any statement ahead of its clauses
    Clause,
    LineEnd, ///< ends clauses that began in the line
    End,
    For,
    Next,
    Loop,
    Test, ///< WHILE, UNTIL
    Repeat,
    Leave, ///< EXIT
    Again, ///< CONTINUE
    BeginCase,
    Case,
    EndCase,
    Try,
    Catch,
    Go,
    Gosub,
    OnGo,
    OnGosub,
    Return,
    ReturnTo,
    Stop,
    Call,
    Routine,
    Declare, ///< DIM, PRIVATE ...
    Common,
    Constant,
    Functions, ///< names of functions that are items of their own
    Open,
    Lock,    ///< READU
    Release, ///< of one record, or of all
    Directive,
    Include,
};

struct StatementForm {
    TextView word;
    StepKind kind;
    /// Words in capitals are clauses; before them, and behind each, small letters tell what happens to the operands,
    /// the last of them to all that follow: s set, r read, b both, g changed where it stands, o opened, f a file, n no
    /// name at all. Ahead of all "?": it asks for clauses (THEN, ELSE, LOCKED, ON ERROR), "!":
    /// they may follow.
    TextView operands;
};

std::span<const StatementForm> StatementForms();

} // namespace nib
