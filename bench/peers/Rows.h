#pragma once
#include "Editor.h"

#include <span>

namespace nib::bench {

/// One editor with one text, from its opening on.
struct Session {
    Editor& editor;
    const std::string& path;
    int32_t lines;
    const std::vector<BlankChange>& blanks;

    void PutCaret(int32_t line) { editor.PutCaret(line), Settle(editor.Widget()); }
    void Press(Qt::Key key, const QString& text);
    void Page();
};

enum class Count : uint8_t {
    Ms,      ///< processor time of the process
    MsOnTop, ///< with that of the row above
    MsMore,  ///< what something more costs than the row above
    Worst,   ///< the 99th in a hundred of the row above
    MiB,     ///< after the first row
    MostMiB, ///< while it ran
};

/// One thing that a person waits for. Rows run in their order; each finds the text as those before have left it.
struct Row {
    const char* name;
    Count count;
    /// The same at any size of the text; else it grows with it.
    bool flat;
    double limit; ///< what the bare work takes at a million lines, 0 where that is not known
    double goal;  ///< of the best peer's, 0 for none
    int32_t times;
    void (*ready)(Session& session, int32_t time); ///< not measured; may be null
    void (*run)(Session& session);
};

std::span<const Row> Rows();

/// Texts of sizes that nobody should have, here alone: prints what they take.
int BadSizes();

} // namespace nib::bench
