#include "platform/qt/QtFonts.h"

#include "platform/qt/QtText.h"

#include <QFontDatabase>
#include <QStringList>

namespace nib {

bool QtFonts::Add(TextView fileName)
{
    if (added_.find(fileName) != added_.end()) return true;
    const int font = QFontDatabase::addApplicationFont(ToQString(fileName));
    if (font < 0) return false;
    added_.emplace(fileName, font);
    return true;
}

void QtFonts::Remove(TextView fileName)
{
    const auto found = added_.find(fileName);
    if (found == added_.end()) return;
    QFontDatabase::removeApplicationFont(found->second);
    added_.erase(found);
}

std::vector<Text> QtFonts::Families() const
{
    std::vector<Text> families;
    for (const QString& family : QFontDatabase::families()) families.push_back(ToText(family));
    return families;
}

Text QtFonts::ProgramFolder() const
{
    return programFolder_;
}

} // namespace nib
