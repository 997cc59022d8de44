#pragma once
// Keys as the desktop would send them.

#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>

namespace nib::test {

/// A pop-up gets them first.
inline QWidget* KeyReceiver()
{
    QWidget* popup = QApplication::activePopupWidget();
    return popup ? popup : QApplication::focusWidget();
}

inline void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    ASSERT_TRUE(KeyReceiver());
    QTest::keyClick(KeyReceiver(), key, modifiers);
}

/// Buttons act on their access keys after the picture of a press.
inline void AccessKey(Qt::Key key)
{
    Key(key, Qt::AltModifier);
    QTest::qWait(150);
}

inline void Type(const char* text)
{
    for (; *text; ++text) QTest::keyClick(KeyReceiver(), *text);
}

} // namespace nib::test
