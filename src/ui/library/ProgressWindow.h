#pragma once

#include <QTimer>
#include <QWidget>

class QProgressBar;
class QVBoxLayout;

namespace daylark {

class PlainLabel;
class ProgressBoard;

/// A small window with the jobs that want one. It never takes the keyboard or the mouse away, and appears
/// only for what lasts, so that nothing flashes. Closing it hides it until the next job. Interface thread.
class ProgressWindow : public QWidget {
    Q_OBJECT
public:
    explicit ProgressWindow(ProgressBoard& board, QWidget* parent);

private:
    void refresh();
    void removeEndedRows();
    void appear();

    struct Row {
        int job = 0;
        QWidget* widget = nullptr;
        PlainLabel* title = nullptr;
        PlainLabel* text = nullptr; ///< hidden while there is nothing more to say
        QProgressBar* bar = nullptr;
    };
    Row makeRow(int job);

    ProgressBoard& board_;
    QVBoxLayout* layout_;
    std::vector<Row> rows_;
    QTimer appear_;
};

} // namespace daylark
