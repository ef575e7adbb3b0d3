#include "ui/KeysDialog.h"

#include "ui/Commands.h"
#include "ui/Theme.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace daylark {

KeysDialog::KeysDialog(const Commands& commands, const QString& title, QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(title);
    auto* table = new QTableWidget(0, 2, this);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setShowGrid(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(24);
    table->setHorizontalHeaderLabels({tr("Command"), tr("Key")});
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    for (const auto& [id, command] : commands.all()) {
        if (command.shortcut.isEmpty()) continue;
        const int row = table->rowCount();
        table->insertRow(row);
        table->setItem(row, 0, new QTableWidgetItem(QString(commands.action(id)->iconText())));
        auto* key = new QTableWidgetItem(command.shortcut.toString(QKeySequence::NativeText));
        key->setFont(theme::numberFont());
        table->setItem(row, 1, key);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setIcon({});
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->addWidget(table);
    layout->addWidget(buttons);
    resize(420, 560);
}

} // namespace daylark
