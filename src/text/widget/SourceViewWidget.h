#pragma once
// The view on the screen: paints a SourceView and feeds it with keys, mouse, drops and input methods.

#include "text/SourceView.h"
#include "text/widget/AccessibleText.h"
#include "text/widget/Glide.h"
#include "text/widget/LineCache.h"
#include "text/widget/LinePainter.h"
#include "text/widget/MarginNotes.h"
#include "text/widget/MouseHandler.h"
#include "text/widget/ScrollMarks.h"
#include "text/widget/Underlines.h"
#include "text/widget/ViewLights.h"

#include <QAbstractScrollArea>
#include <QTimer>

namespace nib {

class SourceViewWidget final : public QAbstractScrollArea, public ViewHost, public BufferListener {
    Q_OBJECT

public:
    /// Both outlive the widget.
    SourceViewWidget(SourceDocument& document, Clipboard& clipboard, QWidget* parent = nullptr);
    ~SourceViewWidget() override;

    SourceView& Model() { return model_; }
    /// The text as assistive tools know it.
    AccessibleText& ForTools() { return forTools_; }

    enum class Zone { Margin, Blocks, Content };
    Zone ZoneAt(QPointF point) const;
    /// Caret place nearest to a point of the viewport; with `covering` the character under it.
    Position PositionAt(QPointF point, bool covering = false) { return Settled().PositionAt(point, covering); }
    /// Cell of the character at a place in the viewport, empty when out of sight.
    QRectF CellOf(Position p) { return Settled().CellOf(p); }
    QRectF CaretRect() { return Settle(), CaretBox(); }
    /// The cell nearest to a point, which may be behind the end of its line.
    CellPlace CellAt(QPointF point) { return Settled().CellAt(point); }
    ScreenStyle StyleAt(Position p, int32_t& start, int32_t& end);

    /// Steps of one point on the font's size.
    int Zoom() const { return zoom_; }
    void SetZoom(int steps);
    void ScrollRows(int32_t rows);
    void ScrollPixels(QPointF delta);
    void RevealPlace(Position p, int32_t beyond = 0);
    /// Does what scrolls, and shows the way there if the user likes to see it.
    void ScrollSmoothly(const std::function<void()>& scroll);
    ScrollMarks& Marks() { return *scrollMarks_; }
    /// What is wrong in the text: waves, bars in the margin, marks beside the scroll bar.
    void SetUnderlines(std::vector<Underline> underlines);
    /// Lines, ascending, whose numbers are marked as wrong.
    void SetMarkedLines(std::vector<int32_t> lines);
    bool IsMarked(int32_t line) const { return underlines_.IsMarked(line); }
    const std::vector<Underline>& ShownUnderlines() const { return underlines_.All(); }
    /// In a column of the margin that is as wide as they need.
    void SetNotes(std::vector<MarginNote> notes);
    const MarginNotes& Notes() const { return notes_; }
    /// Pastes the desktop's primary selection.
    void PastePrimary(Position at);
    /// Makes the selection the desktop's primary selection, at once.
    void PublishSelection();
    void ToggleBlock(int32_t line);
    /// For the context menu at the caret.
    void AskForMenu();
    /// Where a dragged text would go; none takes the mark away.
    void ShowDropCaret(std::optional<Position> at);

    // ViewHost
    int32_t LineHeight() const override;
    int32_t PageLines() const override;
    void GetFirstVisible(int32_t& line, int32_t& column) override;
    void SetFirstVisible(int32_t line, int32_t column) override;
    void EnsureCaretVisible() override;
    void EnsureCaretVisibleSoon() override;
    void SelectionChanged(int32_t firstLine, int32_t lastLine) override;
    void AppearanceChanged() override;
    bool MoveRows(Position& at, int32_t rows, double& goal) const override;
    bool RowOf(Position at, int32_t& first, int32_t& last) const override;
    int32_t CellsBefore(Position at) const override;
    int32_t ColumnAtCell(int32_t line, int32_t cell) const override;

