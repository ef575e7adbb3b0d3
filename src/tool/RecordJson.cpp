#include "tool/RecordJson.h"

#include "app/arrangement/Columns.h"
#include "archive/Encoder.h"
#include "base/jobs/Patience.h"
#include "media/facts/TimecodeTrack.h"
#include "model/runs/FrameNumbers.h"
#include "preferences/Preferences.h"

#include <map>

namespace daylark::tool {
namespace {

QJsonValue imageJson(const Image& image) {
    const QSize size = image.size();
    const QString text = image.name().isEmpty()
                             ? QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())
                             : image.name();
    return QJsonObject{{QStringLiteral("image"), text}};
}

QString keyText(const Value& key) {
    return key.isString() ? key.string()
           : key.number() ? QString::number(numberToInt64(*key.number()))
                          : QString();
}

QJsonValue objectJson(const Archivable& object);

QJsonValue valueJson(const Value& value) {
    if (const Number* number = value.number())
        return std::visit(
            [](auto n) -> QJsonValue {
                if constexpr (std::is_same_v<decltype(n), quint64>)
                    return QJsonValue(double(n));
                else
                    return QJsonValue(n);
            },
            *number);
    if (value.isString()) return value.string();
    if (value.isData())
        return QJsonObject{{QStringLiteral("data"), QString::fromLatin1(value.data().toBase64())}};
    if (const Date* date = value.date())
        return QJsonObject{{QStringLiteral("secondsFrom2001"), date->secondsSince2001}};
    if (const ArchivedUrl* url = value.url())
        return url->base.isNull() ? QJsonValue(url->relative)
                                  : QJsonValue(QJsonObject{{QStringLiteral("url"), url->relative},
                                                           {QStringLiteral("base"), url->base}});
    if (value.colour().isValid()) return value.colour().name();
    if (const QPointF* point = value.point()) return QJsonArray{point->x(), point->y()};
    if (const AttributedString* text = value.attributedString()) return text->string();
    if (const Image* image = value.image()) return imageJson(*image);
    if (const Value::Array* array = value.array()) {
        QJsonArray json;
        for (const Value& element : *array)
            json.append(valueJson(element));
        return json;
    }
    if (const Value::Dictionary* dictionary = value.dictionary()) {
        QJsonObject json;
        for (const auto& [key, element] : *dictionary)
            json[keyText(key)] = valueJson(element);
        return json;
    }
    if (const auto object = value.object()) return objectJson(*object);
    return QJsonValue::Null;
}

/// Takes a record's fields as the archive would, so that every archived key shows, and no other.
class JsonEncoder : public Encoder {
public:
    void encode(const char* key, const Value& value) override {
        json_[QLatin1String(key)] = valueJson(value);
    }
    void encodeArray(const char* key,
                     const std::vector<std::shared_ptr<const Archivable>>& objects) override {
        QJsonArray array;
        for (const auto& object : objects)
            array.append(objectJson(*object));
        json_[QLatin1String(key)] = array;
    }
    [[nodiscard]] const QJsonObject& json() const { return json_; }

private:
    QJsonObject json_;
};

QJsonValue objectJson(const Archivable& object) {
    JsonEncoder encoder;
    object.encodeWithCoder(encoder);
    return encoder.json();
}

/// What productions call the frames of a session's items, whose files are read where only their timecode can tell.
class ProductionNumbers {
public:
    explicit ProductionNumbers(const Preferences& preferences)
        : usual_(preferences.usualFirstFrameNumber()) {}
    [[nodiscard]] FrameNumbers of(const Movie& movie) {
        using Start = std::optional<SmpteTime>;
        if (!isNumberedByTimecode(movie, usual_)) return frameNumbersOf(movie, usual_);
        const QString path = movie.filepathString;
        const auto answer = questions_.ask<Start>(path, [path] { return firstTimecodeOf(path); });
        return frameNumbersOf(movie, usual_, answer.value_or(Start()));
    }

private:
    std::optional<qint64> usual_;
    PatientQuestions questions_;
};

QJsonObject listedItemJson(const Movie& movie, const Preferences& preferences, ProductionNumbers& production) {
    QJsonObject json;
    for (const Column& each : columns()) {
        const QString text = each.id == Column::flag ? flagNameOf(movie, preferences) : each.textOf(movie);
        if (!text.isEmpty())
            json[QLatin1String(each.field)] = text;
        else if (each.id != Column::flag && each.hasIcon(movie))
            json[QLatin1String(each.field)] = true;
    }
    if (movie.frameRun) json[QStringLiteral("run")] = movie.shownName();
    if (const FrameNumbers numbers = production.of(movie); numbers.areOwn())
        json[QStringLiteral("firstProductionFrame")] = numbers.first;
    return json;
}

/// The production's numbers beside those that are counted from 1, which the archive keeps.
void addProductionFrames(QJsonObject& item, const Movie& movie, const FrameNumbers& numbers) {
    if (!numbers.areOwn()) return;
    item[QStringLiteral("firstProductionFrame")] = numbers.first;
    QJsonArray bookmarks = item[QStringLiteral("bookmarkStore")].toArray();
    for (qsizetype at = 0; at < bookmarks.size() && at < qsizetype(movie.bookmarkStore.size()); ++at) {
        QJsonObject bookmark = bookmarks[at].toObject();
        const auto& record = movie.bookmarkStore[size_t(at)];
        if (!record) continue;
        bookmark[QStringLiteral("firstProductionFrame")] = numbers.numberOf(record->firstFrame);
        bookmark[QStringLiteral("lastProductionFrame")] = numbers.numberOf(record->lastFrame);
        bookmarks[at] = bookmark;
    }
    if (!bookmarks.isEmpty()) item[QStringLiteral("bookmarkStore")] = bookmarks;
}

} // namespace

