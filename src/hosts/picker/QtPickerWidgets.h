#pragma once
#include "hosts/picker/PickerModel.h"

#include <QElapsedTimer>
#include <QTreeView>
#include <QWidget>

#include <vector>

class QLabel;
class QToolButton;

namespace nib {

/// The picker's list of names: a plain table of rows that goes up on Backspace and says why it is empty. Letters lead
/// to the row that begins with them.
class PickerListView : public QTreeView {
    Q_OBJECT

public:
    explicit PickerListView(QWidget* parent = nullptr);

    void SetEmptyText(const QString& text);
    /// The first and the last row in sight; the first is beyond the last when there are none.
    std::pair<int, int> RowsInSight() const;

signals:
    void UpWanted();
    void SightChanged();
    /// So far, and no row begins with it.
    void TypedOn(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Type(const QString& text);

    QString emptyText_;
    QString typed_;
    QElapsedTimer sinceTyped_;
};

/// One line that tells what went wrong, inside the dialog; takes no room while there is nothing to say.
class PickerMessageLine : public QWidget {
    Q_OBJECT

public:
    explicit PickerMessageLine(QWidget* parent = nullptr);
    void Say(const QString& text);

private:
    QLabel* text_;
};

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
