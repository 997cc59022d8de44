#include "records/frmRecord.h"

#include "platform/qt/ElidedValue.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"
#include "text/SourceView.h"

#include <QAbstractSlider>
#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

constexpr int kFilterChars = 30;

} // namespace

frmRecord::frmRecord(SourceView& view, Dictionary dictionary)
    : view_(view), grid_(view.Document(), std::move(dictionary))
{
    Build();
    BuildTables();
    later_.setSingleShot(true);
    later_.setInterval(0);
    QObject::connect(&later_, &QTimer::timeout, this, [this] { Follow(); });
    grid_.Content().changed = [this](bool whole) {
        dirty_ = true;
        if (!whole) return later_.start();
        if (onReset) onReset();
    };
    ShowCaret();
    QApplication::instance()->installEventFilter(this);
}

frmRecord::~frmRecord()
{
    // The tables look at the grid, which goes before widgets do that are owned.
    delete parts_;
}

void frmRecord::Build()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* top = new QHBoxLayout;
    auto* label = new QLabel(tr("Filter:"));
    txtFilter_ = new QLineEdit;
    txtFilter_->setAccessibleName(tr("Filter"));
    txtFilter_->setClearButtonEnabled(true);
    const int width = txtFilter_->fontMetrics().averageCharWidth() * kFilterChars;
    txtFilter_->setMinimumWidth(width / 2);
    txtFilter_->setMaximumWidth(width);
    txtFilter_->installEventFilter(this);
    auto* dictionary = new ElidedLabel(DictionaryText());
    dictionary->setToolTip(Names().fault.empty() ? QString() : dictionary->text());
    top->addWidget(label);
    top->addWidget(txtFilter_);
    top->addStretch();
    top->addWidget(dictionary);
    layout->addLayout(top);
    parts_ = new QSplitter(Qt::Vertical);
    parts_->setChildrenCollapsible(false);
    layout->addWidget(parts_, 1);
    lbRefusal_ = new QLabel;
    lbRefusal_->setTextFormat(Qt::PlainText);
    lbRefusal_->setWordWrap(true);
    lbRefusal_->hide();
    layout->addWidget(lbRefusal_);
    QObject::connect(txtFilter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        for (QtGridView* table : std::as_const(tables_)) table->Filter(text);
    });
}

QString frmRecord::DictionaryText() const
{
    const Dictionary& names = Names();
    const QString fault = ToQString(names.fault).simplified();
    if (!fault.isEmpty())
        return tr("The dictionary could not be read: %1").arg(TranslatedMessage(fault).value_or(fault));
    if (names.IsEmpty()) return tr("No dictionary");
    return names.name.empty() ? QString() : tr("Dictionary: %1").arg(ToQString(names.name));
}

QtGridView* frmRecord::NewTable(size_t table)
{
    auto* view = new QtGridView(grid_, table, view_);
    view->onCurrent = [this, view](const GridCell& cell) {
        Lead(view);
        CellChosen(cell);
    };
    view->onLeave = [this, view](bool down) { Leave(view, down); };
    view->Model().onRefused = [this](const QString& reason) { TellRefusal(reason); };
    tables_ += view;
    return view;
}

void frmRecord::BuildTables()
{
    // The tables first: some are pages of the associations.
    for (QtGridView* table : std::as_const(tables_)) delete table;
    tables_.clear();
    delete associations_;
    associations_ = nullptr;
    const std::vector<GridTable>& tables = grid_.Tables();
    QtGridView* list = NewTable(0);
    setFocusProxy(list);
    list->setAccessibleName(tr("Attributes"));
    last_ = list;
    parts_->addWidget(list);
    if (tables.size() < 2) return;
    associations_ = new QTabWidget;
    associations_->setDocumentMode(true);
    int rows = 0;
    for (size_t i = 1; i < tables.size(); ++i) {
        const QString title = ToQString(DoubleAmpersands(tables[i].Association()));
        QtGridView* table = NewTable(i);
        table->setAccessibleName(ToQString(tables[i].Association()));
        associations_->addTab(table, title);
        rows = std::max(rows, static_cast<int>(tables[i].Rows()));
    }
    parts_->addWidget(associations_);
    // Each gets room by what it has to show.
    constexpr int kFew = 3;
    constexpr int kMany = 12;
    parts_->setSizes({std::clamp(static_cast<int>(tables[0].Rows()), kFew, kMany) * 1000,
                      (std::clamp(rows, kFew, kMany) + 1) * 1000});
}

/// One cell of the record is the chosen one.
void frmRecord::Lead(QtGridView* table)
{
    last_ = table;
    for (QtGridView* other : std::as_const(tables_))
        if (other != table) other->clearSelection();
}

void frmRecord::Follow()
{
    if (std::exchange(dirty_, false)) {
        if (grid_.Refresh()) BuildTables();
        for (QtGridView* table : std::as_const(tables_)) table->Follow();
        if (!caretWaits_) CellChosen(last_->Model().CellAt(last_->currentIndex()));
    }
    if (caretWaits_) ShowCaret();
}

