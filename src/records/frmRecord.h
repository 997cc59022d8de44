#pragma once
// The window's half of a record as a grid: its tables, a filter for them, and why a text was refused.

#include "records/QtGridView.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QSplitter;
class QTabWidget;

namespace nib {

class frmRecord final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(frmRecord)
public:
    /// `view` outlives it. Throws Error when the record is too large.
    frmRecord(SourceView& view, Dictionary dictionary);
    ~frmRecord() override;

    const Dictionary& Names() const { return grid_.Names(); }
    /// The value at the caret of the text becomes the current cell, in a moment.
    void FollowCaret();
    void TakeFocus();
    /// What is being typed gets into the text. Answers why it does not; the cell stays open then.
    QString TakeInput();

    /// Another text has taken the place of the one that this shows.
    std::function<void()> onReset;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Build();
    QString DictionaryText() const;
    QtGridView* OpenTable() const;
    bool IsHeld() const;
    void BeforeOther(const QObject* watched, QEvent* event);
    bool LeadsAway(const QObject* watched, QEvent::Type type) const;
    void BuildTables();
    QtGridView* NewTable(size_t table);
    void Lead(QtGridView* table);
    void Follow();
    void ShowCaret();
    void Leave(QtGridView* table, bool down);
    void CellChosen(const GridCell& cell);
    void TellRefusal(const QString& reason);
    QtGridView* TableOf(int32_t attribute) const;

    SourceView& view_;
    RecordGrid grid_;
    QTimer later_; ///< takes in changes once for many
    bool dirty_ = false;
    bool caretWaits_ = false; ///< to be shown
    bool choosing_ = false;
    QList<QtGridView*> tables_; ///< owned by the splitter
    QLineEdit* txtFilter_ = nullptr;
    QLabel* lbRefusal_ = nullptr;
    QSplitter* parts_ = nullptr;
    QTabWidget* associations_ = nullptr;
    QtGridView* last_ = nullptr; ///< that had the focus last
};

} // namespace nib
