#include "review/Change.h"

#include "archive/KeyedArchive.h"
#include "model/Session.h"

namespace daylark {

namespace {

const QString changesKey = QStringLiteral("changes"), recordKey = QStringLiteral("record"),
              fieldKey = QStringLiteral("field"), beforeKey = QStringLiteral("before"),
              afterKey = QStringLiteral("after"), atKey = QStringLiteral("at"),
              mergeKeyKey = QStringLiteral("mergeKey");

Value valueOf(const Change& change) {
    Value::Dictionary entries{{recordKey, qint64(change.record)},
                              {fieldKey, change.field},
                              {beforeKey, change.before},
                              {afterKey, change.after}};
    if (change.at >= 0) entries.emplace_back(atKey, change.at);
    if (!change.mergeKey.isEmpty()) entries.emplace_back(mergeKeyKey, change.mergeKey);
    return entries;
}

qint64 integerOf(const Value& value, qint64 otherwise) {
    return value.number() ? numberToInt64(*value.number()) : otherwise;
}

Change changeOf(const Value& value) {
    Change change;
    change.record = RecordId(integerOf(value[recordKey], 0));
    change.field = value[fieldKey].string();
    change.before = value[beforeKey];
    change.after = value[afterKey];
    change.at = integerOf(value[atKey], -1);
    change.mergeKey = value[mergeKeyKey].string();
    return change;
}

} // namespace

const QString Change::wholeRecord = QStringLiteral("wholeRecord");

Change Change::inverted() const {
    Change inverse = *this;
    if (isWholeRecord())
        inverse.after = {};
    else
        std::swap(inverse.before, inverse.after);
    return inverse;
}

Value listOfRecordIds(const std::vector<RecordId>& ids) {
    Value::Array list;
    list.reserve(ids.size());
    for (const RecordId id : ids)
        list.emplace_back(qint64(id));
    return list;
}

std::vector<RecordId> recordIdsOf(const Value& list) {
    std::vector<RecordId> ids;
    const Value::Array* array = list.array();
    if (!array) return ids;
    ids.reserve(array->size());
    for (const Value& element : *array)
        ids.push_back(RecordId(integerOf(element, 0)));
    return ids;
}

QByteArray encodeChanges(const Changes& changes) {
    Value::Array list;
    list.reserve(changes.size());
    for (const Change& change : changes)
        list.push_back(valueOf(change));
    return archiveRoot(Value::Dictionary{{changesKey, std::move(list)}});
}

Result<Changes> decodeChanges(const QByteArray& bytes) {
    const Result<Value> root = unarchiveRoot(bytes, recordClasses());
    if (!root) return root.error();
    const Value list = (*root)[changesKey];
    const Value::Array* array = list.array();
    if (!array) return Error{QStringLiteral("The archive holds no changes")};
    Changes changes;
    changes.reserve(array->size());
    for (const Value& element : *array)
        changes.push_back(changeOf(element));
    return changes;
}

} // namespace daylark
