#pragma once
// What frmAutoRecover shows and does, without a screen.

#include "persistence/recovery/JournalFile.h"
#include "persistence/recovery/modAutoRecover.h"
#include "platform/posix/KeptCopies.h"

#include <optional>

namespace nib {

/// A document that can be had back, from its recovery copy, its journal, or both; or a file whose save was cut short,
/// with its old content.
struct RecoveryRow {
    Text document;
    Text place; ///< account and connection of an item, folder of a file; empty where that is not known
    Text path;  ///< of the item or file that it would go back to; empty where that is not known
    Text lines;
    Text saved; ///< when it was last written, as the user writes dates
    bool checked = true;
    Text copy;           ///< name of the recovery copy; empty when there is none
    std::string journal; ///< name of the journal; empty when there is none
    std::optional<KeptCopy> kept;
};

/// What is stored in the place of a row, and what would be put there. Notes are in the user's language where ShownTexts
/// has them.
struct RecoveryComparison {
    Text name;
    std::shared_ptr<mvItem> item; ///< null when nothing is stored
    ReadText stored;
    Text storedNote;
    ReadText recovered;
    Text recoveredNote;
};

/// How the form was left.
enum class RecoveryChoice { Cancel, Recover, Delete };

class RecoveryList {
public:
    explicit RecoveryList(modAutoRecover& recovery) : recovery_(recovery) {}

    /// A row for each document of which something can be read; a journal and the copy that it names are one.
    void Load(TextView folder, const DynamicArray& names);
    /// Shows the form for as long as there are rows and it is not cancelled.
    void Run(const std::function<RecoveryChoice()>& showModal);

    const std::vector<RecoveryRow>& Rows() const { return rows_; }
    void SetChecked(size_t row, bool checked) { rows_.at(row).checked = checked; }
    void CheckAll(bool checked);
    bool AnyChecked() const;
    /// A document that was never stored has nothing beside it.
    bool CanCompare(size_t row) const { return row < rows_.size() && !rows_[row].path.empty(); }
    /// Reads both texts of the row, under no lock, for `show`. What cannot be read is told.
    void Compare(size_t row, const std::function<void(RecoveryComparison)>& show);
    /// Asks the user; true for Yes.
    bool ConfirmDelete();

    /// Opens each checked one, in its place where that can be. Those that fail stay in the list.
    void RecoverChecked();
    /// Takes all rows off. The files become this session's and go at its clean end; a crash brings them back.
    void DeleteListed();

private:
    struct Written {
        JournalText content;
        int64_t at = 0; ///< seconds since the epoch
    };

    void AddRow(const Written& written, Text copy, std::string journal);
    void AddKept(const KeptCopy& kept);
    bool PutBack(const KeptCopy& kept);
    bool Recover(const RecoveryRow& row);
    std::optional<Written> Read(const RecoveryRow& row);
    RecoveryComparison ReadBoth(const RecoveryRow& row);
    std::optional<Written> ReadCopy(TextView name);
    std::optional<Written> ReadJournal(const std::string& name);
    /// Of a journal and a copy the newer, with what the journal knows of the place.
    std::optional<Written> Newest(const std::optional<Written>& own, TextView copy);
    /// Names that are empty though the row's are not could not be adopted.
    AdoptedFiles Adopt(const RecoveryRow& row);
    DocumentServices& Documents() { return recovery_.Ports().documents; }

    modAutoRecover& recovery_;
    Text folder_;
    std::vector<RecoveryRow> rows_;
};

} // namespace nib
