#include "persistence/store/QtSettingsHive.h"

#include "diagnostics/Guarded.h"
#include "platform/qt/QtText.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace nib {

QtSettingsHive::QtSettingsHive(const ProfileDisk& disk, Text path) : file_(disk, std::move(path))
{
    flush_.setSingleShot(true);
    flush_.setInterval(0);
    flush_.callOnTimeout([this] { Flush(); });
}

QtSettingsHive::~QtSettingsHive()
{
    Flush();
}

Text QtSettingsHive::DefaultPath()
{
    return ToText(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)) + u"/Orlin/hive.conf";
}

std::optional<SettingsHive::String> QtSettingsHive::Get(TextView keyPath, TextView valueName)
{
    return file_.Get(keyPath, valueName);
}

void QtSettingsHive::Set(TextView keyPath, TextView valueName, TextView text)
{
    file_.Set(keyPath, valueName, text);
    if (QCoreApplication::instance() && !flush_.isActive()) flush_.start();
}

bool QtSettingsHive::Flush()
{
    return OrDefault([this] { return file_.Flush(); }, false);
}

} // namespace nib
