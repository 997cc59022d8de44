#include "shell/Program.h"

#include "language/Dialects.h"
#include "platform/posix/FileName.h"
#include "shell/Commands.h"
#include "shell/DocumentStatus.h"
#include "shell/menus/FrameKeys.h"
#include "shell/menus/MenuModel.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kFontFiles[] = {u"DejaVuSansMono.ttf", u"DejaVuSansMono-Bold.ttf", u"DejaVuSansMono-BoldOblique.ttf",
                                   u"DejaVuSansMono-Oblique.ttf"};
constexpr TextView kPreferredFont = u"DejaVu Sans Mono";
constexpr int32_t kMinutesBetweenPasses = 5;
constexpr TextView kNoSettings = u"Settings cannot be stored: ";
constexpr TextView kDialectQuestion =
    u"This version of Nib knows the words of MultiValue BASIC: statements, functions and numbers get colors of their "
    u"own, "
    u"names with a $ in them stay whole, and more blocks are indented and collapsed. Would you like to use "
    u"that?\r\n\r\n"
    u"(this prompt will not be shown again, but you can always choose the dialect of your programs in the settings)";
constexpr TextView kSessionFolder = u"/Orlin/Nib/Documents";
constexpr TextView kVersionsFolder = u"/Orlin/Nib/History";
constexpr TextView kNoVersions = u"The history cannot be kept: ";
constexpr TextView kNoCopies = u"No recovery copies can be kept: ";

Text ItemPath(const Location& place, const Text& itemId)
{
    return ComposeHostPath({place.Provider, place.ServerName, place.Database, place.Folder, itemId});
}

bool OpensAny(const CommandLine& line)
{
    using Kind = CommandLineAction::Kind;
    return std::any_of(line.actions.begin(), line.actions.end(), [](const CommandLineAction& action) {
        return action.kind == Kind::OpenFile || action.kind == Kind::OpenItem;
    });
}

} // namespace

Program::Program(const ProgramPorts& ports, StartMode mode)
    : ports_(ports), log_(ports.trace),
      mode_(mode), services_{*this,  ports_.mainWindow, ports_.boxes, ports_.views, ports_.connection, settings_,
                             place_, openDocuments_,    log_},
      hostConfiguration_(services_), recovery_({services_, ports.copies, ports.token, ports.localData, ports.timers,
                                                [this](TextView folder, const DynamicArray& names) {
                                                    ports_.dialogs.OfferRecovered(recovery_, folder, names);
                                                },
                                                [this](TextView fault) { Trouble(kNoCopies, fault); }}),
      session_({services_, ports.copies, ports.timers,
                ports.localData.empty() ? std::string() : ToFileName(ports.localData + Text(kSessionFolder)),
                [this] { return recovery_.SessionName(); },
                [this](TextView name) { return !recovery_.IsOrphan(name); }}),
      automationHost_(*this, ports.events),
      automation_(services_, automationHost_, ports.events, mode == StartMode::Automation), files_(*this),
      outside_(*this), history_(services_, ports.clock),
      assistance_(services_, ports.timers, ports.clock, ports.assist),
      names_(assistance_, services_, [this](TextView path) { return OpenPath(path, false); }),
      versions_(services_,
                ports_.localData.empty() ? std::string() : ToFileName(ports_.localData + Text(kVersionsFolder)),
                ports.assist.toWindows)
{
    versions_.Trouble = [this](const Text& why) { Trouble(kNoVersions, why); };
    assistance_.StateChanged = [this] { StateChanged(); };
    assistance_.HelpWanted = [this] { Forms().Show(Form::HelpTopics, nullptr); };
    assistance_.usualPlace = [this] { return files_.PlaceOfOldEntries(); };
    services_.dialects = ports_.dialects;
    ports_.store.TellTrouble([this](TextView why) { Trouble(kNoSettings, why); });
}

Program::~Program()
{
    ports_.store.TellTrouble({});
    // Documents that a failed start or a sudden end left behind still use what dies with this object.
    shuttingDown_ = true;
    assistance_.Stop(); // it listens to their texts
    for (auto& document : openDocuments_.All()) IgnoringErrors([&] { document->FileClose(false); });
}

void Program::Main(const CommandLine& line)
{
    // The name in the log is the one that the command line uses too: whoever reads it looks for both at once.
    Guarded(
        log_, u"modMain.ParseCmdLine", [&] { Start(line); },
        [&](const Error& error) {
            ShowMessage(u"The Application is unable to start due to the following error:\n" + error.description, 0);
            Shutdown();
        });
}

void Program::Start(const CommandLine& line)
{
    InstallFonts();
    log_.Write(u"documents initialize", trace::kObjects);
    LoadSettings();
    ports_.mainWindow.Load(*this);
    AutoSaveTimer_ = ports_.timers.Every(std::chrono::minutes(1), [this] { AutoSaveTimer_Timer(); });
    ports_.mainWindow.Show();
    WaitCursor wait(ports_.mainWindow);
    ports_.mainWindow.SetStatusText(1, u"");
    ports_.dialogs.Load(*this);
    ports_.events.Ready(); // what follows may ask the user, and clients do not wait for the answer
    if (mode_ == StartMode::Automation) return;
    OfferDialect();
    recovery_.CheckAutoRecover();
    const int32_t recovered = ports_.mainWindow.ActiveDocument();
    if (!shuttingDown_) Reopen(line);
    if (!shuttingDown_) ParseCmdLine(line);
    if (!OpensAny(line)) {
        session_.ActivateRestored();
        ShowRecovered(recovered);
    }
    session_.Start();
}

