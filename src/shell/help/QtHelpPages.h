#pragma once
#include "base/Text.h"

#include <QString>
#include <QUrl>

#include <vector>

namespace nib {

/// A page of the help in the language that the program speaks, or in English where that has none.
struct ShownHelpPage {
    QString group;
    QString title;
    QUrl url;
    QString html;
};

/// All of them, in the order of the contents.
std::vector<ShownHelpPage> ReadHelpPages();

/// The page whose file is named `topic`, or that has an anchor for the command of that key, and the anchor; invalid
/// when there is none.
QUrl FindHelp(const std::vector<ShownHelpPage>& pages, TextView topic);

} // namespace nib
