#pragma once

#include "base/jobs/WorkQueue.h"
#include "model/Movie.h"
#include "picture/colour/ColourConfig.h"

#include <QObject>

#include <deque>
#include <memory>

namespace daylark {

class CurrentMovie;
class Player;
class Preferences;
class ReviewEdits;

/// How the picture on screen is brought to the display: by which colour configuration, from which space, by which view; and
/// exposure and gamma for looking, which are nobody's review and are gone with the next start. What is display-referred
/// already, as movies are unless a person gives them a space, is shown untouched, and no configuration is read for it. A
/// session may have a configuration of its own, which goes before the one remembered, which goes before $OCIO and our own.
/// Configuration and processors are made on a worker; until then, and where they can't be had, the picture is shown raw and
/// `problem` says why. Owned by the viewer's controller; interface thread.
class ViewerColour : public QObject {
    Q_OBJECT
public:
    ViewerColour(CurrentMovie& current, Player& player, ReviewEdits& edits, Preferences& preferences,
                 QObject* parent = nullptr);

    /// What the picture goes through; null: its numbers are shown as they are.
    [[nodiscard]] const std::shared_ptr<const DisplayProcessor>& processor() const { return processor_; }
    [[nodiscard]] const std::shared_ptr<const ColourConfig>& config() const { return config_; } ///< null: not read, or broken
    [[nodiscard]] QString problem() const;      ///< a line for people; empty: none
    [[nodiscard]] QString lookingText() const;  ///< exposure and gamma, where the picture is not shown as it is
    /// The space in force; empty: display-referred, untouched.
    [[nodiscard]] QString inputSpace() const;
    [[nodiscard]] QString inputSpaceByHand() const; ///< empty: as the file says
    [[nodiscard]] bool isManaged() const { return !inputSpace().isEmpty(); }
    /// As it is in force: what was remembered, fitted to the configuration.
    [[nodiscard]] DisplayTransform transform() const;

    void readConfig(); ///< where it has not been yet: for whoever shows what there is to choose from
    [[nodiscard]] QString configuration() const; ///< what was chosen: a path or our own's name; empty: $OCIO, else our own
    [[nodiscard]] bool configurationIsOfSession() const;
    /// For this session where it has one of its own (can be undone), else remembered; empty: $OCIO, else our own.
    void chooseConfig(const QString& path);
    /// The one in force becomes this session's, or this session's goes; can be undone.
    void setConfigurationOfSession(bool ofSession);
    void setInputSpace(const QString& space); ///< of the movie on screen; empty: as the file says. Can be undone
    void setDisplay(const QString& display);  ///< remembered, as the next two
    void setView(const QString& view);
    void setLook(const QString& look);
    void setExposure(double stops); ///< for looking; held to 20 either way
    void setGamma(double gamma);    ///< for looking; held to 0.1 to 10
    void resetLooking();

Q_SIGNALS:
    void processorChanged(); ///< the picture looks different
    void changed();          ///< anything else: controls follow

private:
    struct Kept {
        DisplayTransform transform;
        std::shared_ptr<const DisplayProcessor> processor;
    };
    void followConfiguration();
    void forgetConfig();
    void takeConfig(const Result<std::shared_ptr<const ColourConfig>>& config);
    void refresh();
    void takeProcessor(const DisplayTransform& transform, const Result<std::shared_ptr<const DisplayProcessor>>& made);
    void show(const std::shared_ptr<const DisplayProcessor>& processor, const QString& problem);
    [[nodiscard]] QString spaceOfFile() const;

    CurrentMovie& current_;
    Player& player_;
    ReviewEdits& edits_;
    Preferences& preferences_;
    enum class Reading { notYet, underWay, done } reading_ = Reading::notYet;
    std::shared_ptr<const ColourConfig> config_;
    QString configProblem_, processorProblem_, followed_; ///< `followed_`: the configuration that this is all from
    double exposure_ = 0, gamma_ = 1;
    bool frameIsLight_ = false;
    QString frameSpace_;
    DisplayTransform wanted_;
    std::shared_ptr<const DisplayProcessor> processor_;
    std::deque<Kept> kept_; ///< the newest first
    quint64 configNumber_ = 0;
    WorkQueue work_; ///< last: waits for its work
};

} // namespace daylark
