#pragma once
// The laid-out lines round what is in sight. An entry is built when asked for and lives until its line changes.

#include "text/SourceDocument.h"
#include "text/widget/LineLayout.h"
#include "text/widget/ScreenColors.h"

#include <memory>
#include <unordered_map>

namespace nib {

struct LineEntry {
    LineLayout layout;
    std::vector<Token> tokens; ///< in shown columns
    /// Text in composition stands within the line: shown columns differ from the document's behind it.
    int32_t preeditAt = -1;
    int32_t preeditLength = 0;
    bool laidOut = false;
    bool styled = false;

    int32_t ToShown(int32_t column) const
    {
        return preeditAt >= 0 && column > preeditAt ? column + preeditLength : column;
    }
    int32_t FromShown(int32_t column) const;
};

class LineCache {
public:
    LineCache(SourceDocument& document, const ViewMetrics& metrics, const ScreenColors& colors)
        : document_(document), metrics_(metrics), colors_(colors)
    {
    }

    /// 0: no wrap. Forgets all lines when it changes.
    void SetWrapWidth(qreal width);
    qreal WrapWidth() const { return wrapWidth_; }
    /// An empty text ends the composition.
    void SetPreedit(Position at, TextView text);

    /// Good for measuring; does not scan. A reference lives until the next call.
    LineEntry& Measured(int32_t line);
    /// Good for painting: scanned, with tokens.
    LineEntry& Styled(int32_t line);
    /// What is shown of a line, valid until the next call or edit.
    TextView ShownText(int32_t line);

    /// The lines are built anew when asked for; entries that the caller still holds stay.
    void Invalidate(int32_t first, int32_t last);
    void Clear() { entries_.clear(); }

private:
    LineEntry& Find(int32_t line);
    void LayOut(int32_t line, LineEntry& entry);
    void MakeRoomForPreedit(LineEntry& entry) const;
    QList<QTextLayout::FormatRange> Formats(const std::vector<Token>& tokens) const;

    SourceDocument& document_;
    const ViewMetrics& metrics_;
    const ScreenColors& colors_;
    std::unordered_map<int32_t, std::unique_ptr<LineEntry>> entries_;
    qreal wrapWidth_ = 0;
    Position preeditAt_;
    Text preedit_;
    Text scratch_;
    Text composed_;
};

} // namespace nib
