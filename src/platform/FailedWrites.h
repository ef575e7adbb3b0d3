#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <vector>

namespace daylark {

/// What could not be written and still is not: one entry a path, in the order in which they failed, for the bar that a person
/// sees until it is written. Whoever writes reports here, both ways; a worker does so through its part's `deliver`. Made once by
/// the program before the parts, which are handed it and outlive none of their callbacks. Interface thread; never fails.
class FailedWrites : public QObject {
    Q_OBJECT
public:
    struct Entry {
        QString what; ///< "Session": what a person calls it, without an article
        QString path;
        QString reason; ///< "No space left on device"
        std::function<void()> tryAgain; ///< writes the same again; empty where the part does so of itself
        std::function<void()> saveAs;   ///< asks for another place and writes there; empty where there is no other
    };
    using QObject::QObject;

    /// It is not on the disk, and why; takes the place of what was said of this path before. A reason that names the path first
    /// ("could not write PATH: …", as errors of platform/ do) is shortened to what follows.
    void failed(const QString& what, const QString& path, const QString& reason, std::function<void()> tryAgain = {},
                std::function<void()> saveAs = {});
    /// It is there by now, or in another place, or nobody wants it any more. Nothing when nothing was said of this path.
    void written(const QString& path);

    [[nodiscard]] const std::vector<Entry>& list() const { return entries_; }

Q_SIGNALS:
    void changed();

private:
    std::vector<Entry> entries_;
};

} // namespace daylark
