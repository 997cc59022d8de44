#pragma once
// The frame and the forms beside it, as the logic sees them.

#include "base/DynamicArray.h"
#include "compare/MergeModel.h"
#include "documents/DocumentServices.h"

namespace nib {

class MenuModel;
class Program;
class modAutoRecover;
class mvDocument;

/// The frame as the program has it: loaded and unloaded with it.
class MainWindow : public Frame {
public:
    /// `program` outlives the window's use of it.
    virtual void Load(Program& program) = 0;
    virtual void Show() = 0;
    virtual void Unload() = 0;
    /// Enabled and checked states of all commands, afresh from the active document.
    virtual void UpdateToolBar() = 0;
    virtual MenuModel& Menus() = 0;
    /// Puts the child windows in order: 0 cascade, 1 tile horizontally, 2 tile vertically.
    virtual void Arrange(int32_t mode) = 0;
    /// Typing goes on while work is awaited, or waits as all else does that the user wants.
    virtual void LetType(bool) {}
    /// While work is awaited: `what` is done once that is over. Else answers false.
    virtual bool Postpone(const std::function<void()>& /*what*/) { return false; }
    // Windows that show no document of their own; their tabs have numbers below 0.
    virtual void ActivateGuest(int32_t /*tab*/) {}
    virtual void CloseGuest(int32_t /*tab*/) {}
    /// The tab of the one in front; 0 when there is none.
    virtual int32_t GuestInFront() const { return 0; }
    /// The document that it compares, which some commands are for then; 0 when there is none.
    virtual int32_t GuestDocument() const { return 0; }
};

/// What commands show.
enum class Form {
    Find,
    FindNext,
    FindBar,
    Replace,
    FindInAccount,
    Results,
    Settings,
    HelpTopics,
    About,
    Properties,
    Print,
    CompareStored,
    CompareOpened,
    CompareDocument,
    CompareItem,
    CompareCommitted
};

/// What commands want of forms. They live from Load to Unload.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual void Load(Program& program) = 0;
    virtual void Unload() = 0;
    /// `document` is the active one; forms that belong to no document do without.
    virtual void Show(Form form, mvDocument* document) = 0;
    /// `page` is a file of the help.
    virtual void ShowHelp(TextView /*page*/) {}
    /// Opens with `target`, which takes what was gone to.
    virtual void Goto(Text& target) = 0;
    /// What the user wants of a merge, with what was chosen in it. `name` is that of the document.
    virtual MergeAnswer Merge(MergeModel& /*merge*/, TextView /*name*/) { return MergeAnswer::Cancel; }
    /// The files of these names, which an earlier session left in the folder.
    virtual void OfferRecovered(modAutoRecover& recovery, TextView folder, const DynamicArray& names) = 0;
};

} // namespace nib
