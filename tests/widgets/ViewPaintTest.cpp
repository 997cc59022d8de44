#include "documents/DocumentSettings.h"
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "fakes/Patience.h"
#include "language/Dialects.h"
#include "widgets/ViewFixture.h"

namespace nib::widget_view_paint_test {

using ViewPaint = ViewFixture;

QPalette Dark()
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Text, QColor(225, 225, 225));
    palette.setColor(QPalette::Highlight, QColor(40, 80, 140));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

TEST_F(ViewPaint, SignsAndTextLeaveInk)
{
    Load(u"a\uF8FB\uF8FC\uF8FD\uF8FE\uF8FF\u0007 \u05D0\u05D1\uF8FD\u202E");
    widget->setFocus();
    QImage image = Grab();
    QColor base = widget->palette().color(QPalette::Base);
    for (int32_t col = 0; col < 12; ++col) {
        int ink = Inked(image, widget->CellOf({col, 0}).adjusted(1, 0, -1, 0), base);
        if (col == 7) {
            EXPECT_EQ(ink, 0);
        } else {
            EXPECT_GT(ink, 5) << "column " << col;
        }
    }
}

TEST_F(ViewPaint, SelectionIsShownInThePalettesColour)
{
    for (const QPalette& palette : {QPalette(), Dark()}) {
        widget->setPalette(palette);
        Load(u"ABC\r\nD");
        Model().SetSelection({1, 0}, {1, 1});
        QImage image = Grab();
        auto corner = [&](int32_t col, int32_t line) {
            QRectF cell = widget->CellOf({col, line});
            return image.pixelColor(((cell.topLeft() + QPointF(3, 1)) * image.devicePixelRatio()).toPoint());
        };
        EXPECT_EQ(corner(1, 0), palette.color(QPalette::Highlight));
        EXPECT_EQ(corner(3, 0), palette.color(QPalette::Highlight)) << "the line break is selected too";
        EXPECT_EQ(corner(0, 0), palette.color(QPalette::Base));
    }
}

TEST_F(ViewPaint, TokenColoursStayReadableOnADarkPage)
{
    TokenStyleTable& styles = Model().TokenStyles();
    for (int32_t type : {4, 6, 7}) styles.SetColor(type, 0x00FF0000);
    styles.SetColor(8, static_cast<int32_t>(0x80000008));
    for (const QPalette& palette : {QPalette(), Dark()}) {
        ScreenColors colors;
        colors.Build(palette, Model());
        for (int32_t type : {4, 6, 7, 8}) EXPECT_GE(Contrast(colors.Style(type).color, colors.base), 4.5) << type;
        EXPECT_GE(Contrast(colors.faint, colors.base), 2.5);
    }
    ScreenColors light;
    light.Build(QPalette(), Model());
    EXPECT_EQ(light.Style(4).color, QColor(0, 0, 255)) << "a readable colour stays as it was chosen";
}

TEST_F(ViewPaint, ShippedColoursFollowTheSchemeAndChosenOnesStay)
{
    constexpr int32_t yellow = 0x0000FFFF;
    QPalette contrast = Dark();
    contrast.setColor(QPalette::Base, Qt::black);
    contrast.setColor(QPalette::Text, Qt::white);
    for (const auto& [palette, least] : {std::pair(QPalette(), 4.5), {Dark(), 4.5}, {contrast, 7.0}}) {
        MvEdit settings;
        ApplyViewSettings(Model(), settings);
        ScreenColors colors;
        colors.Build(palette, Model());
        for (int32_t type : {token_type::kLabel, token_type::kUserKeyword, token_type::kComment, token_type::kString,
                             token_type::kNormal, token_type::kReserved, token_type::kStatement, token_type::kFunction,
                             token_type::kNumberLook, token_type::kValueMark})
            EXPECT_GE(Contrast(colors.Style(type).color, colors.base), least) << type;
        settings.CommentColor = yellow;
        ApplyViewSettings(Model(), settings);
        colors.Build(palette, Model());
        EXPECT_EQ(colors.Style(token_type::kComment).color, QColor(Qt::yellow));
    }
}

TEST_F(ViewPaint, StatementsAreColouredInADialectAlone)
{
    Dialects dialects;
    LexClass words;
    clsKeywords keywords;
    for (const LexRules* rules : {static_cast<const LexRules*>(nullptr), dialects.Rules(u"common")}) {
        keywords.SetRules(rules);
        words.SetKeywords(keywords);
        buffer.SetLexer(&words);
        Load(u"XY ; CRT");
        Model().TokenStyles().SetColor(token_type::kStatement, 0x00FF0000);
        const QImage before = Grab();
        Model().TokenStyles().SetColor(token_type::kStatement, 0x000000FF);
        const QImage after = Grab();
        for (int32_t column = 0; column < 8; ++column) {
            const QRect cell = widget->CellOf({column, 0}).toRect();
            EXPECT_EQ(before.copy(cell) != after.copy(cell), rules && column >= 5) << column;
        }
        Token token;
        EXPECT_TRUE(Model().NextToken(0, 5, token));
        EXPECT_EQ(token.type, token_type::kNormal);
    }
    buffer.SetLexer(nullptr);
}

