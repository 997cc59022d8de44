// The composition root: the only place that knows which implementation stands behind which port.

#include "app/ProgramDialogs.h"
#include "automation/DBusServer.h"
#include "diagnostics/DebugLog.h"
#include "hosts/HostConnection.h"
#include "hosts/HostsFile.h"
#include "hosts/accounts/AccountLink.h"
#include "hosts/accounts/AccountStore.h"
#include "hosts/accounts/ServerAccounts.h"
#include "hosts/accounts/VerbTrust.h"
#include "hosts/network/ClearTextTrust.h"
#include "hosts/network/NetworkLink.h"
#include "hosts/network/QtPasswords.h"
#include "hosts/network/frmConnections.h"
#include "hosts/picker/frmItemPicker.h"
#include "language/Dialects.h"
#include "persistence/store/QtSettingsHive.h"
#include "persistence/store/modPersistSettings.h"
#include "platform/posix/EndSignals.h"
#include "platform/posix/FileLocks.h"
#include "platform/posix/FileName.h"
#include "platform/posix/FileSaver.h"
#include "platform/posix/PosixTraceMailbox.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtEndRequests.h"
#include "platform/qt/QtLooks.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWaitNotice.h"
#include "printing/QtPrinting.h"
#include "shell/Program.h"
#include "shell/QtMessageBoxes.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"

#include <QApplication>
#include <QIcon>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace nib;

/// Copies of what a user is at work on are nobody else's business.
constexpr mode_t kUserOnly = 0600;
constexpr std::chrono::seconds kLookAtHosts{5};

std::optional<Text> EnvironmentValue(TextView name)
{
    const char* value = std::getenv(ToUtf8(name).c_str());
    return value ? std::optional(FromFileName(value)) : std::nullopt;
}

/// All that keeps settings between runs; brings the last changes to disk when it goes.
class SettingsFiles {
public:
    SettingsFiles(const std::string& backupFolder, Text programFolder)
        : disk_{FileSaver(backupFolder, kUserOnly)}, settings_(hive_, disk_, std::move(programFolder), EnvironmentValue)
    {
    }

    SettingsStore& Store() { return settings_; }
    Text SwitchFileFault() const { return settings_.SwitchFileFault(); }

private:
    ProfileDisk disk_;
    QtSettingsHive hive_{disk_};
    modPersistSettings settings_;
};

/// Not as Qt has them, which loses bytes that are no UTF-8.
std::vector<Text> Arguments(int argc, const char* const* argv)
{
    std::vector<Text> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(FromFileName(argv[i]));
    return arguments;
}

/// Behind the window system's own options, which it has taken out.
CommandLine ReadCommandLine(int argc, const char* const* argv)
{
    CommandLine line = ParseArguments(Arguments(argc, argv),
                                      [](TextView path) { return access(ToFileName(path).c_str(), F_OK) == 0; });
    for (const Text& word : line.unknown)
        std::fprintf(stderr, "nibpad71: unknown switch %s\n", ToFileName(word).c_str());
    return line;
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
    auto failure = FailureOf([&] { InstallSampleAccount(dataFolder + u"/accounts/DEMO", config); });
    return failure ? failure->description : Text();
}

/// Automation is served from before the start, so that nobody starts a second copy for a client while this one comes
/// up, to the end.
class Serving {
public:
    Serving(DBusServer& server, Program& program) : server_(server)
    {
        server.Serve(program.Automation(), program.Log());
    }
    ~Serving() { server_.Stop(); }
    Serving(const Serving&) = delete;
    Serving& operator=(const Serving&) = delete;

private:
    DBusServer& server_;
};

