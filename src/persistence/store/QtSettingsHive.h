#pragma once
#include "persistence/store/HiveFile.h"

#include <QTimer>

namespace nib {

/// The user's hive of this desktop. Changes reach the disk together, when the program comes back to its event loop, and
/// at the end: a dialog that saves every setting must not wait for the disk once a setting.
class QtSettingsHive : public SettingsHive {
public:
    explicit QtSettingsHive(const ProfileDisk& disk, Text path = DefaultPath());
    QtSettingsHive(const QtSettingsHive&) = delete;
    QtSettingsHive& operator=(const QtSettingsHive&) = delete;
    ~QtSettingsHive() override;

    /// "Orlin/hive.conf" in the user's folder of configurations.
    static Text DefaultPath();

    std::optional<String> Get(TextView keyPath, TextView valueName) override;
    void Set(TextView keyPath, TextView valueName, TextView text) override;
    /// False when the disk refused; nothing is lost for this run.
    bool Flush();

private:
    HiveFile file_;
    QTimer flush_;
};

} // namespace nib
