#pragma once
// What somebody needs who cannot see a form, has no mouse or wants large letters: names, a way by the Tab key, access
// keys of their own, and room for each text.

#include "pictures/Brackets.h"
#include "pictures/Room.h"

#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace nib::test {

inline std::string SpokenName(QWidget& widget)
{
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&widget);
    return spoken ? spoken->text(QAccessible::Name).toStdString() : std::string();
}

inline std::string Described(QWidget& widget)
{
    return std::string(widget.metaObject()->className()) + " \"" + widget.objectName().toStdString() + "\" of " +
           (widget.parent() ? widget.parent()->metaObject()->className() : "nobody");
}

/// What the Tab key reaches, once round.
inline std::set<QWidget*> ReachedByTab(QWidget& form)
{
    std::set<QWidget*> reached;
    for (int steps = 0; steps < 200; ++steps) {
        QWidget* focus = QApplication::focusWidget();
        if (!focus || (focus != &form && !form.isAncestorOf(focus))) break;
        reached.insert(focus);
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return reached;
}

/// One button of a group is enough: the arrows lead to the others.
inline bool IsReached(QWidget& widget, const std::set<QWidget*>& reached)
{
    if (reached.contains(&widget)) return true;
    if (!qobject_cast<QRadioButton*>(&widget)) return false;
    for (QWidget* other : reached)
        if (qobject_cast<QRadioButton*>(other) && other->parent() == widget.parent()) return true;
    return false;
}

inline QString AccessKeyOf(const QString& caption)
{
    return QKeySequence::mnemonic(caption).toString();
}

/// The access keys that can be pressed on the form as it is shown, each with the captions that it belongs to.
inline std::map<std::string, std::vector<std::string>> AccessKeys(QWidget& form)
{
    std::map<std::string, std::vector<std::string>> keys;
    auto add = [&](const QString& caption) {
        if (QString key = AccessKeyOf(caption); !key.isEmpty())
            keys[key.toStdString()].push_back(caption.toStdString());
    };
    for (QWidget* widget : form.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &form) continue;
        if (auto* button = qobject_cast<QAbstractButton*>(widget)) add(button->text());
        if (auto* box = qobject_cast<QGroupBox*>(widget)) add(box->title());
        if (auto* label = qobject_cast<QLabel*>(widget); label && label->buddy()) add(label->text());
        if (auto* tabs = qobject_cast<QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i) add(tabs->tabText(i));
    }
    return keys;
}

inline void ExpectRoom(const QWidget& form)
{
    const QStringList faults = Room(form).Faults();
    EXPECT_TRUE(faults.isEmpty()) << faults.join(QLatin1Char('\n')).toStdString();
}

inline void ExpectNothingBare(const QWidget& form)
{
    const QStringList bare = BareTexts(form);
    EXPECT_TRUE(bare.isEmpty()) << bare.join(QLatin1Char('\n')).toStdString();
}

/// `shared`: access keys that captions laid down elsewhere make several controls have.
inline void ExpectAccessible(QWidget& form, const std::set<std::string>& shared = {})
{
    SCOPED_TRACE(form.metaObject()->className());
    QApplication::setActiveWindow(&form);
    QTest::qWait(1);
    ASSERT_TRUE(QApplication::focusWidget()) << "the focus is somewhere";
    ExpectRoom(form);
    if (QCoreApplication::translate("Logic", "OK").startsWith(QLatin1Char('['))) ExpectNothingBare(form);
    const std::set<QWidget*> reached = ReachedByTab(form);
    for (QWidget* widget : form.findChildren<QWidget*>()) {
        const bool takesKeys = (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy();
        if (!takesKeys || !widget->isVisible() || widget->window() != &form) continue;
        EXPECT_FALSE(SpokenName(*widget).empty()) << Described(*widget);
        if (widget->isEnabled()) {
            EXPECT_TRUE(IsReached(*widget, reached)) << Described(*widget) << ' ' << SpokenName(*widget);
        }
    }
    std::set<std::string> met;
    for (const auto& [key, captions] : AccessKeys(form))
        if (captions.size() > 1) met.insert(key);
    EXPECT_EQ(met, shared) << testing::PrintToString(AccessKeys(form));
}

} // namespace nib::test
