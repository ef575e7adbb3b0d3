#include "viewer/display/ViewerColour.h"

#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "review/ReviewEdits.h"
#include "viewer/CurrentMovie.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace daylark {

namespace {

constexpr size_t mostProcessorsKept = 12;
constexpr double mostStops = 20, mostGamma = 10;

} // namespace

ViewerColour::ViewerColour(CurrentMovie& current, Player& player, ReviewEdits& edits, Preferences& preferences,
                           QObject* parent)
    : QObject(parent)
    , current_(current)
    , player_(player)
    , edits_(edits)
    , preferences_(preferences) {
    connect(&current_, &CurrentMovie::changed, this, [this] {
        frameIsLight_ = false;
        frameSpace_.clear();
        refresh();
    });
    connect(&player_, &Player::frameShown, this, [this](const VideoFrame& frame) {
        if (frame.isSceneLinear() == frameIsLight_ && frame.colourSpace() == frameSpace_) return;
        frameIsLight_ = frame.isSceneLinear();
        frameSpace_ = frame.colourSpace();
        refresh();
    });
    connect(&edits_, &ReviewEdits::movieChanged, this,
            [this](const std::shared_ptr<Movie>& movie, const QString& field) {
                if (movie == current_.movie() && field == QLatin1String("inputColourSpace")) refresh();
            });
    followed_ = configuration();
    connect(&preferences_.colourConfiguration, &PreferenceItem::changed, this, &ViewerColour::followConfiguration);
    connect(&edits_, &ReviewEdits::colourConfigurationChanged, this, &ViewerColour::followConfiguration);
    for (PreferenceItem* item : std::initializer_list<PreferenceItem*>{&preferences_.colourDisplay,
                                                                       &preferences_.colourView,
                                                                       &preferences_.colourLook})
        connect(item, &PreferenceItem::changed, this, &ViewerColour::refresh);
}

// The configuration.

void ViewerColour::readConfig() {
    if (reading_ != Reading::notYet) return;
    reading_ = Reading::underWay;
    work_.run([this, number = configNumber_, path = configuration()] {
        auto read = std::make_shared<Result<std::shared_ptr<const ColourConfig>>>(ColourConfig::chosen(path));
        WorkQueue::deliver(this, [this, number, read] {
            if (number == configNumber_) takeConfig(*read);
        });
    });
}

void ViewerColour::takeConfig(const Result<std::shared_ptr<const ColourConfig>>& config) {
    reading_ = Reading::done;
    config_ = config ? *config : nullptr;
    configProblem_ = config ? QString() : config.error().text;
    refresh();
}

QString ViewerColour::configuration() const {
    return configurationIsOfSession() ? edits_.colourConfiguration() : preferences_.colourConfiguration();
}

bool ViewerColour::configurationIsOfSession() const {
    return !edits_.colourConfiguration().isEmpty();
}

void ViewerColour::followConfiguration() {
    const QString before = std::exchange(followed_, configuration());
    if (before != followed_) return forgetConfig();
    Q_EMIT changed(); // whose it is
}

void ViewerColour::forgetConfig() {
    const bool wasRead = reading_ != Reading::notYet;
    ++configNumber_;
    reading_ = Reading::notYet;
    config_.reset();
    kept_.clear();
    configProblem_.clear();
    wanted_ = {};
    if (wasRead) readConfig();
    refresh();
}

void ViewerColour::chooseConfig(const QString& path) {
    readConfig(); // so that it is read anew, whatever is on screen
    if (configurationIsOfSession())
        edits_.setColourConfiguration(path);
    else
        preferences_.colourConfiguration.set(path);
}

void ViewerColour::setConfigurationOfSession(bool ofSession) {
    if (ofSession == configurationIsOfSession()) return;
    readConfig();
    QString inForce = configuration();
    if (inForce.isEmpty()) inForce = qEnvironmentVariable("OCIO");
    if (inForce.isEmpty()) inForce = ColourConfig::ownName; // by its name, so that it stays so on other machines
    edits_.setColourConfiguration(ofSession ? inForce : QString());
}

// What is in force.

QString ViewerColour::inputSpaceByHand() const {
    return current_.movie() ? current_.movie()->inputColourSpace : QString();
}

