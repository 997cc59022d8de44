#include "shell/frame/frmStart.h"

#include "platform/qt/QtText.h"
#include "shell/menus/QtToolActions.h"
#include "text/widget/ScreenColors.h"

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiArea>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>

#include <algorithm>

namespace nib {

namespace {

constexpr int kDetailRole = Qt::UserRole + 1;
constexpr int kRowRole = Qt::UserRole + 2; ///< the number of its row; a heading has none
constexpr int kBusyDelay = 100;
/// Measured in the width of letters.
constexpr int kListWidth = 66;
constexpr int kLeastListWidth = 34;
constexpr int kLeastDetail = 18;

/// A colour between the two that can be read on the latter.
QColor Faint(const QPalette& palette)
{
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    const auto between = [](int a, int b) { return (3 * a + 2 * b) / 5; };
    return Legible(
        QColor(between(text.red(), base.red()), between(text.green(), base.green()), between(text.blue(), base.blue())),
        base);
}

/// A caption, and in a fainter colour behind it what is told of it.
class StartDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const int line = option.fontMetrics.height();
        const bool heading = !index.data(kRowRole).isValid();
        return {line, heading ? line * (index.row() == 0 ? 3 : 5) / 2 : line + line / 2};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const override
    {
        QStyleOptionViewItem option = given;
        initStyleOption(&option, index);
        const QStyle& style = *option.widget->style();
        const bool heading = !index.data(kRowRole).isValid();
        if (!heading) style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
        const int gap = option.fontMetrics.averageCharWidth();
        QRect rest = option.rect.adjusted(gap, 0, -gap, 0);
        painter->save();
        if (heading) {
            painter->setFont(option.font);
            painter->setPen(Faint(option.palette));
            rest.adjust(0, 0, 0, -option.fontMetrics.height() / 3);
            painter->drawText(rest, Qt::AlignBottom | Qt::AlignLeading, option.text);
        } else {
            PaintRow(*painter, option, index, rest);
        }
        painter->restore();
    }

private:
    static void PaintRow(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index, QRect rest)
    {
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        const int gap = option.fontMetrics.averageCharWidth();
        const int side = option.decorationSize.height();
        const Qt::LayoutDirection direction = option.direction;
        const auto place = [&](const QRect& at) { return QStyle::visualRect(direction, option.rect, at); };
        const QRect icon(rest.left(), rest.top() + (rest.height() - side) / 2, side, side);
        option.icon.paint(&painter, place(icon));
        rest.setLeft(icon.right() + 1 + gap);

        const auto put = [&](const QString& whole, Qt::TextElideMode how, const QColor& color) {
            painter.setPen(color);
            const QString text = option.fontMetrics.elidedText(whole, how, rest.width());
            const auto alignment = QStyle::visualAlignment(direction, Qt::AlignVCenter | Qt::AlignLeft);
            painter.drawText(place(rest), static_cast<int>(alignment) | Qt::TextSingleLine, text);
            rest.setLeft(rest.left() + option.fontMetrics.horizontalAdvance(text) + 2 * gap);
        };
        painter.setFont(option.font);
        const QColor chosen = option.palette.color(QPalette::HighlightedText);
        put(option.text, Qt::ElideMiddle, selected ? chosen : option.palette.color(QPalette::Text));
        const QString detail = index.data(kDetailRole).toString();
        if (rest.width() >= std::min(option.fontMetrics.horizontalAdvance(detail), kLeastDetail * gap))
            put(detail, Qt::ElideMiddle, selected ? chosen : Faint(option.palette));
    }
};

QIcon IconOf(const StartRow& row)
{
    switch (row.kind) {
    case StartRow::Kind::Command: return ToolIcon(row.target == u"New" ? u"document-new" : u"document-open");
    case StartRow::Kind::Sample:
    case StartRow::Kind::Place: return ToolIcon(row.detail.empty() ? u"network-server" : u"folder");
    case StartRow::Kind::LastSession: return ToolIcon(u"document-open-recent");
    case StartRow::Kind::Recent: return ToolIcon(u"document-edit");
    case StartRow::Kind::Help: return ToolIcon(u"help-contents");
    }
    return {};
}

/// Names and places are nobody's to translate.
QString Shown(const StartRow& row, const Text& part)
{
    const bool isName = row.kind == StartRow::Kind::Recent || row.kind == StartRow::Kind::Place ||
                        (row.kind == StartRow::Kind::LastSession && &part == &row.detail);
    if (row.kind == StartRow::Kind::Recent && &part == &row.detail) return TranslatedPlace(part);
    if (isName) return ToQString(part);
    const bool hasKeys = row.kind == StartRow::Kind::Command || row.kind == StartRow::Kind::Help;
    if (&part != &row.detail || !hasKeys) return Translated(part);
    return QKeySequence(ToQString(part), QKeySequence::PortableText).toString(QKeySequence::NativeText);
}

} // namespace

