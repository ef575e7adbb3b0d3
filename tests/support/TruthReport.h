#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QStringList>

#include <optional>
#include <string>
#include <vector>

namespace daylark::truth {

/// What was seen of one clip: each picture looked at is checked against the number that must be drawn in it.
class Tally {
public:
    explicit Tally(std::string clip, std::string codec = {}, std::string container = {})
        : clip_(std::move(clip))
        , codec_(std::move(codec))
        , container_(std::move(container)) {
        time_.start();
    }

    /// `drawn`: what the picture shows, none if it shows no number; `there`: is there a picture at all?
    void look(qint64 frame, int expected, bool there, std::optional<int> drawn, const char* manner);
    void fail(const QString& what); ///< something else that is wrong
    void setFrames(qint64 frames) { frames_ = frames; }

    [[nodiscard]] int checked() const { return checked_; }
    [[nodiscard]] int wrong() const { return wrong_; }
    [[nodiscard]] int free() const { return free_; } ///< of those checked: any picture was right
    [[nodiscard]] const std::string& clip() const { return clip_; }
    [[nodiscard]] const std::string& codec() const { return codec_; }
    [[nodiscard]] const std::string& container() const { return container_; }
    [[nodiscard]] qint64 frames() const { return frames_; }
    [[nodiscard]] qint64 milliseconds() const { return time_.elapsed(); }
    [[nodiscard]] std::string firstWrong() const {
        return firstWrong_.join(QStringLiteral("; ")).toStdString();
    }

private:
    std::string clip_, codec_, container_;
    qint64 frames_ = 0;
    int checked_ = 0, wrong_ = 0, free_ = 0;
    QStringList firstWrong_;
    QElapsedTimer time_;
};

/// Adds a line to the table that is printed when the program's tests have ended, and written (as JSON, or as
/// Markdown where the name ends in .md) beside the name in DAYLARK_TRUTH_REPORT with `suite` added to it.
void report(const char* suite, const Tally& tally);

} // namespace daylark::truth
