#pragma once
// What a person would call cut off, covered or out of sight in a window, told from the window's own widgets.

#include <QtWidgets>

namespace nib::test {

inline QString WordsOf(const QWidget& widget)
{
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(&widget)) return box->title();
    if (const auto* list = qobject_cast<const QComboBox*>(&widget)) return list->currentText();
    return {};
}

inline QString Called(const QWidget& widget)
{
    QStringList words{QLatin1String(widget.metaObject()->className())};
    for (const QString& word : {widget.objectName(), widget.accessibleName(), WordsOf(widget)})
        if (!word.isEmpty()) words += QLatin1Char('"') + word.left(40) + QLatin1Char('"');
    return words.join(QLatin1Char(' '));
}

/// A measure in both directions.
inline QString Measured(const QSize& size)
{
    return QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
}

class Room {
public:
    explicit Room(const QWidget& window) : window_(window) {}

    /// One line for each fault.
    QStringList Faults()
    {
        for (const QWidget* widget : window_.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->window() != &window_) continue;
            const QRect seen = Seen(*widget);
            if (seen.isEmpty()) continue;
            Words(*widget);
            if (const auto* area = qobject_cast<const QScrollArea*>(widget)) Sideways(*area);
            if (const auto* own = qobject_cast<const QMdiSubWindow*>(widget)) InItsFrame(*own);
            if (!IsControl(*widget)) continue;
            Inside(*widget);
            Covered(*widget, seen);
            controls_.emplace_back(widget, seen);
        }
        return faults_;
    }
    /// The same of the window's own place.
    QStringList OnScreen()
    {
        const QRect screen = window_.screen()->availableGeometry();
        // Not by the widget, which at twice the size may take its frame for nothing.
        const QRect framed = window_.geometry().marginsAdded(window_.windowHandle()->frameMargins());
        if (!screen.contains(framed)) {
            Say(window_, QStringLiteral("at %1, %2 as large as %3 on a screen of %4")
                             .arg(framed.x())
                             .arg(framed.y())
                             .arg(Measured(framed.size()), Measured(screen.size())));
        }
        return faults_;
    }

