#include "archive/KeyedArchive.h"
#include "support/Places.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace daylark;
using namespace Qt::StringLiterals;

// Archives that other writers made, each beside what an independent reader found in it. They are no part of
// the project; where the folder isn't there, nothing is tested.

namespace {

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Compares what was read with the description; every difference is one line.
class Comparison {
public:
    QStringList differences;
    int compared = 0;

    void compare(const QString& where, const QJsonValue& expected, const Value& actual) {
        ++compared;
        if (expected.isString())
            check(where, actual.isString() && actual.string() == expected.toString());
        else if (expected.isBool())
            check(where, actual.number() && actual.number()->index() == 0 &&
                             numberToBool(*actual.number()) == expected.toBool());
        else if (expected.isDouble())
            check(where, actual.number() && actual.number()->index() != 0 &&
                             numberToDouble(*actual.number()) == expected.toDouble());
        else if (expected.isArray())
            compareArray(where, expected.toArray(), actual);
        else if (expected.isObject())
            compareObject(where, expected.toObject(), actual);
        else
            check(where, actual.isNil());
    }

private:
    void check(const QString& where, bool same) {
        if (!same) differences.append(where);
    }

    void compareArray(const QString& where, const QJsonArray& expected, const Value& actual) {
        const Value::Array* array = actual.array();
        if (!array || qsizetype(array->size()) != expected.size()) return check(where + " (array)"_L1, false);
        for (qsizetype i = 0; i < expected.size(); ++i)
            compare(u"%1[%2]"_s.arg(where).arg(i), expected[i], (*array)[size_t(i)]);
    }

    void compareDictionary(const QString& where, const QJsonArray& expected, const Value& actual) {
        const Value::Dictionary* entries = actual.dictionary();
        if (!entries || qsizetype(entries->size()) != expected.size())
            return check(where + " (dictionary)"_L1, false);
        for (qsizetype i = 0; i < expected.size(); ++i) {
            const QString at = u"%1{%2}"_s.arg(where).arg(i);
            compare(at + " key"_L1, expected[i].toArray()[0], (*entries)[size_t(i)].first);
            compare(at, expected[i].toArray()[1], (*entries)[size_t(i)].second);
        }
    }

    void compareObject(const QString& where, const QJsonObject& expected, const Value& actual) {
        if (expected.contains("dictionary"_L1)) {
            compareDictionary(where, expected["dictionary"_L1].toArray(), actual);
        } else if (expected.contains("data"_L1)) {
            check(where, actual.isData() && actual.data() == QByteArray::fromBase64(
                                                                 expected["data"_L1].toString().toLatin1()));
        } else if (expected.contains("secondsFrom2001"_L1)) {
            check(where, actual.date() &&
                             actual.date()->secondsSince2001 == expected["secondsFrom2001"_L1].toDouble());
        } else if (expected.contains("uuid"_L1)) {
            check(where,
                  actual.uuid() && actual.uuid()->toString(QUuid::Id128) == expected["uuid"_L1].toString());
        } else if (expected.contains("url"_L1)) {
            const QString base = expected["base"_L1].toObject()["url"_L1].toString();
            check(where, actual.url() && actual.url()->relative == expected["url"_L1].toString() &&
                             actual.url()->base == base);
        } else if (expected.contains("null"_L1)) {
            check(where, actual.isNil());
        } else {
            compareNamed(where, expected["class"_L1].toString(), expected["fields"_L1].toObject(), actual);
        }
    }

    /// An object that the independent reader gives by its class and raw fields.
    void compareNamed(const QString& where, const QString& name, const QJsonObject& fields,
                      const Value& actual) {
        if (name.endsWith("AttributedString"_L1)) {
            check(where, actual.attributedString() &&
                             actual.attributedString()->string() == fields["NSString"_L1].toString());
        } else if (name.endsWith("OrderedSet"_L1)) {
            QJsonArray elements;
            for (int i = 0; fields.contains(u"NS.object.%1"_s.arg(i)); ++i)
                elements.append(fields[u"NS.object.%1"_s.arg(i)]);
            compareArray(where, elements, actual);
        } else if (!name.isEmpty()) {
            check(where + ' '_L1 + name, actual.isNil());
        }
        // Without a name it is a reference in an XML list, which the independent reader doesn't follow.
    }
};

QStringList foreignArchives() {
    return QDir(foreignArchiveFolder()).entryList({u"*.plist"_s}, QDir::Files, QDir::Name);
}

QString foreignPath(const QString& name) {
    return foreignArchiveFolder() + u'/' + name;
}

} // namespace

TEST(ForeignArchives, DecodeToWhatAnIndependentReaderFinds) {
    const QStringList names = foreignArchives();
    if (names.isEmpty()) GTEST_SKIP() << "no foreign archives on this machine";
    for (const QString& name : names) {
        const Result<Value> top = unarchiveTop(contentsOf(foreignPath(name)), {});
        ASSERT_TRUE(top) << name.toStdString() << ": " << top.error().text.toStdString();
        QString described = foreignPath(name);
        described.replace(described.size() - 5, 5, u"json"_s);
        const QJsonObject expected = QJsonDocument::fromJson(contentsOf(described)).object();
        ASSERT_FALSE(expected.isEmpty()) << name.toStdString();
        Comparison comparison;
        for (auto field = expected.begin(); field != expected.end(); ++field)
            comparison.compare(field.key(), field.value(), (*top)[field.key()]);
        EXPECT_GT(comparison.compared, 0);
        EXPECT_TRUE(comparison.differences.isEmpty())
            << name.toStdString() << ": " << comparison.differences.join(", "_L1).toStdString();
    }
}

TEST(ForeignArchives, XmlTwinsDecodeLikeTheirBinaryOnes) {
    int twins = 0;
    for (const QString& name : foreignArchives()) {
        if (!name.endsWith("_xml.plist"_L1)) continue;
        QString binary = name;
        binary.remove("_xml"_L1);
        const Result<Value> one = unarchiveTop(contentsOf(foreignPath(name)), {});
        const Result<Value> other = unarchiveTop(contentsOf(foreignPath(binary)), {});
        ASSERT_TRUE(one && other) << name.toStdString();
        ASSERT_TRUE(one->dictionary() && one->dictionary()->size() == other->dictionary()->size());
        for (const auto& [key, value] : *one->dictionary())
            EXPECT_TRUE(archiveRoot(value) == archiveRoot((*other)[key.string()])) << name.toStdString();
        ++twins;
    }
    if (twins == 0) GTEST_SKIP() << "no foreign archives on this machine";
}
