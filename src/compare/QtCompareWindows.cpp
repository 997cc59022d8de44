#include "compare/QtCompareWindows.h"

#include "compare/frmCompare.h"
#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"

#include <QDialog>
#include <QInputDialog>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

constexpr QSize kSizeOver(1000, 600);

} // namespace

QtCompareWindows::QtCompareWindows(DocumentServices& services, SettingsStore& store, QWidget* owner,
                                   std::function<void(QWidget* content)> host)
    : services_(services), store_(store), owner_(owner), host_(std::move(host))
{
}

QtCompareWindows::~QtCompareWindows()
{
    for (const auto& window : windows_) delete window.data();
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

void QtCompareWindows::Compare(CompareText left, mvDocument& right)
{
    Open(std::make_unique<CompareSide>(services_, std::move(left)), std::make_unique<CompareSide>(services_, right));
}

void QtCompareWindows::Compare(CompareText left, CompareText right)
{
    Open(std::make_unique<CompareSide>(services_, std::move(left)),
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
    Open(std::make_unique<CompareSide>(services_, *others[static_cast<size_t>(chosen)]),
         std::make_unique<CompareSide>(services_, document));
}

void QtCompareWindows::WithItem(mvDocument& document)
{
    const SelectRequest request{.mode = u"Open", .extension = {}, .mustExist = true};
    const auto start = document.ItemObject();
    const SelectedItem picked = services_.connection.SelectItem(request, start.get());
    if (!picked.item) return;
    const auto open = services_.openDocuments.On(*picked.item);
    if (open && open.get() != &document && open->View())
        return Open(std::make_unique<CompareSide>(services_, *open),
                    std::make_unique<CompareSide>(services_, document));
    Compare(TextOfItem(services_, picked.item), document);
}

void QtCompareWindows::Open(std::unique_ptr<CompareSide> left, std::unique_ptr<CompareSide> right)
{
    std::erase_if(windows_, [](const auto& window) { return window.isNull(); });
    auto* window = new frmCompare(services_, store_, {std::move(left), std::move(right)});
    window->onSave = [this](mvDocument& document) {
        if (onSave) onSave(document);
    };
    windows_.emplace_back(window);
    host_(window);
    window->View().setFocus();
}

} // namespace nib
