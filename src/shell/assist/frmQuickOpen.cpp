#include "shell/assist/frmQuickOpen.h"

#include "platform/qt/QtText.h"
#include "shell/assist/NameCommands.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr size_t kMost = 100;
/// Measured in letters and lines.
constexpr int kWidth = 92;
constexpr int kHeight = 24;

} // namespace

frmQuickOpen::frmQuickOpen(Assistance& assistance, QWidget* owner)
    : QDialog(owner), assistance_(assistance), query_(new QLineEdit), list_(new QListWidget)
{
    setWindowTitle(tr("Quick Open"));
    auto* column = new QVBoxLayout(this);
    query_->setPlaceholderText(tr("Letters of an item's name; with @ in front, of a label or subroutine"));
    query_->setAccessibleName(tr("Name"));
    query_->installEventFilter(this);
    list_->setAccessibleName(tr("Found"));
    list_->setUniformItemSizes(true);
    column->addWidget(query_);
    column->addWidget(list_);
    resize(fontMetrics().averageCharWidth() * kWidth, fontMetrics().lineSpacing() * kHeight);
    connect(query_, &QLineEdit::textChanged, this, [this] { Search(); });
    connect(query_, &QLineEdit::returnPressed, this, [this] {
        if (list_->currentRow() >= 0) accept();
    });
    connect(list_, &QListWidget::itemActivated, this, [this] { accept(); });
}

std::optional<PathRange> frmQuickOpen::Ask()
{
    Search();
    if (exec() != Accepted || list_->currentRow() < 0) return std::nullopt;
    return found_[static_cast<size_t>(list_->currentRow())].at;
}

void frmQuickOpen::Search()
{
    const int32_t number = ++asked_;
    const QPointer<frmQuickOpen> self(this);
    const bool asked = assistance_.AskAll(
        [query = ToText(query_->text())](LanguageService& service) { return service.Find(query, kMost); },
        [self, number](std::vector<FoundSymbol>& found) {
            if (self && self->asked_ == number) self->Show(std::move(found));
        });
    if (!asked) Show({});
}

void frmQuickOpen::Show(std::vector<FoundSymbol> found)
{
    found_ = std::move(found);
    list_->clear();
    for (const FoundSymbol& symbol : found_) {
        const QString item = ToQString(ShownName(symbol.at.path));
        const bool whole = symbol.kind == SymbolKind::Program || symbol.kind == SymbolKind::Item;
        const QString name = ToQString(symbol.name);
        QString text = name + QStringLiteral("   ") + item;
        if (!whole) text += QStringLiteral(", ") + tr("line %1").arg(symbol.at.range.start.line + 1);
        if (item == name || item.endsWith(u' ' + name)) text = item;
        list_->addItem(text);
    }
    if (list_->count() > 0) list_->setCurrentRow(0);
}

bool frmQuickOpen::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        int row = list_->currentRow();
        switch (key->key()) {
        case Qt::Key_Down: row += 1; break;
        case Qt::Key_Up: row -= 1; break;
        case Qt::Key_PageDown: row += 10; break;
        case Qt::Key_PageUp: row -= 10; break;
        default: return QDialog::eventFilter(watched, event);
        }
        list_->setCurrentRow(std::clamp(row, 0, std::max(list_->count() - 1, 0)));
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace nib
