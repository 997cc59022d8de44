#include "hosts/network/frmConnections.h"

#include "diagnostics/Guarded.h"
#include "hosts/network/QtPasswords.h"
#include "platform/posix/FileName.h"
#include "platform/qt/QtText.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

constexpr int kListMargin = 6;  ///< in characters, as the next
constexpr int kFieldChars = 54; ///< where the screen has room
constexpr int kSaidLines = 4;

/// The caption without its access key, for those who hear the screen.
QString Spoken(QString caption)
{
    return caption.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

/// The choice with that value; none for a value that is written there and means nothing.
void ShowChoice(QComboBox& box, TextView value)
{
    box.setCurrentIndex(box.findData(ToQString(value)));
}

} // namespace

bool frmConnections::Edit(HostLinks& links, MessageBoxes& boxes, QWidget* owner)
{
    std::optional<HostsFile> file;
    if (const auto failure = FailureOf([&] { file = HostsFile::Read(HostsFile::UsualPath()); })) {
        boxes.Show(failure->description, message_box::kOk | message_box::kWarning, u"Nib");
        return false;
    }
    ConnectionEdits edits(std::move(*file), links);
    return frmConnections(edits, QtPasswords::Forget, owner).exec() == Accepted;
}

frmConnections::frmConnections(ConnectionEdits& edits, std::function<void(const HostSettings&)> forget, QWidget* owner)
    : QDialog(owner), edits_(edits), forget_(std::move(forget))
{
    setWindowTitle(tr("Connections"));
    setSizeGripEnabled(true);
    // The Tab key goes as they are put in.
    auto* column = new QVBoxLayout(this);
    auto* both = new QHBoxLayout;
    column->addLayout(both, 1);
    both->addWidget(BuildList());
    both->addWidget(BuildFields(), 1, Qt::AlignTop);
    column->addWidget(BuildBottom());
    ok_->setDefault(true);
    FillList(Text(kDefaultHost));
    list_->setFocus();
}

// The widgets

QWidget* frmConnections::BuildList()
{
    auto* side = new QWidget;
    list_ = new QListWidget;
    list_->setMinimumWidth(fontMetrics().horizontalAdvance(DefaultName()) +
                           fontMetrics().averageCharWidth() * kListMargin);
    list_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    auto* label = new QLabel(tr("C&onnections:"));
    label->setBuddy(list_);
    list_->setAccessibleName(Spoken(label->text()));
    add_ = new QPushButton(tr("&Add"));
    remove_ = new QPushButton(tr("Re&move"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {add_, remove_}) {
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(label);
    column->addWidget(list_, 1);
    column->addLayout(buttons);
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (showing_ || row < 0) return;
        const bool taken = TakeName();
        current_ = edits_.Names()[static_cast<size_t>(row)];
        ShowConnection();
        if (taken) Say({}, false);
    });
    connect(add_, &QPushButton::clicked, this, &frmConnections::Add);
    connect(remove_, &QPushButton::clicked, this, &frmConnections::Remove);
    return side;
}

