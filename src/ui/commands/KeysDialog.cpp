#include "ui/commands/KeysDialog.h"

#include "ui/commands/Commands.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace daylark {

KeysDialog::KeysDialog(const Commands& commands, const std::vector<Menu>& menus, const QString& title,
                       QWidget* parent, const Lines& pointer)
    : QDialog(parent)
    , table_(new QTableWidget(0, 2, this)) {
    setWindowTitle(plain::windowTitle(title));
    table_->setObjectName(QStringLiteral("keys"));
    table_->setAccessibleName(title);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionMode(QAbstractItemView::NoSelection);
    table_->setShowGrid(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(24);
    table_->setHorizontalHeaderLabels({tr("Command"), tr("Key")});
    table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

    list(commands, menus, pointer);
    connect(&commands.keys(), &KeyMap::changed, this,
            [this, &commands, menus, pointer] { list(commands, menus, pointer); });

    auto* places = new PlainLabel(tr("Single letters and signs go by their place on the keyboard: they are "
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

void KeysDialog::list(const Commands& commands, const std::vector<Menu>& menus, const Lines& pointer) {
    table_->clearSpans();
    table_->setRowCount(0);
    QSet<QString> listed;
    const auto addCommands = [&](const QString& section, const std::vector<QString>& ids) {
        bool begun = false;
        for (const QString& id : ids) {
            const QString keys = commands.keys().label(id);
            if (keys.isEmpty() || listed.contains(id)) continue;
            if (!std::exchange(begun, true)) addSection(section);
            addLine(commands.set().name(id), keys);
            listed.insert(id);
        }
    };
    for (const Menu& menu : menus)
        addCommands(withoutMnemonic(menu.title), menu.commands());
    std::vector<QString> rest;
    for (const Command& command : commands.set().table())
        rest.push_back(command.id);
    addCommands(tr("More Keys"), rest);
    if (!pointer.isEmpty()) addSection(tr("Mouse"));
    for (const auto& [what, how] : pointer)
        addLine(what, how);
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
