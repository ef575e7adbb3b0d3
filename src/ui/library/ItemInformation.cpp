#include "ui/library/ItemInformation.h"

#include "app/files/ItemFacts.h"
#include "app/playlists/Library.h"
#include "model/Timecode.h"
#include "preferences/Preferences.h"
#include "ui/common/PlainLabel.h"
#include "ui/library/MoviesModel.h"
#include "ui/common/Theme.h"

#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {

constexpr int boxWidth = 264;

/// Lets long paths and names wrap at their separators.
QString wrappable(QString text) {
    for (const char separator : {'/', '_', '.'})
        text.replace(QLatin1Char(separator), QLatin1Char(separator) + QString(QChar(0x200b)));
    return text;
}

} // namespace

ItemInformation::ItemInformation(Library& library, const MoviesModel& model, ItemFacts& facts, const Preferences& preferences,
                                 QWidget* parent)
    : QWidget(parent)
    , library_(library)
    , model_(model)
    , itemFacts_(facts)
    , preferences_(preferences) {
    makeRows();
    setFixedWidth(boxWidth);
    setAccessibleName(tr("Item information"));
    auto* inside = new QWidget;
    auto* layout = new QVBoxLayout(inside);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(8);
    picture_ = new PlainLabel(inside);
    picture_->setFixedHeight((boxWidth - 36) * 9 / 16);
    picture_->setAlignment(Qt::AlignCenter);
    picture_->setStyleSheet(QStringLiteral("background: black;"));
    title_ = new PlainLabel(inside);
    title_->setWordWrap(true);
    title_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(picture_);
    layout->addWidget(title_);
    facts_ = new QVBoxLayout;
    facts_->setSpacing(0);
    layout->addLayout(facts_);
    layout->addStretch();

    auto* scroll = new QScrollArea(this);
    scroll->setWidget(inside);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(scroll);

    const auto whenVisible = [this] {
        if (isVisible()) refresh();
    };
    connect(&library_, &Library::movieSelectionChanged, this, whenVisible);
    connect(&library_, &Library::movieUpdated, this, whenVisible);
    connect(&itemFacts_, &ItemFacts::known, this, whenVisible);
    connect(&preferences_.firstFrameNumber, &PreferenceItem::changed, this, whenVisible);
    connect(&preferences_.otherFirstFrameNumber, &PreferenceItem::changed, this, whenVisible);
}

void ItemInformation::makeRows() {
    const auto ofFile = [this](auto text) {
        return [this, text](const Movie& movie) {
            const MediaFacts* facts = itemFacts_.of(movie);
            return facts ? text(*facts) : QString();
        };
    };
    rows_.push_back({column(Column::flag).labelText(), [this](const Movie& movie) { return model_.flagName(movie); }});
    rows_.push_back({tr("Origin"), [this](const Movie& movie) {
                         return model_.cameByLink(movie) ? tr("Came by a link") : QString();
                     }});
    addColumns({Column::resolution, Column::rate, Column::frames, Column::duration});
    rows_.push_back({tr("Prod frames"), [this](const Movie& movie) {
                         return itemFacts_.productionNumbersOf(movie, preferences_.usualFirstFrameNumber());
                     }});
    rows_.push_back({tr("Start timecode"), [this](const Movie& movie) { return itemFacts_.startTimecodeOf(movie); }});
    rows_.push_back({tr("Codec"), ofFile([](const MediaFacts& facts) { return facts.codec; })});
    rows_.push_back({tr("Pixels"), ofFile([](const MediaFacts& facts) { return facts.pixelFormat; })});
    rows_.push_back({tr("Colour tags"), ofFile([](const MediaFacts& facts) { return facts.colour; })});
    rows_.push_back({tr("Sound"), [this](const Movie& movie) { return itemFacts_.soundOf(movie); }});
    rows_.push_back({tr("Sound tracks"), ofFile(&ItemFacts::soundTracksOf)});
    addColumns({Column::size, Column::created, Column::bookmarkCount, Column::path, Column::notesText, Column::notes2Text});
}

