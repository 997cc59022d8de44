#include "app/CommandRooms.h"

#include "persistence/settings/frmSettings.h"
#include "printing/QtPrinting.h"
#include "shell/Program.h"
#include "shell/frame/frmMain.h"
#include "shell/frame/frmProperties.h"
#include "shell/help/QtAboutBox.h"

namespace nib {

CommandRooms::CommandRooms(Program& program, frmMain& mainWindow, SettingsStore& store, QtPrinting& printing)
    : program_(program), mainWindow_(mainWindow), store_(store), printing_(printing)
{
    CommandPorts& ports = mainWindow_.Ports();
    ports.search = this;
    ports.dialogs = this;
    ports.edits = this;
    ports.history = this;
    ports.compiler = this;
    ports.printer = &printer_;
}

void CommandRooms::LoadForms()
{
    resultsModel_ = std::make_unique<ResultsModel>(program_.Services());
    results_ = std::make_unique<frmResults>(*resultsModel_, store_, &mainWindow_);
    results_->onPrint = [this](frmResults& results) {
        printing_.PrintPages(
            results.windowTitle(), [&](const Paper& paper) { results.PrintTo(paper); }, &results);
    };
    engine_ = std::make_unique<FindEngine>(program_.Services(), *results_, program_.EditorSettings().RecentSearches);
    find_ = std::make_unique<frmFind>(*engine_, &mainWindow_);
    goto_ = std::make_unique<frmGoto>(program_.Services(), &mainWindow_);
    program_.Services().results = results_.get();
    mainWindow_.Ports().results = results_.get();
}

void CommandRooms::UnloadForms()
{
    program_.Services().results = nullptr;
    mainWindow_.Ports().results = nullptr;
    help_.reset();
    goto_.reset();
    find_.reset();
    engine_.reset();
    if (results_) results_->Unload();
    results_.reset();
    resultsModel_.reset();
}

void CommandRooms::Properties(mvDocument& document)
{
    frmProperties(&mainWindow_).ShowDialog(document, program_.CurrentLocation());
}

void CommandRooms::Settings(int32_t page)
{
    SettingsModel model(program_.Services(), store_, *this);
    frmSettings::ShowSettings(model, &mainWindow_, page);
}

void CommandRooms::IconsChosen(bool large)
{
    mainWindow_.Menus().SetIconSize(Band::ToolBar, large ? kLargeIcons : kSmallIcons);
    mainWindow_.Menus().SetHotTrack(Band::ToolBar, program_.EditorSettings().ToolbarHotTrack);
}

void CommandRooms::FontChanged()
{
    find_->SetFont();
    results_->SetFont();
}

void CommandRooms::About()
{
    ShowAboutBox(&mainWindow_);
}

bool CommandRooms::HelpTopics()
{
    if (!help_) help_ = std::make_unique<HelpWindow>();
    help_->ShowHelp();
    return true;
}

bool CommandRooms::Goto(Text& target)
{
    return goto_->ShowGoto(target, &mainWindow_);
}

void CommandRooms::IndentBlock(mvDocument& document, bool indent)
{
    document.IndentBlock(indent);
}

void CommandRooms::CommentBlock(mvDocument& document, bool comment)
{
    document.CommentBlock(comment);
}

void CommandRooms::ToggleCase(mvDocument& document)
{
    document.ToggleCase();
}

void CommandRooms::Format(mvDocument& document)
{
    document.Format();
}

bool CommandRooms::CanCompile(const mvDocument& document) const
{
    return document.CanCompile();
}

void CommandRooms::Compile(mvDocument& document)
{
    document.Compile();
}

bool CommandRooms::CanBack() const
{
    return program_.History().CanNavigateBack();
}

bool CommandRooms::CanForward() const
{
    return program_.History().CanNavigateForward();
}

void CommandRooms::Back(mvDocument& document)
{
    program_.History().NavigateBack(&document);
}

void CommandRooms::Forward(mvDocument& document)
{
    program_.History().NavigateForward(&document);
}

} // namespace nib
