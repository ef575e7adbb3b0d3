#pragma once

#include "archive/Decoder.h"
#include "archive/Encoder.h"
#include "archive/KeyedArchive.h"

namespace daylark::archivetest {

/// A record that keeps whatever stood under its two keys.
struct Note : Archivable {
    Value first;
    Value second;

    [[nodiscard]] const char* archiveClassName() const override { return "Note"; }
    void encodeWithCoder(Encoder& coder) const override {
        coder.encode("first", first);
        coder.encode("second", second);
    }
    void initWithCoder(const Decoder& coder) override {
        first = coder.decode("first");
        second = coder.decode("second");
    }
};

/// A record with a list of records.
struct Shelf : Archivable {
    ObjectList<Note> notes;

    [[nodiscard]] const char* archiveClassName() const override { return "Shelf"; }
    void encodeWithCoder(Encoder& coder) const override { coder.encodeList("notes", notes); }
    void initWithCoder(const Decoder& coder) override { notes = coder.decodeList<Note>("notes"); }
};

inline ArchiveClasses classes() {
    return {{QStringLiteral("Note"), [] { return std::make_shared<Note>(); }},
            {QStringLiteral("Shelf"), [] { return std::make_shared<Shelf>(); }}};
}

/// What comes back when the value is written and read.
inline Value roundTrip(const Value& value) {
    const Result<Value> read = unarchiveRoot(archiveRoot(value), classes());
    return read ? *read : Value(QStringLiteral("unreadable: ") + read.error().text);
}

} // namespace daylark::archivetest
