#include "shell/help/QtHelpWindow.h"

#include "platform/qt/ElidedValue.h"
#include "platform/qt/QtText.h"
#include "text/widget/ScreenColors.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStyle>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <unicode/uversion.h>

#include <algorithm>

namespace nib {

namespace {

constexpr int kMostZoom = 12;
constexpr int kLeastZoom = -6;

} // namespace

HelpWindow::HelpWindow(QWidget* owner) : QMainWindow(owner, Qt::Window)
{
    setWindowTitle(tr("Nib Help"));
    browser_ = new QTextBrowser;
    browser_->setAccessibleName(tr("Page"));
    browser_->setOpenLinks(false);
    browser_->document()->setDocumentMargin(16);
    connect(browser_, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& link) { Open(browser_->source().resolved(link)); });
    connect(browser_, &QTextBrowser::sourceChanged, this, &HelpWindow::PageShown);
    auto* split = new QSplitter(Qt::Horizontal);
    split->setChildrenCollapsible(false);
    split->addWidget(BuildSide());
    split->addWidget(browser_);
    split->setStretchFactor(1, 1);
    setCentralWidget(split);
    BuildTools();
    BuildContents();
    setTabOrder(search_, contents_);
    setTabOrder(contents_, browser_);
    const int em = fontMetrics().averageCharWidth();
    ResizeOnScreen(*this, {em * 130, fontMetrics().height() * 40});
    const int side = em * 44;
    split->setSizes({side, width() - side});
    ApplyColors();
    Open(pages_.front().url);
    browser_->setFocus();
}

QWidget* HelpWindow::BuildSide()
{
    auto* side = new QWidget;
    search_ = new QLineEdit;
    search_->setPlaceholderText(tr("Search all pages"));
    search_->setAccessibleName(tr("Search all pages"));
    search_->setClearButtonEnabled(true);
    contents_ = new QTreeWidget;
    contents_->setHeaderHidden(true);
    contents_->setAccessibleName(tr("Contents"));
    contents_->setUniformRowHeights(true);
    nothing_ = new QLabel(tr("No page holds these words."));
    nothing_->setWordWrap(true);
    nothing_->hide();
    auto* column = new QVBoxLayout(side);
    column->addWidget(search_);
    column->addWidget(nothing_);
    column->addWidget(contents_, 1);
    connect(search_, &QLineEdit::textChanged, this, &HelpWindow::Search);
    connect(search_, &QLineEdit::returnPressed, this, &HelpWindow::OpenFirstFound);
    return side;
}

void HelpWindow::BuildTools()
{
    QToolBar* bar = addToolBar(tr("Help"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    auto add = [&](const QString& name, QStyle::StandardPixmap icon, const QKeySequence& key, auto run) {
        QAction* action = bar->addAction(name);
        if (icon != QStyle::SP_CustomBase) action->setIcon(style()->standardIcon(icon));
        action->setShortcut(key);
        action->setToolTip(QStringLiteral("%1 (%2)").arg(name, key.toString(QKeySequence::NativeText)));
        connect(action, &QAction::triggered, this, run);
        return action;
    };
    QAction* back = add(tr("Back"), QStyle::SP_ArrowBack, Qt::ALT | Qt::Key_Left, [this] { browser_->backward(); });
    QAction* forward =
        add(tr("Forward"), QStyle::SP_ArrowForward, Qt::ALT | Qt::Key_Right, [this] { browser_->forward(); });
    add(tr("Home"), QStyle::SP_DirHomeIcon, Qt::ALT | Qt::Key_Home, [this] { Open(pages_.front().url); });
    bar->addSeparator();
    add(tr("Larger"), QStyle::SP_CustomBase, QKeySequence::ZoomIn, [this] { Zoom(1); });
    add(tr("Smaller"), QStyle::SP_CustomBase, QKeySequence::ZoomOut, [this] { Zoom(-1); });
    add(tr("Usual size"), QStyle::SP_CustomBase, Qt::CTRL | Qt::Key_0, [this] { Zoom(-zoom_); });
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        search_->setFocus(Qt::ShortcutFocusReason);
        search_->selectAll();
    });
    // Escape takes the search back first, and then leaves.
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] {
        if (search_->text().isEmpty())
            close();
        else
            search_->clear();
    });
    connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
}