// The lists

StartList::StartList(StartPage& page, const QString& accessibleName) : page_(page)
{
    setItemDelegate(new StartDelegate(this));
    setAccessibleName(accessibleName);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { RunLater(*item); });
}

void StartList::Clear()
{
    rows_.clear();
    clear();
}

void StartList::AddRows(const QString& heading, const std::vector<StartRow>& rows)
{
    if (rows.empty()) return;
    (new QListWidgetItem(heading, this))->setFlags(Qt::NoItemFlags);
    for (const StartRow& row : rows) {
        auto* item = new QListWidgetItem(IconOf(row), Shown(row, row.caption), this);
        const QString detail = Shown(row, row.detail);
        item->setData(kDetailRole, detail);
        item->setData(kRowRole, static_cast<int>(rows_.size()));
        item->setData(Qt::AccessibleTextRole, detail.isEmpty() ? item->text() : item->text() + ", " + detail);
        if (row.kind == StartRow::Kind::Recent || row.kind == StartRow::Kind::LastSession)
            item->setToolTip(QStringLiteral("<qt>%1</qt>").arg(detail.toHtmlEscaped()));
        rows_.push_back(row);
    }
}

void StartList::SelectRow()
{
    for (int i = 0; i < count() && !(currentItem() && currentItem()->flags().testFlag(Qt::ItemIsEnabled)); ++i)
        if (item(i)->flags().testFlag(Qt::ItemIsEnabled)) setCurrentRow(i, QItemSelectionModel::NoUpdate);
    if (currentItem()) currentItem()->setSelected(true);
}

/// Not while the key or click is still on its way: the page may go.
void StartList::RunLater(const QListWidgetItem& item)
{
    if (!item.data(kRowRole).isValid()) return;
    const StartRow row = rows_[static_cast<size_t>(item.data(kRowRole).toInt())];
    QMetaObject::invokeMethod(
        this, [this, row] { page_.Run(row); }, Qt::QueuedConnection);
}

void StartList::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (currentItem()) RunLater(*currentItem());
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (other_ && other_->HasRows()) other_->setFocus(Qt::TabFocusReason);
        break;
    default: QListWidget::keyPressEvent(event);
    }
}

void StartList::mouseMoveEvent(QMouseEvent* event)
{
    const QListWidgetItem* under = itemAt(event->pos());
    const bool runs = under && under->flags().testFlag(Qt::ItemIsEnabled);
    viewport()->setCursor(runs ? Qt::PointingHandCursor : Qt::ArrowCursor);
    QListWidget::mouseMoveEvent(event);
}

void StartList::focusInEvent(QFocusEvent* event)
{
    QListWidget::focusInEvent(event);
    SelectRow();
}

void StartList::focusOutEvent(QFocusEvent* event)
{
    QListWidget::focusOutEvent(event);
    clearSelection();
}

// The page

