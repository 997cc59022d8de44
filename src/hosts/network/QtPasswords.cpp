#include "hosts/network/QtPasswords.h"

#include "platform/qt/QtText.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <qt6keychain/keychain.h>

#include <string.h>

namespace nib {

namespace {

/// The store may ask the user to unlock it.
constexpr int kStoreLimitMs = 60'000;
constexpr int kWidth = 36; ///< in characters of usual width

QString Service()
{
    return QStringLiteral("com.orlin.NibPad71");
}

QString KeyOf(const HostSettings& host)
{
    return ToQString(host.user + u"@" + host.address + (host.port.empty() ? Text() : u":" + host.port));
}

/// True when it was done. The windows take no keys and clicks meanwhile: nothing is begun that a host is wanted for.
bool Run(QKeychain::Job& job)
{
    job.setAutoDelete(false);
    job.setInsecureFallback(false);
    QEventLoop loop;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(kStoreLimitMs, &loop, &QEventLoop::quit);
    job.start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    return job.error() == QKeychain::NoError;
}

std::string Bytes(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    std::string answer = bytes.toStdString();
    explicit_bzero(bytes.data(), static_cast<size_t>(bytes.size()));
    return answer;
}

class PasswordDialog : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(QtPasswords)
public:
    PasswordDialog(QWidget* owner, const HostSettings& host, bool refused, bool store)
        : QDialog(owner), password_(new QLineEdit(this)),
          keep_(new QCheckBox(tr("&Keep it in the store of secrets"), this))
    {
        setWindowTitle(QStringLiteral("Nib"));
        auto* layout = new QVBoxLayout(this);
        auto* label = new QLabel(this);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setText((refused ? tr("The server refused the user or the password.") + QLatin1Char(' ') : QString()) +
                       tr("Password of %1 on %2:").arg(ToQString(host.user), ToQString(host.name)));
        label->setBuddy(password_);
        password_->setEchoMode(QLineEdit::Password);
        password_->setAccessibleName(tr("Password"));
        password_->setMinimumWidth(fontMetrics().averageCharWidth() * kWidth);
        password_->setMaxLength(static_cast<int>(kLongestName));
        keep_->setEnabled(store);
        if (!keep_->isEnabled()) keep_->setToolTip(tr("This desktop has no store of secrets."));
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        for (QWidget* widget : std::initializer_list<QWidget*>{label, password_, keep_, buttons})
            layout->addWidget(widget);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    }

    std::string Password() const { return Bytes(password_->text()); }
    bool Keep() const { return keep_->isEnabled() && keep_->isChecked(); }

private:
    QLineEdit* password_;
    QCheckBox* keep_;
};

void Wipe(std::string& secret)
{
    explicit_bzero(secret.data(), secret.size());
    secret.clear();
}

} // namespace

QtPasswords::~QtPasswords()
{
    Wipe(typed_);
}

std::optional<std::string> QtPasswords::Ask(const HostSettings& host, bool refused)
{
    if (!refused) {
        QKeychain::ReadPasswordJob job(Service());
        job.setKey(KeyOf(host));
        if (Run(job)) return Bytes(job.textData());
        store_ = job.error() == QKeychain::EntryNotFound;
    }
    PasswordDialog dialog(owner_, host, refused, store_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    Wipe(typed_);
    keptKey_.clear();
    if (dialog.Keep()) {
        keptKey_ = KeyOf(host);
        typed_ = dialog.Password();
    }
    return dialog.Password();
}

void QtPasswords::Accepted(const HostSettings& host)
{
    if (keptKey_.isEmpty() || keptKey_ != KeyOf(host)) return;
    QKeychain::WritePasswordJob job(Service());
    job.setKey(std::exchange(keptKey_, QString()));
    job.setTextData(QString::fromUtf8(typed_.data(), static_cast<qsizetype>(typed_.size())));
    Run(job); // where it fails, the next start asks again
    Wipe(typed_);
}

void QtPasswords::Forget(const HostSettings& host)
{
    QKeychain::DeletePasswordJob job(Service());
    job.setKey(KeyOf(host));
    Run(job);
}

} // namespace nib
