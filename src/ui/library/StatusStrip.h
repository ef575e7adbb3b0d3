#pragma once

#include <QWidget>

class QProgressBar;
class QToolButton;

namespace daylark {

class PlainLabel;
class PlaylistController;

/// The line at the library's foot: which session it is (its path as the tool tip), how many items, how many of them selected
/// and missing, whether edits cannot be stored, and the job under way with what is left of it and a way to cancel it.
/// Interface thread.
class StatusStrip : public QWidget {
    Q_OBJECT
public:
    explicit StatusStrip(PlaylistController& controller, QWidget* parent = nullptr);
    void refresh();
    [[nodiscard]] QString text() const; ///< as shown, trouble and job included

private:
    PlaylistController& controller_;
    void showSession();

    PlainLabel* session_;
    PlainLabel* counts_;
    PlainLabel* trouble_; ///< what keeps edits from being stored
    PlainLabel* job_;
    QProgressBar* bar_;
    QToolButton* cancel_;
    int jobId_ = 0;
};

} // namespace daylark
