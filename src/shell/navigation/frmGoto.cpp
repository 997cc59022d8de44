#include "shell/navigation/frmGoto.h"

#include "platform/qt/QtText.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>

namespace nib {

namespace {
constexpr int kFieldChars = 28;
}

frmGoto::frmGoto(DocumentServices& services, QWidget* owner) : QDialog(owner), model_(services)
{
    setWindowTitle(tr("Goto"));
    Build();
    Connect();
    ShowChoice();
    preparing_ = false;
}

void frmGoto::Build()
{
    optLabel_ = new QRadioButton(tr("&Label:"));
    optLine_ = new QRadioButton(tr("Line &number:"));
    cboTarget_ = new QComboBox;
    cboTarget_->setEditable(true);
    cboTarget_->setInsertPolicy(QComboBox::NoInsert);
    cboTarget_->setMinimumContentsLength(kFieldChars);
    cboTarget_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboTarget_->setAccessibleName(tr("Label"));
    cboTarget_->lineEdit()->setAccessibleName(tr("Label"));
    cboTarget_->completer()->setCompletionMode(QCompleter::PopupCompletion);
    cboTarget_->completer()->setFilterMode(Qt::MatchContains);
    txtLineNumber_ = new QLineEdit;
    txtLineNumber_->setInputMethodHints(Qt::ImhDigitsOnly);
    txtLineNumber_->setAccessibleName(tr("Line number"));
    chkNoGoDlg_ = new QCheckBox(tr("&Skip this dialog when a label is double-clicked"));
    auto* buttons = new QDialogButtonBox;
    // Own captions: those of the desktop's theme have access keys that fields here need.
    cmdOK_ = buttons->addButton(tr("OK"), QDialogButtonBox::AcceptRole);
    cmdCancel_ = buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    cmdOK_->setDefault(true);

    auto* grid = new QGridLayout(this);
    grid->addWidget(optLabel_, 0, 0);
    grid->addWidget(cboTarget_, 0, 1);
    grid->addWidget(optLine_, 1, 0);
    grid->addWidget(txtLineNumber_, 1, 1);
    grid->addWidget(chkNoGoDlg_, 2, 0, 1, 2);
    grid->setRowStretch(3, 1);
    grid->addWidget(buttons, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    const QList<QWidget*> order{optLabel_, cboTarget_, optLine_, txtLineNumber_, chkNoGoDlg_, cmdOK_, cmdCancel_};
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmGoto::Connect()
{
    connect(optLine_, &QRadioButton::toggled, this, [this](bool byLine) {
        model_.ChooseLine(byLine);
        ShowChoice();
    });
    // An access key presses a button for a tenth of a second; what is typed meanwhile belongs to the new field already.
    for (QRadioButton* choice : {optLabel_, optLine_})
        connect(choice, &QRadioButton::pressed, choice, [choice] { choice->setChecked(true); });
    connect(chkNoGoDlg_, &QCheckBox::clicked, this, [this](bool on) { model_.SetNoGotoDialog(on); });
    connect(cmdOK_, &QPushButton::clicked, this, &frmGoto::Jump);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmGoto::reject);
    // While completions show, Return belongs to them; it means the typed text all the same.
    connect(cboTarget_->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        QAbstractItemView* popup = cboTarget_->completer()->popup();
        if (!popup->isVisible() || popup->currentIndex().isValid()) return;
        popup->hide();
        Jump();
    });
    cboTarget_->lineEdit()->installEventFilter(this);
    txtLineNumber_->installEventFilter(this);
}

bool frmGoto::ShowGoto(Text& target, QWidget* owner)
{
    if (isVisible()) return false;
    if (owner != parentWidget()) setParent(owner, windowFlags());
    model_.Begin(target);
    FillIn();
    setResult(Rejected);
    if (exec() != Accepted) return false;
    target = model_.Target();
    return true;
}

void frmGoto::FillIn()
{
    const QScopedValueRollback<bool> preparing(preparing_, true);
    QStringList labels;
    for (const Text& label : model_.Labels()) labels.append(ToQString(label));
    cboTarget_->clear();
    cboTarget_->addItems(labels);
    cboTarget_->setEditText(ToQString(model_.Target()));
    const int lines = model_.LineCount();
    txtLineNumber_->setPlaceholderText(lines > 0 ? tr("1 to %1").arg(lines) : QString());
    chkNoGoDlg_->setChecked(model_.NoGotoDialog());
    ShowChoice();
    FocusChoice();
}

void frmGoto::ShowChoice()
{
    (model_.ByLine() ? optLine_ : optLabel_)->setChecked(true);
    cboTarget_->setEnabled(!model_.ByLine());
    txtLineNumber_->setEnabled(model_.ByLine());
    if (!preparing_) FocusChoice();
}

void frmGoto::FocusChoice()
{
    QWidget* field = model_.ByLine() ? static_cast<QWidget*>(txtLineNumber_) : cboTarget_;
    field->setFocus(Qt::OtherFocusReason);
}

void frmGoto::Jump()
{
    if (model_.Accept(ViewOf(cboTarget_->currentText()), ViewOf(txtLineNumber_->text()))) accept();
}

bool frmGoto::eventFilter(QObject* watched, QEvent* event)
{
    // Not when a pop-up or another program gives the focus back: the user goes on typing.
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        auto* field = qobject_cast<QLineEdit*>(watched);
        if (field && reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            QMetaObject::invokeMethod(field, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace nib