QString ViewerColour::spaceOfFile() const {
    const auto& movie = current_.movie();
    if (!movie || !config_) return {};
    return config_->spaceOf({movie->filepathString, frameSpace_, frameIsLight_, movie->frameRun.has_value()});
}

QString ViewerColour::inputSpace() const {
    const QString byHand = inputSpaceByHand();
    return byHand.isEmpty() ? spaceOfFile() : byHand;
}

DisplayTransform ViewerColour::transform() const {
    const DisplayTransform transform{inputSpace(),
                                     preferences_.colourDisplay(),
                                     preferences_.colourView(),
                                     preferences_.colourLook(),
                                     exposure_,
                                     gamma_};
    return config_ ? config_->fitted(transform) : transform;
}

QString ViewerColour::problem() const {
    if (!configProblem_.isEmpty())
        return (configurationIsOfSession()
                    ? tr("The session's colour configuration cannot be used, the picture is shown raw: %1")
                    : tr("The colour configuration cannot be used, the picture is shown raw: %1"))
            .arg(configProblem_);
    if (!processorProblem_.isEmpty()) return tr("The picture is shown raw: %1").arg(processorProblem_);
    return {};
}

QString ViewerColour::lookingText() const {
    if (!isManaged()) return {};
    QStringList parts;
    if (exposure_ != 0)
        parts << tr("Looking at exposure %1%2").arg(exposure_ > 0 ? QStringLiteral("+") : QString()).arg(exposure_, 0, 'f', 1);
    if (gamma_ != 1) parts << tr("looking at gamma %1").arg(gamma_, 0, 'f', 2);
    return parts.join(QStringLiteral(", "));
}

// What a person chooses.

void ViewerColour::setInputSpace(const QString& space) {
    if (current_.movie()) edits_.setInputSpace(current_.movie(), space);
}

void ViewerColour::setDisplay(const QString& display) {
    preferences_.colourDisplay.set(display);
}

void ViewerColour::setView(const QString& view) {
    preferences_.colourView.set(view);
}

void ViewerColour::setLook(const QString& look) {
    preferences_.colourLook.set(look);
}

void ViewerColour::setExposure(double stops) {
    exposure_ = std::isfinite(stops) ? std::clamp(stops, -mostStops, mostStops) : 0;
    refresh();
}

void ViewerColour::setGamma(double gamma) {
    gamma_ = std::isfinite(gamma) ? std::clamp(gamma, 1 / mostGamma, mostGamma) : 1;
    refresh();
}

void ViewerColour::resetLooking() {
    exposure_ = 0;
    gamma_ = 1;
    refresh();
}

// The processor.

void ViewerColour::refresh() {
    const bool isWanted = !inputSpaceByHand().isEmpty() || frameIsLight_ || !frameSpace_.isEmpty() ||
                          (current_.movie() && current_.movie()->frameRun);
    if (!isWanted || !config_) {
        wanted_ = {};
        if (isWanted) readConfig();
        return show(nullptr, {});
    }
    const DisplayTransform transform = this->transform();
    if (transform.inputSpace.isEmpty()) {
        wanted_ = {};
        return show(nullptr, {});
    }
    if (transform == wanted_) return Q_EMIT changed();
    wanted_ = transform;
    const auto found = std::find_if(kept_.begin(), kept_.end(),
                                    [&](const Kept& kept) { return kept.transform == transform; });
    if (found != kept_.end()) return show(found->processor, {});
    Q_EMIT changed();
    work_.forgetWaiting();
    work_.run([this, config = config_, transform] {
        auto made = std::make_shared<Result<std::shared_ptr<const DisplayProcessor>>>(config->processor(transform));
        WorkQueue::deliver(this, [this, transform, made] { takeProcessor(transform, *made); });
    });
}

void ViewerColour::takeProcessor(const DisplayTransform& transform,
                                 const Result<std::shared_ptr<const DisplayProcessor>>& made) {
    if (!(transform == wanted_)) return; // another was asked for since
    if (!made) return show(nullptr, made.error().text);
    kept_.push_front({transform, *made});
    if (kept_.size() > mostProcessorsKept) kept_.pop_back();
    show(*made, {});
}

void ViewerColour::show(const std::shared_ptr<const DisplayProcessor>& processor, const QString& problem) {
    processorProblem_ = problem;
    if (processor != processor_) {
        processor_ = processor;
        Q_EMIT processorChanged();
    }
    Q_EMIT changed();
}

} // namespace daylark
