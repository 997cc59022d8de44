#include "shell/QtMessageBoxes.h"

#include "platform/qt/QtText.h"
#include "shell/MessageBoxPlan.h"

#include <QApplication>
#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QWindow>

namespace nib {

namespace {

using namespace message_box;

struct IconRow {
    int32_t flag;
    QMessageBox::Icon icon;
};

constexpr IconRow kIcons[] = {
    {kError, QMessageBox::Critical},
    {kQuestion, QMessageBox::Question},
    {kWarning, QMessageBox::Warning},
    {kInformation, QMessageBox::Information},
};

QMessageBox::Icon IconOf(int32_t flag)
{
    for (const IconRow& row : kIcons) {
        if (row.flag == flag) return row.icon;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::ButtonRole RoleOf(ButtonMeaning meaning)
{
    switch (meaning) {
    case ButtonMeaning::Agree: return QMessageBox::YesRole;
    case ButtonMeaning::Refuse: return QMessageBox::NoRole;
    case ButtonMeaning::Leave: break;
    }
    return QMessageBox::RejectRole;
}

/// A window that stays above all others would hide the box: it does not while this lives.
class BelowTheBox {
public:
    explicit BelowTheBox(QWidget* owner) : window_(owner ? owner->window()->windowHandle() : nullptr)
    {
        if (window_ && !(window_->flags() & Qt::WindowStaysOnTopHint)) window_.clear();
        if (window_) window_->setFlag(Qt::WindowStaysOnTopHint, false);
    }
    ~BelowTheBox()
    {
        if (window_) window_->setFlag(Qt::WindowStaysOnTopHint, true);
    }
    BelowTheBox(const BelowTheBox&) = delete;
    BelowTheBox& operator=(const BelowTheBox&) = delete;

private:
    QPointer<QWindow> window_;
};

/// What the user did, written down when it happens: afterwards the box may have gone with its owner.
struct Outcome {
    int32_t pressed = 0;
    bool isChecked = false;
};

using CaptionOf = QString (*)(TextView);

void AddButtons(QMessageBox& box, const MessageBoxPlan& plan, CaptionOf caption, Outcome& outcome)
{
    outcome.pressed = plan.escapeAnswer;
    for (size_t i = 0; i < plan.buttons.size(); ++i) {
        const MessageBoxButton& row = plan.buttons[i];
        QPushButton* button = box.addButton(caption(row.caption), RoleOf(row.meaning));
        if (i == plan.defaultButton) box.setDefaultButton(button);
        if (row.answer == plan.escapeAnswer) box.setEscapeButton(button);
        QObject::connect(button, &QPushButton::clicked, button,
                         [&outcome, answer = row.answer] { outcome.pressed = answer; });
    }
}

void AddCheckBox(QMessageBox& box, const MessageBoxPlan& plan, CaptionOf caption, Outcome& outcome)
{
    if (plan.checkCaption.empty()) return;
    auto* check = new QCheckBox(caption(plan.checkCaption), &box);
    QObject::connect(check, &QCheckBox::toggled, check, [&outcome](bool checked) { outcome.isChecked = checked; });
    box.setCheckBox(check);
}

} // namespace

void QtMessageBoxes::Beep()
{
    QApplication::beep();
}

int32_t QtMessageBoxes::Show(TextView text, int32_t flags, TextView title)
{
    if (up_) return 0;
    const QScopedValueRollback<bool> whileUp(up_, true);
    // Over a dialog that is up, so that no window manager puts the box behind it.
    QWidget* dialog = QApplication::activeModalWidget();
    QWidget* owner = dialog ? dialog : owner_.data();
    const MessageBoxPlan plan = PlanMessageBox(flags, title);
    const BelowTheBox below(owner);
    Outcome outcome;
    // Its owner may end while the box is up, and takes it along.
    const QPointer<QMessageBox> box = new QMessageBox(owner);
    box->setWindowModality(Qt::ApplicationModal);
    box->setWindowTitle(ToQString(plan.title));
    box->setTextFormat(Qt::PlainText);
    const QString plain = ToQString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    const auto translated = TranslatedMessage(plain);
    box->setText(translated.value_or(plain));
    // A box speaks one language: that of its message.
    const CaptionOf caption = translated ? Translated : CaptionOf{[](TextView english) { return ToQString(english); }};
    box->setTextInteractionFlags(Qt::TextSelectableByMouse);
    box->setIcon(IconOf(plan.icon));
    AddButtons(*box, plan, caption, outcome);
    AddCheckBox(*box, plan, caption, outcome);
    if (plan.sounds) Beep();
    box->exec();
    delete box.data();
    return MessageBoxAnswer(outcome.pressed, outcome.isChecked);
}

} // namespace nib
