#pragma once
// The real frame with real document windows over a fake host, on the offscreen platform.

#include "fakes/Surroundings.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"
#include "text/widget/SourceViewWidget.h"

#include <QtTest>
#include <QtWidgets>

namespace nib::test {

struct FrameFixture : testing::Test, Surroundings {
    frmMain frame;
    Program program{Around(frame, [this](mvDocument& document) -> std::unique_ptr<clsDocView> {
        return std::make_unique<frmDocument>(frame, clipboard, document);
    })};

    void SetUp() override
    {
        program.Main({});
        frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    void TearDown() override
    {
        for (auto& document : program.OpenDocuments().All()) document->FileClose(false);
        frame.Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    frmDocument& New()
    {
        program.Files().FileNew();
        Settle();
        return *frame.ActiveForm();
    }
    /// New documents; the last one is in front.
    std::vector<frmDocument*> New(int count)
    {
        std::vector<frmDocument*> forms;
        for (int i = 0; i < count; ++i) forms.push_back(&New());
        return forms;
    }
    void Settle()
    {
        QApplication::processEvents();
        clock.Advance({});
    }
    SourceViewWidget& TextOf(frmDocument& form) { return *form.SubWindow()->findChild<SourceViewWidget*>(); }
    void Load(frmDocument& form, TextView text)
    {
        form.txtText().SetText(text);
        form.txtText().Document().SetModified(false);
        Settle();
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        QTest::keyClick(focus, static_cast<Qt::Key>(key), modifiers);
        Settle();
    }
    std::string Title(frmDocument* form) { return form ? ToUtf8(form->Title()) : "none"; }
    std::string Caption() { return frame.windowTitle().toStdString(); }
};

} // namespace nib::test
