#include "model/runs/MovieRun.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <array>
#include <cmath>

namespace daylark {

namespace {

const QString scheme = QStringLiteral("run:");
constexpr double slowest = 1, fastest = 1000;

QString keyOf(const char* name) {
    return QString::fromLatin1(name);
}

QString packed(const QString& text) {
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString unpacked(const QString& text) {
    return QUrl::fromPercentEncoding(text.toLatin1());
}

bool isSensible(const RunRate& rate) {
    return rate == RunRate{} || (rate.isKnown() && rate.value() >= slowest && rate.value() <= fastest);
}

/// The fields of an address, in order; a reader that meets others has met none of ours.
class Fields {
public:
    explicit Fields(const QString& text)
        : parts_(text.split(QLatin1Char(';'))) {}
    [[nodiscard]] QString text() { return unpacked(next()); }
    [[nodiscard]] qint64 number() {
        bool isNumber = false;
        const qint64 value = next().toLongLong(&isNumber);
        isGood_ = isGood_ && isNumber;
        return value;
    }
    [[nodiscard]] qint32 smallNumber() {
        const qint64 value = number();
        isGood_ = isGood_ && std::abs(value) <= FrameRun::largestNumber;
        return isGood_ ? qint32(value) : 0;
    }
    [[nodiscard]] bool isGood() const { return isGood_ && at_ == parts_.size(); }

private:
    QString next() {
        if (at_ < parts_.size()) return parts_[at_++];
        isGood_ = false;
        return {};
    }
    QStringList parts_;
    qsizetype at_ = 0;
    bool isGood_ = true;
};

} // namespace

RunRate RunRate::of(double framesPerSecond) {
    if (!(framesPerSecond >= slowest && framesPerSecond <= fastest)) return {};
    const double whole = std::round(framesPerSecond);
    if (std::abs(framesPerSecond - whole) < 0.0005) return {qint32(whole), 1};
    const double slowed = std::round(framesPerSecond * 1.001);
    if (std::abs(framesPerSecond - slowed / 1.001) < 0.005) return {qint32(slowed) * 1000, 1001};
    return {qint32(std::lround(framesPerSecond * 1000)), 1000};
}

Value MovieRun::toValue() const {
    Value::Dictionary dictionary{{keyOf("prefix"), run.prefix.isNull() ? QStringLiteral("") : run.prefix},
                                 {keyOf("suffix"), run.suffix.isNull() ? QStringLiteral("") : run.suffix},
                                 {keyOf("padding"), qint64(run.padding)},
                                 {keyOf("first"), run.first},
                                 {keyOf("last"), run.last},
                                 {keyOf("step"), run.step}};
    if (run.countsSign) dictionary.emplace_back(keyOf("countsSign"), true);
    if (rate.isKnown()) {
        dictionary.emplace_back(keyOf("rate"), qint64(rate.frames));
        dictionary.emplace_back(keyOf("rateScale"), qint64(rate.seconds));
    }
    if (isFixed) dictionary.emplace_back(keyOf("isFixed"), true);
    if (!layer.isEmpty()) dictionary.emplace_back(keyOf("layer"), layer);
    return dictionary;
}

std::optional<MovieRun> MovieRun::fromValue(const Value& value) {
    if (!value.dictionary()) return std::nullopt;
    const auto number = [&value](const char* key, qint64 otherwise) {
        const Value field = value[keyOf(key)];
        return field.number() ? numberToInt64(*field.number()) : otherwise;
    };
    const auto small = [&number](const char* key, qint64 otherwise) {
        return qint32(std::clamp<qint64>(number(key, otherwise), -1, FrameRun::largestNumber));
    };
    MovieRun read;
    read.run = {value[keyOf("prefix")].string(), value[keyOf("suffix")].string(), small("padding", 0),
                number("countsSign", 0) != 0,    number("first", 1),              number("last", 0),
                number("step", 1)};
    read.rate = {small("rate", 0), small("rateScale", 1)};
    if (!isSensible(read.rate)) read.rate = {};
    read.isFixed = number("isFixed", 0) != 0;
    read.layer = value[keyOf("layer")].string();
    return read.run.isValid() ? std::optional(read) : std::nullopt;
}

QString RunAddress::text() const {
    const FrameRun& run = movie.run;
    QStringList fields{packed(run.prefix), packed(run.suffix), packed(movie.layer)};
    for (const qint64 number : {qint64(run.padding), qint64(run.countsSign), run.first, run.last, run.step,
                                qint64(movie.rate.frames), qint64(movie.rate.seconds), qint64(movie.isFixed),
                                qint64(view.missing), qint64(view.usualRate.frames), qint64(view.usualRate.seconds)})
        fields.append(QString::number(number));
    return scheme + fields.join(QLatin1Char(';')) + QLatin1Char(':') + folder;
}

std::optional<RunAddress> RunAddress::of(const QString& text) {
    if (!text.startsWith(scheme)) return std::nullopt;
    const qsizetype end = text.indexOf(QLatin1Char(':'), scheme.size());
    if (end < 0) return std::nullopt;
    Fields fields(text.mid(scheme.size(), end - scheme.size()));
    RunAddress address;
    address.folder = text.mid(end + 1);
    FrameRun& run = address.movie.run;
    run.prefix = fields.text();
    run.suffix = fields.text();
    address.movie.layer = fields.text();
    run.padding = fields.smallNumber();
    run.countsSign = fields.number() != 0;
    run.first = fields.number();
    run.last = fields.number();
    run.step = fields.number();
    address.movie.rate = {fields.smallNumber(), fields.smallNumber()};
    address.movie.isFixed = fields.number() != 0;
    const qint64 missing = fields.number();
    address.view.missing = missing >= 0 && missing <= qint64(MissingPicture::slate) ? MissingPicture(missing)
                                                                                    : MissingPicture::held;
    address.view.usualRate = {fields.smallNumber(), fields.smallNumber()};
    const bool isSound = fields.isGood() && run.isValid() && isSensible(address.movie.rate) &&
                         isSensible(address.view.usualRate) && !address.folder.contains(QChar(u'\0'));
    return isSound ? std::optional(address) : std::nullopt;
}

QString RunAddress::pathOf(qint64 number) const {
    return folder + QLatin1Char('/') + movie.run.nameOf(number);
}

QString mediaAddress(const QString& path, const std::optional<MovieRun>& run, const RunView& view) {
    if (!run) return path;
    return RunAddress{path.left(std::max<qsizetype>(0, path.lastIndexOf(QLatin1Char('/')))), *run, view}.text();
}

QString pathOfAddress(const QString& address) {
    const std::optional<RunAddress> run = RunAddress::of(address);
    return run ? run->pathOf(run->movie.run.first) : address;
}

} // namespace daylark
