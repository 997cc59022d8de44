#include "shell/assist/frmRename.h"

#include "platform/qt/QtText.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr int kSoon = 150;
constexpr QSize kSize(640, 460);

} // namespace

frmRename::frmRename(NameCommands& names, mvDocument& document, const Text& oldName, QWidget* owner)
    : QDialog(owner), names_(names), document_(document), oldName_(oldName)
{
    Build();
    soon_.setSingleShot(true);
    soon_.setInterval(kSoon);
    connect(&soon_, &QTimer::timeout, this, [this] { AskPreview(); });
    connect(name_, &QLineEdit::textChanged, this, [this] {
        ok_->setEnabled(false); // what is shown is of another name
        soon_.start();
    });
    AskPreview();
}

void frmRename::Build()
{
    setWindowTitle(tr("Rename %1").arg(ToQString(oldName_)));
    name_ = new QLineEdit(ToQString(oldName_));
    name_->selectAll();
    places_ = new QTreeWidget;
    places_->setHeaderLabels({tr("Place"), tr("Line"), tr("Text")});
    places_->setAccessibleName(tr("Places"));
    places_->setRootIsDecorated(false);
    places_->setUniformRowHeights(true);
    note_ = new QLabel;
    note_->setWordWrap(true);
    auto* buttons = new QDialogButtonBox;
    ok_ = buttons->addButton(tr("Rename"), QDialogButtonBox::AcceptRole);
    buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    ok_->setDefault(true);
    ok_->setEnabled(false);
    auto* fields = new QFormLayout;
    fields->addRow(tr("&New name:"), name_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(fields);
    column->addWidget(places_);
    column->addWidget(note_);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(kSize);
}

void frmRename::AskPreview()
{
    const int32_t number = ++asked_;
    const QPointer<frmRename> self(this);
    names_.Preview(document_, ToText(name_->text().trimmed()), [self, number](RenamePreview preview) {
        if (!self || self->asked_ != number) return;
        self->preview_ = std::move(preview);
        self->ShowPreview();
    });
}

void frmRename::ShowPreview()
{
    places_->clear();
    QList<QTreeWidgetItem*> items;
    for (const RenamePreview::Row& row : preview_.rows) {
        auto* item = new QTreeWidgetItem(
            {ToQString(row.item), QString::number(row.edit.range.start.line + 1), ToQString(Trim(row.line))});
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, Qt::Checked);
        item->setToolTip(2, item->text(2));
        items.append(item);
    }
    places_->addTopLevelItems(items);
    for (const int column : {0, 1}) places_->resizeColumnToContents(column);
    const bool same = ToText(name_->text().trimmed()) == oldName_;
    ok_->setEnabled(!preview_.rows.empty() && !same && preview_.refusal.empty());
    note_->setText(preview_.refusal.empty() ? tr("Places: %1").arg(preview_.rows.size())
                                            : TranslatedText(preview_.refusal));
}

void frmRename::TakeChoices()
{
    for (size_t i = 0; i < preview_.rows.size(); ++i)
        preview_.rows[i].chosen = places_->topLevelItem(static_cast<int>(i))->checkState(0) == Qt::Checked;
}

void frmRename::ShowDialog()
{
    if (exec() != Accepted) return;
    TakeChoices();
    names_.Rename(preview_, oldName_);
}

} // namespace nib
