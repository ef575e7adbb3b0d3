#include "ui/common/FailedWritesBar.h"

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
    const std::vector<FailedWrites::Entry> entries = inOrder();
    QWidget* line = nullptr;
    QStringList rest;
    for (size_t at = 0; at < entries.size(); ++at)
        if (at < mostLines_)
            layout->addWidget(line = lineOf(entries[at]));
        else
            rest << entries[at].path;
    if (line && !rest.isEmpty()) addRest(line, rest);
    lines_->addWidget(inside_);
    setVisible(!entries.empty());
}

/// Where a person can do something comes first: there may be room for one line only.
std::vector<FailedWrites::Entry> FailedWritesBar::inOrder() const {
    std::vector<FailedWrites::Entry> entries = writes_.list();
    std::stable_partition(entries.begin(), entries.end(),
                          [](const FailedWrites::Entry& entry) { return entry.tryAgain || entry.saveAs; });
    return entries;
}

/// Behind the words, before the buttons.
void FailedWritesBar::addRest(QWidget* line, const QStringList& paths) {
    auto* more = new PlainLabel(tr("%1 more").arg(paths.size()), line);
    more->setObjectName(QStringLiteral("failedWritesMore"));
    more->setFont(theme::smallFont());
    more->setToolTip(plain::toolTip(paths.join(QLatin1Char('\n'))));
    static_cast<QBoxLayout*>(line->layout())->insertWidget(2, more);
}

QWidget* FailedWritesBar::lineOf(const FailedWrites::Entry& entry) {
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
