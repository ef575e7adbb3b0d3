#pragma once

#include "export/notes/NotesReport.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace daylark {

/// A format of the notes export: what it is called and how a report becomes the bytes of a file. Stateless;
/// any thread. A writer gets values and can change no record.
class NotesFormat {
public:
    virtual ~NotesFormat() = default;
    [[nodiscard]] virtual QString name() const = 0; ///< the tool's word for it: "csv"
    [[nodiscard]] virtual QString
    title() const = 0; ///< in the save dialog and stored as the preferred format
    [[nodiscard]] virtual QString extension() const = 0; ///< without the full stop
    [[nodiscard]] virtual BookmarkOrder bookmarkOrder() const { return BookmarkOrder::stored; }
    /// The order in which bookmarks were said stays on the movies; whoever exports sees to that.
    [[nodiscard]] virtual bool bookmarkOrderStays() const { return false; }
    /// Whether the production's numbers stand beside those that are counted from 1, where an item has its own.
    [[nodiscard]] virtual bool saysProductionNumbers() const { return true; }
    [[nodiscard]] virtual QByteArray write(const NotesReport& report) const = 0;
};

/// Every format, in the order in which they are offered. Owned by whoever offers them.
class NotesFormats {
public:
    NotesFormats(); ///< the list of formats stands in its source
    ~NotesFormats();
    [[nodiscard]] const NotesFormat* titled(const QString& title) const; ///< null: none
    [[nodiscard]] const NotesFormat* named(const QString& name) const;   ///< null: none
    [[nodiscard]] const std::vector<std::unique_ptr<NotesFormat>>& all() const { return formats_; }

private:
    std::vector<std::unique_ptr<NotesFormat>> formats_;
};

} // namespace daylark
