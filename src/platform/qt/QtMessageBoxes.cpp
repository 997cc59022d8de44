#include "platform/qt/QtMessageBoxes.h"

#include "platform/qt/QtText.h"

#include <QMessageBox>
#include <QPushButton>

#include <iterator>

namespace nib {

namespace {

constexpr int32_t kSetMask = 0x0F;
constexpr int32_t kIconMask = 0x70;
constexpr int32_t kDefaultMask = 0x300;

struct ButtonRow {
    int32_t set;
    QMessageBox::StandardButton button;
    int32_t answer;
};

/// The first button of a set is its default, the last one what Escape means.
constexpr ButtonRow kButtons[] = {
    {message_box::kOk, QMessageBox::Ok, message_box::kAnswerOk},
    {message_box::kOkCancel, QMessageBox::Ok, message_box::kAnswerOk},
    {message_box::kOkCancel, QMessageBox::Cancel, message_box::kAnswerCancel},
    {message_box::kYesNoCancel, QMessageBox::Yes, message_box::kAnswerYes},
    {message_box::kYesNoCancel, QMessageBox::No, message_box::kAnswerNo},
    {message_box::kYesNoCancel, QMessageBox::Cancel, message_box::kAnswerCancel},
    {message_box::kYesNo, QMessageBox::Yes, message_box::kAnswerYes},
    {message_box::kYesNo, QMessageBox::No, message_box::kAnswerNo},
};

QMessageBox::Icon IconOf(int32_t flags)
{
    switch (flags & kIconMask) {
    case message_box::kError: return QMessageBox::Critical;
    case message_box::kQuestion: return QMessageBox::Question;
    case message_box::kWarning: return QMessageBox::Warning;
    case message_box::kInformation: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

} // namespace

int32_t QtMessageBoxes::Show(TextView text, int32_t flags, TextView title)
{
    if (showing_) return 0;
    showing_ = true;
    QMessageBox box(owner_);
    box.setWindowTitle(ToQString(title));
    box.setTextFormat(Qt::PlainText); // file names may hold what looks like markup
    box.setText(ToQString(text));
    box.setIcon(IconOf(flags));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);

    int32_t escape = 0;
    int wanted = (flags & kDefaultMask) >> 8;
    int position = 0;
    for (const ButtonRow& row : kButtons) {
        if (row.set != (flags & kSetMask)) continue;
        QPushButton* button = box.addButton(row.button);
        if (position++ == wanted) box.setDefaultButton(button);
        box.setEscapeButton(button);
        escape = row.answer;
    }
    int pressed = box.exec();
    showing_ = false;
    for (const ButtonRow& row : kButtons)
        if (row.set == (flags & kSetMask) && row.button == pressed) return row.answer;
    return escape;
}

} // namespace nib
