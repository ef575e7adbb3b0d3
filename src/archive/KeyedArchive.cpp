#include "archive/KeyedArchive.h"

#include "archive/KeyedReader.h"
#include "archive/KeyedWriter.h"
#include "archive/PlistGuard.h"
#include "archive/PublicEncoding.h"

using namespace Qt::StringLiterals;

namespace daylark {

namespace {

struct PlistFree {
    void operator()(void* tree) const { plist_free(tree); }
};
using PlistTree = std::unique_ptr<void, PlistFree>;

Result<PlistTree> parseArchive(const QByteArray& bytes) {
    if (Result<void> checked = checkPropertyList(bytes); !checked) return checked.error();
    plist_t parsed = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &parsed);
    PlistTree tree(parsed);
    if (!tree) return Error{u"The file is not a property list"_s};
    const auto holds = [&tree](const char* key, plist_type type) {
        const plist_t node = plist_dict_get_item(tree.get(), key);
        return node && plist_get_node_type(node) == type;
    };
    if (plist_get_node_type(tree.get()) != PLIST_DICT || !holds("$objects", PLIST_ARRAY) ||
        !holds("$top", PLIST_DICT))
        return Error{u"The property list is not a keyed archive"_s};
    // Of whatever else calls itself so, nobody knows how its objects are to be read.
    if (const plist_t archiver = plist_dict_get_item(tree.get(), "$archiver");
        archiver && (plist_get_node_type(archiver) != PLIST_STRING ||
                     plist_string_val_compare(archiver, "NSKeyedArchiver") != 0))
        return Error{u"The archive was written by another archiver"_s};
    uint64_t version = kKeyedArchiveVersion;
    if (const plist_t number = plist_dict_get_item(tree.get(), "$version")) {
        if (plist_get_node_type(number) != PLIST_UINT) return Error{u"The archive's version is no number"_s};
        plist_get_uint_val(number, &version);
    }
    if (version != uint64_t(kKeyedArchiveVersion)) return Error{u"The archive is of version %1, which is unknown"_s.arg(version)};
    return tree;
}

} // namespace

QByteArray archiveRoot(const Value& root, const NamedImageData& namedImages) {
    return KeyedWriter(namedImages).write(root);
}

Result<Value> unarchiveRoot(const QByteArray& bytes, const ArchiveClasses& classes) {
    const Result<PlistTree> tree = parseArchive(bytes);
    if (!tree) return tree.error();
    return KeyedReader((*tree).get(), classes, bytes.size()).topValue("root");
}

Result<Value> unarchiveTop(const QByteArray& bytes, const ArchiveClasses& classes) {
    const Result<PlistTree> tree = parseArchive(bytes);
    if (!tree) return tree.error();
    return Value(KeyedReader((*tree).get(), classes, bytes.size()).top());
}

Value deepCopy(const Value& root, const ArchiveClasses& classes) {
    const Result<Value> copy = unarchiveRoot(archiveRoot(root), classes);
    return copy ? *copy : Value();
}

} // namespace daylark
