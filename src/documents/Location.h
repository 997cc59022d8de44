#pragma once
#include "base/Text.h"

namespace nib {

/// The process-wide current place: what the pickers start from and what opened and saved items leave behind.
struct Location {
    Text Provider = u"mvdb";
    Text ServerName = u"*";
    Text Database;
    Text Folder;
};

} // namespace nib
