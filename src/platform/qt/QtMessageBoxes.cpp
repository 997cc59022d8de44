#include "platform/qt/QtMessageBoxes.h"

#include "platform/qt/QtText.h"

#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>

#include <array>

namespace nib {

namespace {

using namespace message_box;

constexpr int32_t kButtonMask = 0xF;
constexpr int32_t kIconMask = 0x70;
constexpr int32_t kDefaultMask = 0x300;
constexpr int32_t kDefaultUnit = 0x100;

struct ButtonRow {
    int32_t answer;
    QMessageBox::StandardButton button;
    const char* caption;
};

// Own captions: those of the desktop's theme have no access keys everywhere.
constexpr ButtonRow kButtons[] = {
    {kAnswerOk, QMessageBox::Ok, "OK"},
    {kAnswerCancel, QMessageBox::Cancel, "Cancel"},
    {kAnswerYes, QMessageBox::Yes, "&Yes"},
    {kAnswerNo, QMessageBox::No, "&No"},
    {kAnswerYesToAll, QMessageBox::YesToAll, "Yes to &All"},
};

struct SetRow {
    int32_t flags;
    std::array<int32_t, 4> answers; ///< in the order that the default-button flags count
    int32_t escape;
};

constexpr SetRow kSets[] = {
    {kOk, {kAnswerOk}, kAnswerOk},
    {kOkCancel, {kAnswerOk, kAnswerCancel}, kAnswerCancel},
    {kYesNoCancel, {kAnswerYes, kAnswerNo, kAnswerCancel}, kAnswerCancel},
    {kYesNo, {kAnswerYes, kAnswerNo}, kAnswerNo},
    {9, {kAnswerYes, kAnswerYesToAll, kAnswerNo}, kAnswerNo},
    {10, {kAnswerYes, kAnswerYesToAll, kAnswerNo, kAnswerCancel}, kAnswerCancel},
};

struct IconRow {
    int32_t flags;
    QMessageBox::Icon icon;
};

constexpr IconRow kIcons[] = {
    {kError, QMessageBox::Critical},
    {kQuestion, QMessageBox::Question},
    {kWarning, QMessageBox::Warning},
    {kInformation, QMessageBox::Information},
};

const SetRow& SetOf(int32_t flags)
{
    for (const SetRow& row : kSets) {
        if (row.flags == (flags & kButtonMask)) return row;
    }
    return kSets[0];
}

QMessageBox::Icon IconOf(int32_t flags)
{
    for (const IconRow& row : kIcons) {
        if (row.flags == (flags & kIconMask)) return row.icon;
    }
    return QMessageBox::NoIcon;
}

const ButtonRow* ButtonOf(int32_t answer)
{
    for (const ButtonRow& row : kButtons) {
        if (row.answer == answer) return &row;
    }
    return nullptr;
}

void AddButtons(QMessageBox& box, int32_t flags)
{
    const SetRow& set = SetOf(flags);
    const int32_t wanted = (flags & kDefaultMask) / kDefaultUnit;
    for (int32_t i = 0; i < static_cast<int32_t>(set.answers.size()); ++i) {
        const ButtonRow* row = ButtonOf(set.answers[static_cast<size_t>(i)]);
        if (!row) break;
        QPushButton* button = box.addButton(row->button);
        button->setText(QString::fromLatin1(row->caption));
        if (i == 0 || i == wanted) box.setDefaultButton(button);
        if (row->answer == set.escape) box.setEscapeButton(button);
    }
}

int32_t AnswerOf(const QMessageBox& box, int32_t flags)
{
    const QMessageBox::StandardButton pressed = box.standardButton(box.clickedButton());
    for (const ButtonRow& row : kButtons) {
        if (row.button == pressed) return row.answer;
    }
    return SetOf(flags).escape;
}

} // namespace

int32_t QtMessageBoxes::Show(TextView text, int32_t flags, TextView title)
{
    if (up_) return 0;
    const QScopedValueRollback<bool> whileUp(up_, true);
    QMessageBox box(owner_);
    box.setWindowTitle(ToQString(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.setIcon(IconOf(flags));
    AddButtons(box, flags);
    box.exec();
    return AnswerOf(box, flags);
}

} // namespace nib