frmStart::frmStart(Program& program, QWidget* parent)
    : QWidget(parent), page_(program), title_(new QLabel(QStringLiteral("Nib"))),
      subtitle_(new QLabel(tr("Programs and records of MultiValue databases"))),
      left_(new StartList(page_, tr("Start and first steps"))),
      right_(new StartList(page_, tr("Recent items, connections and accounts"))),
      lists_(new QBoxLayout(QBoxLayout::LeftToRight))
{
    setAccessibleName(tr("Start page"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    left_->SetOther(*right_);
    right_->SetOther(*left_);
    // Steps are sentences, the others are names.
    lists_->addWidget(left_, 3);
    lists_->addWidget(right_, 2);
    auto* page = new QVBoxLayout;
    page->addWidget(title_);
    page->addWidget(subtitle_);
    page->addLayout(lists_, 1);
    auto* middle = new QHBoxLayout(this);
    middle->addStretch(1);
    middle->addLayout(page, 1000);
    middle->addStretch(1);
    ApplyLook();
    Refresh();
}

void frmStart::ApplyLook()
{
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 2);
    title_->setFont(large);
    QPalette faint = palette();
    faint.setColor(QPalette::Text, Faint(faint));
    subtitle_->setPalette(faint);
    const int em = fontMetrics().averageCharWidth();
    for (StartList* list : {left_, right_}) {
        list->setMaximumWidth(kListWidth * em);
        list->setIconSize(QSize(1, 1) * style()->pixelMetric(QStyle::PM_SmallIconSize));
    }
    lists_->setSpacing(3 * em);
    title_->setContentsMargins(em, 0, 0, 0);
    subtitle_->setContentsMargins(em, 0, 0, 2 * em);
}

void frmStart::Refresh()
{
    StartRows rows = page_.Rows();
    if (rows == shown_) return;
    shown_ = std::move(rows);
    Fill();
}

void frmStart::Fill()
{
    const bool focused = left_->hasFocus() || right_->hasFocus();
    left_->Clear();
    right_->Clear();
    left_->AddRows(tr("Start"), shown_.begin);
    left_->AddRows(tr("First steps"), shown_.steps);
    right_->AddRows(tr("Recent"), shown_.recent);
    right_->AddRows(tr("Connections and accounts"), shown_.places);
    right_->setVisible(right_->HasRows());
    if (focused) FocusRows();
}

void frmStart::FocusRows()
{
    StartList* list = shown_.recent.empty() ? left_ : right_;
    list->setFocus(Qt::OtherFocusReason);
    list->SelectRow();
}

void frmStart::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int em = fontMetrics().averageCharWidth();
    const bool narrow = width() < 2 * kLeastListWidth * em;
    lists_->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    // In a low window rows count for more than titles.
    const int lines = height() / fontMetrics().height();
    title_->setVisible(lines > 16);
    subtitle_->setVisible(lines > 20);
    layout()->setContentsMargins(em, std::min(height() / 12, 8 * em), em, em);
}

void frmStart::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    const QEvent::Type type = event->type();
    if (type != QEvent::PaletteChange && type != QEvent::StyleChange && type != QEvent::FontChange) return;
    ApplyLook();
    Fill(); // with icons of the lightness that it has now
}

// Its place

StartPlace::StartPlace(QMdiArea& area) : area_(area)
{
    area.installEventFilter(this);
    area.viewport()->installEventFilter(this);
}

bool StartPlace::eventFilter(QObject* watched, QEvent* event)
{
    if ((event->type() == QEvent::Resize || event->type() == QEvent::Move) && page_)
        page_->setGeometry(area_.geometry());
    if (event->type() == QEvent::Paint && program_ && empty_ && !page_ && !std::exchange(building_, true))
        QTimer::singleShot(0, this, [this] { Build(); });
    return QObject::eventFilter(watched, event);
}

void StartPlace::Build()
{
    // Under a dialog, or while documents are being opened, it would only come and go.
    if (QApplication::overrideCursor() || QApplication::activeModalWidget()) {
        QTimer::singleShot(kBusyDelay, this, [this] { Build(); });
        return;
    }
    building_ = false;
    if (!program_ || !empty_ || page_) return;
    // Above the area: what stands in it and is no window of a document, assistive tools are not told of.
    page_ = new frmStart(*program_, area_.parentWidget());
    page_->setGeometry(area_.geometry());
    page_->show();
    QWidget* focus = QApplication::focusWidget();
    if (area_.isActiveWindow() && (!focus || focus == &area_ || focus == area_.window())) page_->FocusRows();
}

void StartPlace::SetEmpty(bool empty)
{
    if (std::exchange(empty_, empty) == empty || !page_) return;
    if (!empty && page_->isAncestorOf(QApplication::focusWidget())) area_.setFocus();
    if (empty) page_->Refresh();
    page_->setVisible(empty);
}

bool StartPlace::TakeFocus()
{
    if (!page_ || !empty_) return false;
    page_->FocusRows();
    return true;
}

void StartPlace::Refresh()
{
    if (page_ && empty_ && program_) page_->Refresh();
}

} // namespace nib
