// The dialogs by keyboard alone: where the focus is, and what Return and Escape do.

#include "fakes/TestProgram.h"
#include "platform/qt/ElidedValue.h"
#include "platform/qt/QtText.h"
#include "shell/QtMessageBoxes.h"
#include "shell/frame/DocumentProperties.h"
#include "shell/frame/frmProperties.h"
#include "shell/help/QtHelpWindow.h"
#include "shell/navigation/frmGoto.h"
#include "text/widget/ScreenColors.h"
#include "widgets/FormAccess.h"
#include "widgets/Keys.h"

namespace nib::test::widget_dialogs_test {

using namespace message_box;

QString NameOf(QWidget* widget)
{
    return widget->accessibleName().isEmpty() ? QString::fromStdString(SpokenName(*widget)) : widget->accessibleName();
}

/// Names of what the Tab key reaches, from the focus on, once round.
QString TabOrder()
{
    QStringList names;
    const QWidget* first = QApplication::focusWidget();
    do {
        names.append(NameOf(QApplication::focusWidget()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && names.size() < 30);
    return names.join(QLatin1Char('|'));
}

/// Runs `steps` on the modal dialog that comes up.
template <typename Steps>
void WhenModal(Steps steps)
{
    QTimer::singleShot(0, [steps] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        QApplication::setActiveWindow(dialog);
        QTest::qWait(1);
        steps(*dialog);
        if (QWidget* left = QApplication::activeModalWidget()) left->close();
    });
}

struct DialogsTest : testing::Test {
    DialogsTest()
    {
        document->SetText(u"START:\r\nX = 1\r\nSTOP:\r\nX = 2\r\nRESTART:");
        for (int32_t line : {0, 2, 4})
            document->View()->txtText().Document().SetLineData(line, LineWord::Lexer, 0x20000);
        document->Activate();
    }
    Position Caret() { return document->View()->txtText().Caret(); }

    TestProgram t;
    std::shared_ptr<mvDocument> document = t.New();
    Text target = u"STOP";
};

TEST_F(DialogsTest, GotoLabelByKeyboard)
{
    frmGoto form(t.program.Services());
    WhenModal([](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Goto"));
        EXPECT_EQ(NameOf(QApplication::focusWidget()), QStringLiteral("Label"));
        Key(Qt::Key_Return);
    });
    EXPECT_TRUE(form.ShowGoto(target, nullptr));
    EXPECT_EQ(Caret(), (Position{0, 2}));
    WhenModal([](QWidget&) {
        Type("REST"); // over the selected target
        Key(Qt::Key_Down);
        Key(Qt::Key_Return);
        Key(Qt::Key_Return);
    });
    EXPECT_TRUE(form.ShowGoto(target, nullptr));
    EXPECT_EQ(target, u"RESTART");
    EXPECT_EQ(Caret(), (Position{0, 4}));
    WhenModal([](QWidget&) {
        Type("START");
        EXPECT_TRUE(QApplication::activePopupWidget()) << "RESTART holds it too";
        Key(Qt::Key_Return);
    });
    EXPECT_TRUE(form.ShowGoto(target, nullptr));
    EXPECT_EQ(target, u"START");
    EXPECT_EQ(Caret(), (Position{0, 0}));
}

TEST_F(DialogsTest, GotoLineByKeyboard)
{
    frmGoto form(t.program.Services());
    WhenModal([](QWidget&) {
        AccessKey(Qt::Key_N);
        EXPECT_EQ(NameOf(QApplication::focusWidget()), QStringLiteral("Line number"));
        Type("4");
        Key(Qt::Key_Return);
    });
    EXPECT_TRUE(form.ShowGoto(target, nullptr));
    EXPECT_EQ(Caret(), (Position{0, 3}));
    EXPECT_EQ(target, u"STOP") << "a jump to a line leaves the label";
    WhenModal([](QWidget&) {
        EXPECT_EQ(TabOrder(),
                  QStringLiteral("Line number|Skip this dialog when a label is double-clicked|OK|Cancel|Line number:"));
        AccessKey(Qt::Key_S);
        Key(Qt::Key_Escape);
    });
    EXPECT_FALSE(form.ShowGoto(target, nullptr));
    EXPECT_EQ(Caret(), (Position{0, 3}));
    EXPECT_TRUE(t.program.EditorSettings().NoGotoDialog) << "written at once";
}

TEST_F(DialogsTest, PropertiesCanBeReadAndCopied)
{
    const Text folder(200, u'f');
    auto local = t.NewObject();
    t.Store(u"file:/home/" + folder + u"/a.bas", u"A\r\nB");
    ASSERT_TRUE(local->FileOpen(u"file:/home/" + folder + u"/a.bas", true));
    frmProperties form;
    WhenModal([&](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Nib Document Properties"));
        auto* value = dialog.findChild<ElidedValue*>();
        ASSERT_TRUE(value);
        EXPECT_EQ(value->accessibleName(), QStringLiteral("Location"));
        EXPECT_LT(value->text().size(), value->Value().size()) << "cut short in its middle";
        EXPECT_EQ(value->toolTip(), value->Value());
        EXPECT_EQ(TabOrder(), QStringLiteral("Close|Location|File name|Modified|Read only|Size|Lines|Lock"));
        Key(Qt::Key_Tab);
        Key(Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), value->Value());
        Key(Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    form.ShowDialog(*local, t.program.Place().now);
    t.program.Place().GoTo({});
    WhenModal([](QWidget& dialog) {
        EXPECT_EQ(dialog.findChildren<ElidedValue*>().size(), 8) << "the rows of the last showing have gone";
        Key(Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
    form.ShowDialog(*document, t.program.Place().now);
}

TEST(MessageBoxTest, CheckBoxAndYesToAll)
{
    struct {
        int32_t flags;
        Qt::Key key;
        bool check;
        int32_t answer;
    } const rows[] = {{kYesNo | kCheckBox, Qt::Key_Y, true, 6 + 128},
                      {kYesNo | kCheckBox, Qt::Key_Y, false, 6},
                      {kYesNo | kCheckBox, Qt::Key_Escape, true, 7 + 128},
                      {kYesAllNo, Qt::Key_A, false, 14},
                      {kYesAllNoCancel, Qt::Key_A, false, 14},
                      {kYesAllNoCancel | kWarning, Qt::Key_Escape, false, 2},
                      {kYesAllNoCancel | kSecondDefault, Qt::Key_Return, false, 2},
                      {kYesAllNo, Qt::Key_Return, false, 6},
                      {kAbortRetryIgnore | kThirdDefault, Qt::Key_Return, false, 5}};
    for (auto& row : rows) {
        QtMessageBoxes boxes;
        int32_t second = -1;
        WhenModal([&](QWidget& dialog) {
            auto& box = dynamic_cast<QMessageBox&>(dialog);
            EXPECT_EQ(box.icon(), row.flags & kWarning ? QMessageBox::Warning : QMessageBox::NoIcon);
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.text(), QStringLiteral("<b>A</b>\nC"));
            second = boxes.Show(u"again", kOk, u"Nib");
            if (row.check) AccessKey(Qt::Key_W);
            row.key < Qt::Key_Escape ? AccessKey(row.key) : Key(row.key);
        });
        EXPECT_EQ(boxes.Show(u"<b>A</b>\r\nC", row.flags | kExtended, u""), row.answer) << row.flags;
        EXPECT_EQ(second, 0) << "a box is up";
    }
}

TEST(MessageBoxTest, OwnerThatGoesTakesTheBoxNotTheAnswer)
{
    auto owner = std::make_unique<QWidget>();
    QtMessageBoxes gone(owner.get());
    owner->show();
    QTimer::singleShot(0, [&] { owner.reset(); });
    EXPECT_EQ(gone.Show(u"Save?", kYesNoCancel | kExtended, u""), kAnswerCancel);

    owner = std::make_unique<QWidget>();
    QtMessageBoxes boxes(owner.get());
    owner->show();
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        for (QAbstractButton* button : box->buttons())
            if (button->text() == QStringLiteral("&Yes")) button->click();
        owner.reset();
    });
    EXPECT_EQ(boxes.Show(u"Save?", kYesNoCancel | kExtended, u""), kAnswerYes);
    WhenModal([](QWidget& box) { box.close(); });
    EXPECT_EQ(boxes.Show(u"Again", kOk | kExtended, u""), kAnswerOk) << "the next one shows as ever";
}

TEST(MessageBoxTest, OwnerAboveAllOthersStepsDown)
{
    QWidget owner(nullptr, Qt::WindowStaysOnTopHint);
    owner.show();
    QtMessageBoxes boxes(&owner);
    WhenModal([&](QWidget& box) {
        EXPECT_FALSE(owner.windowHandle()->flags() & Qt::WindowStaysOnTopHint);
        EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
    });
    boxes.Show(u"Text", kOk | kExtended, u"");
    EXPECT_TRUE(owner.windowHandle()->flags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(owner.isVisible());
}

TEST(HelpWindowTest, LinksAndHeadsCanBeReadOnEveryPalette)
{
    for (const auto& [base, link] : {std::pair(QColor(0x3D, 0x3D, 0x3D), QColor(0x00, 0x86, 0xC9)),
                                     {QColor(0x10, 0x10, 0x10), QColor(0x00, 0x00, 0xFF)},
                                     {QColor(Qt::white), QColor(0xFF, 0xFF, 0x00)},
                                     {QColor(Qt::white), QColor(0x00, 0x00, 0xFF)}}) {
        HelpWindow help;
        QPalette palette = help.palette();
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, base == Qt::white ? Qt::black : Qt::white);
        palette.setColor(QPalette::AlternateBase, Qt::white);
        palette.setColor(QPalette::Link, link);
        help.setPalette(palette);
        QCoreApplication::processEvents();
        const QTextDocument* page = help.findChild<QTextBrowser*>()->document();
        int links = 0;
        for (QTextBlock block = page->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextCharFormat format = part.fragment().charFormat();
                if (!format.isAnchor() || format.anchorHref().isEmpty()) continue;
                ++links;
                EXPECT_GE(Contrast(format.foreground().color(), base), 4.5) << base.name().toStdString();
            }
        }
        EXPECT_GT(links, 5);
        help.ShowHelp(u"keys.html");
        const auto* table = qobject_cast<QTextTable*>(page->rootFrame()->childFrames().value(0));
        ASSERT_TRUE(table);
        const QColor head = table->cellAt(0, 0).format().background().color();
        EXPECT_NE(head, base);
        EXPECT_GE(Contrast(palette.color(QPalette::Text), head), 4.5) << base.name().toStdString();
    }
}

TEST(HelpWindowTest, SearchAndWays)
{
    HelpWindow help;
    help.ShowHelp(u"NavBack");
    QApplication::setActiveWindow(&help);
    auto* browser = help.findChild<QTextBrowser*>();
    auto* contents = help.findChild<QTreeWidget*>();
    EXPECT_EQ(browser->source().toString(), QStringLiteral("qrc:/help/goto.html#NavBack"));
    EXPECT_EQ(contents->currentItem()->text(0), QStringLiteral("Go to and history"));
    Key(Qt::Key_F, Qt::ControlModifier);
    Type("bookmark lasts");
    int shown = 0;
    for (QTreeWidgetItemIterator at(contents, QTreeWidgetItemIterator::NotHidden); *at; ++at)
        shown += !(*at)->childCount();
    EXPECT_EQ(shown, 0);
    Key(Qt::Key_Backspace);
    Key(Qt::Key_Return);
    EXPECT_EQ(browser->source().fileName(), QStringLiteral("bookmarks.html"));
    EXPECT_FALSE(browser->extraSelections().isEmpty());
    Key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(browser->source().fileName(), QStringLiteral("goto.html"));
    Key(Qt::Key_Escape);
    EXPECT_TRUE(help.isVisible()) << "the first one only ends the search";
    Key(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(browser->source().fileName(), QStringLiteral("index.html"));
    Key(Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST(HelpWindowTest, SpeaksTheLanguageOfTheProgram)
{
    const auto contents = [](HelpWindow& help) { return help.findChild<QTreeWidget*>()->currentItem(); };
    const Translations german{QLocale(QStringLiteral("de_AT"))};
    HelpWindow help;
    help.ShowHelp(u"NavBack");
    auto* browser = help.findChild<QTextBrowser*>();
    EXPECT_EQ(browser->source().toString(), QStringLiteral("qrc:/help/de/goto.html#NavBack"));
    EXPECT_EQ(contents(help)->text(0), QStringLiteral("Gehe zu, vor und zur\u00fcck"));
    EXPECT_EQ(contents(help)->parent()->text(0), QStringLiteral("Arbeiten mit Texten"));
    QLineEdit* search = help.findChild<QLineEdit*>();
    search->setText(QStringLiteral("lesezeichen bleiben"));
    QMetaObject::invokeMethod(search, "returnPressed");
    EXPECT_EQ(browser->source().toString(), QStringLiteral("qrc:/help/de/bookmarks.html"));
    const Bracketing noPages;
    HelpWindow bare;
    bare.ShowHelp(u"NavBack");
    EXPECT_EQ(contents(bare)->text(0), QStringLiteral("Go to and history"));
}

TEST(AboutBoxTest, NamesVersionsAndLicences)
{
    WhenModal([](QWidget& dialog) {
        QString text;
        for (auto* label : dialog.findChildren<QLabel*>()) text += label->text() + QLatin1Char('\n');
        text += dialog.findChild<QTextBrowser*>()->toPlainText();
        for (const char* part : {"Nib", NIB_VERSION, qVersion(), "Lesser General Public", "ICU", "DejaVu", "libacl"})
            EXPECT_TRUE(text.contains(QLatin1String(part))) << part;
        EXPECT_EQ(NameOf(QApplication::focusWidget()), QStringLiteral("Close"));
        Key(Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
    ShowAboutBox(nullptr);
}

} // namespace nib::test::widget_dialogs_test
