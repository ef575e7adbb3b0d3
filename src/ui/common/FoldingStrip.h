#pragma once

#include <QObject>
#include <QPointer>

#include <vector>

class QWidget;

namespace daylark {

/// Lets a row of controls become narrower than they need together: what is reached otherwise as well goes
/// first, in the order given, and comes back where there is room. The row has a box layout; who else hides
/// one of its controls would find it shown again. Owned by the row; interface thread.
class FoldingStrip : public QObject {
    Q_OBJECT
public:
    /// `leaving`: the first to go first. `narrowest`: the row's least width in points.
    FoldingStrip(QWidget& row, const std::vector<QWidget*>& leaving, int narrowest);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fold();
    [[nodiscard]] int widthOfAll() const;

    QWidget& row_;
    std::vector<QPointer<QWidget>> leaving_;
    bool folding_ = false;
};

} // namespace daylark
