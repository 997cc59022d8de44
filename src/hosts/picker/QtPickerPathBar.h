#pragma once
#include "hosts/picker/PickerModel.h"

#include <QWidget>

#include <vector>

class QToolButton;

namespace nib {

/// The way to a place as a row of buttons; where it is too narrow the outer ones move into a menu.
class PickerPathBar : public QWidget {
    Q_OBJECT

public:
    explicit PickerPathBar(QWidget* parent = nullptr);

    void SetTrail(const std::vector<PlaceStep>& trail);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void Chosen(const QString& path);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QToolButton* AddButton(const QString& name, const QString& path);
    void Arrange();
    int Gap() const;

    QToolButton* more_;
    std::vector<QToolButton*> steps_;
    /// Steps that stand in the menu for want of room.
    size_t hidden_ = 0;
};

} // namespace nib
