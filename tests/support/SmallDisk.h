#pragma once

#include "support/ChildProcess.h"

#include <QFile>
#include <QString>

#include <optional>

#include <sched.h>
#include <sys/mount.h>

namespace daylark::test {

/// Runs `work` in a process of its own, to which the folder is a disk of so many bytes, and gives its answer (0 to 97). Nothing
/// where the system lets nobody make a disk. As for `ChildProcess`, no other thread may run.
inline std::optional<int> runOnSmallDisk(const QString& folder, qint64 bytes, const std::function<int()>& work) {
    constexpr int impossible = 98;
    const auto makeDisk = [&] {
        const uid_t user = ::geteuid();
        if (::unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0) return false;
        if (user != 0) {
            QFile owners(QStringLiteral("/proc/self/uid_map"));
            const QByteArray same = QByteArray::number(user);
            if (!owners.open(QIODevice::WriteOnly) || owners.write(same + ' ' + same + " 1\n") < 0) return false;
        }
        return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0,
                       ("size=" + QByteArray::number(bytes)).constData()) == 0;
    };
    const int answer = ChildProcess([&] { return makeDisk() ? work() : impossible; }).wait();
    if (answer == impossible) return std::nullopt;
    return answer;
}

} // namespace daylark::test
