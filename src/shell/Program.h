#pragma once
// The spine: owns what lives for the whole process, brings it up and takes it down in a fixed order.

#include "automation/Application.h"
#include "compare/history/ItemHistory.h"
#include "diagnostics/Guarded.h"
#include "documents/DocumentServices.h"
#include "documents/DocumentSettings.h"
#include "documents/mvDocument.h"
#include "persistence/recovery/DocumentSession.h"
#include "persistence/recovery/modAutoRecover.h"
#include "persistence/store/SettingsStore.h"
#include "platform/Desktop.h"
#include "shell/ClickTarget.h"
#include "shell/CommandLine.h"
#include "shell/FileCommands.h"
#include "shell/MainWindow.h"
#include "shell/OutsideChanges.h"
#include "shell/assist/NameCommands.h"
#include "shell/navigation/Navigation.h"

#include <map>
#include <set>

namespace nib {

class Program;

/// The program as automation sees it, and the commands that automation adds to its menus.
class AutomationHost final : public AutomationShell {
public:
    /// All outlive it.
    AutomationHost(Program& program, AutomationEvents& events) : program_(program), events_(events) {}

    // AutomationShell
    void LoadHostConfiguration() override;
    void AddCommand(TextView name, TextView caption, int32_t shortcut) override;
    void PrintText(mvDocument& document) override;

    /// A command that a client added.
    bool Knows(TextView key) const { return commands_.contains(key); }
    /// Tells the client that the user picked it.
    void Raise(TextView key) { events_.Custom(key); }

private:
    Program& program_;
    AutomationEvents& events_;
    std::set<Text, std::less<>> commands_;
};

enum class StartMode { User, Automation };

/// Implementations from outside; all outlive the program.
struct ProgramPorts {
    mvConnection& connection;
    MessageBoxes& boxes;
    MainWindow& mainWindow;
    Dialogs& dialogs;
    ViewFactory views;
    AutomationEvents& events;
    Fonts& fonts;
    const Clipboard& clipboard;
    Timers& timers;
    SettingsStore& store;
    FileSaver copies; ///< makes the recovery files, for the user alone
    SessionToken& token;
    Text localData; ///< the user's data folder on this machine
    TraceChannel* trace = nullptr;
    const Clock& clock = kSteadyClock;
    AssistPorts assist = {};
    Dialects* dialects = nullptr; ///< null: there are none
};

class Program final : private DocumentShell {
public:
    explicit Program(const ProgramPorts& ports, StartMode mode = StartMode::User);
    ~Program() override;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Main(const CommandLine& line);
    /// Runs its body once, however often it is called.
    void Shutdown();
    /// What the user would miss is on disk when it answers: recovery copies, journals, settings.
    void KeepAll();
    /// The end without a question, whatever waits for an answer: KeepAll, and the main window unloads.
    void EndNow();
    bool IsShuttingDown() const { return shuttingDown_; }

    int32_t ShowMessage(TextView text, int32_t flags, TextView title = u"Nib") override;
    using DocumentShell::ReportError;
    /// Commands and titles are drawn afresh at the next turn of the loop, once however often they changed.
    void StateChanged();
    /// Draws now what waits for that, so that the user's next key or click meets commands as they are.
    void ShowChanges();

    /// Something the user counts on does not work, for the reason given; an empty one says that it works again. It is
    /// logged once, and stands in the status bar as long as it lasts.
    void Trouble(TextView what, TextView why);

    /// The user turned from the window of `document` to another.
    void DocumentLeft(mvDocument& document);
    /// Once for the process; a host that is not known well enough yet is asked again next time.
    void LoadHostConfiguration() { hostConfiguration_.LoadHostConfiguration(); }
    void HandleDroppedFiles(const std::vector<Text>& files);
    /// Asked once in the life of a dialog: the caller keeps `cached`.
    std::shared_ptr<mvItem> DefaultServer(std::shared_ptr<mvItem>& cached);
    /// The first family of the system that begins with "DejaVu Sans Mono", else "Courier New".
    const Text& DefaultFontName();
    /// Opens a local file or item, or brings its window to the front when it is open; its path goes to the recent
    /// files. False when it was not opened.
    bool OpenPath(TextView path, bool readOnly);
    bool ActivateOpen(const mvItem& item);

