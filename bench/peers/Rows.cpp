#include "Rows.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QThread>

#include <stdexcept>

namespace nib::bench {

void Settle(QWidget& widget)
{
    QApplication::processEvents();
    // The platform would wait some milliseconds for more to paint.
    QEvent update(QEvent::UpdateRequest);
    QApplication::sendEvent(widget.window(), &update);
    QApplication::processEvents();
}

void Show(QAbstractScrollArea& widget)
{
    widget.resize(800, 600);
    widget.show();
    widget.setFocus();
    Settle(widget);
}

void Session::Press(Qt::Key key, const QString& text)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&editor.Widget(), &event);
    Settle(editor.Widget());
}

void Session::Page()
{
    editor.Widget().verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    Settle(editor.Widget());
}

namespace {

constexpr int32_t kKeysALine = 20; ///< more would scroll sideways

void Key(Session& s)
{
    s.Press(Qt::Key_X, QStringLiteral("x"));
}

/// Writes on into the next line in time.
template <int kPart>
void CaretInPart(Session& s, int32_t time)
{
    if (time % kKeysALine == 0) s.PutCaret(s.lines / 10 * kPart + time / kKeysALine);
}

void ShowAllMarks(Session& s, int32_t time)
{
    if (time > 0) return;
    // Behind a name that stands in every third line; the marks come when nobody types.
    constexpr int kBehindName = 9;
    s.editor.Show(Marks::All);
    s.PutCaret(1);
    s.Press(Qt::Key_End, {});
    for (int i = 0; i < kBehindName; ++i) s.Press(Qt::Key_Left, {});
    for (int wait = 0; wait < 10; ++wait) {
        QThread::msleep(20);
        Settle(s.editor.Widget());
    }
}

template <typename Body>
void Shown(Session& s, Body&& body)
{
    body(s.editor);
    Settle(s.editor.Widget());
}

void Find(Session& s, bool matchCase)
{
    if (s.editor.FindAll(kFrequent, matchCase) == 0) throw std::runtime_error("nothing was found");
}

} // namespace

std::span<const Row> Rows()
{
    constexpr auto kMs = Count::Ms;
    static constexpr Row kRows[] = {
        {"from the file to the first painted page", kMs, false, 70, 0.45, 1, nullptr,
         [](Session& s) { s.editor.Open(s.path), s.editor.Widget().viewport()->repaint(); }},
        {"memory, MiB", Count::MiB, false, 37, 0.7, 0, nullptr, nullptr},
        {"memory at its peak, MiB", Count::MostMiB, false, 37, 0.7, 0, nullptr, nullptr},
        {"all coloured and folded, from the file", Count::MsOnTop, false, 132, 0.25, 1, nullptr,
         [](Session& s) { s.editor.ColourAll(); }},
        {"a page down", kMs, true, 0.6, 0.35, 60, nullptr, [](Session& s) { s.Page(); }},
        {"the same with every mark shown", Count::MsMore, true, 0, 0, 60, ShowAllMarks, [](Session& s) { s.Page(); }},
        {"find all, in this case", kMs, false, 8, 0.12, 1,
         [](Session& s, int32_t) { s.editor.Show(Marks::Usual), Settle(s.editor.Widget()); },
         [](Session& s) { Find(s, true); }},
        {"find all, in any case", kMs, false, 28, 0.06, 1, nullptr, [](Session& s) { Find(s, false); }},
        {"fold all", kMs, false, 0, 0.08, 1, nullptr, [](Session& s) { Shown(s, [](Editor& e) { e.FoldAll(true); }); }},
        {"unfold all", kMs, false, 0, 0.08, 1, nullptr,
         [](Session& s) { Shown(s, [](Editor& e) { e.FoldAll(false); }); }},
        {"replace in every hundredth line", kMs, false, 27, 0.1, 1,
         [](Session& s, int32_t) { s.editor.FindAll(kRare, true); },
         [](Session& s) { Shown(s, [](Editor& e) { e.ReplaceHits(kPut); }); }},
        {"undo of that at once", kMs, false, 0, 0.5, 1, nullptr,
         [](Session& s) { Shown(s, [](Editor& e) { e.UndoReplace(); }); }},
        {"re-indent every line", kMs, false, 71, 0.2, 1, nullptr,
         [](Session& s) { Shown(s, [&s](Editor& e) { e.Reindent(s.blanks); }); }},
        {"undo of that", kMs, false, 71, 0.25, 1, nullptr,
         [](Session& s) { Shown(s, [](Editor& e) { e.UndoReindent(); }); }},
        {"paste of 5,000 lines in the middle", kMs, true, 0, 0.5, 5, CaretInPart<5>,
         [](Session& s) { Shown(s, [](Editor& e) { e.Paste(); }); }},
        {"undo of that", kMs, true, 0, 0.5, 5, nullptr, [](Session& s) { Shown(s, [](Editor& e) { e.Undo(); }); }},
        {"a key at the top", kMs, true, 0.02, 0.5, 200, CaretInPart<0>, Key},
        {"a key in the middle", kMs, true, 0.02, 0.08, 200, CaretInPart<5>, Key},
        {"the same, the slowest of 100", Count::Worst, true, 0.02, 0.2, 0, nullptr, nullptr},
        {"Return in the middle", kMs, true, 0, 0.2, 20,
         [](Session& s, int32_t time) { s.PutCaret(s.lines / 2 + time * 3); },
         [](Session& s) { s.Press(Qt::Key_Return, QStringLiteral("\r")); }},
    };
    return kRows;
}

} // namespace nib::bench
