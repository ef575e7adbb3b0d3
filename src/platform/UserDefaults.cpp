#include "platform/UserDefaults.h"

#include "platform/PreferencesFile.h"

#include <QHash>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace daylark {

namespace {

constexpr std::chrono::milliseconds writeBehindDelay{300};
constexpr std::chrono::milliseconds retryDelay{2000};
constexpr int lastLockWaitMs = 5000;
constexpr int lockWaitMs = 1000;

} // namespace

/// The memory map, and the worker that writes changes behind it. The worker starts with the first change and
/// touches only what the mutex guards.
class UserDefaults::Store {
public:
    /// `trouble` is called by the worker, when it changes.
    Store(const QString& file, std::function<void(const QString&)> trouble)
        : file_(file)
        , trouble_(std::move(trouble)) {
        if (file_.isEmpty()) return;
        if (Result<PreferenceValues> read = readPreferencesFile(file_)) stored = std::move(*read);
    }

    ~Store() {
        if (!worker_.joinable()) return;
        {
            const std::lock_guard lock(mutex_);
            ending_ = true;
        }
        wake_.notify_all();
        worker_.join();
    }

    void change(const QString& key, const std::optional<QVariant>& value) {
        if (file_.isEmpty()) return;
        {
            const std::lock_guard lock(mutex_);
            pending_.insert(key, value);
            if (!worker_.joinable()) worker_ = std::thread([this] { writeBehind(); });
        }
        wake_.notify_all();
    }

    void synchronise() {
        std::unique_lock lock(mutex_);
        if (!worker_.joinable()) return;
        const quint64 wanted = ++flushesWanted_;
        wake_.notify_all();
        flushed_.wait(lock, [&] { return flushesDone_ >= wanted; });
    }

    [[nodiscard]] const QString& file() const { return file_; }

    QHash<QString, QVariant> registered;
    QMap<QString, QVariant> stored;
    QHash<QString, QVariant> overrides;

private:
    [[nodiscard]] bool isHurried() const { return ending_ || flushesWanted_ > flushesDone_; }

    void writeBehind() {
        std::unique_lock lock(mutex_);
        std::chrono::milliseconds delay = writeBehindDelay;
        while (true) {
            wake_.wait(lock, [&] { return !pending_.isEmpty() || isHurried(); });
            wake_.wait_for(lock, delay, [&] { return isHurried(); }); // gathers what changes together
            const quint64 flush = flushesWanted_;
            const bool last = ending_;
            const bool written = writePending(lock, isHurried() ? lastLockWaitMs : lockWaitMs);
            delay = written ? writeBehindDelay : retryDelay;
            flushesDone_ = std::max(flushesDone_, flush);
            flushed_.notify_all();
            if (last) return;
        }
    }

    /// Writes what is pending, unlocked meanwhile. On failure it stays pending, under what has changed since.
    bool writePending(std::unique_lock<std::mutex>& lock, int waitMs) {
        if (pending_.isEmpty()) return true;
        PreferenceChanges changes = std::exchange(pending_, {});
        lock.unlock();
        const Result<void> written = mergeIntoPreferencesFile(file_, changes, waitMs);
        if (const QString trouble = written ? QString() : written.error().text; trouble != told_) {
            told_ = trouble;
            trouble_(trouble);
        }
        lock.lock();
        if (!written) {
            changes.insert(pending_);
            pending_ = std::move(changes);
        }
        return bool(written);
    }

    const QString file_;
    const std::function<void(const QString&)> trouble_;
    QString told_; // the worker's
    std::mutex mutex_;
    std::condition_variable wake_, flushed_;
    PreferenceChanges pending_;
    quint64 flushesWanted_ = 0, flushesDone_ = 0;
    bool ending_ = false;
    std::thread worker_;
};

UserDefaults::UserDefaults(const QString& file, QObject* parent)
    : QObject(parent)
    , store_(std::make_unique<Store>(file, [this](const QString& trouble) {
        QMetaObject::invokeMethod(
            this, [this, trouble] { Q_EMIT troubleChanged(trouble); }, Qt::QueuedConnection);
    })) {}

UserDefaults::~UserDefaults() = default;

QString UserDefaults::userFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Daylark/preferences.ini");
}

QString UserDefaults::file() const {
    return store_->file();
}

void UserDefaults::registerDefaults(const Table& table) {
    store_->registered.clear();
    for (const auto& [key, value] : table)
        store_->registered.insert(key, value);
}

QVariant UserDefaults::value(const QString& key) const {
    if (const auto it = store_->overrides.constFind(key); it != store_->overrides.constEnd()) return *it;
    if (const auto it = store_->stored.constFind(key); it != store_->stored.constEnd()) return *it;
    return store_->registered.value(key);
}

bool UserDefaults::hasStoredValue(const QString& key) const {
    return store_->stored.contains(key);
}

QStringList UserDefaults::storedKeys() const {
    return store_->stored.keys();
}

void UserDefaults::set(const QString& key, const QVariant& value) {
    if (!value.isValid()) {
        remove(key);
        return;
    }
    const QVariant before = this->value(key);
    store_->stored.insert(key, value);
    store_->change(key, value); // even when equal: another copy may have stored something else meanwhile
    if (this->value(key) != before) Q_EMIT changed(key);
}

void UserDefaults::remove(const QString& key) {
    if (!store_->stored.contains(key)) return;
    const QVariant before = value(key);
    store_->stored.remove(key);
    store_->change(key, std::nullopt);
    if (value(key) != before) Q_EMIT changed(key);
}

void UserDefaults::overrideForThisRun(const QString& key, const QVariant& value) {
    const QVariant before = this->value(key);
    store_->overrides.insert(key, value);
    if (this->value(key) != before) Q_EMIT changed(key);
}

void UserDefaults::synchronise() {
    store_->synchronise();
}

} // namespace daylark
