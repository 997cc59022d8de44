#pragma once
// What a person does in a text component, and the components that do it: the one of this house and public ones.

#include <QAbstractScrollArea>

#include <memory>
#include <string>
#include <vector>

namespace nib::bench {

/// What the formatter does to a line: so many units go at a column, and blanks come.
struct BlankChange {
    int32_t line;
    int32_t column;
    int32_t removed;
    int32_t inserted;
};

inline constexpr char kFrequent[] = "ORDER.REC"; ///< in every third line
inline constexpr char kRare[] = ";* ";           ///< in every hundredth
inline constexpr char kPut[] = ";*--> ";

/// What is shown beside the text: nothing, all there is, what the settings say at first.
enum class Marks : uint8_t { None, All, Usual };

/// In a window of its own. After an edit of a few lines those in sight have their colours; ours has them everywhere.
class Editor {
public:
    virtual ~Editor() = default;
    virtual QAbstractScrollArea& Widget() = 0;
    /// What a file of this path holds, from the disk.
    virtual void Open(const std::string& path) = 0;
    virtual void ColourAll() {}
    virtual void Show(Marks) {}
    virtual void PutCaret(int32_t line) = 0;
    /// Answers how often the text is there, and knows then where.
    virtual size_t FindAll(const char* text, bool matchCase) = 0;
    /// Puts a text in place of each hit of the search before, and goes to the last one.
    virtual void ReplaceHits(const char* text) = 0;
    virtual void UndoReplace() { Undo(); }
    virtual void FoldAll(bool fold) = 0;
    /// Every line changes, and has its colours again.
    virtual void Reindent(const std::vector<BlankChange>& changes) = 0;
    virtual void UndoReindent() { Undo(); }
    virtual void Paste() = 0;
    virtual void Undo() = 0;
    virtual void Redo() {}
    /// Of this line, for a look whether all came out alike.
    virtual std::string Line(int32_t line) = 0;
};

std::unique_ptr<Editor> MakeOurs();
std::unique_ptr<Editor> MakeScintilla();
std::unique_ptr<Editor> MakePlainText();

/// What the formatter makes of the file.
std::vector<BlankChange> BlankChanges(const std::string& path);
/// All that is to be shown is shown.
void Settle(QWidget& widget);
void Show(QAbstractScrollArea& widget);
std::string WholeFile(const std::string& path);

} // namespace nib::bench