/// What was worked on last may have come back as it is stored, with the text that was typed beside it.
void Program::ShowRecovered(int32_t recovered)
{
    const auto front = openDocuments_.ById(ports_.mainWindow.ActiveDocument());
    const auto document = openDocuments_.ById(recovered);
    if (document && document->View() && !(front && front->IsDirty())) IgnoringErrors([&] { document->Activate(); });
}

void Program::Reopen(const CommandLine& line)
{
    const std::vector<Text> failed = session_.Restore(settings_.ReopenDocuments && !OpensAny(line));
    if (failed.empty()) return;
    Text names;
    for (const Text& name : failed) names += (names.empty() ? u"" : u", ") + name;
    ports_.mainWindow.SetStatusText(1, u"Not opened again: " + names);
}

void Program::LoadSettings()
{
    auto ask = [this](TextView text, int32_t flags) { return ShowMessage(text, flags); };
    settings_.LoadSettings({ports_.store, DefaultFontName(), ask});
    if (settings_.FontName.empty()) settings_.FontName = DefaultFontName();
    UseDialect(settings_, services_.dialects);
}

/// Once to those who have settings from before there were dialects. Tells, too, what the one in use does not say well.
void Program::OfferDialect()
{
    if (!services_.dialects) return;
    for (const DialectNote& note : services_.dialects->Notes())
        Trouble(u"Dialect " + note.dialect + u", line " + Decimal(note.line) + u": ", note.text);
    if (!settings_.Dialect.empty()) return;
    const int32_t answer = ShowMessage(kDialectQuestion, message_box::kYesNo | message_box::kQuestion);
    settings_.Dialect = answer == message_box::kAnswerYes ? kCommonDialect : kNoDialect;
    WriteSetting(SettingNamed(u"Dialect"), settings_, ports_.store);
    UseDialect(settings_, services_.dialects);
}

bool Program::OpenPath(TextView path, bool readOnly)
{
    // Without a lock, which a window of this program may hold.
    const auto find = [&] { return ports_.connection.OpenServerForPath(path, true, false); };
    const auto item = openDocuments_.Count() > 0 ? OrDefault(find, std::shared_ptr<mvItem>()) : nullptr;
    if (item && ActivateOpen(*item)) return true;
    auto document = NewDocumentObject(services_);
    if (!document) return false;
    if (!document->FileOpen(path, readOnly)) {
        document->FileClose(true);
        return false;
    }
    files_.AddRecent(*document->ItemObject());
    return true;
}

bool Program::ActivateOpen(const mvItem& item)
{
    const auto open = openDocuments_.On(item);
    if (!open) return false;
    open->Activate();
    files_.AddRecent(*open->ItemObject());
    return true;
}

void Program::DocumentLeft(mvDocument& document)
{
    IgnoringErrors([&] { history_.RecordPosition(&document, true); });
    StateChanged();
}

void Program::AutoSaveTimer_Timer()
{
    if (!settings_.AutoRecover || ++AutoSaveMinuteCount_ < kMinutesBetweenPasses) return;
    AutoSaveMinuteCount_ = 0;
    if (!AutoSaveHeld()) Safely(u"frmMain.AutoSaveTimer_Timer", [&] { recovery_.AutoSaveDocuments(); });
}

void Program::HandleDroppedFiles(const std::vector<Text>& files)
{
    Safely(u"modMain.HandleDroppedFiles", [&] {
        for (const Text& file : files) OpenPath(ports_.connection.ComposeFilePath(file), false);
        ports_.mainWindow.ProcessMessages();
    });
}

std::shared_ptr<mvItem> Program::DefaultServer(std::shared_ptr<mvItem>& cached)
{
    if (!cached) {
        cached = ports_.connection.OpenServerForPath(ItemPath(place_.now, {}), true, false);
    }
    return cached;
}

const Text& Program::DefaultFontName()
{
    if (!defaultFontName_.empty()) return defaultFontName_;
    auto families = ports_.fonts.Families();
    auto found = std::find_if(families.begin(), families.end(),
                              [](const Text& family) { return StartsWithNoCase(family, kPreferredFont); });
    defaultFontName_ = found == families.end() ? Text(u"Courier New") : *found;
    return defaultFontName_;
}

void Program::InstallFonts()
{
    for (TextView file : kFontFiles)
        if (ports_.fonts.Add(ports_.fonts.ProgramFolder() + u"/" + Text(file))) fontsInstalled_ = true;
}

