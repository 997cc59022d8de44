// The composition root: the only place that knows which implementation stands behind which port.

#include "app/AutomationRoom.h"
#include "app/CommandLineHelp.h"
#include "app/SessionRooms.h"
#include "app/SettingsFiles.h"
#include "diagnostics/DebugLog.h"
#include "diagnostics/Guarded.h"
#include "hosts/HostConnection.h"
#include "hosts/accounts/AccountLink.h"
#include "hosts/accounts/SampleAccount.h"
#include "hosts/picker/QtItemPicker.h"
#include "platform/posix/FileSaver.h"
#include "platform/posix/PosixTraceMailbox.h"
#include "platform/posix/ProgramPlaces.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtFonts.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtTimers.h"
#include "platform/qt/QtWaitNotice.h"
#include "platform/qt/Translations.h"
#include "printing/QtPrinting.h"
#include "shell/CommandLine.h"
#include "shell/Program.h"
#include "shell/QtMessageBoxes.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"

#include <QApplication>
#include <QIcon>

#include <unistd.h>

#include <cstdlib>

namespace {

using namespace nib;

class DocumentWindows final : public ViewFactory {
public:
    DocumentWindows(frmMain& mainWindow, Clipboard& clipboard) : mainWindow_(mainWindow), clipboard_(clipboard) {}
    std::unique_ptr<clsDocView> CreateView(mvDocument& document) override
    {
        return std::make_unique<frmDocument>(mainWindow_, clipboard_, document);
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

/// The bus names itself to the services that it starts, and hands them no arguments. A terminal or file manager that it
/// started passes the name on to what its user starts.
StartMode HowStarted(int argc)
{
    bool byBus = std::getenv("DBUS_STARTER_BUS_TYPE") && argc < 2 && !isatty(STDIN_FILENO);
    return byBus ? StartMode::Automation : StartMode::User;
}

/// What went wrong, for the user to read once there is a window; empty when nothing did.
Text MakeSampleAccount(const Text& dataFolder, const HostConfig& config)
{
    auto failure =
        FailureOf([&] { InstallSampleAccount(dataFolder + u"/accounts/DEMO", FromUtf8(config.Find(u"*").root)); });
    return failure ? failure->description : Text();
}

/// What ties windows to the desktop entry and lets an icon theme replace the program's icon.
void UseDesktopIdentity()
{
    const QString id = QStringLiteral("com.orlin.NibPad71");
    QApplication::setDesktopFileName(id);
    QApplication::setWindowIcon(QIcon::fromTheme(id, QIcon(QStringLiteral(":/icons/") + id + QStringLiteral(".svg"))));
}

} // namespace

int main(int argc, char** argv)
{
    if (AnswersOnTerminal(argc, argv)) return EXIT_SUCCESS;

    QApplication::setApplicationName(QStringLiteral("nibpad71"));
    QApplication::setApplicationVersion(QStringLiteral(NIB_VERSION));
    QApplication application(argc, argv);
    Translations translations;
    QApplication::setQuitOnLastWindowClosed(false);
    UseDesktopIdentity();

    PosixTraceMailbox viewer(u"nibpad71");
    modDebugLog trace(viewer);
    QtClipboard clipboard;
    const ProgramPlaces places = ProgramPlaces::Around(ToText(QApplication::applicationDirPath()));
    QtFonts fonts(places.data);
    QtMessageBoxes boxes;
    ItemPicker picker;
    HostConfig hosts = HostConfig::FromEnvironment();
    Text sampleFault = MakeSampleAccount(places.data, hosts);
    QtWaitNotice notice;
    HostConnection connection(hosts, picker, boxes, AccountLinks({places.programs, &notice}));
    SettingsFiles settings(hosts.backupFolder, places.settings);
    SessionRooms rooms(settings.Store(), hosts.backupFolder);
    frmMain mainWindow;
    mainWindow.SetStore(&settings.Store());
    boxes.SetOwner(&mainWindow);
    picker.SetOwner(&mainWindow);
    notice.SetOwner(&mainWindow);
    DocumentWindows views(mainWindow, clipboard);
    QtTimers timers;
    Program program({connection, boxes, mainWindow, views, fonts, clipboard, rooms, timers, &trace});
    QtPrinting printing(program.Log(), boxes,
                        [saver = FileSaver(hosts.backupFolder)](const std::string& path, std::string_view bytes) {
                            saver.Save(path, bytes);
                        });
    printing.SetOwner(&mainWindow);
    mainWindow.SetPrinting(&printing);
    mainWindow.SetProgram(&program);
    StartMode mode = HowStarted(argc);
    AutomationRoom automation(program, mainWindow, mode);
    rooms.Plug(program, mainWindow, printing, automation);
    automation.Serve();
    program.Main(mode, RebuildCommandLine(Arguments(QApplication::arguments())));
    if (program.IsShuttingDown()) return EXIT_SUCCESS;
    if (!sampleFault.empty()) program.ReportError(sampleFault);
    automation.Ready();
    return QApplication::exec();
}
