#include "platform/qt/QtDesktop.h"

#include "platform/qt/QtText.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QStringList>
#include <QTimer>
#include <QVBoxLayout>

namespace nib {

namespace {

class RingingTimer final : public Timers::Timer {
public:
    RingingTimer(std::chrono::milliseconds interval, std::function<void()> ring)
    {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(ring));
        timer_.start(interval);
    }

private:
    QTimer timer_;
};

constexpr std::chrono::milliseconds kPatience{1000};
constexpr int kLongestCommand = 200;

QString ClockTime(std::chrono::milliseconds elapsed)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(elapsed).count();
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

bool QtClipboard::HasText() const
{
    // No content at all is a null pointer on some platforms.
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    return content && content->hasText();
}

Text QtClipboard::GetText() const
{
    return ToText(QGuiApplication::clipboard()->text());
}

void QtClipboard::SetText(TextView text)
{
    QGuiApplication::clipboard()->setText(ToQString(text));
}

Text QtClipboard::GetPrimary() const
{
    const QClipboard* clipboard = QGuiApplication::clipboard();
    return clipboard->supportsSelection() ? ToText(clipboard->text(QClipboard::Selection)) : Text();
}

void QtClipboard::SetPrimary(TextView text)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard->supportsSelection()) clipboard->setText(ToQString(text), QClipboard::Selection);
}

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

std::unique_ptr<Timers::Timer> QtTimers::Every(std::chrono::milliseconds interval, std::function<void()> ring)
{
    return std::make_unique<RingingTimer>(interval, std::move(ring));
}

class QtWaitNotice::Dialog : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(QtWaitNotice)
public:
    Dialog(QWidget* owner, const QString& command) : QDialog(owner), elapsed_(new QLabel(this))
    {
        setWindowTitle(QStringLiteral("Nib"));
        setWindowModality(Qt::ApplicationModal);
        auto* layout = new QVBoxLayout(this);
        auto* what = new QLabel(this);
        what->setTextFormat(Qt::PlainText);
        what->setWordWrap(true);
        what->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
        what->setText(tr("The host is running %1").arg(command));
        auto* buttons = new QDialogButtonBox(this);
        cancel_ = buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
        elapsed_->setAccessibleName(tr("Elapsed time"));
        layout->addWidget(what);
        layout->addWidget(elapsed_);
        layout->addWidget(buttons);
        connect(buttons, &QDialogButtonBox::rejected, this, &Dialog::reject);
        // The pointer is to say that this window takes clicks.
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~Dialog() override { QGuiApplication::restoreOverrideCursor(); }

    void ShowElapsed(std::chrono::milliseconds elapsed)
    {
        const QString text = tr("Elapsed time %1").arg(ClockTime(elapsed));
        if (text != elapsed_->text()) elapsed_->setText(text);
    }
    bool IsCancelled() const { return cancelled_; }

    /// Stays until the command has ended.
    void reject() override
    {
        cancelled_ = true;
        cancel_->setEnabled(false);
    }

private:
    QLabel* elapsed_;
    QPushButton* cancel_ = nullptr;
    bool cancelled_ = false;
};

QtWaitNotice::QtWaitNotice(QWidget* owner) : owner_(owner) {}
QtWaitNotice::~QtWaitNotice() = default;

bool QtWaitNotice::Started(TextView command)
{
    if (running_) return false;
    running_ = true;
    command_ = command.substr(0, kLongestCommand);
    return true;
}

bool QtWaitNotice::GoOn(std::chrono::milliseconds elapsed)
{
    if (elapsed < kPatience) return true;
    if (!dialog_) {
        dialog_ = std::make_unique<Dialog>(owner_, ToQString(command_));
        dialog_->show();
    }
    dialog_->ShowElapsed(elapsed);
    QCoreApplication::processEvents();
    return !dialog_ || !dialog_->IsCancelled();
}

void QtWaitNotice::Ended()
{
    dialog_.reset();
    running_ = false;
}

} // namespace nib