TEST_F(ViewPaint, TheScrollBarEndsWhereTheTextEnds)
{
    Load(Replace(Text(100, u'x'), u"x", u"line\r\n"));
    ASSERT_NE(widget->viewport()->height() % widget->LineHeight(), 0);
    QScrollBar& bar = *widget->verticalScrollBar();
    for (bool wrap : {false, true}) {
        Model().SetLineWrap(wrap);
        Model().SetCaret({});
        EXPECT_EQ(bar.value(), 0);
        Model().SetCaret(buffer.End());
        EXPECT_EQ(bar.value(), bar.maximum());
        const double top = widget->CellOf({0, 95}).top();
        bar.triggerAction(QAbstractSlider::SliderSingleStepSub);
        EXPECT_GT(widget->CellOf({0, 95}).top(), top) << "a step back goes back";
        EXPECT_EQ(bar.value(), bar.maximum() - 1);
        bar.setValue(bar.maximum());
        EXPECT_EQ(widget->CellOf({0, 95}).top(), top);
    }
}

TEST_F(ViewPaint, WrapKeepsEveryColumnInSight)
{
    Text words;
    for (int i = 0; i < 60; ++i) words += u"word ";
    Load(words + u"\r\n\u05D0 " + words + u"\r\nEND");
    Model().SetLineWrap(true);
    EXPECT_EQ(widget->horizontalScrollBar()->maximum(), 0);
    double width = widget->viewport()->width();
    for (int32_t line : {0, 1}) {
        double y = -1;
        for (int32_t col = 0; col < 300; ++col) {
            QRectF cell = widget->CellOf({col, line});
            EXPECT_LE(cell.left(), width);
            EXPECT_GE(cell.top(), y);
            y = cell.top();
            if (col % 5 == 4) continue; // the blank that ends a row may lie behind its edge
            EXPECT_EQ(widget->PositionAt(cell.center(), true), (Position{col, line}));
        }
        EXPECT_GT(y, widget->CellOf({0, line}).top());
    }
    Model().SetCaret({2, 0});
    Key(Qt::Key_Down);
    EXPECT_EQ(Model().Caret().line, 0) << "down goes by rows";
    EXPECT_DOUBLE_EQ(widget->CellOf(Model().Caret()).left(), widget->CellOf({2, 0}).left());
    double row = widget->CellOf(Model().Caret()).top();
    Key(Qt::Key_End);
    EXPECT_DOUBLE_EQ(widget->CellOf(Model().Caret()).top(), row) << "End stays in the row";
    Key(Qt::Key_Home);
    EXPECT_DOUBLE_EQ(widget->CellOf(Model().Caret()).top(), row);
    EXPECT_DOUBLE_EQ(widget->CellOf(Model().Caret()).left(), widget->CellOf({0, 0}).left());
    Key(Qt::Key_Home);
    EXPECT_EQ(Model().Caret().col, 0) << "and once more goes to the line's own start";
    Grab();
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_FALSE(widget->CaretRect().isEmpty());
}

struct Resizes final : QObject {
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Resize;
        return false;
    }
    int count = 0;
};

TEST_F(ViewPaint, ABarMayCoverTheLineThatItIsFor)
{
    const int rows = widget->viewport()->height() / widget->LineHeight();
    for (int line = rows - 3; line <= rows + 1; ++line) {
        Resizes resizes;
        widget->viewport()->installEventFilter(&resizes);
        Load(Text(static_cast<size_t>(line), u'\n') + Text(500, u'W') + Text(40, u'\n'));
        for (int turn = 0; turn < 20; ++turn) QApplication::processEvents();
        EXPECT_LE(resizes.count, 2) << line;
    }
}

TEST_F(ViewPaint, PointsAndPlacesAgree)
{
    const TextView lines[] = {u"plain text", u"e\u0301a\u0308x", u"\u05E9\u05DC\u05D5\u05DD abc", u"\u4F60\u597Dx",
                              u"\U0001F600a"};
    for (TextView line : lines) {
        Load(line);
        for (int32_t col = 0; col < static_cast<int32_t>(line.size()); ++col) {
            Model().SetCaret({col, 0});
            Position place = Model().Caret();
            EXPECT_EQ(widget->PositionAt(widget->CellOf(place).center(), true), place) << ToUtf8(line) << " " << col;
        }
    }
}