QJsonObject sessionJson(const SessionContents& session, const Preferences& preferences) {
    std::map<const Movie*, int> ids;
    ProductionNumbers production(preferences);
    QJsonArray playlists;
    for (const auto& playlist : session.playlists) {
        QJsonArray movies;
        for (const auto& movie : playlist->movieList) {
            const int id = ids.try_emplace(movie.get(), int(ids.size()) + 1).first->second;
            QJsonObject json = objectJson(*movie).toObject();
            json[QStringLiteral("id")] = id;
            addProductionFrames(json, *movie, production.of(*movie));
            movies.append(json);
        }
        playlists.append(QJsonObject{
            {QStringLiteral("name"), playlist->name},
            {QStringLiteral("playlistType"), playlist->playlistType},
            {QStringLiteral("isDivider"), playlist->isDivider && numberToBool(*playlist->isDivider)},
            {QStringLiteral("status"), playlist->status},
            {QStringLiteral("movieList"), movies},
        });
    }
    QJsonObject json{{QStringLiteral("playlists"), playlists}};
    if (session.lastSelectedPlaylistIndex)
        json[QStringLiteral("lastSelectedPlaylistIndex")] = *session.lastSelectedPlaylistIndex;
    if (!session.colourConfiguration.isEmpty())
        json[QStringLiteral("colourConfiguration")] = session.colourConfiguration;
    if (session.version) {
        json[QStringLiteral("majorVersion")] = session.version->majorVersion;
        json[QStringLiteral("minorVersion")] = session.version->minorVersion;
        json[QStringLiteral("patchVersion")] = session.version->patchVersion;
        json[QStringLiteral("build")] = session.version->build;
    }
    return json;
}

QJsonArray listedItemsJson(const SessionContents& session, const Preferences& preferences) {
    QJsonArray playlists;
    ProductionNumbers production(preferences);
    for (const auto& playlist : session.playlists) {
        QJsonArray items;
        for (const auto& movie : playlist->movieList)
            items.append(listedItemJson(*movie, preferences, production));
        playlists.append(
            QJsonObject{{QStringLiteral("name"), playlist->name}, {QStringLiteral("items"), items}});
    }
    return playlists;
}

} // namespace daylark::tool
