#include "shell/menus/QtToolActions.h"

#include "platform/qt/QtText.h"

#include <QAction>
#include <QGuiApplication>
#include <QMenu>
#include <QPalette>
#include <QStandardPaths>
#include <QStringList>
#include <QToolBar>

#include <algorithm>

namespace nib {

namespace {

bool DarkPalette()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Without a desktop Qt looks for themes nowhere but in the program itself.
void FindThemes()
{
    QStringList paths = QIcon::themeSearchPaths();
    for (const QString& folder : QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("icons"),
                                                           QStandardPaths::LocateDirectory))
        if (!paths.contains(folder)) paths += folder;
    QIcon::setThemeSearchPaths(paths);
}

} // namespace

void UseIconTheme()
{
    FindThemes();
    const QString light = QStringLiteral("breeze");
    const QString dark = QStringLiteral("breeze-dark");
    const QString& fitting = DarkPalette() ? dark : light;
    QIcon::setFallbackThemeName(fitting);
    // The desktop's own set goes with the program's icons in few cases; this one does, and is whole at every size.
    const QString current = QIcon::themeName();
    QIcon::setThemeName(fitting);
    if (!QIcon::hasThemeIcon(QStringLiteral("document-new"))) QIcon::setThemeName(current);
}

void LetScroll(QMenu& menu)
{
    menu.setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
}

QIcon ToolIcon(TextView name)
{
    if (name.empty()) return {};
    if (!name.starts_with(u"nib-")) return QIcon::fromTheme(ToQString(name));
    return QIcon(QStringLiteral(":/icons/") + ToQString(name) +
                 (DarkPalette() ? QStringLiteral("-dark.svg") : QStringLiteral(".svg")));
}

namespace {

/// A caption without the marks of its access key.
QString Plain(const QString& caption)
{
    QString plain;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && ++i == caption.size()) break;
        plain += caption[i];
    }
    return plain;
}

QString ShownKeys(TextView shortcut)
{
    return KeySequenceOf(shortcut).toString(QKeySequence::NativeText);
}

} // namespace

QKeySequence KeySequenceOf(TextView shortcut)
{
    QString keys = ToQString(shortcut);
    keys.replace(QLatin1String("Bkspc"), QLatin1String("Backspace"));
    return QKeySequence::fromString(keys, QKeySequence::PortableText);
}

QtToolActions::QtToolActions(Clicked clicked, Opening opening)
    : clicked_(std::move(clicked)), opening_(std::move(opening))
{
}

QtToolActions::~QtToolActions() = default;

void QtToolActions::SetHolder(Band band, const MenuTool& root, QWidget& holder)
{
    holders_[&root] = &holder;
    AddAll(band, root);
}

void QtToolActions::AddAll(Band band, const MenuTool& menu)
{
    for (auto& tool : menu.tools) Add(band, *tool);
}

void QtToolActions::Add(Band band, const MenuTool& tool)
{
    QWidget* holder = holders_.at(tool.menu);
    Entry entry{.band = band};
    if (tool.isMenu) {
        entry.menu = new QMenu(holder);
        LetScroll(*entry.menu);
        entry.action = entry.menu->menuAction();
        QObject::connect(entry.menu, &QMenu::aboutToShow, holder, [this, &tool] { opening_(tool); });
    } else {
        entry.action = new QAction(holder);
        QObject::connect(entry.action, &QAction::triggered, holder,
                         [this, band, &tool](bool checked) { clicked_(band, tool, checked); });
    }
    entry.action->setObjectName(ToQString(tool.key));
    entry.action->setCheckable(tool.checkable);
    entry.action->setChecked(tool.checked);
    entry.action->setEnabled(tool.enabled);
    entry.action->setVisible(tool.visible);
    entry.action->setIcon(ToolIcon(tool.icon));
    holder->insertAction(NextOf(tool), entry.action);
    Entry& kept = entries_.emplace(&tool, entry).first->second;
    ShowShortcut(tool, kept);
    ShowTip(tool, kept);
    ShowGroup(tool, kept);
    if (!tool.isMenu) return;
    holders_[&tool] = kept.menu;
    AddAll(band, tool);
}

QAction* QtToolActions::NextOf(const MenuTool& tool) const
{
    auto& siblings = tool.menu->tools;
    auto place = std::find_if(siblings.begin(), siblings.end(), [&](auto& other) { return other.get() == &tool; });
    for (; place != siblings.end(); ++place) {
        auto found = entries_.find(place->get());
        if (found == entries_.end() || place->get() == &tool) continue;
        return found->second.separator ? found->second.separator : found->second.action;
    }
    return nullptr;
}

