#include "ui/library/ProgressWindow.h"

#include "app/program/ProgressBoard.h"
#include "ui/common/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {
constexpr int appearAfterMs = 500;
}

ProgressWindow::ProgressWindow(ProgressBoard& board, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowDoesNotAcceptFocus)
    , board_(board)
    , layout_(new QVBoxLayout(this)) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(QStringLiteral("Progress"));
    setFixedWidth(360);
    layout_->setContentsMargins(12, 12, 12, 12);
    layout_->setSpacing(8);
    appear_.setSingleShot(true);
    appear_.setInterval(appearAfterMs);
    connect(&appear_, &QTimer::timeout, this, &ProgressWindow::appear);
    connect(&board_, &ProgressBoard::changed, this, &ProgressWindow::refresh);
}

ProgressWindow::Row ProgressWindow::makeRow(int job) {
    Row row{job, new QWidget(this), nullptr, nullptr};
    row.text = new QLabel(row.widget);
    row.bar = new QProgressBar(row.widget);
    row.bar->setFixedHeight(6);
    row.bar->setTextVisible(false);
    auto* cancel = new QToolButton(row.widget);
    cancel->setIcon(theme::icon(QStringLiteral("cancel")));
    cancel->setAutoRaise(true);
    cancel->setMinimumSize(24, 24);
    cancel->setToolTip(QStringLiteral("Cancel"));
    cancel->setAccessibleName(QStringLiteral("Cancel the job"));
    connect(cancel, &QToolButton::clicked, this, [this, job] { board_.cancel(job); });
    auto* grid = new QGridLayout(row.widget);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
    grid->addWidget(row.text, 0, 0);
    grid->addWidget(row.bar, 1, 0);
    grid->addWidget(cancel, 0, 1, 2, 1);
    layout_->addWidget(row.widget);
    return row;
}

void ProgressWindow::refresh() {
    const auto& jobs = board_.jobs();
    const auto wanted = [&jobs](int id) {
        return std::any_of(jobs.begin(), jobs.end(),
                           [id](const auto& job) { return job.id == id && job.window; });
    };
    for (auto row = rows_.begin(); row != rows_.end();) {
        if (wanted(row->job)) {
            ++row;
            continue;
        }
        row->widget->deleteLater();
        layout_->removeWidget(row->widget);
        row = rows_.erase(row);
    }
    for (const ProgressBoard::Job& job : jobs) {
        if (!job.window) continue;
        auto row = std::find_if(rows_.begin(), rows_.end(),
                                [&job](const Row& known) { return known.job == job.id; });
        if (row == rows_.end()) {
            rows_.push_back(makeRow(job.id));
            row = std::prev(rows_.end());
            if (!isVisible()) appear_.start();
        }
        row->text->setText(job.total > 0
                               ? QStringLiteral("%1  %2 of %3").arg(job.title).arg(job.done).arg(job.total)
                               : job.title);
        row->bar->setRange(0, int(job.total));
        row->bar->setValue(int(job.done));
    }
    if (rows_.empty()) {
        appear_.stop();
        hide();
    }
}

void ProgressWindow::appear() {
    if (rows_.empty() || !parentWidget() || !parentWidget()->isVisible()) return;
    adjustSize();
    const QRect frame = parentWidget()->frameGeometry();
    move(frame.center().x() - width() / 2, frame.bottom() - height() - 64);
    show();
}

} // namespace daylark
