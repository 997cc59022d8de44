#include "shell/GotoModel.h"

#include "base/Marks.h"
#include "diagnostics/Guarded.h"
#include "shell/Program.h"

namespace nib {

GotoModel::GotoModel(Program& program)
    : program_(program), byLine_(program.EditorSettings().GotoLineNumber), settingSeen_(byLine_)
{
}

std::shared_ptr<mvDocument> GotoModel::ActiveDocument() const
{
    return program_.OpenDocuments().ById(program_.Window().ActiveDocument());
}

void GotoModel::Begin(TextView target)
{
    target_ = target;
    bool setting = program_.EditorSettings().GotoLineNumber;
    // The user's last choice stays, until the settings say something new.
    if (setting != settingSeen_) byLine_ = setting;
    settingSeen_ = setting;
    GetLabels();
}

void GotoModel::GetLabels()
{
    labels_.clear();
    Guarded(
        program_.Log(), u"frmGoto.GetLabels",
        [&] {
            if (auto document = ActiveDocument()) labels_ = Split(document->BuildLabelTable().Extract({1}), kValueMark);
        },
        [&](const Error& error) { program_.ReportError(error.description); });
}

bool GotoModel::Accept(TextView label, TextView lineNumber)
{
    return Guarded(
        program_.Log(), u"frmGoto.cmdOK_Click",
        [&] {
            auto document = ActiveDocument();
            if (!document) throw Error{error_number::kInvalidCall, u"No document is open."};
            if (byLine_) {
                document->GotoLine(ToInt(Trim(lineNumber)));
            } else {
                target_ = label;
                document->GotoLabel(target_);
            }
            return true;
        },
        [&](const Error& error) {
            program_.ReportError(error.description);
            return false;
        });
}

int32_t GotoModel::LineCount() const
{
    auto document = ActiveDocument();
    return document && document->View() ? document->View()->txtText().Document().LineCount() : 0;
}

bool GotoModel::NoGotoDialog() const
{
    return program_.EditorSettings().NoGotoDialog;
}

void GotoModel::SetNoGotoDialog(bool on)
{
    program_.EditorSettings().NoGotoDialog = on;
}

} // namespace nib
