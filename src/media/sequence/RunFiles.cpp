#include "media/sequence/RunFiles.h"

#include "base/FolderEntries.h"
#include "base/jobs/Patience.h"
#include "media/facts/MediaTypes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace daylark {

namespace {

constexpr qint64 widestGrowth = 10'000; // numbers beyond the last one: what lies farther is another run

/// The ends by what is there: a run that grows gets its new pictures, one that keeps its ends doesn't.
void takeNumbers(RunFiles& files, const QStringList& names) {
    FrameRun& run = files.address.movie.run;
    std::vector<qint64> numbers;
    for (const QString& name : names)
        if (const auto number = run.numberIn(name); number && *number >= run.first && (*number - run.first) % run.step == 0)
            numbers.push_back(*number);
    std::sort(numbers.begin(), numbers.end());
    for (const qint64 number : numbers) {
        const bool isNew = number > run.last;
        if (isNew && (files.address.movie.isFixed || number - run.last > widestGrowth * run.step)) break;
        if (isNew && (number - run.first) / run.step >= FrameRun::mostFrames) break;
        run.last = std::max(run.last, number);
        files.numbers.push_back(number);
    }
}

QString folderOf(const QString& path) {
    return QFileInfo(path).absolutePath();
}

RunAddress addressOf(const QString& folder, const FrameRun& run) {
    RunAddress address;
    address.folder = folder;
    address.movie.run = run;
    return address;
}

Result<RunAddress> runInFolder(const QString& folder) {
    LeftOutNames leftOut;
    const FolderNames names = picturesTakenApart(fileNamesIn(folder, &leftOut));
    if (names.runs.size() == 1) return addressOf(QDir::cleanPath(QDir(folder).absolutePath()), names.runs.front().run);
    if (names.runs.empty() && leftOut.count > 0)
        return Error{QStringLiteral("holds no run of pictures; %1 left out, not named in UTF-8: %2")
                         .arg(leftOut.count).arg(leftOut.list())};
    if (names.runs.empty()) return Error{QStringLiteral("holds no run of pictures")};
    QStringList texts;
    for (const NamedRun& each : names.runs)
        texts.append(each.run.text());
    return Error{QStringLiteral("holds several runs: %1").arg(texts.join(QStringLiteral(", ")))};
}

Result<RunAddress> runOfPattern(const QString& path, const RunPattern& pattern) {
    const QString folder = folderOf(path);
    if (pattern.hasRange && !pattern.anyPadding) return addressOf(folder, pattern.run);
    const QStringList names = fileNamesIn(folder);
    if (pattern.hasRange) {
        const bool isThere = std::any_of(names.begin(), names.end(), [&](const QString& name) {
            const auto number = pattern.run.numberIn(name);
            return number && pattern.run.frameOf(*number);
        });
        if (isThere) return addressOf(folder, pattern.run);
    }
    const std::vector<NamedRun> runs = picturesTakenApart(names).runs;
    for (const bool exactly : {true, false}) {
        const auto found = std::find_if(runs.begin(), runs.end(), [&](const NamedRun& each) {
            return each.run.prefix == pattern.run.prefix && each.run.suffix == pattern.run.suffix &&
                   (exactly ? each.run.padding == pattern.run.padding : pattern.anyPadding);
        });
        if (found == runs.end()) continue;
        FrameRun run = found->run;
        if (pattern.hasRange) run.first = pattern.run.first, run.last = pattern.run.last, run.step = pattern.run.step;
        return addressOf(folder, run);
    }
    // One picture alone is a run as well where it is asked for by its pattern.
    for (const QString& name : names)
        if (const auto number = pattern.run.numberIn(name); number && !pattern.hasRange) {
            FrameRun run = pattern.run;
            run.first = run.last = *number;
            return addressOf(folder, run);
        }
    return Error{QStringLiteral("none of its pictures is there")};
}

Result<RunAddress> runAround(const QString& path) {
    const QString folder = folderOf(path), name = QFileInfo(path).fileName();
    for (const NamedRun& each : picturesTakenApart(fileNamesIn(folder)).runs)
        if (const auto number = each.run.numberIn(name); number && each.run.frameOf(*number))
            return addressOf(folder, each.run);
    return Error{QStringLiteral("is no picture of a run")};
}

} // namespace

bool RunFiles::contains(qint64 number) const {
    return std::binary_search(numbers.begin(), numbers.end(), number);
}

std::vector<qint64> RunFiles::missing() const {
    const FrameRun& run = address.movie.run;
    std::vector<qint64> frames;
    auto there = numbers.begin();
    for (qint64 frame = 0; frame < run.count(); ++frame) {
        if (there != numbers.end() && *there == run.numberAt(frame))
            ++there;
        else
            frames.push_back(frame);
    }
    return frames;
}

Result<RunFiles> RunFiles::look(const RunAddress& address, const CancelFlag* cancel) {
    const auto names = askWithPatience<QStringList>([folder = address.folder] { return fileNamesIn(folder); },
                                                    fileSystemPatience, cancel);
    if (!names && cancel && cancel->load()) return Error{QStringLiteral("cancelled")};
    if (!names) return Error{QStringLiteral("the disk or share does not answer")};
    RunFiles files{address, {}};
    takeNumbers(files, *names);
    if (files.numbers.empty()) return Error{QStringLiteral("no such file")};
    return files;
}

QStringList fileNamesIn(const QString& folder, LeftOutNames* leftOut) {
    QStringList names;
    // The system's own list: the toolkit's asks about every file once more.
    const OpenFolder open(::opendir(QFile::encodeName(folder).constData()));
    if (!open) return names;
    while (const dirent* entry = ::readdir(open.get())) {
        if (entry->d_name[0] == '.' || entry->d_type == DT_DIR) continue;
        if (const auto name = textOfName(entry->d_name))
            names.append(*name);
        else if (leftOut)
            leftOut->add(entry->d_name);
    }
    return names;
}

FolderNames picturesTakenApart(const QStringList& names) {
    QStringList pictures;
    for (const QString& name : names)
        if (mediaTypeOfPath(name) == MediaType::image) pictures.append(name);
    return takeApart(pictures);
}

Result<RunAddress> runMeantBy(const QString& path) {
    const QFileInfo info(path);
    if (info.isDir()) return runInFolder(path);
    if (mediaTypeOfPath(path) != MediaType::image) return Error{QStringLiteral("is no picture")};
    const auto pattern = info.exists() ? std::nullopt : runPatternOf(info.fileName());
    return pattern ? runOfPattern(path, *pattern) : runAround(path);
}

Result<QString> mediaMeantBy(const QString& path, const RunView& view, const QString& layer) {
    const QFileInfo info(path);
    const bool mayBeRun = info.isDir() || (!info.exists() && mediaTypeOfPath(path) == MediaType::image &&
                                           runPatternOf(info.fileName()));
    Result<RunAddress> address = mayBeRun ? runMeantBy(path) : Error{};
    if (mayBeRun && !address) return address.error();
    if (!mayBeRun) {
        if (layer.isEmpty()) return path;
        // A layer of one picture: a run of this one.
        address = runAround(path);
        if (!address) return Error{QStringLiteral("has layers only as a run of pictures")};
        const auto number = address->movie.run.numberIn(info.fileName());
        address->movie.run.first = address->movie.run.last = number.value_or(address->movie.run.first);
        address->movie.isFixed = true;
    }
    address->view = view;
    address->movie.layer = layer;
    return address->text();
}

} // namespace daylark
