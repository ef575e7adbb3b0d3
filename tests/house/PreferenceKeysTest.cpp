#include "support/Places.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QString>

namespace {

QString contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QSet<QString> declaredKeys() {
    static const QRegularExpression declaration(QStringLiteral("\\{\\*this,\\s*\"([^\"]+)\""));
    QSet<QString> keys;
    const QString header =
        contentsOf(daylark::sourceFolder() + QStringLiteral("/src/preferences/Preferences.h"));
    for (auto match = declaration.globalMatch(header); match.hasNext();)
        keys.insert(match.next().captured(1));
    return keys;
}

/// Words that are a preference's key and something else's name as well: fields of a record, its status codes,
/// a button, a command, what a container calls a track's language.
bool namesSomethingElse(const QString& word) {
    static const QSet<QString> names{
        QStringLiteral("exposure"),     QStringLiteral("contrast"),    QStringLiteral("saturation"),
        QStringLiteral("gamma"),        QStringLiteral("brightness"),  QStringLiteral("redChannel"),
        QStringLiteral("greenChannel"), QStringLiteral("blueChannel"), QStringLiteral("thumbnailFrame"),
        QStringLiteral("volume"),       QStringLiteral("trimHandles"),
        QStringLiteral("firstFrameNumber"), QStringLiteral("language"), QStringLiteral("colourConfiguration")};
    static const QRegularExpression statusCode(QStringLiteral("^90[1-7]$"));
    return names.contains(word) || statusCode.match(word).hasMatch();
}

// A preference is reached by its declaration, so a misspelt key cannot arise and one that nobody reads is
// seen.
TEST(House, PreferenceKeysAreSpeltWhereTheyAreDeclaredOnly) {
    const QSet<QString> keys = declaredKeys();
    ASSERT_GT(keys.size(), 90);
    static const QRegularExpression literal(QStringLiteral("\"([A-Za-z0-9_ ]+)\""));
    const QString root = daylark::sourceFolder() + QStringLiteral("/src");
    QDirIterator walk(root, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (path.startsWith(root + QStringLiteral("/preferences/"))) continue;
        for (const QString& line : contentsOf(path).split(QLatin1Char('\n'))) {
            const QString code = line.section(QStringLiteral("//"), 0, 0);
            for (auto match = literal.globalMatch(code); match.hasNext();) {
                const QString word = match.next().captured(1);
                EXPECT_FALSE(keys.contains(word) && !namesSomethingElse(word))
                    << path.toStdString() << ": " << line.trimmed().toStdString();
            }
        }
    }
}

} // namespace
