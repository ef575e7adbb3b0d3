#pragma once

#include <QWidget>


namespace daylark {

class PlainLabel;
class Preferences;

/// The timecode in a window of its own that can be put and sized freely, its figures as large as the window.
/// It stays above the viewer, never takes its keyboard and comes back where it was. Owned by the viewer's
/// window; interface thread.
class FloatingTimecode : public QWidget {
    Q_OBJECT
public:
    FloatingTimecode(Preferences& preferences, QWidget* viewer);
    void showText(const QString& text, const QColor& colour);
    void setShown(bool shown);
    [[nodiscard]] PlainLabel* field() const { return field_; }

Q_SIGNALS:
    void closed(); ///< by its close box

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override; ///< the whole window is a handle to move it by
    void closeEvent(QCloseEvent* event) override;

private:
    void remember();

    Preferences& preferences_;
    PlainLabel* field_;
    QColor colour_;
};

} // namespace daylark
