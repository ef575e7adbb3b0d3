#include "formats/PictureChannels.h"

#include "media/sequence/PictureFiles.h"

#include <algorithm>
#include <array>
#include <map>

namespace daylark::formats {

namespace {

struct Channel {
    int part = 0, number = 0;
    QString layer, name; ///< "diffuse", "R"
};

constexpr size_t mostOffered = 500;

QString partName(const OIIO::ImageSpec& part) {
    return QString::fromStdString(part.get_string_attribute("oiio:subimagename"));
}

/// With several parts their names come first, unless the channels carry them already.
std::vector<Channel> channelsIn(const Parts& parts) {
    std::vector<Channel> channels;
    for (size_t part = 0; part < parts.size(); ++part) {
        const QString prefix = parts.size() > 1 ? partName(parts[part]) : QString();
        for (int number = 0; number < parts[part].nchannels; ++number) {
            const QString whole = QString::fromStdString(parts[part].channel_name(number));
            const qsizetype dot = whole.lastIndexOf(QLatin1Char('.'));
            Channel channel{int(part), number, dot < 0 ? QString() : whole.left(dot), whole.mid(dot + 1)};
            if (!prefix.isEmpty() && channel.layer.isEmpty() && part > 0)
                channel.layer = prefix;
            else if (!prefix.isEmpty() && channel.layer != prefix && part > 0)
                channel.layer = prefix + QLatin1Char('/') + channel.layer;
            channels.push_back(channel);
        }
    }
    return channels;
}

/// 0, 1, 2: red, green, blue; 3: luminance; -1: any other.
int colourOf(const QString& name) {
    static const std::array<QStringList, 4> names{
        {{QStringLiteral("r"), QStringLiteral("red")},
         {QStringLiteral("g"), QStringLiteral("green")},
         {QStringLiteral("b"), QStringLiteral("blue")},
         {QStringLiteral("y"), QStringLiteral("i"), QStringLiteral("luminance"), QStringLiteral("grey"),
          QStringLiteral("gray")}}};
    for (size_t i = 0; i < names.size(); ++i)
        if (names[i].contains(name.toLower())) return int(i);
    return -1;
}

bool isData(const Channel& channel, const OIIO::ImageSpec& part) {
    static const QStringList names = QStringLiteral("z zback depth id objectid materialid u v x n").split(QLatin1Char(' '));
    return names.contains(channel.name.toLower()) ||
           part.channelformat(channel.number).basetype == OIIO::TypeDesc::UINT32;
}

/// Of one layer, where it has them.
std::vector<int> coloursOf(const std::vector<Channel>& channels, int part, const QString& layer) {
    std::array<int, 4> found{-1, -1, -1, -1};
    for (const Channel& channel : channels) {
        const int colour = channel.part == part && channel.layer == layer ? colourOf(channel.name) : -1;
        if (colour >= 0 && found[size_t(colour)] < 0) found[size_t(colour)] = channel.number;
    }
    if (found[0] >= 0 && found[1] >= 0 && found[2] >= 0) return {found[0], found[1], found[2]};
    return found[3] >= 0 ? std::vector<int>{found[3]} : std::vector<int>{};
}

ChannelChoice usualChoice(const Parts& parts, const std::vector<Channel>& channels) {
    ChannelChoice choice;
    choice.channels = coloursOf(channels, 0, {});
    for (size_t at = 0; choice.channels.empty() && at < channels.size(); ++at) { // a file of layers alone
        choice.part = channels[at].part;
        choice.channels = coloursOf(channels, choice.part, channels[at].layer);
    }
    if (!choice.channels.empty()) return choice;
    choice.part = 0;
    const int count = parts[0].nchannels;
    if (count >= 3 && parts[0].channelnames.size() >= 3 && !isData(channels[0], parts[0]))
        choice.channels = {0, 1, 2};
    else
        choice.channels = {0}, choice.isColour = false, choice.isData = !channels.empty() && isData(channels[0], parts[0]);
    return choice;
}

QString fullName(const Channel& channel) {
    return channel.layer.isEmpty() ? channel.name : channel.layer + QLatin1Char('.') + channel.name;
}

/// "Z[0,100]": takes the range off the name.
std::optional<std::pair<double, double>> takenRange(QString& layer) {
    const qsizetype open = layer.lastIndexOf(QLatin1Char('['));
    if (open < 0 || !layer.endsWith(QLatin1Char(']'))) return std::nullopt;
    const auto range = blackAndWhiteOf(layer.mid(open + 1, layer.size() - open - 2));
    if (range) layer.truncate(open);
    return range;
}

} // namespace

Result<ChannelChoice> channelsOf(const Parts& parts, const QString& layer) {
    const std::vector<Channel> channels = channelsIn(parts);
    if (channels.empty()) return Error{QStringLiteral("has no channels")};
    if (layer.isEmpty()) return usualChoice(parts, channels);
    QString name = layer;
    ChannelChoice choice;
    choice.range = takenRange(name);
    for (const Channel& channel : channels)
        if (channel.layer == name) {
            choice.channels = coloursOf(channels, channel.part, name);
            choice.part = channel.part;
            if (choice.channels.empty()) choice.channels = {channel.number};
            choice.isColour = choice.channels.size() == 3;
            choice.isData = !choice.isColour && isData(channel, parts[size_t(channel.part)]);
            return choice;
        }
    for (const Channel& channel : channels)
        if (fullName(channel) == name) {
            choice.part = channel.part;
            choice.channels = {channel.number};
            choice.isColour = false;
            choice.isData = isData(channel, parts[size_t(channel.part)]);
            return choice;
        }
    return Error{QStringLiteral("has no layer \"%1\"").arg(name)};
}

QStringList layersOf(const Parts& parts) {
    QStringList layers, singles;
    for (const Channel& channel : channelsIn(parts)) {
        if (size_t(layers.size() + singles.size()) >= mostOffered) break;
        if (!channel.layer.isEmpty() && !layers.contains(channel.layer)) layers.append(channel.layer);
        if (const QString name = fullName(channel); !layers.contains(name)) singles.append(name);
    }
    return layers + singles;
}

} // namespace daylark::formats
