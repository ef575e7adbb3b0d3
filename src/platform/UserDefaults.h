#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <utility>
#include <vector>

namespace daylark {

/// The preferences: a per-user store of what the user (or the program) has set, over a registration layer of defaults that
/// applies where nothing is stored and is never written. Reading and writing work on memory; the store's file is written
/// behind (on a worker, within a second, and at `synchronise`), through a temporary file renamed over it under a lock, and
/// only the keys that changed are merged in, so two running copies and a crash while writing lose nothing.
/// Owned by main (or a test); interface thread only. What cannot be written is tried again until it can, and `troubleChanged`
/// says so.
class UserDefaults : public QObject {
    Q_OBJECT
public:
    using Table = std::vector<std::pair<QString, QVariant>>; ///< key and default, in the order of registration

    /// `file` is the store (made when first written); an empty path keeps everything in memory.
    explicit UserDefaults(const QString& file, QObject* parent = nullptr);
    ~UserDefaults() override; ///< synchronises

    /// The store of the current user: $XDG_CONFIG_HOME/Daylark/preferences.ini or the platform's like of it.
    [[nodiscard]] static QString userFile();

    void registerDefaults(const Table& table); ///< replaces the registration layer

    /// The value for this run, from the override, the store, or the registration layer, in that order; invalid when nowhere.
    [[nodiscard]] QVariant value(const QString& key) const;
    [[nodiscard]] bool hasStoredValue(const QString& key) const;
    [[nodiscard]] QStringList storedKeys() const;

    void set(const QString& key, const QVariant& value); ///< stores; announces when the value differs
    void remove(const QString& key);                     ///< forgets what is stored; the registered default applies again
    void overrideForThisRun(const QString& key, const QVariant& value); ///< never stored
    void synchronise(); ///< waits until the store's file holds everything, or cannot be written
    [[nodiscard]] QString file() const; ///< empty: all in memory

Q_SIGNALS:
    void changed(const QString& key);
    /// What keeps the changes from the disk, in words; empty when all is well again.
    void troubleChanged(const QString& trouble);

private:
    class Store;
    std::unique_ptr<Store> store_;
};

} // namespace daylark
