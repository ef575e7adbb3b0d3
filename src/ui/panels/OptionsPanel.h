#pragma once

#include "preferences/Preference.h"

#include <QVariant>
#include <QWidget>

#include <utility>
#include <vector>

class QAbstractSpinBox;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QSpinBox;

namespace daylark {

class Commands;
class MoviePlayerController;

/// The viewer's options at hand while a movie plays: what is written over the picture, mask and mirroring,
/// the range, how movies play, full screen. All of it are preferences, shown and set at once. After a number
/// was typed the keyboard goes back to the viewer. Interface thread.
class OptionsPanel : public QWidget {
    Q_OBJECT
public:
    OptionsPanel(MoviePlayerController& controller, Commands& commands, QWidget* parent = nullptr);

Q_SIGNALS:
    void keyboardUnused(); ///< nothing is typed here any more

private:
    void addOverlayRows();
    void addPictureRows();
    void addRangeRows(Commands& commands);
    void addPlaybackRows();
    void addFullScreenRows();

    void heading(const QString& text);
    void addRow(QWidget* left, QWidget* right = nullptr);
    void addRow(const QString& label, QWidget* right);
    [[nodiscard]] QWidget* inOneRow(const QList<QWidget*>& widgets);
    QCheckBox* check(const QString& text, Preference<bool>& preference);
    QCheckBox* checkOpposite(const QString& text, Preference<bool>& preference);
    QComboBox* choice(const QString& name, PreferenceItem& preference,
                      const std::vector<std::pair<QString, QVariant>>& choices);
    QSpinBox* number(const QString& name, Preference<int>& preference, int least, int most);
    void givesKeyboardBack(QAbstractSpinBox* field);

    MoviePlayerController& controller_;
    QGridLayout* grid_;
};

} // namespace daylark