QWidget* frmConnections::BuildFields()
{
    auto* fields = new QWidget;
    form_ = new QFormLayout(fields);
    form_->setContentsMargins(0, 0, 0, 0);
    form_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    name_ = new QLineEdit;
    name_->setMinimumWidth(
        std::min(fontMetrics().averageCharWidth() * kFieldChars, screen()->availableSize().width() / 3));
    AddRow(QT_TR_NOOP("&Name:"), name_, name_);
    kind_ = new QComboBox;
    kind_->addItem(tr("Folders of accounts"), ToQString(kAccountsKind));
    kind_->addItem(tr("MultiValue server"), ToQString(kNetworkKind));
    AddRow(QT_TR_NOOP("&Kind:"), kind_, kind_);

    AddField(QT_TR_NOOP("&Folder:"), u"root", kAccountsKind);
    AddField(QT_TR_NOOP("Add&ress:"), u"address", kNetworkKind);
    AddField(QT_TR_NOOP("&Port:"), u"port", kNetworkKind, QStringLiteral("4243"));
    AddField(QT_TR_NOOP("&User:"), u"user", kNetworkKind);
    AddField(QT_TR_NOOP("A&ccount:"), u"account", {});
    AddField(QT_TR_NOOP("Tunn&el:"), u"tunnel", kNetworkKind, QStringLiteral("ssh -W %h:%p gateway"));
    ids_ = new QComboBox;
    ids_->addItem(tr("As the account has them"), QString());
    ids_->addItem(tr("Plain"), QStringLiteral("plain"));
    ids_->addItem(tr("Escaped as a server does"), QStringLiteral("escaped"));
    AddRow(QT_TR_NOOP("&Item ids:"), ids_, ids_);
    AddField(QT_TR_NOOP("Character &set:"), u"charset", {}, tr("Latin-1, new items in UTF-8"));
    AddField(QT_TR_NOOP("S&hown as:"), u"name", {});
    AddField(QT_TR_NOOP("Co&lor:"), u"color", {}, QStringLiteral("#RRGGBB"));

    connect(name_, &QLineEdit::editingFinished, this, &frmConnections::TakeName);
    connect(kind_, &QComboBox::activated, this, [this] {
        Choose(*kind_, u"kind");
        ShowKind();
        ShowDefaults();
    });
    connect(ids_, &QComboBox::activated, this, [this] { Choose(*ids_, u"ids"); });
    return fields;
}

QWidget* frmConnections::BuildBottom()
{
    auto* bottom = new QWidget;
    test_ = new QPushButton(tr("&Test"));
    test_->setAutoDefault(false);
    icon_ = new QLabel;
    said_ = new QLabel;
    said_->setTextFormat(Qt::PlainText);
    said_->setWordWrap(true);
    said_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    said_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    said_->setMinimumHeight(fontMetrics().lineSpacing() * kSaidLines); // the form does not jump
    auto* answer = new QHBoxLayout;
    answer->addWidget(test_, 0, Qt::AlignTop);
    answer->addWidget(icon_, 0, Qt::AlignTop);
    answer->addWidget(said_, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    cancel_ = buttons->button(QDialogButtonBox::Cancel);
    ok_->setText(tr("OK"));
    cancel_->setText(tr("Cancel"));
    auto* column = new QVBoxLayout(bottom);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(answer);
    column->addWidget(buttons);
    connect(test_, &QPushButton::clicked, this, &frmConnections::Test);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmConnections::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmConnections::reject);
    return bottom;
}

void frmConnections::AddRow(const char* caption, QWidget* row, QWidget* field)
{
    auto* label = new QLabel(tr(caption));
    label->setBuddy(field);
    field->setAccessibleName(Spoken(label->text()));
    form_->addRow(label, row);
}

void frmConnections::AddField(const char* caption, TextView key, TextView kind, const QString& placeholder)
{
    auto* line = new QLineEdit;
    line->setPlaceholderText(placeholder);
    QWidget* row = line;
    if (key == u"root") {
        browse_ = new QPushButton(tr("&Browse..."));
        browse_->setAutoDefault(false);
        connect(browse_, &QPushButton::clicked, this, &frmConnections::Browse);
        row = new QWidget;
        auto* both = new QHBoxLayout(row);
        both->setContentsMargins(0, 0, 0, 0);
        both->addWidget(line, 1);
        both->addWidget(browse_);
    }
    AddRow(caption, row, line);
    fields_.push_back({key, kind, line, row});
    connect(line, &QLineEdit::textEdited, this, [this, key](const QString& text) {
        if (Try([&] { edits_.Set(current_, key, ToText(text)); })) ShowDefaults();
    });
}

// What the user sees

QString frmConnections::DefaultName()
{
    return tr("* (default connection)");
}

void frmConnections::FillList(const Text& current)
{
    {
        const QScopedValueRollback<bool> showing(showing_, true);
        list_->clear();
        for (const Text& name : edits_.Names()) list_->addItem(name == kDefaultHost ? DefaultName() : ToQString(name));
        list_->setCurrentRow(RowOf(current));
    }
    current_ = current;
    ShowConnection();
}