private:
    /// Styles let frames touch.
    static constexpr int kTouch = 3;

    void Say(const QWidget& widget, const QString& what) { faults_ += Called(widget) + QStringLiteral(": ") + what; }
    void Fits(const QWidget& widget, const QString& text, int room)
    {
        const int wanted = widget.fontMetrics().size(Qt::TextShowMnemonic | Qt::TextSingleLine, text).width();
        if (wanted > room) Say(widget, QStringLiteral("\"%1\" takes %2, has %3").arg(text).arg(wanted).arg(room));
    }

    /// Part of the window that shows of the widget.
    QRect Seen(const QWidget& widget) const
    {
        QRect seen = widget.rect();
        const QWidget* at = &widget;
        for (; at != &window_; at = at->parentWidget()) seen = seen.translated(at->pos()) & at->parentWidget()->rect();
        return seen;
    }
    static bool IsControl(const QWidget& widget)
    {
        if (const auto* label = qobject_cast<const QLabel*>(&widget))
            return !label->text().isEmpty() || !label->pixmap().isNull();
        return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
               qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget) ||
               qobject_cast<const QAbstractItemView*>(&widget) || qobject_cast<const QTextEdit*>(&widget) ||
               qobject_cast<const QPlainTextEdit*>(&widget) || qobject_cast<const QTabBar*>(&widget) ||
               qobject_cast<const QGroupBox*>(&widget);
    }
    template <typename Kind>
    static const Kind* Holder(const QWidget& widget)
    {
        for (const QWidget* at = widget.parentWidget(); at; at = at->parentWidget())
            if (const auto* found = qobject_cast<const Kind*>(at)) return found;
        return nullptr;
    }

    void Words(const QWidget& widget)
    {
        const auto* label = qobject_cast<const QLabel*>(&widget);
        if (!WordsOf(widget).isEmpty() && !qobject_cast<const QComboBox*>(&widget)) {
            QSize wanted = widget.minimumSizeHint();
            if (label && label->wordWrap()) wanted = {0, label->heightForWidth(label->width())};
            if (widget.width() < wanted.width() || widget.height() < wanted.height())
                Say(widget, QStringLiteral("%1, wants %2").arg(Measured(widget.size()), Measured(wanted)));
        }
        if (const auto* line = qobject_cast<const QLineEdit*>(&widget);
            line && line->text().isEmpty() && !line->placeholderText().startsWith(u'/'))
            Fits(widget, line->placeholderText(), widget.width());
        if (const auto* list = qobject_cast<const QComboBox*>(&widget); list && !list->isEditable())
            Fits(widget, list->currentText(), widget.width() - widget.height() / 2);
        if (const auto* dock = qobject_cast<const QDockWidget*>(&widget))
            Fits(widget, dock->windowTitle(), widget.width());
        if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            for (int i = 0; i < tabs->count(); ++i) Fits(widget, tabs->tabText(i), tabs->tabRect(i).width());
        }
        if (const auto* heads = qobject_cast<const QHeaderView*>(&widget)) {
            for (int i = 0; i < heads->count(); ++i)
                if (heads->orientation() == Qt::Horizontal && !heads->isSectionHidden(i))
                    Fits(widget, heads->model()->headerData(i, Qt::Horizontal).toString(), heads->sectionSize(i));
        }
    }

    /// Down is what everybody scrolls; sideways hides the ends of fields that nobody looks for.
    void Sideways(const QScrollArea& area)
    {
        const int room = area.viewport()->width();
        if (!area.widget() || area.widget()->width() <= room) return;
        // The innermost that asks for as much, be it on another page.
        const QWidget* widest = area.widget();
        for (const QWidget* widget : area.widget()->findChildren<QWidget*>())
            if (widget->minimumSizeHint().width() > room * 9 / 10 && widest->isAncestorOf(widget)) widest = widget;
        Say(area, QStringLiteral("is scrolled sideways: %1 in %2, of it %3 for %4")
                      .arg(area.widget()->width())
                      .arg(room)
                      .arg(widest->minimumSizeHint().width())
                      .arg(Called(*widest)));
    }

    /// A window that has the frame to itself and asks for more than that has is cut.
    void InItsFrame(const QMdiSubWindow& own)
    {
        const QSize room = own.parentWidget()->size();
        if (own.isMaximized() && (own.width() > room.width() || own.height() > room.height()))
            Say(own,
                QStringLiteral("\"%1\" takes %2, has %3").arg(own.windowTitle(), Measured(own.size()), Measured(room)));
    }

    void Inside(const QWidget& widget)
    {
        if (Holder<QTabBar>(widget)) return; // which scrolls what it has no room for
        const QWidget& parent = *widget.parentWidget();
        const auto* area = qobject_cast<const QAbstractScrollArea*>(parent.parentWidget());
        const bool scrolls = area && area->viewport() == &parent;
        if (!scrolls && !parent.rect().adjusted(-kTouch, -kTouch, kTouch, kTouch).contains(widget.geometry()))
            Say(widget, QStringLiteral("leaves %1").arg(Called(parent)));
    }

    void Covered(const QWidget& widget, const QRect& seen)
    {
        for (const auto& [other, place] : controls_) {
            if (other->isAncestorOf(&widget) || widget.isAncestorOf(other)) continue;
            // Windows in the frame lie on each other as their user likes.
            if (Holder<QMdiSubWindow>(widget) != Holder<QMdiSubWindow>(*other)) continue;
            // Tabs that are too many for their row go below its arrows.
            if (const auto* row = Holder<QTabBar>(widget); row && row == Holder<QTabBar>(*other)) continue;
            const QRect both = seen & place;
            if (both.width() > kTouch && both.height() > kTouch)
                Say(widget, QStringLiteral("shares %1 with %2").arg(Measured(both.size()), Called(*other)));
        }
    }

    const QWidget& window_;
    QStringList faults_;
    std::vector<std::pair<const QWidget*, QRect>> controls_;
};

} // namespace nib::test
