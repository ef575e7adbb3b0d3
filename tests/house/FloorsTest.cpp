#include "support/Places.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>

namespace {

/// Which floors each floor may include. Told from the floor plan in docs/architecture.md; a change here is a
/// change there.
QMap<QString, QSet<QString>> allowedFloors() {
    const auto set = [](const char* names) {
        const QStringList list = QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        return QSet<QString>(list.begin(), list.end());
    };
    return {{QStringLiteral("base"), set("base")},
            {QStringLiteral("net"), set("base net")},
            {QStringLiteral("archive"), set("base archive")},
            {QStringLiteral("platform"), set("base platform")},
            {QStringLiteral("preferences"), set("base platform preferences")},
            {QStringLiteral("model"), set("base archive platform model")},
            {QStringLiteral("review"), set("base archive platform model review")},
            {QStringLiteral("media"), set("base archive platform model media")},
            {QStringLiteral("formats"), set("base media formats")}, // a module: of media/ only the seam
            {QStringLiteral("playback"), set("base archive platform model media playback")},
            {QStringLiteral("annotate"), set("base archive platform model annotate")},
            {QStringLiteral("picture"), set("base archive platform model media annotate picture")},
            {QStringLiteral("viewer"),
             set("base archive platform preferences model review media playback annotate picture viewer")},
            {QStringLiteral("export"),
             set("base archive platform preferences model review media annotate picture export")},
            {QStringLiteral("app"), set("base archive platform preferences model review media playback "
                                        "annotate picture viewer export app")},
            {QStringLiteral("commands"), set("base archive platform preferences model review media playback "
                                             "annotate picture viewer export app commands")},
            {QStringLiteral("ui"), set("base archive platform preferences model review media playback "
                                       "annotate picture viewer export app commands ui")},
            {QStringLiteral("tool"), set("base archive platform preferences model review media playback "
                                         "annotate picture viewer export app commands net tool")}};
}

struct Include {
    QString file, floor, target;
};

QList<Include> quotedIncludes() {
    static const QRegularExpression pattern(QStringLiteral("^\\s*#include \"([a-z]+)/"),
                                            QRegularExpression::MultilineOption);
    const QString root = daylark::sourceFolder() + QStringLiteral("/src");
    QList<Include> includes;
    QDirIterator walk(root, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString floor = file.fileName().mid(root.size() + 1).section(QLatin1Char('/'), 0, 0);
        const QString text = QString::fromUtf8(file.readAll());
        for (auto match = pattern.globalMatch(text); match.hasNext();)
            includes.append({file.fileName(), floor, match.next().captured(1)});
    }
    return includes;
}

TEST(Floors, KnowOnlyWhatStandsBelowThem) {
    const auto allowed = allowedFloors();
    const QList<Include> includes = quotedIncludes();
    ASSERT_GT(includes.size(), 100) << "the walk found no sources";
    for (const Include& include : includes) {
        if (include.floor.endsWith(QStringLiteral(".cpp")))
            continue; // main.cpp builds the object graph: it may know everybody
        EXPECT_TRUE(allowed.value(include.floor).contains(include.target))
            << include.file.toStdString() << " includes " << include.target.toStdString();
    }
}

TEST(Floors, DecoderLibraryIsNamedInMediaOnlyAndWidgetsInUiOnly) {
    const QString root = daylark::sourceFolder() + QStringLiteral("/src");
    static const QRegularExpression decoder(QStringLiteral("#include <lib(av|sw)"));
    static const QRegularExpression widgets(QStringLiteral(
        "#include <Q(Widget|Dialog|MainWindow|Label|PushButton|ToolButton|MessageBox|FileDialog|Menu|Action"
        "|Application)>"));
    QDirIterator walk(root, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString floor = file.fileName().mid(root.size() + 1).section(QLatin1Char('/'), 0, 0);
        const QString text = QString::fromUtf8(file.readAll());
        // What a decoder hands out becomes decoder-free planes in one place.
        if (floor != QStringLiteral("media") &&
            !file.fileName().endsWith(QStringLiteral("picture/PicturePlanes.cpp"))) {
            EXPECT_FALSE(text.contains(decoder)) << file.fileName().toStdString();
        }
        if (floor != QStringLiteral("ui") && floor != QStringLiteral("main.cpp")) {
            EXPECT_FALSE(text.contains(widgets)) << file.fileName().toStdString();
        }
    }
}

/// Every icon that the code names by its record name exists as an SVG.
TEST(Icons, EveryNamedImageHasItsSvg) {
    static const QRegularExpression pattern(QStringLiteral("\"([A-Za-z0-9_ -]+)\\.png\""));
    const QString root = daylark::sourceFolder();
    QDirIterator walk(root + QStringLiteral("/src"), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                      QDir::Files, QDirIterator::Subdirectories);
    int names = 0;
    while (walk.hasNext()) {
        QFile file(walk.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        for (auto match = pattern.globalMatch(text); match.hasNext(); ++names) {
            const QString name = match.next().captured(1);
            EXPECT_TRUE(
                QFileInfo::exists(root + QStringLiteral("/resources/icons/") + name + QStringLiteral(".svg")))
                << name.toStdString() << " in " << file.fileName().toStdString();
        }
    }
    EXPECT_GT(names, 10);
}

} // namespace
