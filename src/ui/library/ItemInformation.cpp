#include "ui/library/ItemInformation.h"

#include "app/playlists/Library.h"
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

QString durationSum(double seconds) {
    const qint64 whole = qint64(seconds);
    return QStringLiteral("%1:%2:%3")
        .arg(whole / 3600)
        .arg(whole / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(whole % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

ItemInformation::ItemInformation(Library& library, const MoviesModel& model, QWidget* parent)
    : QWidget(parent)
    , library_(library)
    , model_(model) {
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
    for (const Fact& fact : std::as_const(shown_)) {
        fact.name->hide();
        fact.value->hide();
    }
    picture_->clear();
    if (movies.empty()) {
        title_->setText(tr("No item selected"));
        return;
    }
    if (movies.size() > 1) {
        title_->setText(tr("%1 items").arg(movies.size()));
        double seconds = 0, megabytes = 0;
        qint64 frames = 0;
        for (const auto& movie : movies) {
            seconds += double(movie->mMovieDurationSeconds);
            frames += movie->mMovieDurationFrames;
            megabytes += movie->fileSizeText.toDouble();
        }
        show(QLatin1String(column(Column::frames).label), QString::number(frames));
        show(QLatin1String(column(Column::duration).label), durationSum(seconds));
        show(QLatin1String(column(Column::size).label), QStringLiteral("%1 MB").arg(megabytes, 0, 'f', 1));
        return;
    }
    const Movie& movie = *movies.front();
    const QPixmap thumbnail = model_.thumbnailAt(int(library_.selectedMovieRows().front()));
    if (!thumbnail.isNull())
        picture_->setPixmap(thumbnail.scaled(boxWidth - 24, picture_->height(), Qt::KeepAspectRatio,
                                             Qt::SmoothTransformation));
    else
        picture_->setText(plain::line(movie.creatingThumbnailText).simplified());
    title_->setText(wrappable(plain::line(movie.filenameString)));
    title_->setToolTip(plain::toolTip(movie.filenameString));
    show(QLatin1String(column(Column::flag).label), model_.flagName(movie));
    show(tr("Origin"), model_.cameByLink(movie) ? tr("Came by a link") : QString());
    for (const Column::Id id :
         {Column::resolution, Column::rate, Column::frames, Column::duration, Column::size, Column::created,
          Column::bookmarkCount, Column::path, Column::notesText, Column::notes2Text}) {
        const QString fact = plain::paragraph(column(id).factOf(movie));
        show(QLatin1String(column(id).label), id == Column::path ? wrappable(fact) : fact);
    }
}

} // namespace daylark
