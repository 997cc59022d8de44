#pragma once
#include "hosts/ConnectionEdits.h"
#include "platform/MessageBoxes.h"

#include <QDialog>

#include <functional>
#include <vector>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace nib {

/// Shows connections of hosts.conf to add, change, test and remove them.
class frmConnections final : public QDialog {
    Q_OBJECT

public:
    /// True when the user agreed to changes and the links follow them. A hosts.conf that cannot be read is told of.
    static bool Edit(HostLinks& links, MessageBoxes& boxes, QWidget* owner);

    /// `forget`: the kept password of a login. The edits outlive the form.
    frmConnections(ConnectionEdits& edits, std::function<void(const HostSettings&)> forget, QWidget* owner = nullptr);
    void accept() override;

private:
    struct Field {
        TextView key;
        TextView kind; ///< that it is for; empty: for all
        QLineEdit* line = nullptr;
        QWidget* row = nullptr; ///< the line, or what holds it
    };

    QWidget* BuildList();
    QWidget* BuildFields();
    QWidget* BuildBottom();
    void AddField(const char* caption, TextView key, TextView kind, const QString& placeholder = {});
    void AddRow(const char* caption, QWidget* row, QWidget* field);

    void FillList(const Text& current);
    static QString DefaultName();
    int RowOf(const Text& name) const;
    void ShowConnection();
    void ShowKind();
    void ShowDefaults();
    void Choose(const QComboBox& box, TextView key);
    /// False, with the reason on the form, when it failed.
    bool Try(const std::function<void()>& change);
    bool TakeName();
    void Add();
    void Remove();
    void Browse();
    void Test();
    void Say(const QString& text, bool trouble);

    ConnectionEdits& edits_;
    std::function<void(const HostSettings&)> forget_;
    Text current_; ///< the connection that is shown
    std::vector<Field> fields_;
    QListWidget* list_ = nullptr;
    QPushButton* add_ = nullptr;
    QPushButton* remove_ = nullptr;
    QFormLayout* form_ = nullptr;
    QLineEdit* name_ = nullptr;
    QComboBox* kind_ = nullptr;
    QComboBox* ids_ = nullptr;
    QPushButton* browse_ = nullptr;
    QPushButton* test_ = nullptr;
    QLabel* icon_ = nullptr;
    QLabel* said_ = nullptr;
    QPushButton* ok_ = nullptr;
    QPushButton* cancel_ = nullptr;
    bool showing_ = false; ///< what the widgets report is no choice of the user
};

} // namespace nib
