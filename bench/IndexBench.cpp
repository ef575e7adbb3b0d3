#include "export/relink/FolderIndex.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

// How long a search for missing media looks through a folder, against `find` on the same one: at most three times.
// IndexBench [FILES | FOLDER]: made files of FILES (100000), or a folder of one's own.

using namespace daylark;

namespace {

/// As a show has them: days, shots in each, versions and frames in each.
void makeFiles(const QString& folder, int files) {
    constexpr int perFolder = 100;
    for (int made = 0; made < files;) {
        const QString shot = QStringLiteral("%1/day%2/shot%3")
                                 .arg(folder)
                                 .arg(made / (perFolder * 25), 3, 10, QLatin1Char('0'))
                                 .arg(made / perFolder, 5, 10, QLatin1Char('0'));
        QDir().mkpath(shot);
        for (int at = 0; at < perFolder && made < files; ++at, ++made) {
            QFile file(QStringLiteral("%1/SEQ_%2_comp_v%3.mov").arg(shot).arg(made, 6, 10, QLatin1Char('0')).arg(at));
            if (!file.open(QIODevice::WriteOnly)) qFatal("no room for the files");
        }
    }
}

template<class Work>
double medianMilliseconds(Work&& work) {
    std::vector<double> taken;
    work(); // what the kernel knows of the folder is known for both
    for (int round = 0; round < 7; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        taken.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(taken.begin(), taken.end());
    return taken[taken.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QString argument = QCoreApplication::arguments().value(1, QStringLiteral("100000"));
    QTemporaryDir made;
    QString folder = argument;
    if (const int files = argument.toInt(); files > 0) {
        folder = made.path();
        makeFiles(folder, files);
    }
    qint64 count = 0;
    const double index = medianMilliseconds([&] { count = FolderIndex::ofFolder(folder).count(); });
    const double find = medianMilliseconds([&] {
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.start(QStringLiteral("find"), {folder, QStringLiteral("-type"), QStringLiteral("f")});
        if (!process.waitForFinished(-1) || process.exitCode() != 0) qFatal("find failed");
    });
    std::printf("%lld files   index %.1f ms   find %.1f ms   ratio %.2f (at most 3)\n", static_cast<long long>(count),
                index, find, index / find);
    return index <= 3 * find ? 0 : 1;
}
