#include "fakes/Patience.h"
#include "hosts/picker/frmItemPicker.h"

#include "fakes/FakeBrowser.h"
#include "hosts/picker/QtPickerWidgets.h"
#include "platform/qt/QtText.h"
#include "widgets/Keys.h"

namespace nib::test::widget_item_picker_test {

constexpr TextView kBp{u"mvdb:LIVE/SALES/BP"};

struct ItemPickerTest : testing::Test {
    ItemPickerTest() { FillWithSample(browser); }

    void Open(SelectRequest request, TextView start)
    {
        if (request.mode.empty()) request.mode = u"Open";
        form.reset();
        model = std::make_unique<PickerModel>(request, browser);
        model->Start(start);
        form = std::make_unique<frmItemPicker>(*model, browser, nullptr, edit);
        form->show();
        QApplication::setActiveWindow(form.get());
        QTest::qWait(1);
    }
    template <typename Widget>
    Widget* Named(const char* name) const
    {
        for (Widget* widget : form->findChildren<Widget*>())
            if (widget->accessibleName() == QLatin1String(name)) return widget;
        return nullptr;
    }
    QLineEdit* Name() const { return Named<QLineEdit>("Item"); }
    QLineEdit* Filter() const { return Named<QLineEdit>("Filter"); }
    PickerListView* List() const { return Named<PickerListView>("Items"); }
    QPushButton* Ok() const
    {
        for (QPushButton* button : form->findChildren<QPushButton*>())
            if (button->isDefault()) return button;
        return nullptr;
    }
    FakeBrowser browser;
    ItemPicker::EditConnections edit;
    std::unique_ptr<PickerModel> model;
    std::unique_ptr<frmItemPicker> form;
};

TEST_F(ItemPickerTest, KeyboardWalksDownUpAndOpens)
{
    Open({}, u"mvdb:LIVE/SALES");
    EXPECT_TRUE(List()->hasFocus());
    EXPECT_FALSE(Ok()->isEnabled());
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_EQ(model->Place(), kBp);
    EXPECT_TRUE(form->isVisible());
    Key(Qt::Key_Backspace);
    EXPECT_EQ(model->Place(), u"mvdb:LIVE/SALES");
    EXPECT_EQ(List()->currentIndex().row(), 0) << "where it came from";
    Key(Qt::Key_Return);
    Key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(model->Place(), u"mvdb:LIVE/SALES");
    Key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(model->Place(), kBp);
    Type("c");
    EXPECT_EQ(Name()->text(), QStringLiteral("CUST*1"));
    Key(Qt::Key_Return);
    EXPECT_EQ(form->result(), QDialog::Accepted);
    EXPECT_EQ(model->Answer().paths, (std::vector<Text>{u"mvdb:LIVE/SALES/BP/CUST*1"}));
}

TEST_F(ItemPickerTest, WhatNoRowBeginsWithGoesOnAsAName)
{
    const struct {
        TextView place;
        const char* typed;
        bool named;
    } kCases[] = {{kBp, "/home/me/prog.b", true},
                  {kBp, "ma", false},
                  {kBp, "max", true},
                  {kBp, "mm", false},
                  {kBp, " ", false},
                  {kBp, "main2", false},
                  {u"mvdb:LIVE/SALES", "BP MAIN", true}};
    for (const auto& row : kCases) {
        Open({}, row.place);
        Type(row.typed);
        EXPECT_EQ(Name()->hasFocus(), row.named) << row.typed;
        if (row.named) EXPECT_EQ(Name()->text(), QLatin1String(row.typed));
    }
}

TEST_F(ItemPickerTest, FilterNarrowsAndEscapeFirstClearsIt)
{
    Open({}, kBp);
    Key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(Filter()->hasFocus());
    Type("main");
    EXPECT_EQ(List()->model()->rowCount(), 2);
    Key(Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(List()->model()->rowCount(), 3);
    Type("2");
    Key(Qt::Key_Return);
    EXPECT_EQ(model->Answer().paths, (std::vector<Text>{u"mvdb:LIVE/SALES/BP/MAIN2"}));
    Open({}, kBp);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(form->result(), QDialog::Rejected);
}

TEST_F(ItemPickerTest, FailureIsALineInTheDialog)
{
    const auto shown = [&](const Text& text) {
        for (const QLabel* label : form->findChildren<QLabel*>())
            if (label->isVisible() && label->text() == ToQString(text)) return true;
        return false;
    };
    browser.denied.insert(u"file:/home/ann/work");
    Open({}, u"file:/home/ann");
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_TRUE(shown(u"file:/home/ann/work: not allowed"));
    EXPECT_EQ(List()->model()->rowCount(), 3);
    browser.denied.clear();
    Key(Qt::Key_Return);
    EXPECT_FALSE(shown(u"file:/home/ann/work: not allowed"));
    EXPECT_EQ(model->Place(), u"file:/home/ann/work");
}

TEST_F(ItemPickerTest, TheTreeFollowsAndLeads)
{
    browser.denied.insert(u"mvdb:LIVE/SALES/VOC");
    Open({}, kBp);
    auto* tree = Named<QTreeView>("Places");
    EXPECT_EQ(tree->currentIndex().data().toString(), QStringLiteral("BP"));
    tree->setFocus();
    Key(Qt::Key_Down);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !model->Message().empty(); }));
    EXPECT_EQ(tree->currentIndex().data().toString(), QStringLiteral("VOC"));
    EXPECT_EQ(model->Place(), kBp);
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    EXPECT_TRUE(QTest::qWaitFor([&] { return model->Place() == u"mvdb:LIVE/SALES"; }));
}

