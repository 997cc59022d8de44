#pragma once
// The rooms behind the commands: what a command asks for by a port, done by the form or document that does it.

#include "persistence/settings/SettingsModel.h"
#include "search/frmFind.h"
#include "search/frmResults.h"
#include "shell/CommandPorts.h"
#include "shell/TextPrinter.h"
#include "shell/help/QtHelpWindow.h"
#include "shell/navigation/frmGoto.h"

namespace nib {

class Program;
class QtPrinting;
class frmMain;

class CommandRooms final : public SearchForms,
                           public Dialogs,
                           public BlockEdits,
                           public Compiler,
                           public SettingsApplied,
                           public History {
public:
    /// All outlive it.
    CommandRooms(Program& program, frmMain& mainWindow, SettingsStore& store, QtPrinting& printing);

    /// The forms live from the load of the settings to the end of the main window.
    void LoadForms();
    void UnloadForms();

    // SearchForms
    void Find() override { find_->Find(); }
    void FindNext() override { find_->FindNext(); }
    void Replace() override { find_->Replace(); }
    // Dialogs
    void Properties(mvDocument& document) override;
    void Settings(int32_t page) override;
    void About() override;
    bool HelpTopics() override;
    bool Goto(Text& target) override;
    // BlockEdits
    void IndentBlock(mvDocument& document, bool indent) override;
    void CommentBlock(mvDocument& document, bool comment) override;
    void ToggleCase(mvDocument& document) override;
    void Format(mvDocument& document) override;
    // History
    bool CanBack() const override;
    bool CanForward() const override;
    void Back(mvDocument& document) override;
    void Forward(mvDocument& document) override;
    // Compiler
    bool CanCompile(const mvDocument& document) const override;
    void Compile(mvDocument& document) override;
    // SettingsApplied
    void IconsChosen(bool large) override;
    void FontChanged() override;

private:
    Program& program_;
    frmMain& mainWindow_;
    SettingsStore& store_;
    QtPrinting& printing_;
    TextPrinter printer_;
    std::unique_ptr<ResultsModel> resultsModel_;
    std::unique_ptr<frmResults> results_;
    std::unique_ptr<FindEngine> engine_;
    std::unique_ptr<frmFind> find_;
    std::unique_ptr<frmGoto> goto_;
    std::unique_ptr<HelpWindow> help_;
};

} // namespace nib
