#include "app/ProgramDialogs.h"

#include "compare/frmMerge.h"
#include "persistence/recovery/frmAutoRecover.h"
#include "persistence/settings/frmSettings.h"
#include "platform/qt/QtText.h"
#include "printing/QtPrinting.h"
#include "shell/Program.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmProperties.h"
#include "shell/help/QtHelpWindow.h"

namespace nib {

void ProgramDialogs::Load(Program& program)
{
    program_ = &program;
    resultsModel_ = std::make_unique<ResultsModel>(program.Services());
    resultsModel_->openPath = [&program](TextView path) { return program.OpenPath(path, false); };
    results_ = std::make_unique<frmResults>(*resultsModel_, store_, &mainWindow_);
    results_->onPrint = [this](frmResults& results) {
        printing_.PrintPages(
            results.windowTitle(), [&](const Paper& paper) { results.PrintTo(paper); }, &results);
    };
    resultsPanel_ = std::make_unique<QtResultsPanel>(*results_, store_, mainWindow_);
    resultsPanel_->onRoomChanged = [this] {
        if (QtAssist* assist = mainWindow_.Assist()) assist->KeepCaretsSeen();
    };
    resultsPanel_->onLeave = [this] {
        if (frmDocument* form = mainWindow_.ActiveForm()) form->FocusText();
    };
    LoadSearch(program);
    goto_ = std::make_unique<frmGoto>(program.Services(), &mainWindow_);
    program.Services().results = results_.get();
    compare_ = std::make_unique<QtCompareWindows>(program.Services(), store_, &mainWindow_,
                                                  [this](QWidget* content) { mainWindow_.TakeGuest(content); });
    mainWindow_.guestDocument = [this] { return compare_->DocumentInFront(); };
    compare_->onSide = [&program] { program.StateChanged(); };
    compare_->onSave = [&program](mvDocument& document) { program.Files().FileSave(document); };
    history_ = std::make_unique<QtHistory>(program.Versions(), program.Services(), *compare_, mainWindow_,
                                           [&program] { program.StateChanged(); });
    history_->onRoomChanged = resultsPanel_->onRoomChanged;
    history_->onLeave = resultsPanel_->onLeave;
}

void ProgramDialogs::LoadSearch(Program& program)
{
    clsRecentList& recent = program.EditorSettings().RecentSearches;
    accountFind_ = std::make_unique<AccountFind>(program.Services(), timers_, store_, recent);
    findAccount_ = std::make_unique<frmFindAccount>(*accountFind_, &mainWindow_);
    engine_ = std::make_unique<FindEngine>(program.Services(), *results_, recent);
    lights_ = std::make_unique<HitLights>(program.Services(), *engine_, timers_);
    const auto inAccount = [this] {
        accountFind_->TakeSearch(engine_->Dialog());
        findAccount_->ShowDialog();
    };
    find_ = std::make_unique<frmFind>(*engine_, *lights_, &mainWindow_);
    find_->matchPlace = [this] {
        const frmDocument* form = mainWindow_.ActiveForm();
        return form ? form->SelectionOnScreen() : QRect();
    };
    find_->findInAccount = inAccount;
    typedFind_ = std::make_unique<TypedFind>(program.Services(), *engine_);
    findBar_ = std::make_unique<frmFindBar>(*typedFind_, *engine_, *lights_, &mainWindow_);
    mainWindow_.addToolBar(Qt::BottomToolBarArea, findBar_.get());
    findBar_->hide();
    findBar_->onLeave = [this] {
        if (frmDocument* form = mainWindow_.ActiveForm()) form->FocusText();
    };
    findBar_->findInAccount = inAccount;
    findBar_->findAll = [this] { engine_->FindAll(FindMode::List); };
}

void ProgramDialogs::Unload()
{
    if (program_) program_->Services().results = nullptr;
    history_.reset();
    mainWindow_.guestDocument = nullptr;
    compare_.reset();
    help_.reset();
    goto_.reset();
    findAccount_.reset();
    accountFind_.reset();
    findBar_.reset();
    typedFind_.reset();
    find_.reset();
    lights_.reset();
    engine_.reset();
    if (results_) results_->Unload();
    if (resultsPanel_) resultsPanel_->Unload();
    results_.reset();
    resultsPanel_.reset();
    resultsModel_.reset();
}

void ProgramDialogs::Show(Form form, mvDocument* document)
{
    switch (form) {
    case Form::Find:
        findBar_->hide();
        find_->Find();
        break;
    case Form::FindBar:
        find_->hide();
        findBar_->ShowBar();
        break;
    case Form::FindNext: find_->FindNext(); break;
    case Form::Replace:
        findBar_->hide();
        find_->Replace();
        break;
    case Form::FindInAccount: findAccount_->ShowDialog(); break;
    case Form::Results:
        results_->ShowResults({});
        results_->TakeFocus();
        break;
    case Form::About: ShowAboutBox(&mainWindow_); break;
    case Form::Properties: frmProperties(&mainWindow_).ShowDialog(*document, program_->Place().now); break;
    case Form::Print: printing_.Print(*document); break;
    case Form::HelpTopics: ShowHelp({}); break;
    case Form::CompareStored: compare_->Show(CompareWith::Stored, *document); break;
    case Form::CompareOpened: compare_->Show(CompareWith::Opened, *document); break;
    case Form::CompareDocument: compare_->Show(CompareWith::Document, *document); break;
    case Form::CompareItem: compare_->Show(CompareWith::Item, *document); break;
    case Form::CompareCommitted: compare_->Show(CompareWith::Committed, *document); break;
    case Form::Settings: {
        SettingsModel model(program_->Services(), store_, *this);
        frmSettings::ShowSettings(model, &mainWindow_, 1, editConnections_);
        break;
    }
    }
}

void ProgramDialogs::ShowHelp(TextView page)
{
    if (!help_) help_ = std::make_unique<HelpWindow>();
    help_->ShowHelp(page);
}

MergeAnswer ProgramDialogs::Merge(MergeModel& merge, TextView name)
{
    const MvEdit& settings = program_->EditorSettings();
    QFont font(ToQString(settings.FontName));
    if (const double points = ToQString(settings.FontSize).toDouble(); points >= 1) font.setPointSizeF(points);
    return frmMerge(merge, name, font, &mainWindow_).ShowDialog();
}

void ProgramDialogs::IconsChosen(bool large)
{
    mainWindow_.Menus().SetIconSize(Band::ToolBar, large ? kLargeIcons : kSmallIcons);
    mainWindow_.Menus().SetHotTrack(Band::ToolBar, program_->EditorSettings().ToolbarHotTrack);
}

void ProgramDialogs::FontChanged()
{
    find_->SetFont();
    results_->SetFont();
}

void ProgramDialogs::OfferRecovered(modAutoRecover& recovery, TextView folder, const DynamicArray& names)
{
    const auto compare = [this](RecoveryComparison both, QWidget& owner) {
        const Text name = both.name;
        compare_->CompareOver(owner, {name, std::move(both.storedNote), std::move(both.stored), std::move(both.item)},
                              {name, std::move(both.recoveredNote), std::move(both.recovered), nullptr});
    };
    frmAutoRecover(recovery, compare).ShowDialog(folder, names, &mainWindow_);
}

} // namespace nib
