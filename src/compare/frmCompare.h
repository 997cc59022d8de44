#pragma once
// A window of the frame that compares two texts: its bar, what the texts are, and the texts.

#include "compare/QtCompareView.h"

#include <QTimer>
#include <QWidget>

class QBoxLayout;
class QCheckBox;
class QLabel;
class QToolButton;

namespace nib {

class frmCompare final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(frmCompare)
public:
    /// Both outlive the window, which goes by itself when one of its documents closes.
    frmCompare(DocumentServices& services, SettingsStore& store, std::array<std::unique_ptr<CompareSide>, 2> sides);

    ~frmCompare() override;

    const CompareModel& Model() const { return model_; }
    QtCompareView& View() { return *view_; }
    /// Compares once more, with what is stored now, or with what was read in place of the text on the left.
    void Again(std::optional<CompareText> left = std::nullopt);

    /// The other side is the chosen one.
    std::function<void()> onSide;
    /// The document is to be saved.
    std::function<void(mvDocument& document)> onSave;

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Build();
    QBoxLayout* BuildBar();
    QToolButton* AddButton(QBoxLayout& bar, const QString& text, const QString& tip, std::function<void()> act);
    QCheckBox* AddOption(QBoxLayout& bar, const QString& text, const QString& tip, bool CompareOptions::*option);
    void Show();
    void ShowState();
    void Ring();
    void Open(Beside side, int32_t line);
    void Save();
    QString StateText() const;
    QString NoteText() const;

    DocumentServices& services_;
    CompareModel model_;
    QtCompareView* view_ = nullptr; ///< the widgets are Qt's
    QBoxLayout* bar_ = nullptr;
    QWidget* options_ = nullptr; ///< the second part of the bar
    std::array<QLabel*, 2> captions_{};
    QLabel* lbState_ = nullptr;
    QLabel* lbNote_ = nullptr;
    QToolButton* cmdPrevious_ = nullptr;
    QToolButton* cmdNext_ = nullptr;
    std::array<QToolButton*, 2> cmdTake_{};
    QTimer timer_;
    int rings_ = 0;
};

} // namespace nib
