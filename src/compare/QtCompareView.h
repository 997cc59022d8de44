#pragma once
// Two texts side by side, line beside line, with the keys and clicks that go from change to change and take them over.

#include "compare/QtComparePainter.h"

#include <QAbstractScrollArea>
#include <QCoreApplication>

#include <optional>

namespace nib {

class CompareBar;

class QtCompareView final : public QAbstractScrollArea {
    Q_DECLARE_TR_FUNCTIONS(QtCompareView)
public:
    /// `model` outlives the view.
    explicit QtCompareView(CompareModel& model, QWidget* parent = nullptr);

    /// Rows or texts are others now.
    void Refresh();
    /// To the next change; false when there is none.
    bool Step(bool backward);
    bool CanStep(bool backward) const { return model_.Rows().NextChange(row_, backward) >= 0; }
    /// The change of the row that the keys go to; -1 for none.
    int32_t Change() const;
    void Take(Beside into);
    Beside Side() const { return side_; }
    /// Between the texts, for what stands above them.
    int GutterWidth() const { return static_cast<int>(painter_.Places(viewport()->width()).gutter); }
    /// Line of the present row on the present side; -1 for none.
    int32_t Line() const;

    /// The row or side that the keys go to is another now.
    std::function<void()> onMove;
    /// The line is wanted in its document.
    std::function<void(Beside side, int32_t line)> onOpen;

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Arrow {
        int32_t change;
        Beside into;
        friend bool operator==(const Arrow&, const Arrow&) = default;
    };
    struct KeyRow {
        int key;
        Qt::KeyboardModifiers modifiers;
        void (QtCompareView::*act)();
    };
    static const KeyRow kKeys[];

    void BuildLook();
    void UpdateBars();
    int PageRows() const;
    int32_t RowAt(qreal y) const;
    std::optional<Arrow> ArrowAt(QPointF point) const;
    void GoTo(int32_t row, bool wholeChange = false);
    void Tell();
    QString Spoken() const;
    const KeyRow* KeyFor(const QKeyEvent& event) const;

    // What keys do
    template <int Rows>
    void Move()
    {
        GoTo(row_ + Rows);
    }
    template <int Pages>
    void Page()
    {
        GoTo(row_ + Pages * std::max(PageRows() - 1, 1));
    }
    void First() { GoTo(0); }
    void Last() { GoTo(model_.Rows().Count() - 1); }
    template <bool Backward>
    void StepKey()
    {
        Step(Backward);
    }
    template <Beside Into>
    void TakeKey()
    {
        Take(Into);
    }
    template <Beside To>
    void Choose();
    template <int Columns>
    void Scroll();
    void OpenRow();
    void Copy();
    void Undo();
    void Redo();

    CompareModel& model_;
    QtComparePainter painter_;
    CompareBar* bar_; ///< owned by Qt
    int32_t row_ = 0;
    int32_t line_ = -1; ///< that the user went to on that side; its row may be folded by now
    Beside side_ = Beside::Right;
    std::optional<Arrow> hot_;
    bool begun_ = false; ///< the first change was shown
};

} // namespace nib