void Program::UninstallFonts()
{
    if (!std::exchange(fontsInstalled_, false)) return;
    for (TextView file : kFontFiles) ports_.fonts.Remove(ports_.fonts.ProgramFolder() + u"/" + Text(file));
}

void Program::Shutdown()
{
    if (std::exchange(shuttingDown_, true)) return;
    Safely(u"modMain.Shutdown", [&] { TakeDown(); });
}

void Program::TakeDown()
{
    AutoSaveTimer_.reset();
    nextTurn_.reset();
    assistance_.Stop();
    recovery_.EndAutoSaveSession();
    session_.End(settings_.ReopenDocuments);
    ports_.mainWindow.Unload();
    ports_.dialogs.Unload();
    for (auto& document : openDocuments_.All()) document->FileClose(false);
    log_.Write(u"documents terminate", trace::kObjects);
    settings_.SaveSettings(ports_.store);
    ports_.store.Flush(); // as long as there is a log to tell trouble to
    automation_.RaiseQuit();
    versions_.End();
    UninstallFonts();
}

void Program::KeepAll()
{
    // A cell that is being typed into is in no text yet; one that means nothing stays out.
    for (const auto& document : openDocuments_.All())
        if (document->View()) IgnoringErrors([&] { document->View()->TakeInput(); });
    IgnoringErrors([&] { recovery_.AutoSaveDocuments(); }, [&] { recovery_.Flush(); }, [&] { session_.Save(); },
                   [&] { settings_.SaveSettings(ports_.store); }, [&] { ports_.store.Flush(); });
}

void Program::EndNow()
{
    if (std::exchange(shuttingDown_, true)) return;
    AutoSaveTimer_.reset();
    nextTurn_.reset();
    KeepAll();
    const auto documents = openDocuments_.All();
    const bool changed = std::any_of(documents.begin(), documents.end(), [](auto& d) { return d->IsDirty(); });
    if (!changed) IgnoringErrors([&] { recovery_.EndAutoSaveSession(); });
    IgnoringErrors([&] { ports_.mainWindow.Unload(); }, [&] { automation_.RaiseQuit(); });
}

int32_t Program::ShowMessage(TextView text, int32_t flags, TextView title)
{
    ports_.mainWindow.ToForeground();
    return ports_.boxes.Show(text, flags | message_box::kExtended, title);
}

void Program::DocumentChanged(mvDocument& document)
{
    // What a forced end closes is still to be had back.
    if (!shuttingDown_) IgnoringErrors([&] { recovery_.DocumentChanged(document); });
    assistance_.DocumentChanged(document);
    changedDocuments_.insert(document.DocumentID());
    StateChanged();
}

void Program::StateChanged()
{
    if (!nextTurn_ && !shuttingDown_)
        nextTurn_ = ports_.timers.Every(std::chrono::milliseconds(0), [this] { ShowChanges(); });
}

void Program::ShowChanges()
{
    if (!nextTurn_) return;
    nextTurn_.reset();
    Guarded(
        log_, u"Program.ShowChanges",
        [&] {
            for (int32_t id : std::exchange(changedDocuments_, {}))
                if (auto document = openDocuments_.ById(id)) document->UpdateTitle();
            ports_.mainWindow.UpdateToolBar();
            ShowDocumentStatus(Menus(), openDocuments_.ById(ports_.mainWindow.ActiveDocument()).get(),
                               settings_.Dialect);
            recovery_.FollowSetting();
            if (!troubles_.empty()) ports_.mainWindow.SetStatusText(1, troubles_.begin()->second);
        },
        [](const Error&) {});
}

void Program::Trouble(TextView what, TextView why)
{
    auto known = troubles_.find(what);
    if (known == troubles_.end() ? why.empty() : known->second == Text(what) + Text(why)) return;
    if (why.empty()) {
        troubles_.erase(known);
        ports_.mainWindow.SetStatusText(1, u"");
    } else {
        const Text& line = troubles_[Text(what)] = Text(what) + Text(why);
        log_.Write(line, trace::kErrors);
    }
    StateChanged();
}

void Program::HoldAutoSave(bool hold)
{
    if (hold) return autoSaveGuards_.push_back(recovery_.HoldAutoSaveGuard());
    recovery_.ReleaseAutoSaveGuard(autoSaveGuards_.back());
    autoSaveGuards_.pop_back();
}

void Program::RecordPosition(mvDocument& document)
{
    history_.RecordPosition(&document, false);
    StateChanged();
}

// For automation

void AutomationHost::LoadHostConfiguration()
{
    program_.LoadHostConfiguration();
}

void AutomationHost::AddCommand(TextView name, TextView caption, int32_t shortcut)
{
    if (IsReservedKey(name)) throw Error{error_number::kKeyInUse, Text(name) + u" is a command of the program."};
    MenuTool tool;
    tool.key = name;
    tool.caption = caption;
    tool.shortcut = ShortcutName(shortcut);
    program_.Menus().Add(Band::MainMenu, u"Tools", std::move(tool));
    commands_.emplace(name);
}

void AutomationHost::PrintText(mvDocument& document)
{
    program_.Forms().Show(Form::Print, &document);
}

} // namespace nib
