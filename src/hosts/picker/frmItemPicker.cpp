#include "hosts/picker/frmItemPicker.h"

#include "hosts/picker/QtPickerItemModel.h"
#include "hosts/picker/QtPickerListView.h"
#include "hosts/picker/QtPickerMessageLine.h"
#include "hosts/picker/QtPickerPathBar.h"
#include "hosts/picker/QtPlaceTreeModel.h"
#include "platform/qt/ElidedValue.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"
#include "platform/qt/Translations.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QCompleter>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace nib {

namespace {

/// Questions about locks go on for so long before keys and paint events get their turn.
constexpr int kLockSliceMs = 15;
/// Arrow keys walk through the tree without opening every place on the way.
constexpr int kTreeDelayMs = 200;

} // namespace

frmItemPicker::frmItemPicker(PickerModel& model, ItemBrowser& browser, QWidget* owner)
    : QDialog(owner), model_(model), items_(new PickerItemModel(model.List(), this)),
      places_(new PlaceTreeModel(browser, this))
{
    setWindowTitle(ToQString(model.Request().mode));
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
    accept_ = new QPushButton;
    accept_->setDefault(true);
    cancel_ = new QPushButton(tr("&Cancel"));
    cancel_->setAutoDefault(false);
    auto* row = new QHBoxLayout(bottom);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(readOnly_);
    row->addStretch(1);
    row->addWidget(accept_);
    row->addWidget(cancel_);
    connect(readOnly_, &QCheckBox::toggled, this, [this](bool on) { model_.SetReadOnly(on); });
    connect(accept_, &QPushButton::clicked, this, [this] { Press([this] { return model_.Accept(); }); });
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    return bottom;
}

void frmItemPicker::SetTabOrder()
{
    QWidget* const order[] = {list_, name_, filter_, hidden_, readOnly_, accept_, cancel_, tree_, back_, up_, path_};
    for (size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

// What the user does

void frmItemPicker::Go(const std::function<void()>& move)
{
    {
        const QtWaitCursor wait;
        move();
    }
    ShowPlace();
}

void frmItemPicker::FollowTree()
{
    const Text path = places_->PathOf(tree_->currentIndex());
    if (path.empty() || path == model_.Place()) return;
    bool moved = false;
    {
        const QtWaitCursor wait;
        moved = model_.GoTo(path);
    }
    // The tree stays on a place that cannot be read, so that the keys can go on from there.
    if (moved)
        ShowPlace();
    else
        ShowMessage();
}

void frmItemPicker::Press(const std::function<PickerModel::Outcome()>& decide)
{
    PickerModel::Outcome outcome{};
    {
        const QtWaitCursor wait;
        outcome = decide();
    }
    if (outcome == PickerModel::Outcome::Answers) return accept();
    if (outcome == PickerModel::Outcome::Stays) return ShowMessage();
    ShowPlace();
    if (!name_->hasFocus()) EnterList();
}

void frmItemPicker::Filter(const std::function<void()>& change)
{
    items_->Changing(change);
    ShowRows();
}

void frmItemPicker::EnterList()
{
    list_->setFocus();
    const QModelIndex current = list_->currentIndex().isValid() ? list_->currentIndex() : items_->index(0, 0);
    list_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}

bool frmItemPicker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != filter_ || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape && !filter_->text().isEmpty()) {
        filter_->clear();
        return true;
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (items_->rowCount() == 1)
            Press([this] { return model_.AcceptFilter(); });
        else
            EnterList();
        return true;
    }
    if (key == Qt::Key_Down) {
        EnterList();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmItemPicker::SelectionChanged()
{
    if (showing_) return;
    std::vector<int32_t> rows;
    for (const QModelIndex& index : list_->selectionModel()->selectedRows()) rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    model_.SelectRows(rows);
    ShowChoice();
}

// What the user sees

void frmItemPicker::ShowPlace()
{
    {
        const QScopedValueRollback<bool> showing(showing_, true);
        items_->Changing([] {});
        filter_->setText(ToQString(model_.List().Filter()));
        treeTimer_.stop();
        const QModelIndex place = places_->Reveal(model_.Place());
        tree_->setCurrentIndex(place);
        tree_->scrollTo(place);
    }
    path_->SetTrail(model_.Trail());
    back_->setEnabled(model_.CanGoBack());
    up_->setEnabled(model_.CanGoUp());
    for (int column = 1; column < items_->columnCount(); ++column) {
        list_->setColumnHidden(column, !model_.List().Shows(static_cast<PickerList::Column>(column)));
    }
    ShowRows();
    ShowMessage();
}

void frmItemPicker::ShowRows()
{
    list_->SetEmptyText(Translated(model_.List().EmptyText()));
    ShowSelection();
    ShowChoice();
    lockTimer_.start(0);
}

void frmItemPicker::ShowSelection()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    QItemSelection selection;
    const int last = items_->columnCount() - 1;
    const std::vector<int32_t> rows = model_.SelectedRows();
    for (const int32_t row : rows)
        selection.append(QItemSelectionRange(items_->index(row, 0), items_->index(row, last)));
    if (!rows.empty()) {
        list_->selectionModel()->setCurrentIndex(items_->index(rows.front(), 0), QItemSelectionModel::NoUpdate);
    }
    list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void frmItemPicker::ShowChoice()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    const QString name = ToQString(model_.Name());
    if (name_->text() != name) name_->setText(name);
    name_->setPlaceholderText(ToQString(model_.NameHint()));
    accept_->setText(Translated(model_.AcceptCaption()));
    accept_->setEnabled(model_.CanAccept());
}

void frmItemPicker::ShowMessage()
{
    message_->Say(Translated(model_.Message()));
}

void frmItemPicker::AskLocks()
{
    const auto [first, last] = list_->RowsInSight();
    QElapsedTimer spent;
    for (spent.start(); spent.elapsed() < kLockSliceMs;) {
        const int32_t row = model_.AskNextLock(first, last);
        if (row < 0) return;
        items_->RowChanged(row);
    }
    lockTimer_.start(0);
}

} // namespace nib
