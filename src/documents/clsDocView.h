#pragma once
#include "text/SourceView.h"

namespace nib {

class LexClass;
class mvDocument;

/// The window of a document, independent of any form. A member that a window class does not provide reports
/// error_number::kNotImplemented.
class clsDocView {
public:
    virtual ~clsDocView() = default;
    virtual void Activate();
    virtual void Show();
    /// Runs the window's close question; true refuses. `mode` 0 is the window's own close command.
    virtual bool QueryUnload(int32_t mode);
    virtual void Unload();
    virtual SourceView& txtText();
    /// Of the view's text; null when it has none. Owned by the window.
    virtual LexClass* Lexer() { return nullptr; }
    virtual void SetTitle(TextView title);
    virtual Text Title() const;
    virtual void SetViewObject(mvDocument* document);
    virtual mvDocument* ViewObject() const;
    /// Set when the text has changed since its last auto-save.
    virtual void SetAutoSaveFlag(bool flag);
    virtual bool AutoSaveFlag() const;
    virtual void SetTag(TextView tag);
    virtual Text Tag() const;
    virtual void SetVisible(bool visible);
    virtual bool Visible() const;
    /// 0 normal, 1 minimised, 2 maximised.
    virtual void SetWindowState(int32_t state);
    virtual int32_t WindowState() const;
    virtual bool IsActive() const;
};

} // namespace nib
