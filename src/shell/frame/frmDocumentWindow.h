#pragma once
#include <QMdiSubWindow>

#include <functional>

namespace nib {

class frmDocument;
class SourceViewWidget;

/// The visible part of a document window. It may outlive its form by a moment, and then does nothing more.
class DocumentWindow final : public QMdiSubWindow {
public:
    /// With or without the buttons of its title bar, which stay as they are for the life of the window.
    DocumentWindow(frmDocument& form, bool buttons);
    void Detach() { form_ = nullptr; }
    void SetText(SourceViewWidget* text);
    /// Runs `body` when the event being handled is over, if the form is still there.
    void Post(std::function<void(frmDocument&)> body);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    frmDocument* form_;
};

} // namespace nib
