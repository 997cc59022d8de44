#include "hosts/picker/frmItemPicker.h"

#include "hosts/picker/QtPickerModels.h"
#include "hosts/picker/QtPickerWidgets.h"
#include "platform/qt/ElidedValue.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QCompleter>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace nib {

namespace {

/// Arrow keys walk through the tree without opening every place on the way.
constexpr int kTreeDelayMs = 200;

} // namespace

std::optional<PickerAnswer> ItemPicker::Run(const SelectRequest& request, TextView startPath, ItemBrowser& browser)
{
    PickerModel model(request, browser);
    model.SetShowHidden(showHidden_);
    {
        const QtWaitCursor wait;
        model.Start(startPath);
    }
    frmItemPicker form(model, browser, owner_, edit_);
    if (size_.isValid()) form.resize(size_);
    const bool accepted = form.exec() == QDialog::Accepted;
    size_ = form.size();
    showHidden_ = model.List().ShowsHidden();
    return accepted ? std::optional(model.Answer()) : std::nullopt;
}

frmItemPicker::frmItemPicker(PickerModel& model, ItemBrowser& browser, QWidget* owner, ItemPicker::EditConnections edit)
    : QDialog(owner), model_(model), items_(new PickerItemModel(model.List(), this)),
      places_(new PlaceTreeModel(browser, this)), edit_(std::move(edit))
{
    setWindowTitle(Translated(model.Request().mode));
    setSizeGripEnabled(true);
    auto* split = new QSplitter(Qt::Horizontal);
    split->setChildrenCollapsible(false);
    split->addWidget(BuildPlaces());
    split->addWidget(BuildList());
    // The label as high as the tools beside it, so that tree and list begin on one line.
    placesLabel_->setFixedHeight(std::max(up_->sizeHint().height(), path_->sizeHint().height()));
    split->setStretchFactor(1, 1);
    auto* column = new QVBoxLayout(this);
    column->addWidget(split, 1);
    message_ = new PickerMessageLine;
    column->addWidget(message_);
    column->addWidget(BuildFields());
    column->addWidget(BuildBottom());

    const int em = fontMetrics().averageCharWidth();
    ResizeOnScreen(*this, {em * 140, fontMetrics().height() * 36});
    split->setSizes({em * 36, em * 104});
    SetUpColumns();
    SetTabOrder();
    AddShortcut(QKeySequence::Find, [this] { filter_->setFocus(Qt::ShortcutFocusReason); });
    AddShortcut(QKeySequence::Refresh, [this] { Go([this] { model_.Refresh(); }); });
    AddShortcut(Qt::CTRL | Qt::Key_H, [this] { hidden_->click(); });
    lockTimer_.setSingleShot(true);
    connect(&lockTimer_, &QTimer::timeout, this, &frmItemPicker::AskLocks);

    ShowPlace();
    model.BeginsWithName() ? name_->setFocus() : EnterList();
    name_->selectAll();
}

// The widgets

template <typename Receiver>
void frmItemPicker::AddShortcut(const QKeySequence& key, Receiver receiver)
{
    connect(new QShortcut(key, this), &QShortcut::activated, this, receiver);
}

QToolButton* frmItemPicker::AddTool(const QString& name, const QIcon& icon, const QKeySequence& key)
{
    auto* button = new QToolButton;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    button->setIcon(icon);
    button->setIconSize({side, side});
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    // A button's own shortcut would act only after the picture of a press.
    AddShortcut(key, [button] { button->click(); });
    button->setAccessibleName(name);
    button->setToolTip(name + QStringLiteral(" (") + key.toString(QKeySequence::NativeText) + QLatin1Char(')'));
    return button;
}

QWidget* frmItemPicker::BuildPlaces()
{
    auto* side = new QWidget;
    placesLabel_ = new QLabel(tr("&Places:"));
    tree_ = new QTreeView;
    tree_->setModel(places_);
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setAccessibleName(tr("Places"));
    tree_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree_->setMinimumWidth(fontMetrics().averageCharWidth() * 18);
    placesLabel_->setBuddy(tree_);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(placesLabel_);
    column->addWidget(tree_, 1);
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        const bool byMouse = QGuiApplication::mouseButtons() != Qt::NoButton;
        if (!showing_) treeTimer_.start(byMouse ? 0 : kTreeDelayMs);
    });
    treeTimer_.setSingleShot(true);
    connect(&treeTimer_, &QTimer::timeout, this, &frmItemPicker::FollowTree);
    return side;
}

