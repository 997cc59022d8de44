#pragma once
// The two ends of a compile: the command line for the host, and its output as the results window shows it.

#include "base/Text.h"

namespace nib {

/// `command` with the first "%FILENAME%" and "%ITEMID%" replaced, or the names appended where these are missing. Each
/// name is one word of the command, in quotes where it must be; one that cannot be is refused, and so is one that the
/// program would take for an option.
Text BuildCompileCommand(TextView command, TextView options, TextView fileName, TextView itemId);

/// The lines of a host's output (CR LF between them) without those that are blank or begin with a ruler such as "==".
/// What a terminal would obey is taken out, and of an endless output the middle is left out.
Text FilterCompileOutput(TextView output);

/// The compiler says itself that it found no error, and nowhere that it did: "0 error(s)" or "with no errors" of one
/// that counts them, "12 lines checked, no error found." of nib-basic. Of any other nobody knows.
bool IsCleanCompile(TextView output);
/// It names lines or warns of something all the same, which is worth reading.
bool Complains(TextView output);

} // namespace nib
