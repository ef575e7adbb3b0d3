#pragma once

#include "base/jobs/WorkQueue.h"

#include <QDBusConnection>
#include <QObject>

#include <optional>

namespace daylark {

/// The desktop's message bus and which of its services answer there. Connecting is a worker's, everything else doesn't
/// wait: before the answer is there, or without a bus, nothing is known to be there. Made by the program; interface
/// thread.
class DesktopBus : public QObject {
    Q_OBJECT
public:
    explicit DesktopBus(const QString& address = {}, QObject* parent = nullptr); ///< null: the session's own bus
    ~DesktopBus() override;

    [[nodiscard]] const std::optional<QDBusConnection>& connection() const { return connection_; }
    /// The portal's file dialogs by the version of their interface; 0 when there are none.
    [[nodiscard]] uint fileChooserVersion() const { return fileChooserVersion_; }

private:
    void connected(const QDBusConnection& bus);

    const QString name_;
    std::optional<QDBusConnection> connection_;
    uint fileChooserVersion_ = 0;
    WorkQueue work_;
};

} // namespace daylark
