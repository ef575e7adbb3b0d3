#include "app/files/LargeThumbnails.h"

#include "base/jobs/Patience.h"
#include "media/index/SampleTables.h"
#include "model/Movie.h"
#include "platform/desktop/ThumbnailStore.h"
#include "preferences/Preferences.h"
#include "review/ReviewEdits.h"
#include "viewer/RunPreferences.h"
#include "viewer/display/ColourPreferences.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace daylark {

namespace {

/// Which picture it is of: a thumbnail made anew is another one.
QByteArray digestOf(const Image& thumbnail) {
    return QCryptographicHash::hash(thumbnail.encoded(), QCryptographicHash::Sha1).toHex();
}

/// The choice that the record remembers, else the usual one.
QString choiceOf(const Movie& movie, const Preferences& preferences) {
    if (movie.mThumbnailFrame == 1) return QStringLiteral("First Frame");
    if (movie.mThumbnailFrame == 2) return QStringLiteral("Second Frame");
    return preferences.thumbnailFrame.text();
}

/// Empty where nothing was chosen.
QString keyOfView(const QString& view) {
    if (view.isEmpty()) return {};
    return u'/' + QString::fromLatin1(QCryptographicHash::hash(view.toUtf8(), QCryptographicHash::Sha1).toHex());
}

QByteArray tryOf(const Image& thumbnail, int side) {
    return digestOf(thumbnail) + '/' + QByteArray::number(side);
}

} // namespace

LargeThumbnails::LargeThumbnails(ReviewEdits& edits, const Preferences& preferences, QString folder,
                                 std::shared_ptr<SampleTables> tables, std::shared_ptr<StillColours> colours, QObject* parent)
    : QObject(parent)
    , edits_(edits)
    , preferences_(preferences)
    , folder_(std::move(folder))
    , tables_(tables ? std::move(tables) : std::make_shared<SampleTables>())
    , colours_(colours ? std::move(colours) : std::make_shared<StillColours>())
    , choice_(colourChoiceOf(preferences, edits.colourConfiguration()))
    , cancel_(std::make_shared<CancelFlag>(false)) {
    connect(&edits_, &ReviewEdits::colourConfigurationChanged, this, &LargeThumbnails::followChoice);
    for (const PreferenceItem* item : std::initializer_list<const PreferenceItem*>{
             &preferences_.colourConfiguration, &preferences_.colourDisplay, &preferences_.colourView, &preferences_.colourLook})
        connect(item, &PreferenceItem::changed, this, &LargeThumbnails::followChoice);
}

LargeThumbnails::~LargeThumbnails() {
    *cancel_ = true;
}

void LargeThumbnails::followChoice() {
    const ColourChoice before = std::exchange(choice_, colourChoiceOf(preferences_, edits_.colourConfiguration()));
    if (before == choice_) return;
    impossible_.clear();
    Q_EMIT outdated();
}

void LargeThumbnails::want(const Movies& movies, int width) {
    std::erase_if(waiting_, [](const Task& task) { return task.chosen.isNull(); });
    if (!preferences_.sharpThumbnails()) return;
    const int side = thumbnailStore::sideFor(width);
    for (const auto& movie : movies) {
        if (movie->thumbnail.encoded().isEmpty() || movie->creatingThumbnailText == fileNotFoundText) continue;
        if (impossible_.contains(tryOf(movie->thumbnail, side))) continue;
        waiting_.push_back({{movie->mediaAddress(runViewOf(preferences_)), choiceOf(*movie, preferences_), false,
                             {choice_, movie->inputColourSpace, colours_}},
                            movie->thumbnail, side, {}});
    }
    dispatch();
}

void LargeThumbnails::keep(const std::shared_ptr<Movie>& movie, const QImage& picture) {
    if (!preferences_.sharpThumbnails() || movie->thumbnail.encoded().isEmpty()) return;
    const int side = thumbnailStore::sideFor(std::max(picture.width(), picture.height()));
    ThumbnailRequest request;
    request.path = movie->filepathString;
    request.colour = {choice_, movie->inputColourSpace, nullptr};
    waiting_.push_front({request, movie->thumbnail, side, picture});
    dispatch();
}

void LargeThumbnails::dispatch() {
    if (running_ > 0 || waiting_.empty()) return;
    const Task task = waiting_.front();
    waiting_.pop_front();
    ++running_;
    work_.run([this, task, cancel = cancel_] {
        const QImage picture = carryOut(task, folder_, *cancel, *tables_);
        WorkQueue::deliver(this, [this, task, picture] {
            --running_;
            if (!(task.request.colour.choice == choice_)) return dispatch(); // of a view that is none any more
            if (picture.isNull())
                impossible_.insert(tryOf(task.thumbnail, task.side));
            else
                Q_EMIT made(task.thumbnail, picture); // whoever shows it keeps it
            dispatch();
        });
    });
}

QImage LargeThumbnails::carryOut(const Task& task, const QString& folder, const CancelFlag& cancel, SampleTables& tables) {
    const auto asked = askWithPatience<qint64>(
        [path = task.request.path] {
            const QFileInfo file(path);
            return file.isFile() ? file.lastModified().toSecsSinceEpoch() : qint64(-1);
        },
        fileSystemPatience, &cancel);
    const bool isFile = asked.value_or(-1) >= 0; // a run of pictures is none, and is not kept
    // A picture that goes through a view is another one by another view; whether it does is known once it is read.
    const StillColour& colour = task.request.colour;
    const QString view = colour.choice.text() + (colour.inputSpace.isEmpty() ? QString() : u'\n' + colour.inputSpace);
    const thumbnailStore::Key key{task.request.path, asked.value_or(-1),
                                  QString::fromLatin1(digestOf(task.thumbnail)) + keyOfView(view)};
    if (!folder.isEmpty() && isFile && task.chosen.isNull())
        if (const QImage kept = thumbnailStore::read(folder, key, task.side); !kept.isNull()) return kept;
    const QSize box(task.side, task.side);
    QImage picture = task.chosen.isNull()
                         ? largerThumbnail(task.thumbnail, task.request, task.side, &cancel, &tables)
                         : task.chosen;
    if (picture.width() > task.side || picture.height() > task.side)
        picture = picture.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    // What cannot be kept is made anew another time.
    if (!folder.isEmpty() && isFile && !picture.isNull())
        static_cast<void>(thumbnailStore::write(folder, key, task.side, picture));
    return picture;
}

} // namespace daylark