QWidget* frmItemPicker::BuildList()
{
    auto* side = new QWidget;
    back_ = AddTool(tr("Back"), style()->standardIcon(QStyle::SP_ArrowBack), QKeySequence(Qt::ALT | Qt::Key_Left));
    up_ = AddTool(tr("Up"), style()->standardIcon(QStyle::SP_ArrowUp), QKeySequence(Qt::ALT | Qt::Key_Up));
    path_ = new PickerPathBar;
    list_ = new PickerListView;
    list_->setModel(items_);
    list_->setAccessibleName(tr("Items"));
    list_->setSelectionMode(model_.Request().several ? QAbstractItemView::ExtendedSelection
                                                     : QAbstractItemView::SingleSelection);
    auto* tools = new QHBoxLayout;
    tools->addWidget(back_);
    tools->addWidget(up_);
    tools->addWidget(path_, 1);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(tools);
    column->addWidget(list_, 1);

    connect(back_, &QToolButton::clicked, this, [this] { Go([this] { model_.GoBack(); }); });
    connect(up_, &QToolButton::clicked, this, [this] { Go([this] { model_.GoUp(); }); });
    connect(path_, &PickerPathBar::Chosen, this,
            [this](const QString& path) { Go([&] { model_.GoTo(ViewOf(path)); }); });
    connect(list_, &PickerListView::UpWanted, up_, &QToolButton::click);
    connect(list_, &PickerListView::TypedOn, this, [this](const QString& text) {
        name_->setFocus();
        name_->setText(text);
    });
    connect(list_, &PickerListView::SightChanged, this, [this] { lockTimer_.start(0); });
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmItemPicker::SelectionChanged);
    connect(list_, &QTreeView::doubleClicked, this, [this](const QModelIndex&) { accept_->click(); });
    return side;
}

void frmItemPicker::SetUpColumns()
{
    QHeaderView* header = list_->header();
    const QString samples[] = {
        {}, QLocale().formattedDataSize(1000000), PickerItemModel::ShownTime(0), tr("a user (port 1234)")};
    const int margin = fontMetrics().averageCharWidth() * 4;
    for (int column = 1; column < items_->columnCount(); ++column) {
        header->resizeSection(column, fontMetrics().horizontalAdvance(samples[column]) + margin);
    }
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    header->setSortIndicator(0, Qt::AscendingOrder);
    connect(header, &QHeaderView::sortIndicatorChanged, this, [this](int column, Qt::SortOrder order) {
        Filter([&] { model_.SortBy(static_cast<PickerList::Column>(column), order == Qt::DescendingOrder); });
    });
}

QWidget* frmItemPicker::BuildFields()
{
    auto* fields = new QWidget;
    name_ = new QLineEdit;
    name_->setAccessibleName(tr("Item"));
    auto* completer = new QCompleter(items_, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setCompletionRole(Qt::DisplayRole);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    completer->popup()->setIconSize({side, side});
    name_->setCompleter(completer);
    // With the list of completions open, Return would only close it; the name that stands there is the answer all the
    // same.
    connect(name_, &QLineEdit::returnPressed, this, [this, completer] {
        if (!completer->popup()->isVisible() || completer->popup()->currentIndex().isValid()) return;
        completer->popup()->hide();
        accept_->click();
    });
    filter_ = new QLineEdit;
    filter_->setAccessibleName(tr("Filter"));
    filter_->setClearButtonEnabled(true);
    filter_->setPlaceholderText(tr("Part of a name, or a pattern with * and ?"));
    filter_->installEventFilter(this);
    hidden_ = new QCheckBox(tr("Show &hidden"));
    hidden_->setChecked(model_.List().ShowsHidden());
    auto* nameLabel = new QLabel(tr("&Item:"));
    nameLabel->setBuddy(name_);
    auto* filterLabel = new QLabel(tr("&Filter:"));
    filterLabel->setBuddy(filter_);
    auto* grid = new QGridLayout(fields);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(nameLabel, 0, 0);
    grid->addWidget(name_, 0, 1, 1, 2);
    grid->addWidget(filterLabel, 1, 0);
    grid->addWidget(filter_, 1, 1);
    grid->addWidget(hidden_, 1, 2);

    connect(name_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (showing_) return;
        model_.TypeName(ViewOf(text));
        ShowSelection();
        ShowChoice();
    });
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (!showing_) Filter([&] { model_.SetFilter(ViewOf(text)); });
    });
    connect(hidden_, &QCheckBox::toggled, this, [this](bool on) { Filter([&] { model_.SetShowHidden(on); }); });
    return fields;
}

QWidget* frmItemPicker::BuildBottom()
{
    auto* bottom = new QWidget;
    readOnly_ = new QCheckBox(tr("Open &read-only"));
    readOnly_->setVisible(model_.Request().offerReadOnly);
    connections_ = new QPushButton(tr("Co&nnections..."));
    connections_->setAutoDefault(false);
    if (!edit_) connections_->hide();
    accept_ = new QPushButton;
    accept_->setDefault(true);
    cancel_ = new QPushButton(tr("&Cancel"));
    cancel_->setAutoDefault(false);
    auto* row = new QHBoxLayout(bottom);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(connections_);
    row->addWidget(readOnly_);
    row->addStretch(1);
    row->addWidget(accept_);
    row->addWidget(cancel_);
    connect(readOnly_, &QCheckBox::toggled, this, [this](bool on) { model_.SetReadOnly(on); });
    connect(accept_, &QPushButton::clicked, this, [this] { Press([this] { return model_.Accept(); }); });
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(connections_, &QPushButton::clicked, this, &frmItemPicker::ConnectionsWanted);
    return bottom;
}

void frmItemPicker::SetTabOrder()
{
    QWidget* const order[] = {list_,   name_,        filter_, hidden_, readOnly_, accept_,
                              cancel_, connections_, tree_,   back_,   up_,       path_};
    for (size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

} // namespace nib
