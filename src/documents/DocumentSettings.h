#pragma once
#include "documents/DocumentServices.h"

namespace nib {

/// Puts the settings on a view: font, tab size, colours, margin, both token tables, and on the lexer of its document,
/// if it has one; what was scanned is scanned again. Runs when a document gets its window and after every change of the
/// settings, which outlive the view.
void ApplyViewSettings(SourceView& view, const MvEdit& settings, LexClass* lexer = nullptr);

/// Gives the keywords what the dialect of the settings adds. Runs after every change of that name.
void UseDialect(MvEdit& settings, Dialects* dialects);

/// Characters that the margin needs: digits of the line numbers, a blank, and the column of the blocks.
int32_t MarginWidthFor(SourceView& view);
/// What a view shows beside its text.
ViewMarks ViewMarksOf(const MvEdit& settings);

/// What the host says about keywords, compile command and formatting: it takes the place of the user's own settings
/// for this run, and is not stored.
class HostConfiguration {
public:
    /// `services` outlive the object.
    explicit HostConfiguration(DocumentServices& services) : services_(services) {}

    /// Once in a run, as soon as provider, server and account are known; until then it does nothing and may be called
    /// again. An error of the connection is thrown, and is no reason to try again.
    void LoadHostConfiguration();
    bool HostConfigLoaded() const { return HostConfigLoaded_; }

private:
    std::shared_ptr<mvItem> OpenAccount();
    void Apply(mvSession& session);
    bool ReplaceKeywords(int32_t Class, TextView place);
    Text ReadPlace(TextView place);
    void ReplaceFormat(TextView numbers);
    void ReplaceDialect(const Text& name);
    void UpdateDocuments();

    DocumentServices& services_;
    bool HostConfigLoaded_ = false;
};

} // namespace nib
