// The composition root: the only place that knows which implementation stands behind which port.

#include "app/AutomationRoom.h"
#include "app/CommandLineHelp.h"
#include "diagnostics/Guarded.h"
#include "platform/hosts/HostConnection.h"
#include "platform/hosts/SampleAccount.h"
#include "platform/qt/ItemPicker.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtFonts.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtText.h"
#include "shell/CommandLine.h"
#include "shell/Program.h"
#include "shell/frmDocument.h"
#include "shell/frmMain.h"

#include <QApplication>
#include <QIcon>

#include <cstdlib>

namespace {

using namespace nib;

class DocumentWindows final : public ViewFactory {
public:
    DocumentWindows(frmMain& mainWindow, Clipboard& clipboard) : mainWindow_(mainWindow), clipboard_(clipboard) {}
    std::unique_ptr<clsDocView> CreateView(mvDocument&) override
    {
        return std::make_unique<frmDocument>(mainWindow_, clipboard_);
    }

private:
    frmMain& mainWindow_;
    Clipboard& clipboard_;
};

std::vector<Text> Arguments(const QStringList& all)
{
    std::vector<Text> arguments;
    for (const QString& argument : all.mid(1)) arguments.push_back(ToText(argument));
    return arguments;
}

/// Some parts hear of the end only through here.
class LifeParts final : public SessionParts {
public:
    void RaiseQuit() override { automation->RaiseQuit(); }

    AutomationRoom* automation = nullptr;
};

/// The bus names itself to the services that it starts.
StartMode HowStarted()
{
    return std::getenv("DBUS_STARTER_BUS_TYPE") ? StartMode::Automation : StartMode::User;
}

/// What went wrong, for the user to read once there is a window; empty when nothing did.
Text MakeSampleAccount(const Text& programFolder, const HostConfig& config)
{
    try {
        InstallSampleAccount(programFolder + u"/accounts/DEMO", FromUtf8(config.Find(u"*").root));
        return {};
    } catch (...) {
        return CurrentError().description;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (AnswersOnTerminal(argc, argv)) return EXIT_SUCCESS;

    QApplication::setApplicationName(QStringLiteral("nibpad71"));
    QApplication::setApplicationVersion(QStringLiteral(NIB_VERSION));
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/nib.png")));

    QtClipboard clipboard;
    QtFonts fonts;
    QtMessageBoxes boxes;
    ItemPicker picker;
    HostConfig hosts = HostConfig::FromEnvironment();
    Text sampleFault = MakeSampleAccount(fonts.ProgramFolder(), hosts);
    HostConnection connection(hosts, picker, boxes, fonts.ProgramFolder());
    frmMain mainWindow;
    boxes.SetOwner(&mainWindow);
    picker.SetOwner(&mainWindow);
    DocumentWindows views(mainWindow, clipboard);
    LifeParts parts;
    Program program({connection, boxes, mainWindow, views, fonts, clipboard, parts});
    mainWindow.SetProgram(&program);

    StartMode mode = HowStarted();
    AutomationRoom automation(program, mainWindow, mode);
    parts.automation = &automation;
    automation.Serve();
    program.Main(mode, RebuildCommandLine(Arguments(QApplication::arguments())));
    if (program.IsShuttingDown()) return EXIT_SUCCESS;
    if (!sampleFault.empty()) program.ReportError(sampleFault);
    automation.Ready();
    return QApplication::exec();
}
