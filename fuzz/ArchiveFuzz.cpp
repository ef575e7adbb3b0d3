#include "FuzzRecords.h"

#include <QSet>

#include <cstdio>
#include <cstdlib>
#include <cstring>

// Bytes from a stranger are decoded, everything in them is touched, and what was read must come back the same
// when it is written and read again.

using namespace daylark;
using namespace daylark::fuzz;

namespace {

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

/// Walks two values side by side. Shared parts are walked once: a small file may describe a huge tree.
class Walk {
public:
    void compare(const Value& one, const Value& other) {
        pending_.push_back({one, other});
        while (!pending_.empty()) {
            const auto [left, right] = pending_.back();
            pending_.pop_back();
            compareOne(left, right);
        }
    }

private:
    static bool sameNumber(const Number& one, const Number& other) {
        // By bits, so that "not a number" is equal to itself.
        const double* left = std::get_if<double>(&one);
        const double* right = std::get_if<double>(&other);
        return left && right ? std::memcmp(left, right, sizeof(double)) == 0 : one == other;
    }

    bool isNew(const void* address) {
        if (seen_.contains(address)) return false;
        seen_.insert(address);
        return true;
    }

    void compareOne(const Value& one, const Value& other) {
        require(one.isNil() == other.isNil(), "nil stays nil");
        require(one.isString() == other.isString() && one.string() == other.string(), "strings");
        require(one.isData() == other.isData() && one.data() == other.data(), "data");
        require(!one.number() == !other.number() &&
                    (!one.number() || sameNumber(*one.number(), *other.number())),
                "numbers");
        require(!one.date() == !other.date(), "dates");
        if (one.date())
            require(sameNumber(one.date()->secondsSince2001, other.date()->secondsSince2001),
                    "dates' seconds");
        require(!one.url() == !other.url() && (!one.url() || *one.url() == *other.url()), "URLs");
        require(one.colour() == other.colour(), "colours");
        require(!one.point() == !other.point() && (!one.point() || *one.point() == *other.point()), "points");
        require(!one.uuid() == !other.uuid() && (!one.uuid() || *one.uuid() == *other.uuid()), "UUIDs");
        compareText(one.attributedString(), other.attributedString());
        compareImages(one.image(), other.image());
        compareContainers(one, other);
        compareRecords(one.object().get(), other.object().get());
    }

    void compareText(const AttributedString* one, const AttributedString* other) {
        require(!one == !other, "attributed strings");
        if (!one || !isNew(one)) return;
        require(*one == *other, "text and runs");
        qsizetype covered = 0;
        for (const AttributedString::Run& run : one->runs()) {
            require(run.length > 0, "no run is empty");
            covered += run.length;
        }
        require(covered == one->length(), "runs cover the text");
    }

    void compareImages(const Image* one, const Image* other) {
        require(!one == !other, "images");
        if (!one || !isNew(one)) return;
        require(*one == *other && one->size() == other->size(), "images' bytes, name and size");
        if (one->encoded().size() < 4096 && decoded_++ < 4) (void)one->decode();
    }

    void compareContainers(const Value& one, const Value& other) {
        require(!one.array() == !other.array() && !one.dictionary() == !other.dictionary(), "containers");
        if (one.array() && isNew(one.array())) {
            require(one.array()->size() == other.array()->size(), "lengths of arrays");
            for (size_t i = 0; i < one.array()->size(); ++i)
                pending_.push_back({(*one.array())[i], (*other.array())[i]});
        }
        if (one.dictionary() && isNew(one.dictionary())) {
            require(one.dictionary()->size() == other.dictionary()->size(), "sizes of dictionaries");
            for (size_t i = 0; i < one.dictionary()->size(); ++i) {
                pending_.push_back({(*one.dictionary())[i].first, (*other.dictionary())[i].first});
                pending_.push_back({(*one.dictionary())[i].second, (*other.dictionary())[i].second});
            }
        }
    }

    void compareRecords(const Archivable* one, const Archivable* other) {
        require(!one == !other, "records");
        if (!one || !isNew(one)) return;
        const auto* left = dynamic_cast<const Anything*>(one);
        const auto* right = dynamic_cast<const Anything*>(other);
        require(!left == !right, "classes of records");
        for (int i = 0; left && i < 4; ++i)
            pending_.push_back({left->values[i], right->values[i]});
        if (left) return;
        const auto& members = dynamic_cast<const Group&>(*one).members;
        const auto& others = dynamic_cast<const Group&>(*other).members;
        require(members.isNil == others.isNil && members.size() == others.size(), "lists of records");
        for (size_t i = 0; i < members.size(); ++i)
            pending_.push_back({Value(members[i]), Value(others[i])});
    }

    std::vector<std::pair<Value, Value>> pending_;
    QSet<const void*> seen_;
    int decoded_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const Result<Value> top = unarchiveTop(bytes, classes());
    const Result<Value> root = unarchiveRoot(bytes, classes());
    require(bool(top) == bool(root), "both ways of reading agree");
    if (!root) return 0;
    const QByteArray written = archiveRoot(*root);
    const Result<Value> again = unarchiveRoot(written, classes());
    require(bool(again), "what was written is readable");
    Walk().compare(*root, *again);
    require(archiveRoot(*again) == written, "writing is stable");
    return 0;
}
