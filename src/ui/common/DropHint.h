#pragma once

#include <QWidget>

class QAbstractItemView;

namespace daylark {

/// What an empty list says: an icon and a text in its middle, invisible to the mouse. Stands over its
/// view and follows its size. Interface thread.
class DropHint : public QWidget {
    Q_OBJECT
public:
    DropHint(const QString& text, QAbstractItemView* view);
    void setText(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString text_;
};

} // namespace daylark