void HelpWindow::BuildContents()
{
    QTreeWidgetItem* group = nullptr;
    for (const ShownHelpPage& page : pages_) {
        if (!group || group->text(0) != page.group) {
            group = new QTreeWidgetItem(contents_, {page.group});
            group->setFlags(Qt::ItemIsEnabled);
            group->setExpanded(true);
        }
        items_.push_back(new QTreeWidgetItem(group, {page.title}));
    }
    connect(contents_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        auto at = std::find(items_.begin(), items_.end(), item);
        if (at != items_.end()) Open(pages_[static_cast<size_t>(at - items_.begin())].url);
    });
}

void HelpWindow::ShowHelp(TextView topic)
{
    const QUrl page = topic.empty() ? QUrl() : FindHelp(pages_, topic);
    if (page.isValid()) Open(page);
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
}

void HelpWindow::Open(const QUrl& page)
{
    if (page != browser_->source()) browser_->setSource(page);
}

void HelpWindow::PageShown(const QUrl& shown)
{
    const QUrl source = shown.adjusted(QUrl::RemoveFragment);
    auto at = std::find_if(pages_.begin(), pages_.end(), [&](const auto& page) { return page.url == source; });
    if (at != pages_.end()) {
        const QSignalBlocker quiet(contents_);
        contents_->setCurrentItem(items_[static_cast<size_t>(at - pages_.begin())]);
    }
    MarkMatches();
}

void HelpWindow::LoadPages()
{
    if (indexed_) return;
    indexed_ = true;
    for (const ShownHelpPage& page : pages_) {
        QTextDocument text;
        text.setHtml(page.html);
        index_.AddPage(ViewOf(page.title), ViewOf(text.toPlainText()));
    }
}

void HelpWindow::Search()
{
    LoadPages();
    const std::vector<int32_t> found = index_.Find(ViewOf(search_->text()));
    for (size_t i = 0; i < items_.size(); ++i)
        items_[i]->setHidden(std::find(found.begin(), found.end(), static_cast<int32_t>(i)) == found.end());
    for (int i = 0; i < contents_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* group = contents_->topLevelItem(i);
        bool any = false;
        for (int child = 0; child < group->childCount(); ++child) any |= !group->child(child)->isHidden();
        group->setHidden(!any);
    }
    nothing_->setVisible(found.empty());
    MarkMatches();
}

void HelpWindow::OpenFirstFound()
{
    LoadPages();
    const std::vector<int32_t> found = index_.Find(ViewOf(search_->text()));
    if (found.empty()) return;
    Open(pages_[static_cast<size_t>(found.front())].url);
    browser_->setFocus();
}

void HelpWindow::MarkMatches()
{
    QList<QTextEdit::ExtraSelection> marks;
    for (const Text& word : WordsOf(ViewOf(search_->text()))) {
        const QRegularExpression pattern(QStringLiteral("\\b") + QRegularExpression::escape(ToQString(word)),
                                         QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::UseUnicodePropertiesOption);
        QTextCursor at = browser_->document()->find(pattern);
        for (; !at.isNull(); at = browser_->document()->find(pattern, at)) {
            QTextCharFormat format;
            format.setBackground(palette().brush(QPalette::Highlight));
            format.setForeground(palette().brush(QPalette::HighlightedText));
            marks.append({at, format});
        }
    }
    browser_->setExtraSelections(marks);
}

void HelpWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ApplyColors();
}

