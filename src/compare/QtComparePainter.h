#pragma once
// Paints rows of two texts side by side.

#include "compare/CompareModel.h"
#include "text/widget/LinePainter.h"

#include <QCoreApplication>

#include <array>

namespace nib {

/// Where the parts of a row stand.
struct ComparePlaces {
    qreal width = 0;  ///< of all
    qreal gutter = 0; ///< between the panes
    std::array<qreal, 2> margin{};

    qreal PaneWidth() const { return (width - gutter) / 2; }
    qreal PaneLeft(Beside side) const { return side == Beside::Left ? 0 : PaneWidth() + gutter; }
    QRectF Pane(Beside side, qreal top, qreal height) const { return {PaneLeft(side), top, PaneWidth(), height}; }
    QRectF Gutter(qreal top, qreal height) const { return {PaneWidth(), top, gutter, height}; }
    /// The arrow that takes a change, in its first row.
    QRectF Arrow(Beside into, qreal top, qreal height) const;
};

/// What of a row is more than its texts.
struct CompareRowLook {
    int32_t row = 0;
    qreal top = 0;
    qreal left = 0;         ///< by which the texts are scrolled
    bool current = false;   ///< the keys go to it
    bool ofCurrent = false; ///< it is of the change that they go to
    Beside side = Beside::Right;
    std::optional<Beside> hot; ///< the arrow under the mouse
};

class QtComparePainter {
    Q_DECLARE_TR_FUNCTIONS(QtComparePainter)
public:
    explicit QtComparePainter(CompareModel& model);

    /// Font and colours anew.
    void Build(const QPalette& palette);
    /// Texts have changed.
    void Forget();
    ComparePlaces Places(qreal width) const;
    qreal LineHeight() const { return metrics_.LineHeight(); }
    qreal CharWidth() const { return metrics_.CharWidth(); }
    const QColor& Ground() const { return panes_[0]->plain.base; }
    QColor ChangeColor(BlockKind kind) const;
    /// The widest text that was painted.
    qreal Widest() const { return widest_; }

    void Paint(QPainter& painter, const ComparePlaces& places, const CompareRowLook& look);
    /// Of a row that lines stand behind; never for one alone.
    static QString FoldText(int32_t folded);

private:
    struct Tint {
        QColor row;
        QColor words;
        QColor edge;
    };
    /// Colours of the text on each ground that it stands on, so that it can be read there.
    struct Pane {
        Pane(SourceDocument& lines, const ViewMetrics& metrics) : cache(lines, metrics, plain) {}
        ScreenColors plain;
        ScreenColors tinted;
        LineCache cache;
    };

    void BuildTint(Tint& tint, const QColor& hue, bool dark) const;
    const Tint* TintOf(const CompareRow& row, const LineBlock& block) const;
    void PaintPane(QPainter& painter, const ComparePlaces& places, const CompareRowLook& look, Beside side,
                   const Tint* tint);
    void PaintText(QPainter& painter, const QRectF& area, const CompareRowLook& look, Beside side, const Tint* tint);
    void PaintMargin(QPainter& painter, const QRectF& area, const CompareRowLook& look, Beside side);
    void PaintFold(QPainter& painter, const ComparePlaces& places, const CompareRowLook& look);
    void PaintGutter(QPainter& painter, const ComparePlaces& places, const CompareRowLook& look, const Tint* tint);
    void PaintArrow(QPainter& painter, const QRectF& place, Beside into, bool hot) const;
    int32_t LineOf(int32_t row, Beside side) const;

    CompareModel& model_;
    ViewMetrics metrics_;
    SignPainter signs_;
    std::array<std::unique_ptr<Pane>, 2> panes_;
    std::array<Tint, 3> tints_; ///< changed, left alone, right alone
    QPalette palette_;
    qreal widest_ = 0;
};

} // namespace nib
