#include "fakes/MemorySettings.h"
#include "shell/frame/QtPanelKeeper.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

namespace nib::test::panel_keeper_test {

struct OneRun {
    explicit OneRun(MemorySettings& settings) : keeper(window, settings)
    {
        window.setCentralWidget(new QTextEdit);
        window.resize(800, 600);
        window.addDockWidget(Qt::BottomDockWidgetArea, below);
        window.addDockWidget(Qt::RightDockWidgetArea, beside);
        for (QDockWidget* panel : {below, beside}) {
            panel->setWidget(new QTextEdit);
            panel->hide();
        }
        window.show();
    }
    void Show()
    {
        below->show();
        beside->show();
        QTest::qWait(20);
    }
    ~OneRun() { keeper.Save(); }

    QMainWindow window;
    QtPanelKeeper keeper;
    QDockWidget* below = new QDockWidget(&window);
    QDockWidget* beside = new QDockWidget(&window);
};

TEST(PanelKeeperTest, PanelsAreAsLargeAsTheyWere)
{
    MemorySettings settings;
    {
        OneRun run(settings);
        run.Show();
        run.window.resizeDocks({run.below}, {251}, Qt::Vertical);
        run.window.resizeDocks({run.beside}, {303}, Qt::Horizontal);
        QTest::qWait(1);
        run.below->hide();
    }
    {
        const OneRun untouched(settings);
    }
    OneRun run(settings);
    run.Show();
    EXPECT_EQ(run.below->height(), 251);
    EXPECT_EQ(run.beside->width(), 303);
}

TEST(PanelKeeperTest, WhatCannotBeIsIgnored)
{
    MemorySettings none;
    OneRun usual(none);
    usual.Show();
    for (TextView value : {u"x", u"", u"-5", u"30", u"99999999999", u"20000"}) {
        MemorySettings settings;
        settings.values = {{u"PanelHeight", Text(value)}, {u"PanelWidth", Text(value)}};
        OneRun run(settings);
        run.Show();
        EXPECT_EQ(run.below->size(), usual.below->size()) << ToUtf8(value);
        EXPECT_EQ(run.beside->size(), usual.beside->size()) << ToUtf8(value);
    }
}

} // namespace nib::test::panel_keeper_test
