#include "shell/assist/frmOutline.h"

#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr int kSoon = 250;

} // namespace

frmOutline::frmOutline(Assistance& assistance, DocumentServices& services, QWidget* window)
    : QDockWidget(tr("Outline"), window), assistance_(assistance), services_(services), filter_(new QLineEdit),
      list_(new QListWidget)
{
    setObjectName(QStringLiteral("Outline"));
    auto* room = new QWidget;
    auto* column = new QVBoxLayout(room);
    column->setContentsMargins(2, 2, 2, 2);
    column->setSpacing(2);
    filter_->setPlaceholderText(tr("Filter"));
    filter_->setAccessibleName(tr("Filter of the outline"));
    filter_->setClearButtonEnabled(true);
    filter_->installEventFilter(this);
    list_->setAccessibleName(tr("Outline"));
    list_->setUniformItemSizes(true);
    column->addWidget(filter_);
    list_->setMinimumHeight(2 * fontMetrics().lineSpacing()); // a list asks for more than small screens have
    column->addWidget(list_);
    setWidget(room);
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        model_.SetFilter(ViewOf(text));
        FillIn();
    });
    connect(list_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) { Jump(list_->row(item)); });
    connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { Jump(list_->row(item)); });
    soon_.setSingleShot(true);
    soon_.setInterval(kSoon);
    connect(&soon_, &QTimer::timeout, this, [this] { Ask(); });
}

void frmOutline::Follow()
{
    if (!isVisible()) return;
    if (services_.frame.ActiveDocument() != documentId_)
        Ask();
    else
        ShowPlace();
}

void frmOutline::TextChanged()
{
    if (isVisible()) soon_.start();
}

void frmOutline::Ask()
{
    const auto document = services_.openDocuments.ById(services_.frame.ActiveDocument());
    documentId_ = document ? document->DocumentID() : 0;
    const QPointer<frmOutline> self(this);
    const auto question = [](LanguageService& service, const Text& path) {
        const ProgramFacts* facts = service.Get(path);
        return facts ? facts->outline : std::vector<OutlineEntry>();
    };
    const auto take = [self](std::vector<OutlineEntry>& entries) {
        if (!self) return;
        self->model_.SetEntries(std::move(entries));
        self->FillIn();
    };
    if (document && assistance_.Ask(*document, question, take)) return;
    model_.SetEntries({});
    FillIn();
}

void frmOutline::FillIn()
{
    constexpr qsizetype kStep = 2;
    list_->clear();
    for (const OutlineEntry& entry : model_.Shown()) {
        const bool label = entry.kind == SymbolKind::Label;
        auto* item = new QListWidgetItem(QString(entry.level * kStep, u' ') + ToQString(entry.name), list_);
        QFont font = list_->font();
        font.setBold(!label);
        item->setFont(font);
        item->setData(Qt::AccessibleTextRole,
                      (label ? tr("Label %1") : tr("Subroutine %1")).arg(ToQString(entry.name)));
    }
    ShowPlace();
}

void frmOutline::ShowPlace()
{
    const auto document = services_.openDocuments.ById(documentId_);
    if (!document || !document->View() || list_->hasFocus()) return;
    const auto at = model_.At(document->View()->txtText().CaretLine());
    list_->setCurrentRow(at ? static_cast<int>(*at) : -1);
}

void frmOutline::Jump(int row)
{
    if (row >= 0 && static_cast<size_t>(row) < model_.Shown().size() && onJump)
        onJump(model_.Shown()[static_cast<size_t>(row)].at.start);
}

bool frmOutline::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up) {
            const int row = list_->currentRow() + (key == Qt::Key_Down ? 1 : -1);
            list_->setCurrentRow(std::clamp(row, 0, std::max(list_->count() - 1, 0)));
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) return Jump(std::max(list_->currentRow(), 0)), true;
    }
    return QDockWidget::eventFilter(watched, event);
}

void frmOutline::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    Ask();
}

void frmOutline::closeEvent(QCloseEvent* event)
{
    QDockWidget::closeEvent(event);
    if (onClose) onClose();
}

} // namespace nib
