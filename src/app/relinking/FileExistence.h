#pragma once

#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"
#include "model/Movie.h"

#include <QObject>

#include <memory>
#include <vector>

namespace daylark {

class Library;

/// Marks items whose file isn't where their path says, by the text in place of their thumbnail and nothing else; a present
/// file with a thumbnail takes the text away. The look is a worker's. Interface thread.
class FileExistence : public QObject {
    Q_OBJECT
public:
    explicit FileExistence(Library& library, QObject* parent = nullptr);
    ~FileExistence() override; ///< ends a look under way
    void checkFilesExistForAllPlaylists();
    void checkFilesExistForSelectedPlaylists(); ///< of the first selected list alone
    [[nodiscard]] bool isChecking() const { return checking_ > 0; }
    /// Its file was not there when it was last looked for, whoever looked: for showing. The filter "Missing" and the viewer's
    /// way through a list go by the text of whole updates alone.
    [[nodiscard]] static bool isMarkedMissing(const Movie& movie);

private:
    using Movies = std::vector<std::shared_ptr<Movie>>;
    void check(const Movies& movies, const QString& notFound);

    Library& library_;
    int checking_ = 0;
    std::shared_ptr<CancelFlag> cancelled_;
    WorkQueue work_;
};

} // namespace daylark
