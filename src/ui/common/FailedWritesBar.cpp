#include "ui/common/FailedWritesBar.h"

#include "platform/FailedWrites.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

FailedWritesBar::FailedWritesBar(FailedWrites& writes, QWidget* parent, size_t mostLines)
    : QWidget(parent)
    , writes_(writes)
    , mostLines_(mostLines)
    , lines_(new QVBoxLayout(this)) {
    setObjectName(QStringLiteral("failedWrites"));
    setAccessibleName(tr("What is not written"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral("#failedWrites { background: #3a3226; border-top: 1px solid #e0a040; }"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    lines_->setContentsMargins(12, 2, 4, 2);
    connect(&writes_, &FailedWrites::changed, this, &FailedWritesBar::refresh);
    refresh();
}

void FailedWritesBar::refresh() {
    // A button of these lines may be what is being pressed.
    if (inside_) {
        inside_->hide();
        inside_->deleteLater();
    }
    inside_ = new QWidget(this);
    auto* layout = new QVBoxLayout(inside_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    const size_t count = writes_.list().size();
    for (size_t at = 0; at < std::min(count, mostLines_); ++at)
        layout->addWidget(lineOf(at));
    lines_->addWidget(inside_);
    setVisible(count > 0);
}

QWidget* FailedWritesBar::lineOf(size_t at) {
    const FailedWrites::Entry& entry = writes_.list()[at];
    auto* line = new QWidget(inside_);
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    auto* icon = new PlainLabel(line);
    icon->setPixmap(theme::icon(QStringLiteral("warning")).pixmap(QSize(16, 16), devicePixelRatio()));
    auto* text = new PlainLabel(line);
    text->setObjectName(QStringLiteral("failedWrite"));
    text->setFont(theme::smallFont());
    text->setText(tr("%1 \"%2\" is not written: %3")
                      .arg(plain::line(entry.what), plain::line(QFileInfo(entry.path).fileName(), 80),
                           plain::line(entry.reason, 160)));
    text->setToolTip(plain::toolTip(entry.path));
    text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long reason makes no window wider
    layout->addWidget(icon);
    layout->addWidget(text, 1);
    if (at + 1 == mostLines_ && writes_.list().size() > mostLines_) {
        auto* more = new PlainLabel(tr("%1 more").arg(writes_.list().size() - mostLines_), line);
        more->setObjectName(QStringLiteral("failedWritesMore"));
        more->setFont(theme::smallFont());
        QStringList paths;
        for (size_t other = mostLines_; other < writes_.list().size(); ++other)
            paths << writes_.list()[other].path;
        more->setToolTip(plain::toolTip(paths.join(QLatin1Char('\n'))));
        layout->addWidget(more);
    }
    const auto add = [&](const QString& title, const char* name, const std::function<void()>& action) {
        if (!action) return;
        auto* button = new QToolButton(line);
        button->setObjectName(QLatin1String(name));
        button->setText(title);
        button->setMinimumHeight(24);
        button->setFocusPolicy(Qt::TabFocus);
        // By value: the entry may be gone when it answers.
        connect(button, &QToolButton::clicked, this, [action] { action(); });
        layout->addWidget(button);
    };
    add(tr("Save As…"), "failedWriteSaveAs", entry.saveAs);
    add(tr("Try Again"), "failedWriteTryAgain", entry.tryAgain);
    return line;
}

} // namespace daylark
