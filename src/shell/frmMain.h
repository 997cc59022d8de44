#pragma once
// The frame: menus drawn from the menu table, the child windows of the documents, the status bar.

#include "platform/MainWindow.h"
#include "platform/qt/QtMenuBar.h"
#include "shell/MenuDispatcher.h"

#include <QMainWindow>

#include <vector>

class QMdiArea;

namespace nib {

class frmDocument;
class Program;

class frmMain final : public QMainWindow, public MainWindow, private ChildWindows {
public:
    frmMain();
    ~frmMain() override;

    /// Set once, before Load; the program outlives the window's use of it.
    void SetProgram(Program* program) { program_ = program; }

    // MainWindow
    void Load() override;
    void Show() override;
    void Unload() override;
    void ToForeground() override;
    void SetTitle(TextView title) override;
    void SetStatusText(int32_t panel, TextView text) override;
    void ShowStatusPanel(int32_t panel, bool visible) override;
    void SetWaitCursor(bool wait) override;
    void UpdateToolBar() override;
    void ProcessMessages() override;
    int32_t ActiveDocument() const override;

    // For the document windows
    void AddChild(frmDocument& form);
    void RemoveChild(frmDocument& form);
    void ShowChild(frmDocument& form);
    void ActivateChild(frmDocument& form);
    void ChildTitleChanged(frmDocument& form);
    frmDocument* ActiveForm() const;
    /// Filled as the rooms behind the commands are plugged in.
    CommandPorts& Ports() { return ports_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ChildActivated();
    void UpdateCaption();

    // ChildWindows
    void Arrange(int32_t mode) override;

    Program* program_ = nullptr;
    QMdiArea* area_;
    MenuModel menus_;
    QtMenuBar menuBar_{*this, menus_};
    CommandPorts ports_;
    std::unique_ptr<MenuDispatcher> dispatcher_;
    std::vector<frmDocument*> children_;
    frmDocument* lastActive_ = nullptr; ///< null when it has gone
    Text title_ = u"Nib";
    bool waiting_ = false;
    bool unloading_ = false;
};

} // namespace nib
