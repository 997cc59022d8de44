#pragma once
#include "hosts/ItemBrowser.h"
#include "hosts/picker/PickerModel.h"

#include <QDialog>
#include <QPointer>
#include <QSize>
#include <QTimer>
#include <QWidget>

#include <functional>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;
class QTreeView;

namespace nib {

/// Runs the item picker as a modal dialog. Its size and the showing of hidden files last as long as the program.
class ItemPicker : public PickerDialog {
public:
    /// Edits the connections over a widget; true when they have changed.
    using EditConnections = std::function<bool(QWidget*)>;

    /// The dialog stands over `owner`.
    explicit ItemPicker(QWidget* owner = nullptr, EditConnections edit = {}) : owner_(owner), edit_(std::move(edit)) {}
    std::optional<PickerAnswer> Run(const SelectRequest& request, TextView startPath, ItemBrowser& browser) override;

private:
    QPointer<QWidget> owner_;
    EditConnections edit_;
    QSize size_;
    bool showHidden_ = false;
};

class PickerItemModel;
class PickerListView;
class PickerMessageLine;
class PickerPathBar;
class PlaceTreeModel;

/// The picker's window: shows a PickerModel that has been started, and is accepted once the model has an answer.
class frmItemPicker : public QDialog {
    Q_OBJECT

public:
    /// Both outlive the form.
    frmItemPicker(PickerModel& model, ItemBrowser& browser, QWidget* owner, ItemPicker::EditConnections edit = {});

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* BuildPlaces();
    QWidget* BuildList();
    QWidget* BuildFields();
    QWidget* BuildBottom();
    QToolButton* AddTool(const QString& name, const QIcon& icon, const QKeySequence& key);
    void SetUpColumns();
    void SetTabOrder();
    template <typename Receiver>
    void AddShortcut(const QKeySequence& key, Receiver receiver);

    void Go(const std::function<void()>& move);
    void Press(const std::function<PickerModel::Outcome()>& decide);
    void Filter(const std::function<void()>& change);
    void FollowTree();
    void EnterList();
    void ConnectionsWanted();

    void ShowPlace();
    void ShowRows();
    void ShowSelection();
    void ShowChoice();
    void ShowMessage();
    void SelectionChanged();
    void AskLocks();

    PickerModel& model_;
    PickerItemModel* items_;
    PlaceTreeModel* places_;
    ItemPicker::EditConnections edit_;
    QToolButton* back_ = nullptr;
    QToolButton* up_ = nullptr;
    PickerPathBar* path_ = nullptr;
    QLabel* placesLabel_ = nullptr;
    QTreeView* tree_ = nullptr;
    PickerListView* list_ = nullptr;
    QLineEdit* name_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QCheckBox* hidden_ = nullptr;
    QCheckBox* readOnly_ = nullptr;
    PickerMessageLine* message_ = nullptr;
    QPushButton* connections_ = nullptr;
    QPushButton* accept_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QTimer treeTimer_;
    QTimer lockTimer_;
    /// The form is being brought in line with the model: what its widgets report is no choice of the user.
    bool showing_ = false;
};

} // namespace nib