void ItemInformation::addColumns(std::initializer_list<int> ids) {
    for (const int id : ids)
        rows_.push_back({column(id).labelText(), [id](const Movie& movie) {
                             const QString fact = plain::paragraph(column(id).factOf(movie));
                             return id == Column::path ? wrappable(fact) : fact;
                         }});
}

void ItemInformation::show(const QString& fact, const QString& value) {
    auto found = shown_.find(fact);
    if (found == shown_.end()) {
        Fact labels{new PlainLabel(fact), new PlainLabel};
        labels.name->setFont(theme::smallFont());
        labels.name->setForegroundRole(QPalette::PlaceholderText);
        labels.name->setContentsMargins(0, 8, 0, 0);
        labels.value->setFont(theme::smallFont());
        labels.value->setWordWrap(true);
        labels.value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        labels.value->setAccessibleName(fact);
        facts_->addWidget(labels.name);
        facts_->addWidget(labels.value);
        found = shown_.insert(fact, labels);
    }
    found->value->setText(value);
    found->name->setVisible(!value.isEmpty());
    found->value->setVisible(!value.isEmpty());
}

void ItemInformation::refresh() {
    const Library::Movies movies = library_.selectedMovies();
    if (shown_.isEmpty()) { // in the order in which they stand
        for (const QString& sum : {tr("Frames in all"), tr("Duration in all"), tr("Size in all")})
            show(sum, {});
        for (const Row& row : rows_)
            show(row.label, {});
    }
    for (const Fact& fact : std::as_const(shown_)) {
        fact.name->hide();
        fact.value->hide();
    }
    picture_->clear();
    picture_->setVisible(movies.size() == 1);
    if (movies.empty()) {
        title_->setText(tr("No item selected"));
        return;
    }
    constexpr size_t askedFor = 50; // of a whole session nobody reads what all its files share
    if (movies.size() <= askedFor) itemFacts_.want(movies);
    if (movies.size() > 1)
        showSeveral(movies);
    else
        showOne(*movies.front());
}

void ItemInformation::showOne(const Movie& movie) {
    const QPixmap thumbnail = model_.thumbnailAt(int(library_.selectedMovieRows().front()));
    if (!thumbnail.isNull())
        picture_->setPixmap(thumbnail.scaled(boxWidth - 24, picture_->height(), Qt::KeepAspectRatio,
                                             Qt::SmoothTransformation));
    else
        picture_->setText(plain::line(movie.creatingThumbnailText).simplified());
    title_->setText(wrappable(plain::line(movie.shownName())));
    title_->setToolTip(plain::toolTip(movie.shownName()));
    for (const Row& row : rows_)
        show(row.label, plain::paragraph(row.text(movie)));
}

/// What they come to, and below it what all of them have alike.
void ItemInformation::showSeveral(const Movies& movies) {
    title_->setText(tr("%1 items").arg(movies.size()));
    title_->setToolTip({});
    double seconds = 0, megabytes = 0;
    qint64 frames = 0;
    for (const auto& movie : movies) {
        seconds += double(movie->mMovieDurationSeconds);
        frames += movie->mMovieDurationFrames;
        megabytes += movie->fileSizeText.toDouble();
    }
    show(tr("Frames in all"), QString::number(frames));
    show(tr("Duration in all"), durationTextOf(float(seconds)));
    show(tr("Size in all"), QStringLiteral("%1 MB").arg(megabytes, 0, 'f', 1));
    for (const Row& row : rows_) {
        const QString first = row.text(*movies.front());
        const bool shared = !first.isEmpty() && std::all_of(movies.begin() + 1, movies.end(), [&](const auto& movie) {
            return row.text(*movie) == first;
        });
        show(row.label, shared ? plain::paragraph(first) : QString());
    }
}

} // namespace daylark
