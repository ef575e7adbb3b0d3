#include "ui/desktop/DesktopBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QUuid>

namespace daylark {

DesktopBus::DesktopBus(const QString& address, QObject* parent)
    : QObject(parent)
    , name_(QStringLiteral("daylark-") + QUuid::createUuid().toString(QUuid::Id128)) {
    work_.run([this, address] {
        const QDBusConnection bus = address.isEmpty()
                                        ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)
                                        : QDBusConnection::connectToBus(address, name_);
        WorkQueue::deliver(this, [this, bus] { connected(bus); });
    });
}

DesktopBus::~DesktopBus() {
    work_.wait();
    connection_.reset();
    QDBusConnection::disconnectFromBus(name_);
}

void DesktopBus::connected(const QDBusConnection& bus) {
    if (!bus.isConnected()) return;
    connection_ = bus;
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << QStringLiteral("org.freedesktop.portal.FileChooser") << QStringLiteral("version");
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        if (reply.isValid()) fileChooserVersion_ = reply.value().variant().toUInt();
        call->deleteLater();
    });
}

} // namespace daylark