void HelpWindow::ApplyColors()
{
    // Dark palettes often leave the link colour and the other ground of a light one.
    const QColor base = palette().color(QPalette::Base);
    const QColor link = Legible(palette().color(QPalette::Link), base);
    const QColor head = Legible(base, base, 1.1);
    browser_->document()->setDefaultStyleSheet(
        QStringLiteral("a { color: %1; } th { background-color: %2; text-align: left; }"
                       "h1 { font-size: x-large; } h2 { font-size: large; } table { margin-top: 8px; }")
            .arg(link.name(), head.name()));
    if (browser_->source().isEmpty()) return;
    const int scrolled = browser_->verticalScrollBar()->value();
    browser_->reload();
    browser_->verticalScrollBar()->setValue(scrolled);
    MarkMatches();
}

void HelpWindow::Zoom(int steps)
{
    steps = std::clamp(zoom_ + steps, kLeastZoom, kMostZoom) - zoom_;
    zoom_ += steps;
    browser_->zoomIn(steps);
}

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(AboutBox)
};

constexpr int kIconSide = 48;

struct LicenceRow {
    const char* component;
    const char* licence;
};

constexpr LicenceRow kLicences[] = {
    {"Qt", QT_TRANSLATE_NOOP(
               "AboutBox",
               "GNU Lesser General Public License, version 3. Linked as shared libraries, which may be replaced.")},
    {"ICU", QT_TRANSLATE_NOOP("AboutBox", "Unicode License (ICU).")},
    {"DejaVu fonts",
     QT_TRANSLATE_NOOP("AboutBox",
                       "Bitstream Vera and Arev licences; changes by the DejaVu project are in the public domain.")},
    {"libacl", QT_TRANSLATE_NOOP("AboutBox", "GNU Lesser General Public License, version 2.1 or later.")},
};

QString VersionOf(const char* component)
{
    const QLatin1String name(component);
    if (name == QLatin1String("Qt")) return QString::fromLatin1(qVersion());
    return name == QLatin1String("ICU") ? QStringLiteral(U_ICU_VERSION) : QString();
}

QLabel* Selectable(const QString& text)
{
    auto* label = new QLabel(text);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QString LicenceText()
{
    QString text = QStringLiteral("<p>%1</p>").arg(Texts::tr("Nib is built with these components:"));
    for (const LicenceRow& row : kLicences) {
        text += QStringLiteral("<p><b>%1</b> %2<br>%3</p>")
                    .arg(QLatin1String(row.component), VersionOf(row.component), Texts::tr(row.licence));
    }
    return text;
}

} // namespace

void ShowAboutBox(QWidget* owner)
{
    QDialog box(owner);
    box.setWindowTitle(Texts::tr("About Nib"));
    auto* icon = new QLabel;
    icon->setPixmap(QGuiApplication::windowIcon().pixmap(kIconSide));
    auto* name = Selectable(QStringLiteral("Nib"));
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    name->setFont(large);
    auto* version =
        Selectable(Texts::tr("Version %1\nQt %2").arg(QStringLiteral(NIB_VERSION), QString::fromLatin1(qVersion())));
    auto* purpose = Selectable(Texts::tr("An editor for programs and records of MultiValue databases"));
    auto* licences = new QTextBrowser;
    licences->setHtml(LicenceText());
    licences->setAccessibleName(Texts::tr("Licences"));
    licences->setTabChangesFocus(true);
    licences->setMinimumSize(box.fontMetrics().averageCharWidth() * 72, box.fontMetrics().height() * 15);
    auto* buttons = new QDialogButtonBox;
    QPushButton* close = buttons->addButton(Texts::tr("&Close"), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);

    auto* grid = new QGridLayout(&box);
    grid->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(name, 0, 1);
    grid->addWidget(version, 1, 1);
    grid->addWidget(purpose, 2, 1);
    grid->addWidget(licences, 3, 0, 1, 2);
    grid->addWidget(buttons, 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
    grid->setHorizontalSpacing(box.fontMetrics().averageCharWidth() * 2);
    close->setFocus();
    box.exec();
}

} // namespace nib
