#pragma once
#include "shell/StartPage.h"

#include <QCoreApplication>
#include <QListWidget>
#include <QWidget>

#include <memory>

class QBoxLayout;
class QLabel;
class QMdiArea;

namespace nib {

/// Rows under headings. Return, Space and a click run the one that they are on.
class StartList final : public QListWidget {
public:
    /// `page` outlives it.
    StartList(StartPage& page, const QString& accessibleName);

    void SetOther(StartList& other) { other_ = &other; }
    void Clear();
    void AddRows(const QString& heading, const std::vector<StartRow>& rows);
    bool HasRows() const { return !rows_.empty(); }
    /// The row that was gone to last, else the first.
    void SelectRow();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void RunLater(const QListWidgetItem& item);

    StartPage& page_;
    StartList* other_ = nullptr;
    std::vector<StartRow> rows_; ///< by the number that an item holds
};

/// What stands in the frame while no document is open: what to begin with, in two lists.
class frmStart final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(frmStart)

public:
    explicit frmStart(Program& program, QWidget* parent);

    /// As things are now; without a flicker where nothing has changed.
    void Refresh();
    void FocusRows();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Fill();
    void ApplyLook();

    StartPage page_;
    StartRows shown_;
    QLabel* title_;
    QLabel* subtitle_;
    StartList* left_;
    StartList* right_;
    QBoxLayout* lists_;
};

/// Keeps the start page over an area, from when that was painted empty and nothing more urgent goes on.
class StartPlace final : public QObject {
public:
    explicit StartPlace(QMdiArea& area);

    /// `program` outlives it. Null from when it goes.
    void SetProgram(Program* program) { program_ = program; }
    /// No window of a document is in sight in the area.
    void SetEmpty(bool empty);
    /// True when there is a page to take the focus.
    bool TakeFocus();
    /// What it shows may have changed behind the program's back.
    void Refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Build();

    QMdiArea& area_;
    Program* program_ = nullptr;
    frmStart* page_ = nullptr; ///< owned by the parent of the area
    bool empty_ = true;
    bool building_ = false;
};

} // namespace nib
