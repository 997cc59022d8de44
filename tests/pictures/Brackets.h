#pragma once
// A language in which each text that somebody can translate stands in brackets: what is seen without them stays English
// for everybody.

#include <QtWidgets>

namespace nib::test {

/// Puts each text that goes through a translation into brackets; what stands bare nobody can translate.
class Bracketing final : public QTranslator {
public:
    Bracketing() { QCoreApplication::installTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override
    {
        return QLatin1Char('[') + QString::fromUtf8(text) + QLatin1Char(']');
    }
};

/// Names and data, which are the same in every language.
inline bool IsBare(QString text)
{
    static const QRegularExpression data(QStringLiteral(
        R"(^$|^[^A-Za-z]*$|^NewItem\d+$|^LF$|^CR( LF)?$|^UTF-(8|16 [LB]E)$|^Latin-1$|^Nib$|^Nib - |^mvdb|^DejaVu|^Text$)"
        R"(|^Aa$|^\|a\|$|^\*?BP|^INVOICE|^ONE|^TWO|^START|^LIVE|^SALES|^DEMO|^common$|^BASIC$|^vm$|^/|^#RRGGBB$)"));
    return !text.startsWith(QLatin1Char('[')) && !data.match(text.remove(QLatin1Char('&'))).hasMatch();
}

inline QStringList TextsOf(const QWidget& widget)
{
    QStringList texts{widget.toolTip()};
    if (auto* button = qobject_cast<const QAbstractButton*>(&widget)) texts += button->text();
    if (auto* box = qobject_cast<const QGroupBox*>(&widget)) texts += box->title();
    if (auto* label = qobject_cast<const QLabel*>(&widget)) texts += label->text();
    if (auto* tabs = qobject_cast<const QTabBar*>(&widget))
        for (int i = 0; i < tabs->count(); ++i) texts += tabs->tabText(i);
    if (auto* line = qobject_cast<const QLineEdit*>(&widget)) texts += line->placeholderText();
    if (auto* dock = qobject_cast<const QDockWidget*>(&widget)) texts += dock->windowTitle();
    if (auto* heads = qobject_cast<const QHeaderView*>(&widget))
        for (int i = 0; i < heads->count(); ++i)
            texts += heads->model()->headerData(i, heads->orientation()).toString();
    // In panels: what the checker says, and what the program says between the numbered lines of a list of results.
    auto* tree = qobject_cast<const QTreeView*>(&widget);
    if (tree && qobject_cast<const QDockWidget*>(tree->parentWidget()->parentWidget()))
        for (int row = 0; row < tree->model()->rowCount(); ++row) {
            const QModelIndex cell = tree->model()->index(row, 0);
            for (const int role : {Qt::DisplayRole, Qt::ToolTipRole}) texts += cell.data(role).toString();
        }
    if (auto* list = qobject_cast<const QPlainTextEdit*>(&widget))
        for (const QString& line : list->toPlainText().split(QLatin1Char('\n')))
            if (!line.isEmpty() && !line.at(0).isDigit()) texts += line.trimmed();
    return texts;
}

inline QStringList BareTexts(const QWidget& window)
{
    QStringList bare;
    if (IsBare(window.windowTitle())) bare += window.windowTitle();
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() != &window || widget->isHidden()) continue;
        for (const QString& text : TextsOf(*widget))
            if (IsBare(text)) bare += text;
    }
    return bare;
}

} // namespace nib::test
