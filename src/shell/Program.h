#pragma once
// The spine: owns what lives for the whole process, brings it up and takes it down in a fixed order.

#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "platform/Clipboard.h"
#include "platform/Clock.h"
#include "platform/Fonts.h"
#include "platform/Timers.h"
#include "shell/AutoSaveTicks.h"
#include "shell/FileCommands.h"
#include "shell/MainWindow.h"
#include "shell/SessionParts.h"
#include "shell/ShellState.h"
#include "shell/navigation/modBacktrack.h"

#include <set>

namespace nib {

enum class StartMode { User, Automation };

/// Implementations from outside; all outlive the program.
struct ProgramPorts {
    mvConnection& connection;
    MessageBoxes& boxes;
    MainWindow& mainWindow;
    ViewFactory& views;
    Fonts& fonts;
    const Clipboard& clipboard;
    SessionParts& parts;
    Timers& timers;
    TraceChannel* trace = nullptr;
    const Clock& clock = kSteadyClock;
};

class Program final : private DocumentShell {
public:
    explicit Program(const ProgramPorts& ports);
    ~Program() override;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Main(StartMode mode, TextView commandLine);
    /// Runs its body once, however often it is called.
    void Shutdown();
    bool IsShuttingDown() const { return shuttingDown_; }

    int32_t ShowMessage(TextView text, int32_t flags, TextView title = u"Nib") override;
    void ReportError(TextView description) override;
    void Beep() override { ports_.boxes.Beep(); }
    void SetStatusText(int32_t panel, TextView text) override;
    void ShowStatusPanel(int32_t panel) override;
    void HideStatusPanel(int32_t panel) override;
    /// Commands and titles are drawn afresh at the next turn of the loop, once however often they changed.
    void StateChanged();
    /// Draws now what waits for that, so that the user's next key or click meets commands as they are.
    void ShowChanges();

    /// The user turned from the window of `document` to another.
    void DocumentLeft(mvDocument& document);
    /// Once for the process; a host that is not known well enough yet is asked again next time.
    void LoadHostConfiguration();
    void HandleDroppedFiles(const std::vector<Text>& files);
    /// Asked once in the life of a dialog: the caller keeps `cached`.
    std::shared_ptr<mvItem> DefaultServer(std::shared_ptr<mvItem>& cached);
    /// The first family of the system that begins with "DejaVu Sans Mono", else "Courier New".
    const Text& DefaultFontName();
    /// Opens a local file or item; its path goes to the recent files. False when it was not opened.
    bool OpenPath(TextView path, bool readOnly);
    /// The same with what a picker answered.
    bool OpenPicked(const SelectedItem& picked);

    FileCommands& Files() { return files_; }
    NavigationHistory& History() { return history_; }
    mvDocuments& OpenDocuments() { return openDocuments_; }
    Location& CurrentLocation() { return location_; }
    MvEdit& EditorSettings() { return settings_; }
    clsRecentList& RecentFiles() { return settings_.RecentFiles; }
    DocumentServices& Services() { return services_; }
    mvConnection& Connection() { return ports_.connection; }
    MainWindow& Window() { return ports_.mainWindow; }
    const DebugLog& Log() const { return log_; }
    DocumentShell& Shell() { return *this; }
    bool ClipboardHasText() const { return ports_.clipboard.HasText(); }
    ShellState& State() { return state_; }
    bool AutoSaveHeld() const { return !autoSaveGuards_.empty(); }

private:
    // DocumentShell
    void DocumentChanged(mvDocument& document) override;
    void SetWaitCursor(bool wait) override;
    void ToForeground() override;
    void ProcessMessages() override;
    int32_t ActiveDocument() const override;
    void HoldAutoSave(bool hold) override;
    void RecordPosition(mvDocument& document) override;
    std::unique_ptr<clsDocView> CreateView(mvDocument& document) override;

    void AutoSaveTimer_Timer();
    void Start(StartMode mode, TextView commandLine);
    void ParseCmdLine(TextView line);
    void OpenFromCommandLine(TextView line);
    void LearnAccount();
    void InstallFonts();
    void UninstallFonts();
    void TakeDown();

    ProgramPorts ports_;
    DebugLog log_;
    Location location_;
    AutoSaveTicks autoSaveTicks_;
    std::unique_ptr<Timers::Timer> AutoSaveTimer_; ///< rings each minute while the main window is there
    MvEdit settings_;
    mvDocuments openDocuments_;
    DocumentServices services_;
    FileCommands files_;
    ShellState state_;
    NavigationHistory history_;
    Text defaultFontName_;
    std::set<int32_t> changedDocuments_;      ///< their titles wait to be drawn
    std::unique_ptr<Timers::Timer> nextTurn_; ///< while anything waits
    std::vector<int32_t> autoSaveGuards_;     ///< held now, the innermost last
    bool fontsInstalled_ = false;
    bool hostConfigured_ = false;
    bool shuttingDown_ = false;
};

} // namespace nib
