#pragma once
#include "fakes/MemoryClipboard.h"
#include "fakes/WordLexer.h"
#include "text/widget/SourceViewWidget.h"

#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>

#include <memory>

namespace nib {

/// A view in a shown window of 400 by 300.
struct ViewFixture : testing::Test {
    SourceDocument buffer;
    MemoryClipboard clipboard;
    WordLexer lexer;
    std::unique_ptr<SourceViewWidget> widget;

    void SetUp() override
    {
        buffer.SetLexer(&lexer);
        widget = std::make_unique<SourceViewWidget>(buffer, clipboard);
        widget->resize(400, 300);
        Model().SetFont({u"DejaVu Sans Mono", 10});
        widget->show();
        widget->activateWindow();
        widget->setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
    }
    SourceView& Model() { return widget->Model(); }
    void Load(TextView text)
    {
        Model().SetText(text);
        buffer.ClearUndo();
        QApplication::processEvents();
    }
    Text Line(int32_t n) { return buffer.GetLine(n); }
    Text Selected() { return Model().SelectedText(); }

    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(widget.get(), static_cast<Qt::Key>(key), modifiers);
    }
    void Type(const char* text) { QTest::keyClicks(widget.get(), text); }
    /// In the left quarter of a character's cell.
    QPoint At(int32_t col, int32_t line)
    {
        QRectF cell = widget->CellOf({col, line});
        return QPointF(cell.left() + cell.width() / 4, cell.center().y()).toPoint();
    }
    void Press(QPoint at, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(widget->viewport(), button, modifiers, at);
    }
    void MoveTo(QPoint at) { Mouse(QEvent::MouseMove, at, Qt::NoButton); }
    void Release(QPoint at, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(widget->viewport(), button, modifiers, at);
    }
    void Click(QPoint at, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        Press(at, modifiers, button);
        Release(at, modifiers, button);
    }
    void DoubleClick(QPoint at) { Mouse(QEvent::MouseButtonDblClick, at, Qt::LeftButton); }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Press(from, modifiers);
        MoveTo((from + to) / 2);
        MoveTo(to);
        Release(to, modifiers);
    }
    void Wheel(QPoint pixels, QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QPointF at(100, 100);
        QWheelEvent event(at, widget->mapToGlobal(at), pixels, angle, Qt::NoButton, modifiers, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(widget->viewport(), &event);
    }
    QImage Grab() { return widget->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
    /// Pixels of the cell that are not of a colour.
    int Inked(const QImage& image, QRectF cell, QColor blank) const
    {
        int count = 0;
        QRect area = QRectF(cell.topLeft() * image.devicePixelRatio(), cell.size() * image.devicePixelRatio()).toRect();
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x) count += image.pixelColor(x, y) != blank;
        return count;
    }

private:
    void Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button)
    {
        QMouseEvent event(type, at, widget->viewport()->mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget->viewport(), &event);
    }
};

} // namespace nib
