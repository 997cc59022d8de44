#include "documents/clsDocView.h"

#include "base/Error.h"

namespace nib {

namespace {
[[noreturn]] void NotImplemented()
{
    throw Error{error_number::kNotImplemented, u"Not implemented"};
}
} // namespace

void clsDocView::Activate()
{
    NotImplemented();
}
void clsDocView::Show()
{
    NotImplemented();
}
bool clsDocView::QueryUnload(int32_t)
{
    NotImplemented();
}
void clsDocView::Unload()
{
    NotImplemented();
}
SourceView& clsDocView::txtText()
{
    NotImplemented();
}
void clsDocView::SetTitle(TextView)
{
    NotImplemented();
}
Text clsDocView::Title() const
{
    NotImplemented();
}
void clsDocView::SetViewObject(mvDocument*)
{
    NotImplemented();
}
mvDocument* clsDocView::ViewObject() const
{
    NotImplemented();
}
void clsDocView::SetAutoSaveFlag(bool)
{
    NotImplemented();
}
bool clsDocView::AutoSaveFlag() const
{
    NotImplemented();
}
void clsDocView::SetTag(TextView)
{
    NotImplemented();
}
Text clsDocView::Tag() const
{
    NotImplemented();
}
void clsDocView::SetVisible(bool)
{
    NotImplemented();
}
bool clsDocView::Visible() const
{
    NotImplemented();
}
void clsDocView::SetWindowState(int32_t)
{
    NotImplemented();
}
int32_t clsDocView::WindowState() const
{
    NotImplemented();
}
bool clsDocView::IsActive() const
{
    NotImplemented();
}

} // namespace nib
