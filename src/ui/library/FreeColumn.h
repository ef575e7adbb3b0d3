#pragma once

#include <QObject>

class QTableView;

namespace daylark {

/// Gives one column of a table what the others leave free, and never less than it had been given. Owned by its table;
/// interface thread.
class FreeColumn : public QObject {
    Q_OBJECT
public:
    FreeColumn(QTableView& table, int column);

    void setLeast(int width); ///< points; with what is free beside the other columns it becomes wider
    [[nodiscard]] int least() const { return least_; }
    [[nodiscard]] bool isFitting() const { return fitting_; } ///< the width changes, and nobody chose it

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QTableView& table_;
    int column_;
    int least_ = 160;
    bool fitting_ = false;
};

} // namespace daylark
