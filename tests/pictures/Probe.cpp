// Loaded into the program under test as one of Qt's plugins: answers what its windows look like from within, and does
// what keys reach only by the letters of one language. tests/system/probe.py is the other side.
//
// A question is a file "ask" in the folder that NIB_PROBE names, its answer a file "answer".

#include "pictures/Brackets.h"
#include "pictures/Room.h"

#include <QGenericPlugin>

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <typeinfo>

namespace nib::test {

namespace {

/// The class as it stands in the source, also where Qt knows of its base alone.
QString ClassOf(const QWidget& widget)
{
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> name(
        abi::__cxa_demangle(typeid(widget).name(), nullptr, nullptr, &status), std::free);
    return QString::fromUtf8(name.get()).section(QStringLiteral("::"), -1);
}

bool IsShown(const QWidget& window)
{
    return window.isVisible() && window.windowHandle() && window.windowHandle()->isExposed();
}

QJsonArray Look(bool brackets)
{
    QJsonArray windows;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!IsShown(*window) || window->windowType() == Qt::ToolTip) continue;
        QStringList faults = Room(*window).Faults() + Room(*window).OnScreen();
        if (brackets)
            for (const QString& bare : BareTexts(*window)) faults += QStringLiteral("not translated: ") + bare;
        windows.append(QJsonObject{{QStringLiteral("class"), ClassOf(*window)},
                                   {QStringLiteral("title"), window->windowTitle()},
                                   {QStringLiteral("active"), window->isActiveWindow()},
                                   {QStringLiteral("modal"), window == QApplication::activeModalWidget()},
                                   {QStringLiteral("faults"), QJsonArray::fromStringList(faults)}});
    }
    return windows;
}

/// Not before the answer is out: what it brings up may hold the caller.
template <typename Call>
bool Later(QObject* object, Call call)
{
    if (object) QTimer::singleShot(0, object, call);
    return object != nullptr;
}

/// The frame's: others are small.
QMenuBar* Bar()
{
    for (const QWidget* window : QApplication::topLevelWidgets())
        for (auto* bar : window->findChildren<QMenuBar*>())
            if (bar->actions().size() > 5) return bar;
    return nullptr;
}

QAction* Command(const QWidget& menu, const QString& name)
{
    for (QAction* action : menu.actions()) {
        if (action->objectName() == name) return action;
        if (!action->menu()) continue;
        if (QAction* inner = Command(*action->menu(), name)) return inner;
    }
    return nullptr;
}

bool Run(const QString& name)
{
    QAction* action = Bar() ? Command(*Bar(), name) : nullptr;
    return action && action->isEnabled() && Later(action, [action] { action->trigger(); });
}

/// `caption` as the source has it, in the class or the part of it that is named in front of a bar.
bool Press(const QString& caption)
{
    const QByteArray context = caption.section(u'|', 0, 0).toUtf8();
    const QByteArray source = caption.section(u'|', 1).toUtf8();
    const QString wanted = QCoreApplication::translate(context.constData(), source.constData());
    QWidget* window =
        QApplication::activeModalWidget() ? QApplication::activeModalWidget() : QApplication::activeWindow();
    if (!window) return false;
    for (auto* button : window->findChildren<QAbstractButton*>())
        if (button->isVisible() && button->text() == wanted) return Later(button, [button] { button->click(); });
    return false;
}

bool Page(int page)
{
    QWidget* window = QApplication::activeModalWidget();
    auto* tabs = window ? window->findChild<QTabWidget*>() : nullptr;
    if (!tabs || page >= tabs->count()) return false;
    tabs->setCurrentIndex(page);
    return true;
}

bool Menu(const QString& name)
{
    QMenuBar* bar = Bar();
    QAction* action = bar ? Command(*bar, name) : nullptr;
    return action && Later(bar, [bar, action] { bar->setActiveAction(action); });
}

bool Close(const QString& name)
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (IsShown(*window) && ClassOf(*window) == name) return Later(window, [window] { window->close(); });
    return false;
}

QJsonValue Answer(const QString& question, bool brackets)
{
    const QString word = question.section(u' ', 0, 0);
    const QString rest = question.section(u' ', 1);
    if (word == QStringLiteral("run")) return Run(rest);
    if (word == QStringLiteral("press")) return Press(rest);
    if (word == QStringLiteral("page")) return Page(rest.toInt());
    if (word == QStringLiteral("menu")) return Menu(rest);
    if (word == QStringLiteral("close")) return Close(rest);
    return Look(brackets);
}

class Probe final : public QObject {
public:
    Probe() : folder_(qEnvironmentVariable("NIB_PROBE"))
    {
        connect(&timer_, &QTimer::timeout, this, [this] { Heed(); });
        timer_.start(20);
        if (qEnvironmentVariableIsSet("NIB_PROBE_BRACKETS")) brackets_.emplace();
    }

private:
    void Heed() const
    {
        QFile ask(folder_.filePath(QStringLiteral("ask")));
        if (!ask.open(QIODevice::ReadOnly)) return;
        const QString question = QString::fromUtf8(ask.readAll());
        ask.remove();
        QSaveFile answer(folder_.filePath(QStringLiteral("answer")));
        if (!answer.open(QIODevice::WriteOnly)) return;
        answer.write(QJsonDocument(QJsonArray{Answer(question, brackets_.has_value())}).toJson());
        answer.commit();
    }

    QDir folder_;
    QTimer timer_;
    std::optional<Bracketing> brackets_;
};

} // namespace

class ProbePlugin final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "Probe.json")

public:
    QObject* create(const QString& /*key*/, const QString& /*given*/) override { return new Probe; }
};

} // namespace nib::test

#include "Probe.moc"
