#pragma once

#include "platform/FailedWrites.h"

#include <QWidget>

#include <vector>

class QVBoxLayout;

namespace daylark {

/// The quiet bar at a window's foot: what could not be written and why, a line each, until it is written. Each line
/// offers what its part does: "Save As…", "Try Again"; those that offer nothing come last. Those beyond `mostLines` are
/// counted beside the last. Not there while there is nothing to say. Takes no keyboard by itself. Interface thread.
class FailedWritesBar : public QWidget {
    Q_OBJECT
public:
    static constexpr size_t usualLines = 3;
    explicit FailedWritesBar(FailedWrites& writes, QWidget* parent = nullptr, size_t mostLines = usualLines);

private:
    void refresh();
    [[nodiscard]] std::vector<FailedWrites::Entry> inOrder() const;
    [[nodiscard]] QWidget* lineOf(const FailedWrites::Entry& entry);
    void addRest(QWidget* line, const QStringList& paths);

    FailedWrites& writes_;
    const size_t mostLines_;
    QVBoxLayout* lines_;
    QWidget* inside_ = nullptr; ///< the lines of now
};

} // namespace daylark
