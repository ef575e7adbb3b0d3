#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QObject>
#include <QStringList>

#include <deque>
#include <memory>

class QLocalSocket;
class QLockFile;

namespace daylark {

/// One running program per user and data folder: the first one listens on a local socket in the user's runtime folder; a
/// later one hands its files over and ends. A message goes out once, is answered within two seconds, and counts only when
/// its sender is still there to hear the answer, so that no file is opened twice. Both sides make sure that the other one
/// is the same user. Without a runtime folder that is the user's alone nothing is handed over. Made once by main;
/// interface thread; waits at most two seconds for the other.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    /// `scope` tells apart lives that have nothing to do with each other: the data folder. `runtimeFolder`: the user's
    /// alone; empty for none.
    SingleInstance(const QString& scope, const QString& runtimeFolder, QObject* parent = nullptr);
    ~SingleInstance() override;

    /// True when another program runs and has taken the files: this one is to end. Else this one goes on, the first, or
    /// beside one that does not answer.
    [[nodiscard]] bool handOver(const QStringList& paths);
    [[nodiscard]] bool isFirst() const { return server_.isListening(); }

Q_SIGNALS:
    void filesReceived(
        const QStringList& paths); ///< from a later program; perhaps none: it only asks to come to the front

private:
    enum class Answer { taken, nobodyThere, none };
    [[nodiscard]] Answer send(const QStringList& paths);
    void receive();
    void take(QLocalSocket& socket);

    QString socketPath_;              ///< empty: nothing is handed over
    std::unique_ptr<QLockFile> lock_; ///< held for life by the first one
    std::deque<QByteArray> known_;    ///< identities of the latest messages
    QLocalServer server_;
};

} // namespace daylark
