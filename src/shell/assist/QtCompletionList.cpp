#include "shell/assist/QtCompletionList.h"

#include "platform/qt/QtText.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>

namespace nib {

namespace {

constexpr int kMostRows = 10;
constexpr int kHelpWidth = 320;
constexpr int kMostListWidth = 360;
constexpr int kPicture = 16;
constexpr Qt::WindowFlags kFlags = Qt::ToolTip | Qt::FramelessWindowHint;

struct KindRow {
    char letter;
    QRgb color;
    const char* name;
};

/// In the order of Completion::Kind.
constexpr KindRow kKinds[] = {
    {'S', 0xFF2F6FB5, QT_TRANSLATE_NOOP("QtCompletionList", "statement")},
    {'F', 0xFF8A4FB0, QT_TRANSLATE_NOOP("QtCompletionList", "function")},
    {'W', 0xFF4F7F8F, QT_TRANSLATE_NOOP("QtCompletionList", "clause")},
    {'V', 0xFF5F6F7F, QT_TRANSLATE_NOOP("QtCompletionList", "variable")},
    {'C', 0xFF9F6F1F, QT_TRANSLATE_NOOP("QtCompletionList", "constant")},
    {'L', 0xFF2F8F4F, QT_TRANSLATE_NOOP("QtCompletionList", "label")},
    {'R', 0xFFA0463C, QT_TRANSLATE_NOOP("QtCompletionList", "subroutine")},
    {'I', 0xFFA0463C, QT_TRANSLATE_NOOP("QtCompletionList", "item")},
    {'D', 0xFF7F7F2F, QT_TRANSLATE_NOOP("QtCompletionList", "file")},
    {'E', 0xFF2F6FB5, QT_TRANSLATE_NOOP("QtCompletionList", "closes the block")},
};

const KindRow& RowOf(Completion::Kind kind)
{
    return kKinds[static_cast<size_t>(kind)];
}

QIcon Picture(const KindRow& row, qreal ratio)
{
    QPixmap picture(QSize(kPicture, kPicture) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(row.color));
    painter.drawRoundedRect(QRectF(0, 0, kPicture, kPicture), 3, 3);
    QFont font = painter.font();
    font.setPixelSize(11);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(0, 0, kPicture, kPicture), Qt::AlignCenter, QString(QLatin1Char(row.letter)));
    painter.end();
    QIcon icon;
    // Chosen or not, it looks the same.
    for (const auto mode : {QIcon::Normal, QIcon::Selected}) icon.addPixmap(picture, mode);
    return icon;
}

QRect Room(const QRect& cell)
{
    const QScreen* screen = QGuiApplication::screenAt(cell.center());
    return (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
}

} // namespace

QString HelpHtml(TextView form, TextView help, int32_t from, int32_t to)
{
    QString html;
    const QString shown = ToQString(form);
    if (!shown.isEmpty()) {
        const QString part = shown.mid(from, to - from).toHtmlEscaped();
        html = QStringLiteral("<div style='white-space:pre-wrap'><code>") + shown.left(from).toHtmlEscaped() +
               (part.isEmpty() ? QString() : QStringLiteral("<b><u>") + part + QStringLiteral("</u></b>")) +
               shown.mid(to).toHtmlEscaped() + QStringLiteral("</code></div>");
    }
    if (!help.empty())
        html += QStringLiteral("<div>") + ToQString(help).toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")) +
                QStringLiteral("</div>");
    return html;
}

QtCompletionList::QtCompletionList(QWidget* owner) : QFrame(owner, kFlags), list_(new QListWidget), help_(new QLabel)
{
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAccessibleName(tr("Suggestions"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setFrameStyle(QFrame::NoFrame);
    list_->setUniformItemSizes(true);
    list_->setIconSize({kPicture, kPicture});
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setAccessibleName(tr("Suggestions"));
    help_->setAccessibleName(tr("Help"));
    help_->setWordWrap(true);
    help_->setTextFormat(Qt::RichText);
    help_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    help_->setMargin(6);
    help_->setAutoFillBackground(true);
    row->addWidget(list_);
    row->addWidget(help_);
    connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        if (onPick) onPick(list_->row(item));
    });
}

void QtCompletionList::ShowItems(const std::vector<Completion>& items, const QRect& cell, const QFont& font)
{
    items_ = items;
    cell_ = cell;
    list_->setFont(font);
    list_->clear();
    for (const Completion& item : items_) {
        const KindRow& kind = RowOf(item.kind);
        auto* row = new QListWidgetItem(Picture(kind, devicePixelRatioF()), ToQString(item.label), list_);
        row->setData(Qt::AccessibleTextRole, ToQString(item.label) + QStringLiteral(", ") + tr(kind.name));
    }
    const int wide = list_->sizeHintForColumn(0) + list_->verticalScrollBar()->sizeHint().width() + 12;
    list_->setFixedWidth(std::clamp(wide, 140, kMostListWidth));
    const auto rows = std::min(static_cast<int>(items_.size()), kMostRows);
    list_->setFixedHeight(rows * list_->sizeHintForRow(0) + 2);
}

void QtCompletionList::Choose(int32_t item)
{
    const bool chosen = item >= 0 && item < list_->count();
    if (chosen) {
        list_->setCurrentRow(item);
        QAccessibleEvent event(list_, QAccessible::Focus);
        event.setChild(item);
        QAccessible::updateAccessibility(&event);
    } else {
        list_->setCurrentRow(-1);
        list_->scrollToTop();
    }
    if (!items_.empty()) Describe(items_[static_cast<size_t>(chosen ? item : 0)]);
    Place();
}

void QtCompletionList::Describe(const Completion& item)
{
    const Text form = item.detail.empty() ? item.label : item.detail;
    const QString kind = QStringLiteral("<div><i>") + tr(RowOf(item.kind).name) + QStringLiteral("</i></div>");
    help_->setText(HelpHtml(form, item.help) + kind);
    help_->setFixedWidth(kHelpWidth);
}

void QtCompletionList::Place()
{
    const int height = std::max(list_->height(), std::min(help_->heightForWidth(kHelpWidth), 260)) + 2 * frameWidth();
    resize(list_->width() + kHelpWidth + 2 * frameWidth(), height);
    const QRect room = Room(cell_);
    const int below = cell_.bottom() + 2;
    const bool fits = below + height <= room.bottom() || cell_.top() - room.top() < room.bottom() - below;
    const int left =
        std::clamp(cell_.left() - kPicture - 6, room.left(), std::max(room.right() - width(), room.left()));
    move(left, fits ? below : cell_.top() - height - 2);
    show();
    raise();
}

int QtCompletionList::PageRows() const
{
    return std::max(std::min(list_->count(), kMostRows) - 1, 1);
}

QtTip::QtTip(QWidget* owner) : QFrame(owner, kFlags), text_(new QLabel)
{
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(text_);
    text_->setMargin(4);
    text_->setTextFormat(Qt::RichText);
}

void QtTip::ShowAbove(const QString& html, const QRect& cell)
{
    text_->setText(html);
    setAccessibleName(QString(html).remove(QRegularExpression(QStringLiteral("<[^>]*>"))));
    adjustSize();
    const QRect room = Room(cell);
    const int above = cell.top() - height() - 2;
    const int left = std::clamp(cell.left(), room.left(), std::max(room.right() - width(), room.left()));
    move(left, above >= room.top() ? above : cell.bottom() + 2);
    show();
    raise();
}

} // namespace nib