TEST_F(ViewPaint, FirstVisibleIsKept)
{
    Text text;
    for (int i = 0; i < 300; ++i) text += Text(200, u'x') + u"\r\n";
    Load(text);
    Model().SetFirstVisible(120, 30);
    int32_t line = 0;
    int32_t column = 0;
    Model().GetFirstVisible(line, column);
    EXPECT_EQ(line, 120);
    EXPECT_EQ(column, 30);
    SourceView other(buffer, clipboard);
    other.SetCaret({0, 3});
    other.TypeText(u"1\r\n2\r\n");
    Model().GetFirstVisible(line, column);
    EXPECT_EQ(line, 122) << "what another view does above leaves the page where it is";
}

TEST_F(ViewPaint, VeryLongLinesCostNoMoreThanTheirLength)
{
    struct {
        const char* what;
        Text text;
    } const rows[] = {{"plain", Text(2'000'000, u'x')}, {"accents and signs", [] {
                                                             Text text;
                                                             while (text.size() < 500'000)
                                                                 text += u"abc e\u0301 \u4F60 \uF8FD \U0001F600 ";
                                                             return text;
                                                         }()}};
    for (const auto& row : rows) {
        test::Patience patience(row.what);
        Load(row.text);
        Grab();
        Key(Qt::Key_End);
        Grab();
        EXPECT_FALSE(widget->CaretRect().isEmpty());
        Type("y");
        Grab();
        for (bool wrap : {true, false}) {
            Model().SetLineWrap(wrap);
            Grab();
        }
    }
}

TEST_F(ViewPaint, AssistiveToolsReadAndEdit)
{
    Load(u"CALL SUB.1\r\n\"e\u0301\" B\r\nC");
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget.get());
    ASSERT_NE(face, nullptr);
    QAccessibleTextInterface* text = face->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->characterCount(), 19);
    EXPECT_EQ(text->text(5, 13), QStringLiteral("SUB.1\n\"e"));
    Model().SetCaret({4, 1});
    EXPECT_EQ(text->cursorPosition(), 15);

    const std::tuple<QAccessible::TextBoundaryType, int, QString, QString, QString> rows[] = {
        {QAccessible::CharBoundary, 12, QStringLiteral("\""), QStringLiteral("e\u0301"), QStringLiteral("\"")},
        {QAccessible::WordBoundary, 7, QStringLiteral(" "), QStringLiteral("SUB.1"), QStringLiteral("\n")},
        {QAccessible::LineBoundary, 12, QStringLiteral("CALL SUB.1\n"), QStringLiteral("\"e\u0301\" B\n"),
         QStringLiteral("C")},
        {QAccessible::LineBoundary, 19, QStringLiteral("\"e\u0301\" B\n"), QStringLiteral("C"), QStringLiteral("")}};
    for (const auto& [boundary, offset, before, at, after] : rows) {
        int start = 0;
        int end = 0;
        EXPECT_EQ(text->textBeforeOffset(offset, boundary, &start, &end), before);
        EXPECT_EQ(text->textAfterOffset(offset, boundary, &start, &end), after);
        EXPECT_EQ(text->textAtOffset(offset, boundary, &start, &end), at);
        EXPECT_EQ(text->text(start, end), at);
    }
    QRect rect = text->characterRect(5);
    EXPECT_EQ(text->offsetAtPoint(rect.center()), 5);
    text->setSelection(0, 5, 8);
    EXPECT_EQ(Selected(), u"SUB");
    face->editableTextInterface()->replaceText(0, 4, QStringLiteral("GOSUB"));
    EXPECT_EQ(Line(0), u"GOSUB SUB.1");
    EXPECT_EQ(text->characterCount(), 20);
}

/// An operation edits each line by itself; the bars and the picture follow once.
TEST_F(ViewPaint, AnOperationIsShownOnce)
{
    class Doubling final : public ISourceOp {
    public:
        void DoOp(SourceDocument& document) override
        {
            for (int32_t line = 0; line < 200; line += 2) document.InsertText({0, line}, u"new\r\n");
        }
        void UndoOp(SourceDocument& document) override
        {
            for (int32_t line = 0; line < 100; ++line) document.DeleteRange({0, line}, {0, line + 1});
        }
    };
    Load(Replace(Text(100, u'x'), u"x", u"old\r\n"));
    widget->clearFocus(); // a caret would blink
    auto picture = [&] {
        Model().SetCaret({0, 0});
        QApplication::processEvents();
        return widget->grab().toImage();
    };
    const QImage before = picture();
    QSignalSpy ranges(widget->verticalScrollBar(), &QScrollBar::rangeChanged);
    buffer.ExecuteOp(std::make_unique<Doubling>());
    EXPECT_EQ(ranges.count(), 1);
    EXPECT_NE(picture(), before);
    buffer.Undo();
    EXPECT_EQ(ranges.count(), 2);
    EXPECT_EQ(picture(), before);
}

} // namespace nib::widget_view_paint_test
