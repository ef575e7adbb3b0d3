#pragma once

#include "base/Result.h"
#include "base/jobs/CancelFlag.h"
#include "model/runs/MovieRun.h"
#include "model/runs/RunNames.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace daylark {

struct LeftOutNames;

/// The pictures of a run that are there, as the folder says: names only, no file is opened. Worker threads.
struct RunFiles {
    RunAddress address;          ///< with the last number that has come by now, unless the run keeps its ends
    std::vector<qint64> numbers; ///< ascending; of frames within the ends
    [[nodiscard]] bool contains(qint64 number) const;
    /// Frames (from 0) without a picture.
    [[nodiscard]] std::vector<qint64> missing() const;

    /// Errors: no such folder, none of its pictures there, a file system that does not answer.
    [[nodiscard]] static Result<RunFiles> look(const RunAddress& address, const CancelFlag* cancel = nullptr);
};

/// The names of a folder's files, hidden ones left out, in no order; those that are no text are added to `leftOut`. Waits for
/// the disk.
[[nodiscard]] QStringList fileNamesIn(const QString& folder, LeftOutNames* leftOut = nullptr);
/// Those of the names that can be pictures of a run, taken apart.
[[nodiscard]] FolderNames picturesTakenApart(const QStringList& names);

/// What somebody may have meant by a path: a name with marks in it ("sh010.####.exr") that is no file of that name, a folder
/// that holds one run and no more, or one picture of a run. None for anything else, with the reason why. Waits for the disk.
[[nodiscard]] Result<RunAddress> runMeantBy(const QString& path);
/// What commands open: the path of a file, or the run that a path with marks or a folder stands for. Waits for the disk.
[[nodiscard]] Result<QString> mediaMeantBy(const QString& path, const RunView& view, const QString& layer = {});

} // namespace daylark
