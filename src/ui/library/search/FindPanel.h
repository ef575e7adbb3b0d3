#pragma once

#include <QWidget>

class QLineEdit;

namespace daylark {

class PlainLabel;
class Commands;
class PlaylistController;

/// The find panel: a strip above the items with the field, what it looks at, how many matches there are, and what can be
/// done with them. Return goes to the next match, Shift+Return to the one before, Escape closes. Shows what the find part
/// holds. Interface thread.
class FindPanel : public QWidget {
    Q_OBJECT
public:
    FindPanel(PlaylistController& controller, const Commands& commands, QWidget* parent = nullptr);

Q_SIGNALS:
    void left(); ///< closed while the keyboard was here: to the items

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeLayout(const Commands& commands);
    void refresh();
    void open();
    void shut();

    PlaylistController& controller_;
    QLineEdit* field_;
    PlainLabel* status_;
};

} // namespace daylark
