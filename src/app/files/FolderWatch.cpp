#include "app/files/FolderWatch.h"

#include <QFileSystemWatcher>
#include <QSet>

namespace daylark {

namespace {
/// The system has not many watches; beyond, the look from time to time has to do.
constexpr qsizetype mostFolders = 1000;
} // namespace

class FolderWatch::Watcher : public QObject {
public:
    void watch(const QStringList& folders) {
        if (!watcher_) return;
        const QStringList now = watcher_->directories();
        const QSet<QString> wanted(folders.begin(), folders.end()), known(now.begin(), now.end());
        const QStringList leaving = (known - wanted).values(), coming = (wanted - known).values();
        if (!leaving.isEmpty()) watcher_->removePaths(leaving);
        if (!coming.isEmpty()) watcher_->addPaths(coming.mid(0, mostFolders));
    }
    void begin(FolderWatch* owner) {
        watcher_ = std::make_unique<QFileSystemWatcher>();
        connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, owner, &FolderWatch::changed);
    }

private:
    std::unique_ptr<QFileSystemWatcher> watcher_;
};

FolderWatch::FolderWatch(QObject* parent)
    : QObject(parent)
    , watcher_(new Watcher) {
    thread_.setObjectName(QStringLiteral("folder watch"));
    watcher_->moveToThread(&thread_);
    connect(&thread_, &QThread::finished, watcher_, &QObject::deleteLater);
}

FolderWatch::~FolderWatch() {
    if (thread_.isRunning()) {
        thread_.quit();
        thread_.wait();
    } else {
        delete watcher_;
    }
}

void FolderWatch::watch(const QStringList& folders) {
    if (!thread_.isRunning()) { // nobody who has no folder list pays for a thread
        if (folders.isEmpty()) return;
        thread_.start(QThread::LowPriority);
        QMetaObject::invokeMethod(watcher_, [this] { watcher_->begin(this); }, Qt::QueuedConnection);
    }
    QMetaObject::invokeMethod(watcher_, [watcher = watcher_, folders] { watcher->watch(folders); },
                              Qt::QueuedConnection);
}

} // namespace daylark
