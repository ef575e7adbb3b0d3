#pragma once

#include <QWidget>

class QVBoxLayout;

namespace daylark {

class FailedWrites;

/// The quiet bar at a window's foot: what could not be written and why, a line each, until it is written. Each line
/// offers what its part does: "Save As…", "Try Again". Not there while there is nothing to say. Takes no keyboard by
/// itself. Interface thread.
class FailedWritesBar : public QWidget {
    Q_OBJECT
public:
    explicit FailedWritesBar(FailedWrites& writes, QWidget* parent = nullptr);

private:
    void refresh();
    [[nodiscard]] QWidget* lineOf(size_t at);

    FailedWrites& writes_;
    QVBoxLayout* lines_;
    QWidget* inside_ = nullptr; ///< the lines of now
};

} // namespace daylark