/// Brings news of hosts to the program, for as long as there is one.
class HostNews {
public:
    void Tell(const Text& what, const Text& why)
    {
        if (program_) program_->Trouble(what, why);
    }
    /// From now on, until the answer goes.
    [[nodiscard]] auto Follow(Program& program, HostConnection& connection, Timers& timers)
    {
        program_ = &program;
        const auto forget = [this](Program*) { program_ = nullptr; };
        watch_ = timers.Every(kLookAtHosts, [&connection] { connection.Look(); });
        return std::unique_ptr<Program, decltype(forget)>(&program, forget);
    }

private:
    Program* program_ = nullptr;
    std::unique_ptr<Timers::Timer> watch_;
};

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
    if (AnswersOnTerminal(Arguments(argc, argv))) return EXIT_SUCCESS;
    EndSignals endSignals;

    QApplication::setApplicationName(QStringLiteral("nibpad71"));
    QApplication::setApplicationVersion(QStringLiteral(NIB_VERSION));
    QApplication application(argc, argv);
    Translations translations;
    QApplication::setQuitOnLastWindowClosed(false);
    UseDesktopIdentity();
    MendLooks();

    PosixTraceMailbox viewer(u"nibpad71");
    modDebugLog trace(viewer);
    QtClipboard clipboard;
    const ProgramPlaces places = ProgramPlaces::Around(ToText(QApplication::applicationDirPath()));
    QtFonts fonts(places.data);
    frmMain mainWindow;
    QtMessageBoxes boxes(&mainWindow);
    std::function<bool(QWidget*)> editConnections;
    ItemPicker picker(&mainWindow, [&](QWidget* over) { return editConnections(over); });
    QtWaitNotice notice(&mainWindow);
    HostConfig hosts = HostConfig::FromEnvironment();
    Text sampleFault = MakeSampleAccount(places.data, hosts);
    SettingsFiles settings(hosts.backupFolder, places.settings);
    VerbTrust trust(settings.Store(), boxes);
    const auto mayRun = [&](TextView account, TextView command) { return trust.MayRun(account, command); };
    QtPasswords passwords(&mainWindow);
    ClearTextTrust clearText(settings.Store(), boxes);
    HostNews news;
    ServerNotice serverNotice(boxes);
    const auto opened = [&](TextView account, const std::string& folder) { serverNotice.Opened(account, folder); };
    HostLinkKinds kinds = AccountLinks({places.programs, &notice, mayRun}, opened);
    kinds.merge(NetworkLinks({&notice,
                              &passwords,
                              [&](const HostSettings& host) { return clearText.MayGo(host); },
                              [&](const Text& what, const Text& why) { news.Tell(what, why); },
                              {}}));
    HostConnection connection(hosts, picker, boxes, std::move(kinds));
    editConnections = [&](QWidget* over) { return frmConnections::Edit(connection.Links(), boxes, over); };
    PosixSessionToken token(PosixSessionToken::UsualFolders());
    auto views = [&](mvDocument& document) -> std::unique_ptr<clsDocView> {
        return std::make_unique<frmDocument>(mainWindow, clipboard, document);
    };
    DebugLog log(&trace);
    QtPrinting printing(
        log, boxes,
        [saver = FileSaver(hosts.backupFolder)](const std::string& path, std::string_view bytes) {
            saver.Save(path, bytes);
        },
        &mainWindow);
    ProgramDialogs dialogs(mainWindow, settings.Store(), printing, editConnections);
    QtTimers timers;
    DBusServer server;
    StartMode mode = HowStarted(argc);
    Dialects dialects;
    dialects.AddFolder(FolderOf(HostsFile::UsualPath()) + "/dialects");
    const Dialect* common = dialects.Find(kCommonDialect);
    const std::string index = UserFolder("XDG_CACHE_HOME", "/.cache") + "/Orlin/Nib/index";
    const AssistPorts languagePorts{[=] {
                                        return std::make_unique<LanguageService>(ServiceOptions{common, index});
                                    },
                                    CallOnWindows};
    Program program({connection, boxes, mainWindow, dialogs, views, server, fonts, clipboard, timers, settings.Store(),
                     FileSaver(hosts.backupFolder, kUserOnly), token, FromFileName(LocalDataFolder()), &trace,
                     kSteadyClock, languagePorts, &dialects},
                    mode);
    const auto following = news.Follow(program, connection, timers);
    Serving serving(server, program);
    QtEndRequests ends(
        endSignals.Handle(), [&] { program.KeepAll(); },
        [&] {
            endSignals.Take();
            notice.StopAll();
            const auto end = [&] {
                program.EndNow();
                QCoreApplication::exit(EXIT_SUCCESS); // also of the loops of dialogs
            };
            if (!mainWindow.AfterWork(end)) end(); // a save that is under way comes to its end
        });
    program.Main(ReadCommandLine(argc, argv));
    if (program.IsShuttingDown()) return EXIT_SUCCESS;
    for (const Text& fault : {hosts.fault, settings.SwitchFileFault(), sampleFault})
        if (!fault.empty()) program.ReportError(fault);
    return QApplication::exec();
}
