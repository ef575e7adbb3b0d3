#pragma once

#include <QObject>
#include <QStringList>
#include <QThread>

#include <memory>

namespace daylark {

/// Says that something in one of these folders came, went or was renamed, where the system tells (on network shares it may
/// not). The system is asked on a thread of its own, since a share that is away answers late. Interface thread.
class FolderWatch : public QObject {
    Q_OBJECT
public:
    explicit FolderWatch(QObject* parent = nullptr);
    ~FolderWatch() override;
    void watch(const QStringList& folders); ///< these from now on; returns at once

Q_SIGNALS:
    void changed();

private:
    class Watcher;
    QThread thread_;
    Watcher* watcher_; ///< lives on the thread, which ends it
};

} // namespace daylark