QtGridView* frmRecord::TableOf(int32_t attribute) const
{
    for (QtGridView* table : tables_) {
        const std::vector<int32_t>& own = table->Model().Table().Attributes();
        if (std::find(own.begin(), own.end(), attribute) != own.end()) return table;
    }
    return nullptr;
}

void frmRecord::FollowCaret()
{
    // What is typed into a cell leaves that the current one.
    if (choosing_ || grid_.Content().IsEditing()) return;
    // In the midst of an edit the tables are not yet what the text is.
    caretWaits_ = true;
    later_.start();
}

void frmRecord::ShowCaret()
{
    caretWaits_ = false;
    if (IsHeld()) return;
    const Position caret = view_.Caret();
    QtGridView* table = TableOf(caret.line + 1);
    if (!table || !table->ShowValue(caret.line + 1, grid_.Content().ValueAt(caret))) return;
    if (associations_ && associations_->indexOf(table) >= 0) associations_->setCurrentWidget(table);
    const bool focused = last_ != table && last_->hasFocus();
    Lead(table);
    if (focused) table->setFocus(Qt::OtherFocusReason);
}

/// By an arrow key from the first or last row: to the next table or the filter, as they stand above one another.
void frmRecord::Leave(QtGridView* table, bool down)
{
    const qsizetype next = tables_.indexOf(table) + (down ? 1 : -1);
    if (next < 0) return txtFilter_->setFocus(Qt::BacktabFocusReason);
    if (next >= tables_.size()) return;
    QtGridView* other = tables_[next];
    if (associations_ && next > 0) associations_->setCurrentWidget(other);
    const int row = down ? 0 : other->model()->rowCount() - 1;
    other->setFocus(Qt::OtherFocusReason);
    other->setCurrentIndex(other->model()->index(row, 0));
}

/// The caret of the text goes along, so that its commands are for what is seen.
void frmRecord::CellChosen(const GridCell& cell)
{
    if (cell.attribute == 0) return;
    caretWaits_ = false;
    choosing_ = true;
    view_.SetCaret(grid_.Content().Place(cell.attribute, cell.value).start);
    choosing_ = false;
}

void frmRecord::TellRefusal(const QString& reason)
{
    lbRefusal_->setText(reason);
    lbRefusal_->setVisible(!reason.isEmpty());
    if (reason.isEmpty()) return;
    QAccessibleEvent said(lbRefusal_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void frmRecord::TakeFocus()
{
    if (!isAncestorOf(QApplication::focusWidget())) last_->setFocus(Qt::OtherFocusReason);
}

/// The table with the cell that is open; null while none is.
QtGridView* frmRecord::OpenTable() const
{
    const auto open = std::ranges::find_if(tables_, [](const QtGridView* table) { return table->Editor() != nullptr; });
    return open == tables_.end() ? nullptr : *open;
}

QString frmRecord::TakeInput()
{
    QtGridView* table = OpenTable();
    return !table || table->Commit() ? QString() : lbRefusal_->text();
}

/// A text that was refused is mended or given up before another cell is gone to, or other rows are shown.
bool frmRecord::IsHeld() const
{
    const QtGridView* table = OpenTable();
    return table && table->Editor()->isModified();
}

/// What is being typed into a cell is in the text before anything else is done with that.
bool frmRecord::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonPress || type == QEvent::ShortcutOverride) BeforeOther(watched, event);
    if (LeadsAway(watched, type) && IsHeld()) {
        OpenTable()->Editor()->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (watched == txtFilter_ && type == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down)
        tables_.front()->setFocus(Qt::TabFocusReason);
    return QWidget::eventFilter(watched, event);
}

void frmRecord::BeforeOther(const QObject* watched, QEvent* event)
{
    QtGridView* table = OpenTable();
    QLineEdit* line = table ? table->Editor() : nullptr;
    if (!line || !line->hasFocus()) return;
    if (event->type() == QEvent::MouseButtonPress) {
        if (watched != line) table->Commit();
        return;
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool command = !IsModifier(key->key()) && ((key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) ||
                                                     (key->key() >= Qt::Key_F1 && key->key() <= Qt::Key_F35));
    // The line's own keys are those that it takes.
    if (command && (line->event(event), !event->isAccepted())) table->Commit();
}

/// By the mouse or the focus, to something of the grid that is no open cell and does not merely scroll or divide.
bool frmRecord::LeadsAway(const QObject* watched, QEvent::Type type) const
{
    constexpr QEvent::Type kTypes[] = {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::MouseMove,
                                       QEvent::MouseButtonRelease, QEvent::FocusIn};
    if (std::ranges::find(kTypes, type) == std::end(kTypes)) return false;
    const auto* widget = qobject_cast<const QWidget*>(watched);
    if (!widget || !isAncestorOf(widget)) return false;
    const QtGridView* table = OpenTable();
    return !(table && table->Editor() == widget) && !qobject_cast<const QAbstractSlider*>(widget) &&
           !qobject_cast<const QSplitterHandle*>(widget);
}

} // namespace nib
