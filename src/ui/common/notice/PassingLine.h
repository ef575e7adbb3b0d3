#pragma once

#include <QTimer>
#include <QWidget>

#include <functional>

class QToolButton;

namespace daylark {

class PlainLabel;

/// A line over a widget's foot that says something and goes by itself, with a button for the one thing that can be done
/// about it. It takes no keyboard and moves nothing; the pointer on it makes it stay. Owned by the widget that it stands
/// over; interface thread.
class PassingLine : public QWidget {
    Q_OBJECT
public:
    explicit PassingLine(QWidget& over);

    void say(const QString& text, const QString& button = {}, std::function<void()> action = {});
    void goAway();
    [[nodiscard]] QString text() const; ///< empty while nothing is said

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void place();

    QWidget& over_;
    PlainLabel* text_;
    QToolButton* button_;
    std::function<void()> action_;
    QTimer passing_;
};

class ManyChanges;
/// Says what became of many items at once, with "Undo".
void tellOf(ManyChanges& changes, PassingLine& line, std::function<bool()> isWanted);

} // namespace daylark
