#pragma once
// The window of the results: the lines of a ResultsModel as a text that can be read, copied, printed and clicked.

#include "search/ResultsModel.h"

#include <QCoreApplication>
#include <QDialog>
#include <QTimer>

#include <functional>

class QMenu;

namespace nib {

class QtResultsList;
struct Paper;

class frmResults final : public QDialog, public ResultsWindow {
    Q_DECLARE_TR_FUNCTIONS(frmResults)
public:
    /// All outlive the form; `owner` is the main window.
    frmResults(ResultsModel& model, SettingsStore& store, QWidget* owner = nullptr);
    ~frmResults() override;

    // ResultsWindow
    void ShowResults(TextView text) override;
    void KeepResults(TextView text) override;
    void AddOutput(TextView lines, bool first) override;
    void ResetResults(TextView title) override;
    void AddResultLine(TextView text, int32_t highlightStart, int32_t highlightLength, bool emphasis) override;
    void AddNote(const std::vector<Text>& sentences) override;
    void AddItemHeader(TextView text, TextView path) override;
    void AddItemLine(TextView text, int32_t highlightStart, int32_t highlightLength, int32_t line) override;
    int32_t ListNumber() const override { return model_.ListNumber(); }
    bool GoToError(bool backward) override;

    void SetFont();
    /// As a window of its own: in front, with the keys.
    void ShowFloating();
    /// The user wants to work in it.
    void TakeFocus();
    /// A part of another window has no menu bar.
    void SetDocked(bool docked);
    /// Keeps the size for the next run.
    void Unload() { KeepSize(); }
    void PrintTo(const Paper& paper) const;

    /// Asks for a printer and calls PrintTo with it; without it nothing can be printed.
    std::function<void(frmResults&)> onPrint;
    /// The font dialog; false when it was cancelled.
    std::function<bool(QFont&)> chooseFont;
    /// Whoever else has it in a window of his own shows and hides it; without them it does so itself.
    std::function<void()> onShow;
    std::function<void()> onHide;
    /// Lines of a command that still runs have come into the list; nothing worth showing has.
    std::function<void()> onPrinted;
    std::function<void()> onKept;
    /// Into the other window or out of it; nothing where there is none.
    std::function<void()> onDock;

    /// Closing hides, so that the list stays.
    void reject() override { onHide ? onHide() : hide(); }

private:
    void Build();
    void BuildMenus();
    void PlaceWindow();
    void Present();
    void KeepSize();
    /// The box is filled once a list is through, not line by line.
    void Changed();
    void FillIn();
    void ShowPrinted();
    void ChooseFont();
    void JumpToSource();

    ResultsModel& model_;
    SettingsStore& store_;
    QtResultsList* txResults_ = nullptr;
    QMenu* popup_ = nullptr;
    QAction* dock_ = nullptr;
    QTimer dblClkTimer_;
    QTimer fillTimer_;
    QSize size_; ///< as a window that was never placed
    bool positioned_ = false;
    bool filled_ = true;
    bool running_ = false;   ///< the command whose output this is
    int32_t shownList_ = -1; ///< whose lines are in the box
    size_t shownUnits_ = 0;  ///< of its contents
};

} // namespace nib
