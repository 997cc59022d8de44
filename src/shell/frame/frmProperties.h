#pragma once
#include <QCoreApplication>
#include <QDialog>

class QFormLayout;
class QPushButton;
class QWidget;

namespace nib {

struct Location;
class mvDocument;
struct PropertyRow;

/// Shows the facts of one document; each value can be selected and copied.
class frmProperties final : public QDialog {
    Q_DECLARE_TR_FUNCTIONS(frmProperties)
public:
    explicit frmProperties(QWidget* owner = nullptr);

    /// Modal over the owner.
    void ShowDialog(mvDocument& document, const Location& current);
    void AddRow(const PropertyRow& row);

private:
    QFormLayout* rows_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
};

} // namespace nib
