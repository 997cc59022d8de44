#pragma once
#include "persistence/store/SettingsStore.h"

#include <QDockWidget>
#include <QMainWindow>

#include <array>

namespace nib {

/// Keeps how high the panels below the texts are, and how wide those beside them, from one run to the next.
class QtPanelKeeper final : public QObject {
public:
    /// All outlive it. Panels that come later are seen, too.
    QtPanelKeeper(QMainWindow& window, SettingsStore& store);

    bool eventFilter(QObject* watched, QEvent* event) override;
    void Save() const;

private:
    /// One for panels below or above the texts, one for those at their sides.
    struct Extent {
        int pixels = 0; ///< 0 when it is not known
        bool used = false;
    };

    void Watch(QObject* child);
    void Shown(QDockWidget& panel);
    void Apply(QDockWidget& panel);
    void Resized(const QDockWidget& panel);
    Qt::Orientation Across(const QDockWidget& panel) const;
    Extent& ExtentOf(const QDockWidget& panel) { return extents_[Across(panel) == Qt::Vertical ? 0 : 1]; }
    int Dots(size_t extent) const;

    QMainWindow& window_;
    SettingsStore& store_;
    std::array<Extent, 2> extents_;
};

} // namespace nib
