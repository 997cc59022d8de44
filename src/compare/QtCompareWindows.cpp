#include "compare/QtCompareWindows.h"

#include "compare/frmCompare.h"
#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"

#include <QDialog>
#include <QInputDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

constexpr QSize kSizeOver(1000, 600);

Text SourceOf(const mvDocument& document)
{
    return u"document " + Decimal(document.DocumentID());
}

Text PairOf(const Text& left, const Text& right)
{
    return left.empty() || right.empty() ? Text() : left + u'\n' + right;
}

} // namespace

QtCompareWindows::QtCompareWindows(DocumentServices& services, SettingsStore& store, QWidget* owner,
                                   std::function<void(QWidget* content)> host)
    : services_(services), store_(store), owner_(owner), host_(std::move(host))
{
}

QtCompareWindows::~QtCompareWindows()
{
    for (const Shown& shown : windows_) delete shown.window.data();
}

void QtCompareWindows::Show(CompareWith other, mvDocument& document)
{
    switch (other) {
    case CompareWith::Stored: return Compare(StoredTextOf(services_, document), document);
    case CompareWith::Opened: return Compare(OpenedTextOf(document), document);
    case CompareWith::Committed: return Compare(CommittedTextOf(document), document);
    case CompareWith::Document: return WithDocument(document);
    case CompareWith::Item: return WithItem(document);
    }
}

void QtCompareWindows::Compare(mvDocument& left, mvDocument& right)
{
    const Text pair = PairOf(SourceOf(left), SourceOf(right));
    if (frmCompare* window = ToFront(pair)) return window->Again();
    Open(pair, std::make_unique<CompareSide>(services_, left), std::make_unique<CompareSide>(services_, right));
}

void QtCompareWindows::Compare(CompareText left, mvDocument& right)
{
    const Text pair = PairOf(left.source, SourceOf(right));
    if (frmCompare* window = ToFront(pair)) return window->Again(std::move(left));
    Open(pair, std::make_unique<CompareSide>(services_, std::move(left)),
         std::make_unique<CompareSide>(services_, right));
}

void QtCompareWindows::Compare(CompareText left, CompareText right)
{
    const Text pair = PairOf(left.source, right.source);
    if (frmCompare* window = ToFront(pair)) return window->Again();
    Open(pair, std::make_unique<CompareSide>(services_, std::move(left)),
         std::make_unique<CompareSide>(services_, std::move(right)));
}

void QtCompareWindows::CompareOver(QWidget& owner, CompareText left, CompareText right)
{
    QDialog dialog(&owner);
    dialog.setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* content = new frmCompare(services_, store_,
                                   {std::make_unique<CompareSide>(services_, std::move(left)),
                                    std::make_unique<CompareSide>(services_, std::move(right))});
    dialog.setWindowTitle(content->windowTitle());
    auto* close = new QPushButton(tr("Close"));
    close->setAutoDefault(false); // Enter is the texts'
    QObject::connect(close, &QPushButton::clicked, &dialog, &QDialog::reject);
    auto* column = new QVBoxLayout(&dialog);
    auto* answers = new QHBoxLayout;
    answers->setContentsMargins(column->contentsMargins());
    answers->addStretch(1);
    answers->addWidget(close);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(content, 1);
    column->addLayout(answers);
    dialog.resize(kSizeOver);
    content->View().setFocus();
    dialog.exec();
}

int32_t QtCompareWindows::DocumentInFront() const
{
    for (const Shown& shown : windows_) {
        const auto* window = shown.window ? qobject_cast<QMdiSubWindow*>(shown.window->parentWidget()) : nullptr;
        if (!window || !window->mdiArea() || window->mdiArea()->currentSubWindow() != window) continue;
        const Beside own = shown.window->View().Side();
        for (const Beside side : {own, CompareModel::Other(own)})
            if (const auto document = shown.window->Model().Side(side).Document()) return document->DocumentID();
    }
    return services_.frame.ActiveDocument();
}

void QtCompareWindows::WithDocument(mvDocument& document)
{
    std::vector<std::shared_ptr<mvDocument>> others = services_.openDocuments.All();
    std::erase_if(others, [&](const auto& each) { return each.get() == &document || !each->View(); });
    if (others.empty()) return;
    int chosen = 0;
    if (others.size() > 1) {
        QStringList names;
        for (const auto& each : others) {
            const Text place = each->PlaceText();
            names += ToQString(place.empty() ? each->ListName() : each->ListName() + u"  " + place);
        }
        bool ok = false;
        const QString name = QInputDialog::getItem(owner_, tr("Compare"), tr("With &document:"), names, 0, false, &ok);
        if (!ok) return;
        chosen = static_cast<int>(names.indexOf(name));
    }
    Compare(*others[static_cast<size_t>(chosen)], document);
}

void QtCompareWindows::WithItem(mvDocument& document)
{
    const SelectRequest request{.mode = u"Open", .extension = {}, .mustExist = true};
    const auto start = document.ItemObject();
    const SelectedItem picked = services_.connection.SelectItem(request, start.get());
    if (!picked.item) return;
    const auto open = services_.openDocuments.On(*picked.item);
    if (open && open.get() != &document && open->View()) return Compare(*open, document);
    Compare(TextOfItem(services_, picked.item), document);
}

frmCompare* QtCompareWindows::ToFront(const Text& pair)
{
    const auto found = std::find_if(windows_.begin(), windows_.end(), [&](const Shown& shown) {
        return shown.window && shown.window->Model().IsThere() && !pair.empty() && shown.pair == pair;
    });
    if (found == windows_.end()) return nullptr;
    host_(found->window);
    return found->window;
}

void QtCompareWindows::Open(Text pair, std::unique_ptr<CompareSide> left, std::unique_ptr<CompareSide> right)
{
    std::erase_if(windows_, [](const Shown& shown) { return shown.window.isNull(); });
    auto* window = new frmCompare(services_, store_, {std::move(left), std::move(right)});
    window->onSave = [this](mvDocument& document) {
        if (onSave) onSave(document);
    };
    window->onSide = [this] {
        if (onSide) onSide();
    };
    windows_.push_back({window, std::move(pair)});
    host_(window);
    window->View().setFocus();
}

} // namespace nib
