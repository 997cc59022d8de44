#pragma once
#include "documents/DocumentServices.h"

namespace nib {

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
    void UpdateDocuments();

    DocumentServices& services_;
    bool HostConfigLoaded_ = false;
};

} // namespace nib