    // BufferListener
    void TextChanged(const TextChange& change) override;
    void TextReset() override;
    void LinesRepaint(int32_t first, int32_t last) override;
    void FoldingChanged() override;
    void ModifiedChanged(bool modified) override;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

signals:
    void subValueRequested();                 ///< Ctrl+\ .
    void valueRequested();                    ///< Ctrl+]
    void contextMenuRequested(QPoint global); ///< by other means than the mouse, which mouseReleased tells of
    void mousePressed(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at);
    void mouseReleased(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at);
    void mouseDoubleClicked(QPointF at);
    void zoomChanged(int steps);
    void focused();
    void lookChanged(); ///< of the model

protected:
    bool event(QEvent* event) override;
    /// Tab is for typing.
    bool focusNextPrevChild(bool /*next*/) override { return false; }
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    friend class MouseHandler; ///< a drag ends in the handler of the pane that it came from
    struct Change {
        int32_t first = -1;
        int32_t last = -1;
        bool scrolled = false;
    };

    void BuildColors();
    void UpdateBars();
    void UpdateVerticalBar();
    /// What edits left to be done once: the caret scrolled into sight, the width of what is in sight measured.
    void Settle();
    void SettleSoon();
    ViewGeometry& Settled() { return Settle(), geometry_; }
    QRectF CaretBox();
    QRectF CaretBoxAt(Position caret, int32_t beyond, int32_t shownOffset);
    /// Calls `visit(box)` for the carets in the lines in sight.
    template <typename Visit>
    void ForEachCaret(Visit&& visit);
    /// Repaints what a scroll brought in, moving the rest.
    void Scrolled(ViewGeometry::Place old);
    void ShowChange(int32_t first, int32_t last);
    void TellBar();
    void UpdateLines(int32_t first, int32_t last);
    void UpdateCaret();
    void UpdateMargin();
    void RestartBlink();
    void Blink();
    void PaintText(QPainter& painter, const QRectF& dirty);
    void PaintMargin(QPainter& painter, const QRectF& dirty);
    void PaintCarets(QPainter& painter);
    PaintedLine Describe(int32_t line, qreal y, const QRectF& clip);
    void DescribeSelections(int32_t line, PaintedLine& painted);
    /// What is lit has to be looked up anew: soon, and the name at the caret when it rests there.
    void LightsStale();
    void TakeName();
    /// Scans what is in sight before any of it is painted.
    void ScanVisible(const QRectF& dirty);
    void ScanIdle();
    void CommitPreedit();
    void SetPreedit(const QInputMethodEvent& event);

    SourceDocument& document_;
    Clipboard& clipboard_;
    SourceView model_;
    ViewMetrics metrics_;
    ScreenColors colors_;
    SignPainter signs_;
    LineCache cache_;
    mutable ViewGeometry geometry_;
    ViewLights lights_;
    Underlines underlines_;
    MarginNotes notes_;
    ScrollMarks* scrollMarks_; ///< the area's own
    Glide glide_;
    LinePainter linePainter_;
    MarginPainter marginPainter_;
    MouseHandler mouse_;
    AccessibleText forTools_;
    QTimer blinkTimer_;
    QTimer scanTimer_;
    QTimer primaryTimer_;
    QTimer nameTimer_;
    QString preedit_;
    int32_t preeditCursor_ = 0;
    std::optional<Position> dropCaret_;
    std::vector<ColumnRange> selections_; ///< of the line being painted
    QPointF wheelRest_;
    int zoom_ = 0;
    Change changed_;           ///< by the edits of the present step, not yet shown
    int32_t scannedFirst_ = 0; ///< lines whose looks changed while painting
    int32_t scannedLast_ = -1;
    bool painting_ = false;
    bool syncing_ = false;
    bool caretOn_ = true;
    bool caretWanted_ = false; ///< in sight, when the edits are through
    bool barsStale_ = false;
    bool settling_ = false;  ///< is asked for
    bool nameMoved_ = false; ///< the caret, since the timer runs
};

} // namespace nib
