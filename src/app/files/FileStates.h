#pragma once

#include <QObject>

#include <memory>

namespace daylark {

class Library;
class Preferences;
class ProgressBoard;

/// The found or missing state of every item and playlist, refreshed on a worker. A person may end a long
/// refresh; the rest stays as it was. Interface thread.
class FileStates : public QObject {
    Q_OBJECT
public:
    FileStates(Library& library, Preferences& preferences, ProgressBoard& progress,
               QObject* parent = nullptr);
    ~FileStates() override;
    void updateAllFilePaths(); ///< a request while one runs makes it run once more
    [[nodiscard]] bool isUpdating() const;
    [[nodiscard]] qint64 missingCount() const; ///< of the arranged items, as last refreshed

Q_SIGNALS:
    void updated();

private:
    class Worker;
    Library& library_;
    Preferences& preferences_;
    ProgressBoard& progress_;
    std::unique_ptr<Worker> worker_;
};

} // namespace daylark
