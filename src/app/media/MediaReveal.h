#pragma once

#include <QObject>

#include <memory>

namespace daylark {

class FileBrowser;
class Library;
class Preferences;

/// "Reveal in File Browser": the selected movies' files, shown and selected all at once. Those that aren't found are passed
/// over; where the others are now is a worker's look. Interface thread.
class MediaReveal : public QObject {
    Q_OBJECT
public:
    MediaReveal(Library& library, Preferences& preferences, FileBrowser& browser, QObject* parent = nullptr);
    ~MediaReveal() override;

    void revealInFinder();

private:
    class Worker;
    Library& library_;
    Preferences& preferences_;
    FileBrowser& browser_;
    std::unique_ptr<Worker> worker_;
};

} // namespace daylark
