#pragma once
#include "hosts/network/NetworkLink.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <string>

namespace nib {

/// Passwords from the desktop's store of secrets, where there is one, else from a dialog over `owner` that offers to
/// keep them there. They are nowhere else.
class QtPasswords : public Passwords {
public:
    explicit QtPasswords(QWidget* owner) : owner_(owner) {}
    ~QtPasswords() override;

    std::optional<std::string> Ask(const HostSettings& host, bool refused) override;
    void Accepted(const HostSettings& host) override;
    /// Of a connection that is removed.
    static void Forget(const HostSettings& host);

private:
    QPointer<QWidget> owner_;
    bool store_ = true; ///< there is one, as far as is known
    QString keptKey_;   ///< of what is kept once it has proved right
    std::string typed_;
};

} // namespace nib
