#pragma once

#include <QWidget>

class QToolButton;

namespace daylark {

/// The title line of a panel: its name, elided in the middle where it is long, and a button that hides it.
/// The panel is moved by it. Interface thread.
class PanelTitle : public QWidget {
    Q_OBJECT
public:
    explicit PanelTitle(const QString& title, QWidget* parent = nullptr);
    void setTitle(const QString& title);
    [[nodiscard]] QString title() const { return title_; }

Q_SIGNALS:
    void closeClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] bool isMovedByDesktop() const;

    QString title_;
    QToolButton* close_;
};

} // namespace daylark
