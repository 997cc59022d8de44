#pragma once
#include "base/Text.h"

namespace nib {

/// Where the things lie that come with the program.
struct ProgramPlaces {
    Text programs; ///< the editor and the programs that verbs of accounts run
    Text data;     ///< the sample account, the private fonts
    Text settings; ///< the switch file of the settings store

    /// A program beside which the sample account lies has everything there: the tree of a build, or a folder that is
    /// carried about. An installed one has its data in share/nibpad71 of the same prefix, and what the machine's
    /// administrator says about it in etc/nibpad71.
    static ProgramPlaces Around(TextView programFolder);
};

} // namespace nib
