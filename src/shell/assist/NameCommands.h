#pragma once
// Ways from a name to where it is declared and used, and another name for it in all of these places.

#include "shell/assist/Assistance.h"

#include <functional>
#include <vector>

namespace nib {

/// The item of a path as lists name it.
Text ShownName(TextView path);

/// The places that a renaming changes, each of which the user may leave out.
struct RenamePreview {
    struct Row {
        Text path;
        Text item; ///< as lists name it
        QuickMend::Edit edit;
        Text line; ///< that it stands in
        bool chosen = true;
    };
    std::vector<Row> rows; ///< by item and place
    Text refusal;          ///< why there are none

    static RenamePreview Of(const RenamePlan& plan);
};

class NameCommands {
public:
    using OpenPath = std::function<bool(TextView path)>;

    /// All outlive it. `openPath` opens an item or brings its window to the front.
    NameCommands(Assistance& assistance, DocumentServices& services, OpenPath openPath)
        : assistance_(assistance), services_(services), openPath_(std::move(openPath))
    {
    }

    // All about the name at the caret; the answer comes in a moment.
    void GoToDefinition(mvDocument& document);
    void FindReferences(mvDocument& document);

    /// False when it was not opened.
    bool GoTo(const PathRange& place);

    /// The name that can be renamed at the caret, or why none can.
    struct Renamed {
        Text name;
        Text refusal;
    };
    void AskRename(mvDocument& document, std::function<void(const Renamed&)> take);
    /// What `name` would change.
    void Preview(mvDocument& document, const Text& name, std::function<void(RenamePreview)> take);
    /// Changes the chosen places, one step of undo in each text. Items that are not open are opened once the user has
    /// agreed, and left unsaved. Places that have changed meanwhile stay as they are, which the user is told. Answers
    /// how many were changed.
    int32_t Rename(const RenamePreview& preview, TextView oldName);

    /// Of a finding, in the text that it was found in.
    void Mend(mvDocument& document, const QuickMend& mend);

private:
    struct ItemEdits {
        Text path;
        std::vector<RenamePreview::Row> rows;
    };

    void ListPlaces(TextView title, const std::vector<PathRange>& places);
    bool MayOpen(const std::vector<ItemEdits>& items);
    int32_t ChangeIn(const ItemEdits& item, TextView oldName);

    Assistance& assistance_;
    DocumentServices& services_;
    OpenPath openPath_;
};

} // namespace nib
