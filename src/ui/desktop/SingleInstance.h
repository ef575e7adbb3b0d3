#pragma once

#include <QLocalServer>
#include <QObject>
#include <QStringList>

#include <memory>

class QLockFile;

namespace daylark {

/// One running program per user and data folder: the first one listens on a local socket that only its user
/// may open; a later one hands its files over and ends. Made once by main; interface thread; waits at most
/// two seconds for the other.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    /// `scope` tells apart lives that have nothing to do with each other: the data folder.
    explicit SingleInstance(const QString& scope, QObject* parent = nullptr);
    ~SingleInstance() override;

    /// True when another program runs and has taken the files: this one is to end. Else this one is the
    /// first.
    [[nodiscard]] bool handOver(const QStringList& paths);
    [[nodiscard]] bool isFirst() const { return server_.isListening(); }

Q_SIGNALS:
    void filesReceived(
        const QStringList& paths); ///< from a later program; perhaps none: it only asks to come to the front

private:
    [[nodiscard]] bool send(const QStringList& paths);
    void receive();

    QString socketPath_;
    std::unique_ptr<QLockFile> lock_; ///< held for life by the first one
    QLocalServer server_;
};

} // namespace daylark
