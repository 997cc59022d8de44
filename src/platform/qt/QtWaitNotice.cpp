#include "platform/qt/QtWaitNotice.h"

#include "platform/qt/QtText.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr std::chrono::milliseconds kPatience{1000};
constexpr int kLongestText = 200;
constexpr int kWidth = 40; ///< in characters of usual width

QString ClockTime(std::chrono::milliseconds elapsed)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(elapsed).count();
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

class QtWaitNotice::Dialog : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(QtWaitNotice)
public:
    Dialog(QWidget* owner, QString what)
        : QDialog(owner), what_(std::move(what)), told_(new QLabel(this)), sent_(new QProgressBar(this)),
          elapsed_(new QLabel(this))
    {
        setWindowModality(Qt::ApplicationModal);
        auto* layout = new QVBoxLayout(this);
        told_->setTextFormat(Qt::PlainText);
        told_->setWordWrap(true);
        told_->setMinimumWidth(fontMetrics().averageCharWidth() * kWidth);
        sent_->setAccessibleName(tr("Sent"));
        elapsed_->setAccessibleName(tr("Elapsed time"));
        auto* buttons = new QDialogButtonBox(this);
        cancel_ = buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
        reset_ = buttons->addButton(tr("&Reset Connection"), QDialogButtonBox::DestructiveRole);
        for (QWidget* widget : std::initializer_list<QWidget*>{told_, sent_, elapsed_, buttons})
            layout->addWidget(widget);
        connect(buttons, &QDialogButtonBox::rejected, this, &Dialog::reject);
        connect(reset_, &QPushButton::clicked, this, [this] {
            resetWanted_ = true;
            reject();
        });
        cancel_->setFocus();
        Tell(WaitStage::Command, -1);
        // The pointer is to say that this window takes clicks.
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~Dialog() override { QGuiApplication::restoreOverrideCursor(); }

    void Tell(WaitStage stage, int percent)
    {
        const bool command = stage == WaitStage::Command;
        sent_->setVisible(percent >= 0);
        sent_->setValue(percent);
        if (stage_ == stage) return;
        stage_ = stage;
        setWindowTitle(command ? QStringLiteral("Nib") : tr("Busy"));
        reset_->setVisible(stage == WaitStage::Pending);
        // A command line is none of our texts.
        const QString what = command ? what_ : TranslatedText(ViewOf(what_));
        if (command)
            told_->setText(tr("The host is running %1").arg(what));
        else if (stage == WaitStage::Busy)
            told_->setText(tr("The MultiValue database server is busy. Please try again.") + QStringLiteral("\n\n") +
                           what);
        else
            told_->setText(tr("A request to the MultiValue database server is pending. Please wait.\n\nIf your "
                              "Ventrino session is no longer running, try closing or resetting the session.") +
                           QStringLiteral("\n\n") + what);
    }
    void ShowElapsed(std::chrono::milliseconds elapsed)
    {
        const QString text = tr("Elapsed time %1").arg(ClockTime(elapsed));
        if (text != elapsed_->text()) elapsed_->setText(text);
    }
    bool IsCancelled() const { return cancelled_; }
    bool ResetWanted() const { return resetWanted_; }

    /// Stays until the wait has ended.
    void reject() override
    {
        cancelled_ = true;
        cancel_->setEnabled(false);
        reset_->setEnabled(false);
    }

private:
    QString what_;
    QLabel* told_;
    QProgressBar* sent_;
    QLabel* elapsed_;
    QPushButton* cancel_ = nullptr;
    QPushButton* reset_ = nullptr;
    std::optional<WaitStage> stage_;
    bool cancelled_ = false;
    bool resetWanted_ = false;
};

QtWaitNotice::QtWaitNotice(QWidget* owner) : owner_(owner) {}
QtWaitNotice::~QtWaitNotice() = default;

bool QtWaitNotice::Started(TextView what)
{
    if (running_) return false;
    running_ = true;
    what_ = what.substr(0, kLongestText);
    stage_ = WaitStage::Command;
    percent_ = -1;
    return true;
}

void QtWaitNotice::Tell(WaitStage stage, int32_t percent)
{
    stage_ = stage;
    percent_ = percent;
}

bool QtWaitNotice::GoOn(std::chrono::milliseconds elapsed)
{
    if (stopped_) return false;
    if (elapsed < kPatience) return true;
    if (!dialog_) {
        dialog_ = std::make_unique<Dialog>(owner_, ToQString(what_));
        dialog_->Tell(stage_, percent_);
        dialog_->show();
    }
    dialog_->Tell(stage_, percent_);
    dialog_->ShowElapsed(elapsed);
    QCoreApplication::processEvents();
    return !stopped_ && !(dialog_ && dialog_->IsCancelled());
}

bool QtWaitNotice::ResetWanted() const
{
    return stopped_ || (dialog_ && dialog_->ResetWanted());
}

void QtWaitNotice::Ended()
{
    dialog_.reset();
    running_ = false;
}

} // namespace nib
