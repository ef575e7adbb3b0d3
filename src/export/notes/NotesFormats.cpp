#include "export/notes/NotesFormat.h"

namespace daylark {

std::unique_ptr<NotesFormat> csvNotesFormat();     // CsvNotes.cpp
std::unique_ptr<NotesFormat> rtfNotesFormat();     // RtfNotes.cpp
std::unique_ptr<NotesFormat> utf8CsvNotesFormat(); // Utf8CsvNotes.cpp

NotesFormats::NotesFormats() {
    formats_.push_back(csvNotesFormat());
    formats_.push_back(rtfNotesFormat());
    formats_.push_back(utf8CsvNotesFormat());
}

NotesFormats::~NotesFormats() = default;

const NotesFormat* NotesFormats::titled(const QString& title) const {
    for (const auto& format : formats_)
        if (format->title() == title) return format.get();
    return nullptr;
}

const NotesFormat* NotesFormats::named(const QString& name) const {
    for (const auto& format : formats_)
        if (format->name() == name) return format.get();
    return nullptr;
}

} // namespace daylark
