#include "ui/library/FreeColumn.h"

#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>

#include <algorithm>

namespace daylark {

FreeColumn::FreeColumn(QTableView& table, int column)
    : QObject(&table)
    , table_(table)
    , column_(column)
    , least_(table.columnWidth(column)) {
    table.viewport()->installEventFilter(this);
    connect(table.horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section, int, int width) {
        if (fitting_) return;
        if (section == column_ && width > 0) least_ = width; // chosen by hand
        fit();
    });
}

void FreeColumn::setLeast(int width) {
    least_ = width;
    fit();
}

bool FreeColumn::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) fit();
    return QObject::eventFilter(watched, event);
}

void FreeColumn::fit() {
    const QScopedValueRollback<bool> own(fitting_, true);
    const QHeaderView* header = table_.horizontalHeader();
    const int others = header->length() - header->sectionSize(column_);
    const int width = std::max(least_, table_.viewport()->width() - others);
    if (header->sectionSize(column_) != width) table_.setColumnWidth(column_, width);
}

} // namespace daylark
