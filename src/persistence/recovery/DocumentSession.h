#pragma once
// Which documents are open and how they are looked at, so that they come back after a crash or, if the user wants that,
// at the next start.

#include "documents/DocumentServices.h"
#include "platform/Desktop.h"
#include "platform/posix/FileSaver.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace nib {

struct DocumentState {
    Text path;
    bool readOnly = false;
    bool active = false;
    Position caret;
    int32_t firstLine = 0;          ///< the uppermost one in sight
    std::vector<int32_t> collapsed; ///< 0-based first lines of blocks
    std::vector<int32_t> bookmarks; ///< 0-based
    int32_t window = 0;             ///< as clsDocView::WindowState has it
    Text placement;                 ///< as clsDocView::Placement has it

    friend bool operator==(const DocumentState&, const DocumentState&) = default;
};

/// An ini section for each document; what is not understood is passed over. Lines are written as the user counts them.
std::string WriteStates(const std::vector<DocumentState>& states);
std::vector<DocumentState> ReadStates(std::string_view bytes);

/// Of a document that is an item or a file.
DocumentState StateOf(mvDocument& document);
void ApplyState(mvDocument& document, const DocumentState& state);

struct DocumentSessionPorts {
    DocumentServices& documents;
    FileSaver saver; ///< makes new files for the user alone
    Timers& timers;
    std::string folder; ///< made when it is first needed; empty: nothing is kept
    /// The name of this session, and whether another one of that name runs.
    std::function<Text()> name;
    std::function<bool(TextView name)> isAlive;
};

class DocumentSession {
public:
    explicit DocumentSession(DocumentSessionPorts ports) : ports_(std::move(ports)) {}

    /// Opens what sessions left that did not end by themselves and, with `last`, what was open at the last end; nobody
    /// is asked anything. Answers the names of those that could not be opened.
    std::vector<Text> Restore(bool last);
    /// What was open when the last session that had anything open ended by itself; again, whatever the user wants of
    /// starts. OpenLast answers as Restore does.
    std::vector<DocumentState> Last() const;
    std::vector<Text> OpenLast();
    /// Brings the window to the front that was there.
    void ActivateRestored();
    /// Keeps a file of the open documents from here on.
    void Start();
    void Save();
    /// The documents are about to be closed as the program ends; Forget when it does not.
    void Remember() { remembered_ = Present(); }
    void Forget() { remembered_.clear(); }
    /// A clean end: with `reopen` the next start finds what was open.
    void End(bool reopen);

private:
    std::vector<DocumentState> Present();
    /// Answers the names of those that could not be opened.
    std::vector<Text> ReopenAll(const std::vector<DocumentState>& states, std::set<Text>& silent);
    bool Reopen(const DocumentState& state, std::set<Text>& silent);
    /// False when the document cannot be had. Throws Error.
    bool OpenAgain(const DocumentState& state);
    std::string PathOf(TextView name) const;
    void Write(TextView name, const std::vector<DocumentState>& states);

    DocumentSessionPorts ports_;
    std::unique_ptr<Timers::Timer> timer_;
    std::vector<DocumentState> written_;
    std::vector<DocumentState> remembered_;
    std::vector<DocumentState> unreached_; ///< whose host did not answer when they were to be opened again
    std::weak_ptr<mvDocument> front_;
};

} // namespace nib
