#pragma once

namespace nib {

/// Answers --help and --version on the terminal, before any window system is needed; true when there was such a
/// request.
bool AnswersOnTerminal(int argc, const char* const* argv);

} // namespace nib
