#pragma once
// The frame: the child windows of the documents inside it, its place on the desktop, its timers, and the keys and drops
// that belong to it rather than to a widget in it.

#include "platform/qt/QtBackground.h"
#include "shell/MainWindow.h"
#include "shell/MenuDispatcher.h"
#include "shell/assist/QtAssist.h"
#include "shell/frame/QtPanelKeeper.h"
#include "shell/frame/WindowPlacement.h"
#include "shell/frame/frmStart.h"
#include "shell/menus/QtMenuBar.h"

#include <QMainWindow>
#include <QTimer>

#include <map>
#include <vector>

class QMdiArea;
class QMdiSubWindow;

namespace nib {

class frmDocument;
class Program;
enum class KeyAction;

class frmMain final : public QMainWindow, public MainWindow {
public:
    frmMain();
    ~frmMain() override;

    // MainWindow
    void Load(Program& program) override;
    void Show() override;
    void Unload() override;
    void ArmShutdownTimer() override;
    void DisarmShutdownTimer() override { shutdownTimer_.stop(); }
    bool Visible() const override { return isVisible(); }
    void SetVisible(bool visible) override { setVisible(visible); }
    bool IsModal() const override;
    void ToForeground() override;
    void SetStatusText(int32_t panel, TextView text) override;
    void ShowStatusPanel(int32_t panel, bool visible) override;
    void SetWaitCursor(bool wait) override;
    void UpdateToolBar() override;
    void ProcessMessages() override;
    void Await(const std::function<void()>& work) override { background_.Run(work, typing_); }
    void LetType(bool typing) override { typing_ = typing; }
    bool Postpone(const std::function<void()>& what) override
    {
        return AfterWork([this, what] { RunWhenFree(what); });
    }
    /// The same for what does not wait for a box that comes up then.
    bool AfterWork(std::function<void()> what) { return background_.Postpone(std::move(what)); }
    int32_t ActiveDocument() const override;
    MenuModel& Menus() override { return menus_; }
    void Arrange(int32_t mode) override;
    void ActivateGuest(int32_t tab) override;
    void CloseGuest(int32_t tab) override;
    int32_t GuestInFront() const override;
    int32_t GuestDocument() const override { return GuestInFront() && guestDocument ? guestDocument() : 0; }
    /// Of the guest in front.
    std::function<int32_t()> guestDocument;

    /// Makes it a window among those of the documents, which has a tab and takes `content` along when it closes. One
    /// that it is already comes to the front.
    void TakeGuest(QWidget* content);

    // For the document windows
    Program& Owner() const { return *program_; }
    /// Null once the window is unloaded.
    QtAssist* Assist() const { return assist_.get(); }
    void AddChild(frmDocument& form);
    void RemoveChild(frmDocument& form);
    void ShowChild(frmDocument& form);
    void ActivateChild(frmDocument& form);
    void ChildTitleChanged(frmDocument& form);
    void ChildStateChanged(frmDocument& form);
    frmDocument* ActiveForm() const;
    /// Runs a command by its key.
    bool Run(TextView key);
    void ShowContextMenu(HitKind kind, QPoint at);

    /// Child windows from front to back.
    const std::vector<frmDocument*>& Children() const { return order_.All(); }
    /// To the next or previous child window.
    void StepDocument(bool backward);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Life
    void LoadParts();
    void UnloadParts();
    void RunWhenFree(const std::function<void()>& what);
    void Place();
    void Placed();
    FrameBounds PresentBounds() const;
    int32_t PresentState() const;
    void UpdateCaption();

    // Keys, focus, drops
    bool FilterStroke(int key, int modifiers, bool down, bool onlyAsking);
    void Act(KeyAction action);
    void ShiftLines(TextView command, bool outwards);
    void FocusMoved(const QWidget* now);
    bool IsStuck(const QWidget* focus) const;
    void FreeStuckFocus();
    void OpenDropped(const std::vector<Text>& paths, const std::vector<Text>& elsewhere);

    // Bands
    void LoadBands();
    void ShowTab(frmDocument& form);
    bool CanRun(TextView key) const;

    // Child windows
    QMdiSubWindow* ActiveGuest() const;
    void GuestActivated(QMdiSubWindow& guest);
    void ShowGuestTab(int32_t tab);
    void ChildActivated();
    void FollowFrameState(frmDocument& form);
    void RestoreAll();
    int32_t StateForNew(const frmDocument& form) const;
    void FollowChildren();

    Program* program_ = nullptr;
    QMdiArea* area_;
    StartPlace start_;
    MenuModel menus_;
    QtMenuBar menuBar_{*this, menus_};
    std::unique_ptr<MenuDispatcher> dispatcher_;
    std::unique_ptr<QtAssist> assist_;
    std::unique_ptr<QtPanelKeeper> panels_;
    std::vector<frmDocument*> children_;       ///< in the order of their making
    ChildOrder<frmDocument> order_;            ///< those that were in front at least once
    frmDocument* current_ = nullptr;           ///< told that it is in front
    std::map<int32_t, QMdiSubWindow*> guests_; ///< by tab; owned by the MDI area
    int32_t lastGuest_ = 0;
    FramePlacement placement_;
    QtBackground background_;
    QTimer shutdownTimer_;
    QTimer stuckFocusTimer_;
    bool childrenMaximised_ = false; ///< one child fills the frame, and so will the one that comes to the front
    bool arranging_ = false;
    bool waiting_ = false;
    bool typing_ = false;
    bool loaded_ = false;
    bool unloading_ = false;
};

} // namespace nib