void QtToolActions::Remove(const MenuTool& tool)
{
    for (auto& inner : tool.tools) Remove(*inner);
    auto found = entries_.find(&tool);
    if (found == entries_.end()) return;
    QWidget* holder = holders_.at(tool.menu);
    for (QAction* action : {found->second.separator, found->second.action}) {
        if (!action) continue;
        holder->removeAction(action);
        action->disconnect(holder);
    }
    // It may be the one whose click is being served.
    if (found->second.separator) found->second.separator->deleteLater();
    if (found->second.menu) {
        found->second.menu->disconnect(holder);
        found->second.menu->deleteLater();
    } else {
        found->second.action->deleteLater();
    }
    holders_.erase(&tool);
    entries_.erase(found);
}

void QtToolActions::Change(const ToolChange& change)
{
    auto found = entries_.find(change.tool);
    if (found == entries_.end()) return;
    Entry& entry = found->second;
    const MenuTool& tool = *change.tool;
    if (change.what & tool_change::kEnabled) entry.action->setEnabled(tool.enabled);
    if (change.what & tool_change::kChecked) entry.action->setChecked(tool.checked);
    if (change.what & tool_change::kVisible) entry.action->setVisible(tool.visible);
    if (change.what & tool_change::kCaption) ShowCaption(tool, entry);
    if (change.what & tool_change::kShortcut) ShowShortcut(tool, entry);
    if (change.what & (tool_change::kTip | tool_change::kCaption | tool_change::kShortcut)) ShowTip(tool, entry);
    if (change.what & (tool_change::kGroup | tool_change::kVisible)) ShowGroup(tool, entry);
}

void QtToolActions::ShowCaption(const MenuTool& tool, const Entry& entry)
{
    QString text = Translated(tool.caption);
    // The menu bar's live shortcuts show by themselves.
    bool written = entry.band != Band::ToolBar && entry.action->shortcut().isEmpty() && !tool.shortcut.empty();
    if (written) text += QLatin1Char('\t') + ShownKeys(tool.shortcut);
    entry.action->setText(text);
    if (entry.menu) entry.menu->setWindowTitle(Plain(Translated(tool.caption)));
}

void QtToolActions::ShowShortcut(const MenuTool& tool, const Entry& entry)
{
    if (entry.band == Band::MainMenu) {
        // Of two tools with one shortcut Qt would run neither.
        QKeySequence keys = KeySequenceOf(tool.shortcut);
        entry.action->setShortcut(IsTaken(keys, entry.action) ? QKeySequence() : keys);
    }
    ShowCaption(tool, entry);
}

bool QtToolActions::IsTaken(const QKeySequence& keys, const QAction* by) const
{
    return !keys.isEmpty() && std::any_of(entries_.begin(), entries_.end(), [&](auto& entry) {
        return entry.second.action != by && entry.second.action->shortcut() == keys;
    });
}

void QtToolActions::ShowTip(const MenuTool& tool, const Entry& entry)
{
    if (entry.band != Band::ToolBar) return;
    QString tip = tool.tip.empty() ? Plain(Translated(tool.caption)) : Translated(tool.tip);
    QString keys = ShownKeys(tool.shortcut);
    entry.action->setToolTip(keys.isEmpty() ? tip : tip + QStringLiteral(" (") + keys + QLatin1Char(')'));
    auto* bar = qobject_cast<QToolBar*>(holders_.at(tool.menu));
    if (QWidget* button = bar ? bar->widgetForAction(entry.action) : nullptr) button->setAccessibleName(tip);
}

void QtToolActions::ShowGroup(const MenuTool& tool, Entry& entry)
{
    if (tool.beginGroup && !entry.separator) {
        QWidget* holder = holders_.at(tool.menu);
        entry.separator = new QAction(holder);
        entry.separator->setSeparator(true);
        holder->insertAction(entry.action, entry.separator);
    }
    if (entry.separator) entry.separator->setVisible(tool.beginGroup && tool.visible);
}

QMenu* QtToolActions::MenuOf(const MenuTool& tool) const
{
    const auto found = entries_.find(&tool);
    return found == entries_.end() ? nullptr : found->second.menu;
}

void QtToolActions::RefreshIcons()
{
    for (auto& [tool, entry] : entries_) entry.action->setIcon(ToolIcon(tool->icon));
}

} // namespace nib
