#include "platform/qt/QtFonts.h"

#include "platform/qt/QtText.h"

#include <QCoreApplication>
#include <QFontDatabase>

namespace nib {

bool QtFonts::Add(TextView fileName)
{
    int number = QFontDatabase::addApplicationFont(ToQString(fileName));
    if (number >= 0) added_[Text(fileName)] = number;
    return number >= 0;
}

void QtFonts::Remove(TextView fileName)
{
    auto found = added_.find(Text(fileName));
    if (found == added_.end()) return;
    QFontDatabase::removeApplicationFont(found->second);
    added_.erase(found);
}

std::vector<Text> QtFonts::Families() const
{
    std::vector<Text> families;
    for (const QString& family : QFontDatabase::families()) families.push_back(FromQString(family));
    return families;
}

Text QtFonts::ProgramFolder() const { return FromQString(QCoreApplication::applicationDirPath()); }

} // namespace nib
