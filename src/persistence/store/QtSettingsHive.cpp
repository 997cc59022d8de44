#include "persistence/store/QtSettingsHive.h"

#include "diagnostics/Guarded.h"
#include "platform/qt/QtText.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace nib {

QtSettingsHive::QtSettingsHive(const ProfileDisk& disk, Text path)
    : HiveFile(disk, std::move(path), [this] {
          if (QCoreApplication::instance() && !timer_.isActive()) timer_.start();
      })
{
    timer_.setSingleShot(true);
    timer_.setInterval(0);
    timer_.callOnTimeout([this] { IgnoringErrors([this] { Flush(); }); });
}

QtSettingsHive::~QtSettingsHive()
{
    IgnoringErrors([this] { Flush(); });
}

Text QtSettingsHive::DefaultPath()
{
    return ToText(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)) + u"/Orlin/hive.conf";
}

} // namespace nib
