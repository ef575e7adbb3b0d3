#include "ui/commands/KeysDialog.h"

#include "ui/commands/Commands.h"
#include "ui/common/Theme.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {

QString plainTitle(QString title) {
    title = title.left(title.indexOf(u'\t'));
    return title.replace(QLatin1String("&&"), QLatin1String("\n")).remove(u'&').replace(u'\n', u'&');
}

/// The commands in a menu and the menus below it.
void collect(const QMenu* menu, QList<QAction*>& actions) {
    const auto all = menu->actions();
    for (QAction* action : all) {
        if (action->menu())
            collect(action->menu(), actions);
        else if (!action->isSeparator())
            actions << action;
    }
}

} // namespace

KeysDialog::KeysDialog(const Commands& commands, const QMenuBar& menus, const QString& title, QWidget* parent,
                       const Lines& pointer)
    : QDialog(parent)
    , table_(new QTableWidget(0, 2, this)) {
    setWindowTitle(title);
    table_->setObjectName(QStringLiteral("keys"));
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionMode(QAbstractItemView::NoSelection);
    table_->setShowGrid(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(24);
    table_->setHorizontalHeaderLabels({tr("Command"), tr("Key")});
    table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

    QSet<QString> listed;
    const auto addCommands = [&](const QString& section, const QStringList& ids) {
        bool begun = false;
        for (const QString& id : ids) {
            if (!commands.contains(id) || listed.contains(id) || commands.keysText(id).isEmpty()) continue;
            if (!std::exchange(begun, true)) addSection(section);
            addLine(commands.action(id)->iconText(), commands.keysText(id));
            listed.insert(id);
        }
    };
    const auto sections = menus.actions();
    for (const QAction* section : sections) {
        if (!section->menu()) continue;
        QList<QAction*> actions;
        collect(section->menu(), actions);
        QStringList ids;
        for (const QAction* action : std::as_const(actions))
            ids << action->objectName();
        addCommands(plainTitle(section->text()), ids);
    }
    QStringList rest;
    for (const auto& [id, command] : commands.all())
        rest << id;
    addCommands(tr("More Keys"), rest);
    if (!pointer.isEmpty()) addSection(tr("Mouse"));
    for (const auto& [what, how] : pointer)
        addLine(what, how);

    auto* places = new QLabel(tr("Single letters and signs go by their place on the keyboard: they are "
                                 "named as a US keyboard prints them."),
                              this);
    places->setWordWrap(true);
    places->setFont(theme::smallFont());
    places->setForegroundRole(QPalette::PlaceholderText);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setIcon({});
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(8);
    layout->addWidget(table_);
    layout->addWidget(places);
    layout->addWidget(buttons);
    const int room = parent ? parent->screen()->availableGeometry().height() - 80 : 720;
    resize(520, std::min(720, room));
}

void KeysDialog::addSection(const QString& title) {
    const int row = table_->rowCount();
    table_->insertRow(row);
    auto* item = new QTableWidgetItem(title);
    QFont bold = item->font();
    bold.setBold(true);
    item->setFont(bold);
    item->setForeground(theme::dimText);
    table_->setItem(row, 0, item);
    table_->setSpan(row, 0, 1, 2);
    if (row > 0) table_->setRowHeight(row, 36);
    item->setTextAlignment(Qt::AlignLeft | Qt::AlignBottom);
}

void KeysDialog::addLine(const QString& what, const QString& key) {
    const int row = table_->rowCount();
    table_->insertRow(row);
    table_->setItem(row, 0, new QTableWidgetItem(QStringLiteral("  ") + what));
    auto* item = new QTableWidgetItem(key + QStringLiteral("  "));
    item->setFont(theme::numberFont());
    table_->setItem(row, 1, item);
}

} // namespace daylark
