#pragma once
// The frame with its Find and Replace dialog and its results window, worked with the mouse and by keys.

#include "FrameFixture.h"
#include "platform/qt/QtText.h"
#include "search/FindEngine.h"
#include "search/ResultsModel.h"
#include "search/frmFind.h"
#include "search/frmResults.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStatusBar>

namespace nib::test {

struct SearchFrame : FrameFixture {
    std::unique_ptr<ResultsModel> resultsModel;
    std::unique_ptr<frmResults> results;
    std::unique_ptr<FindEngine> engine;
    std::unique_ptr<frmFind> dialog;

    void Start() override
    {
        FrameFixture::Start();
        resultsModel = std::make_unique<ResultsModel>(program.Services());
        results = std::make_unique<frmResults>(*resultsModel, store, &frame);
        engine = std::make_unique<FindEngine>(program.Services(), *results, program.EditorSettings().RecentSearches);
        dialog = std::make_unique<frmFind>(*engine, &frame);
        dialogs.onFind = [this](TextView what) {
            if (what == u"find")
                dialog->Find();
            else if (what == u"replace")
                dialog->Replace();
            else
                dialog->FindNext();
        };
    }
    void TearDown() override
    {
        dialog.reset();
        engine.reset();
        results.reset();
        resultsModel.reset();
        FrameFixture::TearDown();
    }

    /// Brings the document to the front and calls for the dialog by its key.
    void Open(frmDocument& form, bool replace)
    {
        dialog->hide();
        results->hide();
        frame.activateWindow();
        frame.ActivateChild(form);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
        Settle();
        TextOf(form).setFocus();
        Key(replace ? Qt::Key_H : Qt::Key_F, Qt::ControlModifier);
        ASSERT_TRUE(dialog->isVisible());
        ASSERT_EQ(dialog->windowTitle(), replace ? QStringLiteral("Replace") : QStringLiteral("Find"));
    }
    QAbstractButton& Button(const char* caption)
    {
        for (auto* button : dialog->findChildren<QAbstractButton*>())
            if (button->text() == QLatin1String(caption) && button->isVisible()) return *button;
        throw std::runtime_error(caption);
    }
    void Click(const char* caption)
    {
        QTest::mouseClick(&Button(caption), Qt::LeftButton);
        Settle();
    }
    void Check(const char* caption, bool on)
    {
        if (Button(caption).isChecked() != on) Click(caption);
    }
    void Type(QLineEdit& field, TextView text)
    {
        field.setFocus();
        field.selectAll();
        QTest::keyClick(&field, Qt::Key_Delete);
        QTest::keyClicks(&field, ToQString(text));
    }
    QLineEdit& FindField() { return *dialog->findChild<QComboBox*>()->lineEdit(); }
    QLineEdit& ReplaceField()
    {
        for (auto* field : dialog->findChildren<QLineEdit*>())
            if (field != &FindField()) return *field;
        throw std::runtime_error("Replace with");
    }
    QString Listed() { return results->findChild<QPlainTextEdit*>()->toPlainText(); }
    /// What the panel says that takes the room of the others.
    QString Status()
    {
        for (auto* label : frame.statusBar()->findChildren<QLabel*>())
            if (label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) return label->text();
        return QStringLiteral("no status panel");
    }
};

} // namespace nib::test
