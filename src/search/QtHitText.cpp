#include "search/QtHitText.h"

#include "platform/qt/QtText.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QLabel>
#include <QLocale>

namespace nib {

namespace {

struct HitWords final {
    Q_DECLARE_TR_FUNCTIONS(HitWords)
public:
    static QString Counted(const HitCount& count)
    {
        if (!count.done) return tr("Counting...");
        const QString all = QLocale().toString(count.all);
        if (count.more) return tr("More than %1 hits").arg(all);
        if (count.all == 0) return tr("No hits");
        if (count.at > 0) return tr("%1 of %2").arg(QLocale().toString(count.at), all);
        return count.all == 1 ? tr("1 hit") : tr("%1 hits").arg(all);
    }
    static QString Fault(const PatternFault& fault)
    {
        const QString text = Translated(fault.text);
        return fault.at > 0 ? tr("Character %1: %2").arg(fault.at).arg(text) : text;
    }
};

} // namespace

QString Told(const PatternFault& fault)
{
    return HitWords::Fault(fault);
}

void ShowHits(QLabel& label, const FindDialog& dialog, const HitCount& count)
{
    QString text;
    const auto fault = dialog.Fault();
    if (fault)
        text = Told(*fault);
    else if (!count.fault.empty())
        text = Translated(count.fault);
    else if (!dialog.findText.empty())
        text = HitWords::Counted(count);
    if (label.text() == text) return;
    label.setText(text);
    QAccessibleEvent said(&label, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&said);
    // By weight, too: not everyone tells colours apart.
    const bool bad = fault || !count.fault.empty() || (count.done && count.all == 0 && !dialog.findText.empty());
    QFont font = label.font();
    font.setBold(bad);
    label.setFont(font);
}

} // namespace nib
