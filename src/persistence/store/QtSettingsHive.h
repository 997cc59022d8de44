#pragma once
#include "persistence/store/modPersistSettings.h"

#include <QTimer>

namespace nib {

/// The user's hive of this desktop. Changes reach the disk together, when the program comes back to its event loop, and
/// at the end: a dialog that saves every setting must not wait for the disk once a setting.
class QtSettingsHive : public HiveFile {
public:
    explicit QtSettingsHive(const ProfileDisk& disk, Text path = DefaultPath());
    QtSettingsHive(const QtSettingsHive&) = delete;
    QtSettingsHive& operator=(const QtSettingsHive&) = delete;
    ~QtSettingsHive();

    /// "Orlin/hive.conf" in the user's folder of configurations.
    static Text DefaultPath();

private:
    QTimer timer_;
};

} // namespace nib
