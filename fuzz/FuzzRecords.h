#pragma once

#include "archive/Decoder.h"
#include "archive/Encoder.h"
#include "archive/KeyedArchive.h"

namespace daylark::fuzz {

/// A record that reads every one of its fields as every kind there is.
struct Anything : Archivable {
    static constexpr const char* keys[] = {"a", "b", "c", "d"};
    Value values[4];

    [[nodiscard]] const char* archiveClassName() const override { return "Anything"; }
    void encodeWithCoder(Encoder& coder) const override {
        for (int i = 0; i < 4; ++i)
            coder.encode(keys[i], values[i]);
    }
    void initWithCoder(const Decoder& coder) override {
        for (int i = 0; i < 4; ++i) {
            values[i] = coder.decode(keys[i]);
            (void)coder.decodeUrl(keys[i]).toString();
            (void)coder.decodeInt32(keys[i]);
            (void)coder.decodeInt64(keys[i]);
            (void)coder.decodeFloat(keys[i]);
            (void)coder.decodeIntegerValue(keys[i]);
            (void)coder.decodeBool(keys[i]);
            (void)coder.decodeText(keys[i]);
        }
    }
};

/// A record with a list of records.
struct Group : Archivable {
    ObjectList<Anything> members;

    [[nodiscard]] const char* archiveClassName() const override { return "Group"; }
    void encodeWithCoder(Encoder& coder) const override { coder.encodeList("members", members); }
    void initWithCoder(const Decoder& coder) override { members = coder.decodeList<Anything>("members"); }
};

inline ArchiveClasses classes() {
    return {{QStringLiteral("Anything"), [] { return std::make_shared<Anything>(); }},
            {QStringLiteral("Group"), [] { return std::make_shared<Group>(); }}};
}

} // namespace daylark::fuzz
