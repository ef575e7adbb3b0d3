#include "platform/PreferencesFile.h"

#include "platform/AtomicFile.h"
#include "platform/lock/Leftovers.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

namespace daylark {

namespace {

/// One JSON value on one line; the library writes only arrays and objects on their own.
QByteArray jsonLiteral(const QJsonValue& value) {
    const QByteArray wrapped = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return wrapped.mid(1, wrapped.size() - 2);
}

QByteArray formatPreferenceReal(double value) {
    if (!std::isfinite(value)) return {};
    QByteArray text = QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
    if (!text.contains('.') && !text.contains('e')) text += ".0"; // or it would come back as an integer
    return text;
}

/// Empty for a value that has no form here.
QByteArray formatPreference(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? "true" : "false";
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::Short:
        return QByteArray::number(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
        return QByteArray::number(value.toULongLong());
    case QMetaType::Float:
    case QMetaType::Double:
        return formatPreferenceReal(value.toDouble());
    case QMetaType::QColor: {
        const QColor colour = value.value<QColor>();
        return colour.isValid() ? colour.name(QColor::HexArgb).toUtf8() : QByteArray();
    }
    case QMetaType::QByteArray:
        return '@' + value.toByteArray().toBase64();
    case QMetaType::QStringList:
        return jsonLiteral(QJsonArray::fromStringList(value.toStringList()));
    default:
        return value.canConvert<QString>() ? jsonLiteral(value.toString()) : QByteArray();
    }
}

QVariant parsePreferenceNumber(const QByteArray& text) {
    bool isInteger = false;
    const qlonglong integer = text.toLongLong(&isInteger);
    if (isInteger) {
        if (integer >= std::numeric_limits<int>::min() && integer <= std::numeric_limits<int>::max())
            return int(integer);
        return integer;
    }
    bool isReal = false;
    const double real = text.toDouble(&isReal);
    return isReal && std::isfinite(real) ? QVariant(real) : QVariant();
}

QVariant parsePreference(const QByteArray& text) {
    if (text == "true" || text == "false") return text == "true";
    if (text.startsWith('#')) {
        const QColor colour(QString::fromUtf8(text));
        return colour.isValid() ? QVariant(colour) : QVariant();
    }
    if (text.startsWith('@')) return QByteArray::fromBase64(text.mid(1));
    if (text.startsWith('"') || text.startsWith('[')) {
        const QJsonValue value = QJsonDocument::fromJson('[' + text + ']').array().at(0);
        if (value.isString()) return value.toString();
        return value.isArray() ? QVariant(value.toVariant().toStringList()) : QVariant();
    }
    return parsePreferenceNumber(text);
}

/// The kernel's lock on the file beside the preferences: it goes with its process, so a killed one leaves no
/// lock behind. The file itself stays.
class PreferencesLock {
public:
    explicit PreferencesLock(const QString& path)
        : file_(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {}
    ~PreferencesLock() {
        if (file_ >= 0) ::close(file_); // unlocks
    }
    PreferencesLock(const PreferencesLock&) = delete;
    PreferencesLock& operator=(const PreferencesLock&) = delete;

    [[nodiscard]] bool tryFor(std::chrono::milliseconds wait) const {
        if (file_ < 0) return false;
        const auto end = std::chrono::steady_clock::now() + wait;
        while (::flock(file_, LOCK_EX | LOCK_NB) != 0) {
            if (std::chrono::steady_clock::now() >= end) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }

private:
    int file_;
};

} // namespace

QByteArray formatPreferences(const PreferenceValues& values) {
    QByteArray bytes;
    for (auto it = values.begin(); it != values.end(); ++it) {
        const QByteArray text = formatPreference(it.value());
        if (!text.isEmpty()) bytes += it.key().toUtf8().toPercentEncoding(" ") + '=' + text + '\n';
    }
    return bytes;
}

PreferenceValues parsePreferences(const QByteArray& bytes) {
    PreferenceValues values;
    for (const QByteArray& line : bytes.split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals <= 0) continue;
        const QVariant value = parsePreference(line.mid(equals + 1).trimmed());
        if (value.isValid())
            values.insert(QString::fromUtf8(QByteArray::fromPercentEncoding(line.left(equals))), value);
    }
    return values;
}

Result<PreferenceValues> readPreferencesFile(const QString& path) {
    QFile file(path);
    if (!file.exists()) return PreferenceValues();
    if (!file.open(QIODevice::ReadOnly))
        return Error{QStringLiteral("could not read %1: %2").arg(path, file.errorString())};
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return Error{QStringLiteral("could not read %1: %2").arg(path, file.errorString())};
    return parsePreferences(bytes);
}

Result<void> mergeIntoPreferencesFile(const QString& path, const PreferenceChanges& changes, int lockWaitMs) {
    if (!makePrivateFolder(QFileInfo(path).absolutePath()))
        return Error{QStringLiteral("could not make the folder of %1").arg(path)};
    const PreferencesLock lock(path + QStringLiteral(".lock"));
    if (!lock.tryFor(std::chrono::milliseconds(lockWaitMs)))
        return Error{QStringLiteral("%1 is locked").arg(path)};
    removeLeftoversOf(path); // nobody else is writing now
    Result<PreferenceValues> read = readPreferencesFile(path);
    if (!read) // writing now would lose what others have stored
        return read.error();
    PreferenceValues& values = *read;
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        if (it.value())
            values.insert(it.key(), *it.value());
        else
            values.remove(it.key());
    }
    return writeFileAtomically(path, formatPreferences(values), Readers::owner);
}

} // namespace daylark
