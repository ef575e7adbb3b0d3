#include "app/media/BundleExport.h"

#include "app/playlists/Library.h"
#include "base/jobs/ReportPace.h"
#include "media/facts/MovieProbe.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"

#include <QFileInfo>

namespace daylark {

namespace {

ProgressBoard::Texts exportTexts() {
    return {BundleExport::tr("Exporting Daylark Movie"), BundleExport::tr("Large files may take several minutes"),
            ProgressBoard::Count::untold};
}

} // namespace

BundleExport::BundleExport(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , jobs_(surroundings.progress) {}

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
    panel.proposedName = movie.fileTitle() + QStringLiteral(".dlm");
    panel.allowedTypes = QStringList{QStringLiteral("dlm")};
    panel.package = true;
    return surroundings_.panels.runSave(panel);
}

void BundleExport::write(Form form, const std::shared_ptr<Movie>& movie, const QString& path) {
    const auto [job, cancelled] = jobs_.begin(exportTexts());
    // The legacy movie is opened for a bundle file: its properties stay on the record.
    const bool opensLegacyMovie = form == Form::file && !movie->mMovieHasBeenVisited;
    jobs_.run([this, job = job, form, path, cancelled = cancelled, opensLegacyMovie, source = BundleSource::of(movie),
               weak = std::weak_ptr(movie)]() mutable {
        ReportPace pace;
        const qint64 total = form == Form::folder ? source.mediaBytes() : 0;
        const CopyWatch watch{cancelled.get(), [&](qint64 bytes) {
                                  if (bytes < total && !pace.isDue()) return;
                                  WorkQueue::deliver(this, [this, job, bytes, total] {
                                      ProgressBoard::Texts texts = exportTexts();
                                      texts.text += QStringLiteral(" · ") + ProgressBoard::bytesText(bytes, total);
                                      surroundings_.progress.say(job, texts);
                                      surroundings_.progress.advance(job, bytes, total);
                                  });
                              }};
        if (opensLegacyMovie) {
            if (const auto probed = probeMovie(mediaAddress(checkFile(source.file).path, source.file.run), cancelled.get()))
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
    jobs_.end(job); // in every case
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
