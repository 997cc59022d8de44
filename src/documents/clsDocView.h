#pragma once
#include "text/SourceView.h"

namespace nib {

class LexClass;
/// The window of a document, independent of any form. Its end is the end of what is on the screen.
class clsDocView {
public:
    virtual ~clsDocView() = default;
    virtual void Activate() = 0;
    /// Makes it visible.
    virtual void Show() = 0;
    /// As the window's own close button does, with the question that belongs to it.
    virtual void QueryUnload() = 0;
    virtual SourceView& txtText() = 0;
    /// Of the view's text; null when it has none. Owned by the window.
    virtual LexClass* Lexer() = 0;
    virtual void SetTitle(TextView title) = 0;
    /// The text has changed since it was loaded or saved, and a copy is due.
    virtual bool AutoSaveFlag() const = 0;
    /// 0 normal, 1 minimised, 2 maximised.
    virtual void SetWindowState(int32_t state) = 0;
    virtual int32_t WindowState() const = 0;
    virtual bool IsActive() const = 0;
};

} // namespace nib
