#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>

#include <vector>

class QMenu;
class QToolButton;
class QWidget;

namespace daylark {

/// Lets a row of controls become narrower than they need together: they leave in the order given, stand behind "»" at the
/// row's end meanwhile, buttons as entries and read-outs as lines, and come back where there is room. The row has a box
/// layout; who else hides one of those that leave would find it shown again (`setWanted` is for that). Owned by the row;
/// interface thread.
class FoldingStrip : public QObject {
    Q_OBJECT
public:
    /// `leaving`: the first to go first. `narrowest`: the row's least width in points.
    FoldingStrip(QWidget& row, const std::vector<QWidget*>& leaving, int narrowest);
    /// One that is not wanted stands neither in the row nor behind "»".
    void setWanted(const QWidget* control, bool wanted);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fold();
    void fillMenu();
    [[nodiscard]] bool leaves(const QWidget* control) const;
    [[nodiscard]] int widthOfAll() const;

    QWidget& row_;
    std::vector<QPointer<QWidget>> leaving_;
    QSet<const QWidget*> unwanted_;
    QToolButton* more_;
    QMenu* menu_;
    bool folding_ = false;
};

} // namespace daylark