int frmConnections::RowOf(const Text& name) const
{
    const std::vector<Text> names = edits_.Names();
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}

void frmConnections::ShowConnection()
{
    const bool isDefault = current_ == kDefaultHost;
    name_->setText(ToQString(current_));
    name_->setEnabled(!isDefault);
    remove_->setEnabled(!isDefault);
    ShowChoice(*kind_, ToLower(edits_.Settings(current_).kind));
    ShowChoice(*ids_, ToLower(edits_.Value(current_, u"ids")));
    for (const Field& field : fields_) {
        field.line->setText(ToQString(edits_.Value(current_, field.key)));
        field.line->setCursorPosition(0);
    }
    ShowKind();
    ShowDefaults();
}

void frmConnections::ShowKind()
{
    const bool server = kind_->currentData().toString() == ToQString(kNetworkKind);
    for (const Field& field : fields_)
        form_->setRowVisible(field.row, field.kind.empty() || (field.kind == kNetworkKind) == server);
    form_->setRowVisible(ids_, !server);
}

/// What holds where nothing is written.
void frmConnections::ShowDefaults()
{
    const HostSettings settings = edits_.Settings(current_);
    for (const Field& field : fields_) {
        if (!field.line->text().isEmpty()) continue;
        if (field.key == u"root") field.line->setPlaceholderText(ToQString(FromFileName(settings.root)));
        if (field.key == u"user") field.line->setPlaceholderText(ToQString(settings.user));
        if (field.key == u"name") field.line->setPlaceholderText(ToQString(settings.name));
    }
}

void frmConnections::Say(const QString& text, bool trouble)
{
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    const QIcon icon = style()->standardIcon(trouble ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation);
    icon_->setPixmap(text.isEmpty() ? QPixmap() : icon.pixmap(QSize(side, side), devicePixelRatioF()));
    said_->setText(text);
    if (text.isEmpty()) return;
    QAccessibleEvent alert(said_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

// What the user does

bool frmConnections::Try(const std::function<void()>& change)
{
    const auto failure = FailureOf(change);
    Say(failure ? TranslatedText(failure->description) : QString(), true);
    return !failure;
}

void frmConnections::Choose(const QComboBox& box, TextView key)
{
    Try([&] { edits_.Set(current_, key, ToText(box.currentData().toString())); });
}

bool frmConnections::TakeName()
{
    if (ToText(name_->text()) == current_) return true;
    const int row = RowOf(current_);
    if (!Try([&] { current_ = edits_.Rename(current_, ToText(name_->text())); })) return false;
    name_->setText(ToQString(current_));
    list_->item(row)->setText(name_->text());
    return true;
}

void frmConnections::Add()
{
    if (!TakeName()) return name_->setFocus();
    if (!Try([&] { current_ = edits_.Add(kNetworkKind); })) return;
    FillList(current_);
    name_->setFocus();
    name_->selectAll();
}

void frmConnections::Remove()
{
    const int row = list_->currentRow();
    if (!Try([&] { edits_.Remove(current_); })) return;
    const std::vector<Text> names = edits_.Names();
    FillList(names[std::min(static_cast<size_t>(row), names.size() - 1)]);
    if (!remove_->isEnabled()) list_->setFocus();
}

void frmConnections::Browse()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Folder of the accounts"),
                                                             ToQString(FromFileName(edits_.Settings(current_).root)));
    if (folder.isEmpty() || !Try([&] { edits_.Set(current_, u"root", ToText(folder)); })) return;
    ShowConnection();
}

void frmConnections::Test()
{
    if (!TakeName()) return name_->setFocus();
    Say(tr("Testing..."), false);
    said_->repaint();
    Text said;
    if (Try([&] { said = edits_.Test(current_); })) Say(TranslatedText(said), false);
}

void frmConnections::accept()
{
    if (!TakeName()) return name_->setFocus();
    if (const auto fault = edits_.FirstFault()) {
        FillList(fault->connection);
        return Say(TranslatedText(fault->why), true);
    }
    if (Try([&] { edits_.Accept(forget_); })) QDialog::accept();
}

} // namespace nib
