#include "app/links/ReviewLink.h"

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace daylark {

namespace {

constexpr QLatin1String scheme("daylark:");
constexpr QLatin1String prefix("daylark://");
const QString mediaFromLink = QStringLiteral("Media From Link");
const QString shotgunMedia = QStringLiteral("Shotgun Media");

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

/// Nothing when the bytes are not UTF-8.
std::optional<QString> percentDecoded(const QString& text) {
    const QByteArray coded = text.toUtf8();
    QByteArray bytes;
    bytes.reserve(coded.size());
    for (qsizetype at = 0; at < coded.size(); ++at) {
        const int high = coded[at] == '%' && at + 2 < coded.size() ? hexDigit(coded[at + 1]) : -1;
        const int low = high >= 0 ? hexDigit(coded[at + 2]) : -1;
        // Our own links leave a name's per cent sign as it is.
        bytes += low >= 0 ? char(high << 4 | low) : coded[at];
        if (low >= 0) at += 2;
    }
    // What is no UTF-8 becomes replacement characters, which don't go back to what they were.
    QString decoded = QString::fromUtf8(bytes);
    if (decoded.toUtf8() != bytes) return std::nullopt;
    return decoded;
}

/// Where the component that begins at `from` ends.
qsizetype endOfComponent(const QString& path, qsizetype from) {
    const qsizetype slash = path.indexOf(QLatin1Char('/'), from);
    return slash < 0 ? path.size() : slash;
}

qsizetype behindSlashes(const QString& path, qsizetype from) {
    while (from < path.size() && path[from] == QLatin1Char('/'))
        ++from;
    return from;
}

/// What `movieLink` and `playlistLink` mean by the text behind the scheme: nothing is escaped, or blanks alone.
QStringList ownPathsOf(QString text, ReviewLink::Command command) {
    qsizetype paths = endOfComponent(text, 0);
    if (command == ReviewLink::Command::addPlaylist) {
        text.replace(QLatin1String("%20"), QLatin1String(" "));
        paths = endOfComponent(text, behindSlashes(text, paths));
    }
    return text.mid(paths).split(QLatin1Char(','));
}

} // namespace

bool isReviewLink(QStringView text) {
    return text.startsWith(scheme, Qt::CaseInsensitive);
}

QStringList reviewLinksIn(const QString& text) {
    QStringList links;
    qsizetype from = 0;
    while (from < text.size()) {
        qsizetype end = from;
        while (end < text.size() && text[end] != QLatin1Char('\n') && text[end] != QLatin1Char('\r'))
            ++end;
        const QStringView line = QStringView(text).mid(from, end - from).trimmed();
        if (isReviewLink(line)) links.append(line.toString());
        from = end + 1;
    }
    return links;
}

ReviewLink readReviewLink(const QString& text) {
    const QString link = text.trimmed();
    if (!link.startsWith(prefix, Qt::CaseInsensitive)) return {};
    const std::optional<QString> path = percentDecoded(link.mid(prefix.size()));
    if (!path) return {};
    const qsizetype endOfCommand = endOfComponent(*path, 0);
    const QString command = path->left(endOfCommand);
    ReviewLink read;
    qsizetype paths = endOfCommand;
    if (command == QLatin1String("link")) {
        read.command = ReviewLink::Command::link;
        read.playlistName = mediaFromLink;
    } else if (command == QLatin1String("playmedia")) {
        read.command = ReviewLink::Command::playMedia;
        read.playlistName = shotgunMedia;
    } else if (command == QLatin1String("addplaylist")) {
        const qsizetype name = behindSlashes(*path, endOfCommand);
        paths = endOfComponent(*path, name);
        read.playlistName = path->mid(name, paths - name);
        if (read.playlistName.isEmpty()) return {}; // no second component: it doesn't say which
        read.command = ReviewLink::Command::addPlaylist;
    } else {
        return {};
    }
    read.paths = path->mid(paths).split(QLatin1Char(','));
    read.ownPaths = ownPathsOf(link.mid(prefix.size()), read.command);
    if (read.ownPaths == read.paths) read.ownPaths.clear();
    return read;
}

QString movieLink(const QString& path) {
    return QStringLiteral("daylark://link") + path + QLatin1Char('\r');
}

QString movieAddress(const QString& path) {
    return QStringLiteral("daylark://link") + QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
}

QString playlistLink(const QString& name, const QStringList& paths) {
    QString link = QStringLiteral("daylark://addplaylist/") + name;
    for (const QString& path : paths)
        link += path + QLatin1Char(',');
    return link.replace(QLatin1Char(' '), QLatin1String("%20"));
}

QString anchorsAsHtml(const std::vector<Anchor>& anchors) {
    QStringList lines;
    for (const Anchor& anchor : anchors)
        lines << QStringLiteral("<a href=\"%1\">%2</a>")
                     .arg(anchor.target.toHtmlEscaped(), anchor.text.toHtmlEscaped());
    return QStringLiteral("<html><head><meta charset=\"utf-8\"></head><body><p>%1</p></body></html>")
        .arg(lines.join(QStringLiteral("<br>\n")));
}

} // namespace daylark
