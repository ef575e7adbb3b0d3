#include "ui/library/StatusStrip.h"

#include "app/PlaylistController.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QToolButton>

#include <algorithm>

namespace daylark {

namespace {

QString countedItems(qsizetype count) {
    return count == 1 ? StatusStrip::tr("1 item") : StatusStrip::tr("%1 items").arg(count);
}

} // namespace

StatusStrip::StatusStrip(PlaylistController& controller, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , session_(new PlainLabel(this))
    , counts_(new PlainLabel(this))
    , trouble_(new PlainLabel(this))
    , job_(new PlainLabel(this))
    , bar_(new QProgressBar(this))
    , cancel_(new QToolButton(this)) {
    setFixedHeight(std::max(28, fontMetrics().height() + 8));
    setAccessibleName(tr("Status"));
    session_->setObjectName(QStringLiteral("sessionName"));
    for (PlainLabel* label : {session_, counts_, job_}) {
        label->setFont(theme::smallFont());
        label->setStyleSheet(QStringLiteral("color: #a4a4a4;"));
    }
    trouble_->setFont(theme::smallFont());
    trouble_->setStyleSheet(QStringLiteral("color: #e0a040;"));
    bar_->setFixedSize(160, 6);
    bar_->setTextVisible(false);
    bar_->setAccessibleName(tr("Progress"));
    cancel_->setIcon(theme::icon(QStringLiteral("cancel")));
    cancel_->setAutoRaise(true);
    cancel_->setMinimumSize(24, 24);
    cancel_->setFocusPolicy(Qt::TabFocus);
    cancel_->setToolTip(tr("Cancel"));
    cancel_->setAccessibleName(tr("Cancel the job"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 0, 4, 0);
    layout->setSpacing(8);
    layout->addWidget(session_);
    layout->addWidget(counts_);
    layout->addWidget(trouble_);
    layout->addStretch();
    layout->addWidget(job_);
    layout->addWidget(bar_);
    layout->addWidget(cancel_);

    connect(&controller_.sessionFiles(), &SessionFiles::pathChanged, this, &StatusStrip::showSession);
    showSession();
    connect(cancel_, &QToolButton::clicked, this, [this] { controller_.progress().cancel(jobId_); });
    connect(&controller_.progress(), &ProgressBoard::changed, this, &StatusStrip::refresh);
    connect(&controller_.library(), &Library::arrangedMoviesChanged, this, &StatusStrip::refresh);
    connect(&controller_.library(), &Library::contentsChanged, this, &StatusStrip::refresh);
    connect(&controller_.library(), &Library::filterChanged, this, &StatusStrip::refresh);
    connect(&controller_.library(), &Library::movieSelectionChanged, this, &StatusStrip::refresh);
    connect(&controller_.fileStates(), &FileStates::updated, this, &StatusStrip::refresh);
    connect(&controller_.sessionFiles().temporarySession(), &TemporarySession::troubleChanged, this,
            &StatusStrip::refresh);
    connect(&controller_.sessionFiles().temporarySession(), &TemporarySession::loaded, this, &StatusStrip::refresh);
    refresh();
}

/// The file that a Save goes to; the window's title keeps its own name.
void StatusStrip::showSession() {
    constexpr qsizetype longest = 40;
    const QString path = controller_.sessionFiles().currentSessionPath();
    session_->setVisible(!path.isEmpty());
    session_->setText(plain::line(QFileInfo(path).fileName(), longest));
    session_->setToolTip(plain::toolTip(path));
}

void StatusStrip::refresh() {
    const Library& library = controller_.library();
    const qsizetype shown = qsizetype(library.arrangedMovies().size());
    const qsizetype all = qsizetype(library.unfilteredMovies().size());
    QStringList parts{library.filter().isOn() ? tr("%1 of %2").arg(shown).arg(countedItems(all)) : countedItems(shown)};
    if (const auto selected = library.selectedMovieRows().size(); selected > 0)
        parts << tr("%1 selected").arg(selected);
    if (const qint64 missing = controller_.fileStates().missingCount(); missing > 0)
        parts << tr("%1 missing").arg(missing);
    counts_->setText(parts.join(QStringLiteral(" · ")));

    const QString trouble = controller_.sessionFiles().temporarySession().trouble();
    const QString notice = controller_.sessionFiles().temporarySession().notice();
    trouble_->setVisible(!trouble.isEmpty() || !notice.isEmpty());
    trouble_->setText(trouble.isEmpty() ? tr("A second copy, with a session of its own") : tr("Changes are not stored"));
    trouble_->setToolTip(plain::toolTip(trouble.isEmpty() ? notice : trouble));

    const auto& jobs = controller_.progress().jobs();
    const bool busy = !jobs.empty();
    job_->setVisible(busy);
    bar_->setVisible(busy);
    cancel_->setVisible(busy);
    if (!busy) return;
    const ProgressBoard::Job& job = jobs.front();
    jobId_ = job.id;
    QString text = job.line();
    if (jobs.size() > 1) text += tr(" · %1 more").arg(jobs.size() - 1);
    job_->setText(text);
    const auto bar = job.bar();
    bar_->setRange(0, bar.maximum);
    bar_->setValue(bar.value);
    cancel_->setEnabled(job.cancelled && !job.cancelled->load());
}

QString StatusStrip::text() const {
    QStringList shown;
    for (const PlainLabel* label : {counts_, trouble_, job_})
        if (!label->isHidden()) shown << label->text();
    return shown.join(QStringLiteral(" · "));
}

} // namespace daylark