    /// The door of what the program is called for: a failure is logged and told to the user.
    template <typename Body>
    auto Safely(TextView where, Body&& body) -> decltype(body())
    {
        return Guarded(log_, where, std::forward<Body>(body), [&](const Error& error) {
            ReportError(error.description);
            return decltype(body())();
        });
    }

    FileCommands& Files() { return files_; }
    OutsideChanges& Outside() { return outside_; }
    Dialogs& Forms() { return ports_.dialogs; }
    MenuModel& Menus() { return ports_.mainWindow.Menus(); }
    Application& Automation() { return automation_; }
    AutomationHost& ClientCommands() { return automationHost_; }
    modAutoRecover& Recovery() { return recovery_; }
    DocumentSession& Session() { return session_; }
    NavigationHistory& History() { return history_; }
    ItemHistory& Versions() { return versions_; }
    Assistance& Assist() { return assistance_; }
    NameCommands& Names() { return names_; }
    mvDocuments& OpenDocuments() { return openDocuments_; }
    CurrentPlace& Place() { return place_; }
    MvEdit& EditorSettings() { return settings_; }
    clsRecentList& RecentFiles() { return settings_.RecentFiles; }
    SettingsStore& Store() { return ports_.store; }
    DocumentServices& Services() { return services_; }
    mvConnection& Connection() { return ports_.connection; }
    MainWindow& Window() { return ports_.mainWindow; }
    const DebugLog& Log() const { return log_; }
    DocumentShell& Shell() { return *this; }
    bool ClipboardHasText() const { return ports_.clipboard.HasText(); }
    /// What the last click in a view pointed at.
    Hit& Target() { return target_; }
    bool AutoSaveHeld() const { return !autoSaveGuards_.empty(); }

private:
    // DocumentShell
    void DocumentChanged(mvDocument& document) override;
    void HoldAutoSave(bool hold) override;
    void RecordPosition(mvDocument& document) override;
    bool KeepsVersions(const mvItem& item) const override { return versions_.Keeps(item); }
    void DocumentSaved(const SavedText& saved) override { versions_.Saved(saved); }

    void AutoSaveTimer_Timer();
    void Start(const CommandLine& line);
    void Reopen(const CommandLine& line);
    void ShowRecovered(int32_t recovered);
    void LoadSettings();
    void OfferDialect();
    void ParseCmdLine(const CommandLine& line);
    void OpenFromCommandLine(const CommandLine& line);
    void TellUnknown(const CommandLine& line);
    void LearnAccount(const Location& given);
    void InstallFonts();
    void UninstallFonts();
    void TakeDown();

    ProgramPorts ports_;
    DebugLog log_;
    CurrentPlace place_;
    StartMode mode_;
    int32_t AutoSaveMinuteCount_ = 0; ///< since the last auto-save pass; minutes without recovery do not count
    std::unique_ptr<Timers::Timer> AutoSaveTimer_; ///< rings each minute while the main window is there
    MvEdit settings_;
    mvDocuments openDocuments_;
    DocumentServices services_;
    HostConfiguration hostConfiguration_;
    modAutoRecover recovery_;
    DocumentSession session_;
    AutomationHost automationHost_;
    Application automation_;
    FileCommands files_;
    OutsideChanges outside_;
    Hit target_;
    NavigationHistory history_;
    Assistance assistance_;
    NameCommands names_;
    ItemHistory versions_;
    Text defaultFontName_;
    std::set<int32_t> changedDocuments_;         ///< their titles wait to be drawn
    std::unique_ptr<Timers::Timer> nextTurn_;    ///< while anything waits
    std::vector<int32_t> autoSaveGuards_;        ///< held now, the innermost last
    std::map<Text, Text, std::less<>> troubles_; ///< by what does not work
    bool fontsInstalled_ = false;
    bool shuttingDown_ = false;
};

} // namespace nib
