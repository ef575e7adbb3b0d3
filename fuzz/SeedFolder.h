#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cstdlib>

namespace daylark::fuzz {

/// Puts a first input into the corpus folder of the command line (made when missing), so that a target whose
/// seeds need its own code brings them along. For `LLVMFuzzerInitialize`.
inline void seedCorpus(int argc, char** argv, const char* name, const QByteArray& bytes) {
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '-') continue;
        const QString path = QFile::decodeName(argv[i]);
        if (QFileInfo(path).isFile()) // one input to be run again
            return;
        QDir().mkpath(path);
        QFile seed(QDir(path).filePath(QString::fromLatin1(name)));
        if (!seed.open(QIODevice::WriteOnly) || seed.write(bytes) != bytes.size()) std::abort();
        return;
    }
}

} // namespace daylark::fuzz
