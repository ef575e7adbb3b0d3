#pragma once

#include "base/jobs/WorkQueue.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>

namespace daylark {

class FailedWrites;

/// Writes what leaves the session as one file, on a worker: whole or not at all, so that a failed write leaves an older file
/// as it was. No alert says so; the list of failed writes does. Interface thread.
class ExportWriter : public QObject {
    Q_OBJECT
public:
    explicit ExportWriter(FailedWrites& failedWrites, QObject* parent = nullptr);

    /// `make` runs on the worker; `what` is what a person calls the file. A later write goes after an earlier one.
    void write(const QString& what, const QString& path, std::function<QByteArray()> make);

private:
    FailedWrites& failedWrites_;
    WorkQueue work_; ///< goes first, and waits for a write under way
};

} // namespace daylark