TEST_F(ItemPickerTest, EditedConnectionsShowAtOnce)
{
    edit = [this](QWidget*) {
        browser.AddPlace(u"mvdb:NEW");
        browser.Remove(u"mvdb:LIVE/SALES/BP");
        return true;
    };
    Open({}, kBp);
    auto* tree = Named<QTreeView>("Places");
    EXPECT_EQ(tree->model()->rowCount(), 2);
    AccessKey(Qt::Key_N);
    EXPECT_EQ(tree->model()->rowCount(), 3);
    EXPECT_EQ(model->Place(), u"mvdb:LIVE/SALES") << "the nearest that is left";
    EXPECT_EQ(tree->currentIndex().data().toString(), QStringLiteral("SALES"));
}

TEST_F(ItemPickerTest, TenThousandItems)
{
    for (int i = 0; i < 10000; ++i) browser.Add(u"mvdb:LIVE/SALES/BIG/INV*" + Decimal(i));
    Patience patience("list and filter");
    Open({}, u"mvdb:LIVE/SALES/BIG");
    ASSERT_EQ(List()->model()->rowCount(), 10000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return browser.lockQuestions > 0; }));
    QTest::qWait(50);
    const auto [first, last] = List()->RowsInSight();
    EXPECT_EQ(browser.lockQuestions, last - first + 1) << "only the rows in sight";
    Key(Qt::Key_F, Qt::ControlModifier);
    Type("999");
    EXPECT_EQ(List()->model()->rowCount(), 19);
}

TEST_F(ItemPickerTest, SizeAndHiddenFilesAreRememberedWithinTheRun)
{
    ItemPicker picker;
    QSize before;
    const auto runAndCancel = [&](const std::function<void(frmItemPicker&)>& act) {
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<frmItemPicker*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            QApplication::setActiveWindow(dialog);
            act(*dialog);
            dialog->reject();
        });
        SelectRequest request;
        request.mode = u"Open";
        EXPECT_FALSE(picker.Run(request, u"file:/home/ann", browser));
    };
    runAndCancel([&](frmItemPicker& dialog) {
        dialog.resize(dialog.width() + 111, dialog.height() + 55);
        before = dialog.size();
        QTest::keyClick(&dialog, Qt::Key_H, Qt::ControlModifier);
    });
    runAndCancel([&](frmItemPicker& dialog) {
        EXPECT_EQ(dialog.size(), before);
        EXPECT_EQ(dialog.findChild<PickerListView*>()->model()->rowCount(), 4);
    });
}

} // namespace nib::test::widget_item_picker_test
