#include "ui/library/ProgressWindow.h"

#include "app/program/ProgressBoard.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

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
    setFixedWidth(360);
    layout_->setContentsMargins(12, 12, 12, 12);
    layout_->setSpacing(8);
    appear_.setSingleShot(true);
    appear_.setInterval(appearAfterMs);
    connect(&appear_, &QTimer::timeout, this, &ProgressWindow::appear);
    connect(&board_, &ProgressBoard::changed, this, &ProgressWindow::refresh);
}

ProgressWindow::Row ProgressWindow::makeRow(int job) {
    Row row{job, new QWidget(this)};
    row.title = new PlainLabel(row.widget);
    row.text = new PlainLabel(row.widget);
    row.text->setFont(theme::smallFont());
    row.text->setStyleSheet(QStringLiteral("color: #a4a4a4;"));
    row.bar = new QProgressBar(row.widget);
    row.bar->setFixedHeight(6);
    row.bar->setTextVisible(false);
    auto* cancel = new QToolButton(row.widget);
    cancel->setIcon(theme::icon(QStringLiteral("cancel")));
    cancel->setAutoRaise(true);
    cancel->setMinimumSize(24, 24);
    cancel->setToolTip(tr("Cancel"));
    cancel->setAccessibleName(tr("Cancel the job"));
    connect(cancel, &QToolButton::clicked, this, [this, job] { board_.cancel(job); });
    auto* grid = new QGridLayout(row.widget);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
    grid->addWidget(row.title, 0, 0);
    grid->addWidget(row.bar, 1, 0);
    grid->addWidget(row.text, 2, 0);
    grid->addWidget(cancel, 0, 1, 2, 1);
    layout_->addWidget(row.widget);
    return row;
}

void ProgressWindow::removeEndedRows() {
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
}

void ProgressWindow::refresh() {
    removeEndedRows();
    for (const ProgressBoard::Job& job : board_.jobs()) {
        if (!job.window) continue;
        auto row = std::find_if(rows_.begin(), rows_.end(),
                                [&job](const Row& known) { return known.job == job.id; });
        if (row == rows_.end()) {
            rows_.push_back(makeRow(job.id));
            row = std::prev(rows_.end());
            if (!isVisible()) appear_.start();
        }
        row->title->setText(job.line());
        row->text->setText(job.texts.text);
        row->text->setVisible(!job.texts.text.isEmpty());
        setWindowTitle(plain::windowTitle(rows_.size() == 1 ? job.texts.title : tr("Progress")));
        const auto bar = job.bar();
        row->bar->setRange(0, bar.maximum);
        row->bar->setValue(bar.value);
    }
    if (rows_.empty()) {
        appear_.stop();
        hide();
    }
}

/// Over the window that a person works in: the viewer, too, behind which the library may be hidden.
void ProgressWindow::appear() {
    if (rows_.empty()) return;
    const QWidget* over = QApplication::activeWindow();
    while (over && over->parentWidget())
        over = over->parentWidget()->window();
    if (!over) over = parentWidget();
    if (!over || !over->isVisible()) return;
    adjustSize();
    const QRect frame = over->frameGeometry();
    move(frame.center().x() - width() / 2, frame.bottom() - height() - 64);
    winId(); // makes the window, which can then be told what it belongs to
    windowHandle()->setTransientParent(over->windowHandle());
    show();
}

} // namespace daylark
