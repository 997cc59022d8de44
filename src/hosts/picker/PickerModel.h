#pragma once
#include "base/Text.h"
#include "hosts/ItemBrowser.h"
#include "hosts/picker/PickerList.h"

#include <map>
#include <vector>

namespace nib {

/// The names in what was typed: with `several`, a text that begins with a quote is a list of names in quotes ("A" "B
/// C", words without quotes between them count too); any other text is one name, blanks and all. One pair of quotes
/// around a single name is taken off.
std::vector<Text> SplitTypedNames(TextView typed, bool several);

/// The reverse: one name as it is, several in quotes.
Text JoinTypedNames(const std::vector<Text>& names);

// The item picker without its widgets: where it stands, what is typed or selected, and what OK does.

struct PlaceStep {
    Text name;
    Text path;
};

class PickerModel {
public:
    /// What an OK led to.
    enum class Outcome { Stays, Moves, Answers };

    /// `browser` outlives the model.
    PickerModel(SelectRequest request, ItemBrowser& browser);
    /// Begins at the nearest place above when the start cannot be read, and says so.
    void Start(TextView startPath);

    const SelectRequest& Request() const { return request_; }
    bool IsSaving() const { return request_.mode == u"Save" || request_.mode == u"Export"; }
    /// True when the user is expected to begin with the name rather than with the list.
    bool BeginsWithName() const { return IsSaving() || (request_.startNamed && selected_.empty()); }

    // Where it stands. The empty path is the list of all places.
    const Text& Place() const { return place_; }
    /// From the outermost place down to this one.
    const std::vector<PlaceStep>& Trail() const { return trail_; }
    bool CanGoUp() const { return !place_.empty(); }
    bool CanGoBack() const { return !history_.empty(); }
    /// False, with a message, when the place cannot be read; the picker then stays where it is.
    bool GoTo(TextView path);
    /// The place left is selected.
    void GoUp();
    void GoBack();
    void Refresh();
    /// The connections are others now: what is known of them goes.
    void Renew();
    /// One line for the user; empty when all is well.
    const Text& Message() const { return message_; }

    // What it lists.
    const PickerList& List() const { return list_; }
    void SetFilter(TextView filter);
    void SetShowHidden(bool show);
    void SortBy(PickerList::Column column, bool descending);
    /// As PickerList::AskNextLock.
    int32_t AskNextLock(int32_t first, int32_t last) { return list_.AskNextLock(browser_, first, last); }

    // What is chosen: rows or a typed name, whichever was touched last.
    void SelectRows(const std::vector<int32_t>& rows);
    std::vector<int32_t> SelectedRows() const;
    void TypeName(TextView name);
    const Text& Name() const { return name_; }
    /// Stands for a name where too many are selected to spell them out.
    Text NameHint() const;
    void SetReadOnly(bool readOnly) { answer_.readOnly = readOnly; }
    bool CanAccept() const { return !selected_.empty() || !Trim(name_).empty(); }
    /// Caption of OK with its access key: "&Open" while it would only go into a place.
    Text AcceptCaption() const;
    Outcome Accept();
    /// Enter in the filter: takes the only row that is left.
    Outcome AcceptFilter();
    const PickerAnswer& Answer() const { return answer_; }

private:
    struct Target {
        Text path;
        bool isPlace = false;
        bool exists = false;
    };

    std::vector<BrowseEntry> Read(TextView path);
    Text Above(TextView path) const;
    bool Enter(TextView path);
    /// The place itself, or the first one above it that can be read; says why it is not the place.
    void EnterNearest(Text path);
    void Show(std::vector<BrowseEntry> entries);
    void SelectPath(TextView path);
    void DropUnseenSelection();
    Outcome AcceptRows();
    Outcome AcceptNames();
    Target FindTyped(const Text& name);
    Target Locate(Text path);

    SelectRequest request_;
    ItemBrowser& browser_;
    Text place_;
    std::vector<PlaceStep> trail_;
    std::vector<Text> history_;
    /// Names of the host places seen so far, by path.
    std::map<Text, Text, std::less<>> placeNames_;
    Text message_;
    PickerList list_;
    /// Positions in list_.Entries().
    std::vector<int32_t> selected_;
    Text name_;
    bool nameIsSelection_ = false;
    PickerAnswer answer_;
};

} // namespace nib
