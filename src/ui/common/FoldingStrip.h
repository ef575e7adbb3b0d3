#pragma once

#include <QObject>
#include <QPointer>

#include <vector>

class QMenu;
class QToolButton;
class QWidget;

namespace daylark {

/// Lets a row of controls become narrower than they need together: they leave in the order given, stand behind "»" at the
/// row's end meanwhile, buttons as entries and read-outs as lines, and come back where there is room. The row has a box
/// layout; who else hides one of its controls would find it shown again. Owned by the row; interface thread.
class FoldingStrip : public QObject {
    Q_OBJECT
public:
    /// `leaving`: the first to go first. `narrowest`: the row's least width in points.
    FoldingStrip(QWidget& row, const std::vector<QWidget*>& leaving, int narrowest);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fold();
    void fillMenu();
    [[nodiscard]] bool leaves(const QWidget* control) const;
    [[nodiscard]] int widthOfAll() const;

    QWidget& row_;
    std::vector<QPointer<QWidget>> leaving_;
    QToolButton* more_;
    QMenu* menu_;
    bool folding_ = false;
};

} // namespace daylark
