#include "shell/navigation/GotoModel.h"

#include "base/Text.h"
#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"

namespace nib {

GotoModel::GotoModel(DocumentServices& services)
    : services_(services), byLine_(services.settings.GotoLineNumber), settingSeen_(byLine_)
{
}

std::shared_ptr<mvDocument> GotoModel::ActiveDocument() const
{
    return services_.openDocuments.ById(services_.shell.ActiveDocument());
}

void GotoModel::Begin(TextView target)
{
    target_ = target;
    bool setting = services_.settings.GotoLineNumber;
    // The user's last choice stays, until the settings say something new.
    if (setting != settingSeen_) byLine_ = setting;
    settingSeen_ = setting;
    GetLabels();
}

void GotoModel::GetLabels()
{
    labels_.clear();
    Guarded(
        services_.log, u"frmGoto.GetLabels",
        [&] {
            if (auto document = ActiveDocument())
                for (const Label& label : document->Labels()) labels_.push_back(label.name);
        },
        [&](const Error& error) { services_.shell.ReportError(error.description); });
}

bool GotoModel::Accept(TextView label, TextView lineNumber)
{
    return Guarded(
        services_.log, u"frmGoto.cmdOK_Click",
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
            services_.shell.ReportError(error.description);
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
    return services_.settings.NoGotoDialog;
}

void GotoModel::SetNoGotoDialog(bool on)
{
    services_.settings.NoGotoDialog = on;
}

} // namespace nib
