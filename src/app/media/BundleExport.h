#pragma once

#include "app/program/PartJobs.h"
#include "export/media/BundleFolder.h"

#include <QObject>

#include <memory>

namespace daylark {

class FailedWrites;
class Library;
class Panels;

/// "Export Daylark Movie...": the first selected movie with its review, for somebody else. Folders and files are a worker's;
/// what fails is among the failed writes. Interface thread.
class BundleExport : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Panels& panels;
        ProgressBoard& progress;
        FailedWrites& failedWrites;
    };
    explicit BundleExport(const Surroundings& surroundings, QObject* parent = nullptr);

    void launchExport();
    void exportDMB();     ///< the bundle folder
    void saveDLMToDisk(); ///< the bundle file

    [[nodiscard]] bool isBusy() const { return jobs_.isBusy(); }

private:
    enum class Form { folder, file };
    [[nodiscard]] QString askForPath(const Movie& movie);
    void write(Form form, const std::shared_ptr<Movie>& movie, const QString& path);
    void ended(int job, Form form, const std::weak_ptr<Movie>& movie, const QString& path, const BundleReport& report);

    Surroundings surroundings_;
    PartJobs jobs_;
};

} // namespace daylark
