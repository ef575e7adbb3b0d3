#include "app/media/BundleExport.h"

#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "base/jobs/WorkQueue.h"
#include "media/facts/MovieProbe.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <map>

namespace daylark {

namespace {

constexpr qint64 bundleReportMs = 100;

ProgressBoard::Texts exportTexts() {
    return {BundleExport::tr("Exporting Daylark Movie"), BundleExport::tr("Large files may take several minutes"),
            ProgressBoard::Count::untold};
}

} // namespace

/// The exports by their jobs; the thread ends first.
class BundleExport::Worker {
public:
    std::map<int, std::shared_ptr<CancelFlag>> jobs;
    WorkQueue work;
};

BundleExport::BundleExport(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , worker_(std::make_unique<Worker>()) {}

BundleExport::~BundleExport() {
    for (const auto& [job, cancelled] : worker_->jobs)
        *cancelled = true;
}

bool BundleExport::isBusy() const {
    return !worker_->jobs.empty();
}

void BundleExport::launchExport() {
    exportDMB();
}

void BundleExport::exportDMB() {
    const auto movies = surroundings_.library.selectedMovies();
    if (movies.empty()) return;
    const QString path = askForPath(*movies.front());
    if (!path.isEmpty()) write(Form::folder, movies.front(), path);
}

void BundleExport::saveDLMToDisk() {
    const auto movies = surroundings_.library.selectedMovies();
    if (movies.empty()) return;
    const QString path = askForPath(*movies.front());
    if (!path.isEmpty()) write(Form::file, movies.front(), path);
}

QString BundleExport::askForPath(const Movie& movie) {
    SavePanel panel;
    panel.title = tr("Export Daylark Movie");
    panel.prompt = tr("Export");
    panel.nameLabel = tr("Export As");
    panel.proposedName = QFileInfo(movie.filenameString).completeBaseName() + QStringLiteral(".dlm");
    panel.allowedTypes = QStringList{QStringLiteral("dlm")};
    panel.package = true;
    return surroundings_.panels.runSave(panel);
}

void BundleExport::write(Form form, const std::shared_ptr<Movie>& movie, const QString& path) {
    ProgressBoard& progress = surroundings_.progress;
    const int job = progress.begin(exportTexts(), 0, true);
    const auto cancelled = progress.cancelFlag(job);
    worker_->jobs[job] = cancelled;
    // The legacy movie is opened for a bundle file: its properties stay on the record.
    const bool opensLegacyMovie = form == Form::file && !movie->mMovieHasBeenVisited;
    worker_->work.run([this, job, form, path, cancelled, opensLegacyMovie, source = BundleSource::of(movie),
                       weak = std::weak_ptr(movie)]() mutable {
        QElapsedTimer sinceReport;
        sinceReport.start();
        const qint64 total = form == Form::folder ? QFileInfo(checkFile(source.file).path).size() : 0;
        const CopyWatch watch{cancelled.get(), [&](qint64 bytes) {
                                  if (bytes < total && sinceReport.elapsed() < bundleReportMs) return;
                                  sinceReport.restart();
                                  WorkQueue::deliver(this, [this, job, bytes, total] {
                                      ProgressBoard::Texts texts = exportTexts();
                                      texts.text += QStringLiteral(" · ") + ProgressBoard::bytesText(bytes, total);
                                      surroundings_.progress.say(job, texts);
                                      surroundings_.progress.advance(job, bytes, total);
                                  });
                              }};
        if (opensLegacyMovie) {
            if (const auto probed = probeMovie(checkFile(source.file).path, cancelled.get()))
                WorkQueue::deliver(this, [this, weak, legacy = probed->legacy] {
                    const auto opened = weak.lock();
                    if (!opened) return;
                    surroundings_.library.store().modify(opened, {{}, EditKind::background}, [&legacy](Movie& item) {
                        applyLegacyProperties(item, legacy);
                    });
                });
        }
        const BundleReport report =
            form == Form::folder ? writeBundleFolder(source, path, watch) : writeBundleFile(source, path);
        source = {};
        WorkQueue::deliver(this, [this, job, form, weak, path, report] { ended(job, form, weak, path, report); });
    });
}

void BundleExport::ended(int job, Form form, const std::weak_ptr<Movie>& movie, const QString& path,
                         const BundleReport& report) {
    worker_->jobs.erase(job);
    surroundings_.progress.end(job); // in every case
    FailedWrites& failedWrites = surroundings_.failedWrites;
    if (report.end == BundleReport::End::written) failedWrites.written(path);
    if (report.end != BundleReport::End::failed) return;
    const QString what = QFileInfo(report.path).fileName();
    failedWrites.failed(tr("Daylark movie"), path, tr("%1: %2").arg(what, report.reason), [this, form, movie, path] {
        if (const auto again = movie.lock())
            write(form, again, path);
        else
            surroundings_.failedWrites.written(path); // nobody has it any more
    });
}

} // namespace daylark
