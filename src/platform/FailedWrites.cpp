#include "platform/FailedWrites.h"

#include <algorithm>
#include <utility>

namespace daylark {

namespace {

QString reasonAlone(const QString& reason, const QString& path) {
    const QString named = path + QStringLiteral(": ");
    const qsizetype at = path.isEmpty() ? -1 : reason.indexOf(named);
    return at < 0 ? reason : reason.mid(at + named.size());
}

} // namespace

void FailedWrites::failed(const QString& what, const QString& path, const QString& reason,
                          std::function<void()> tryAgain, std::function<void()> saveAs) {
    Entry entry{what, path, reasonAlone(reason, path), std::move(tryAgain), std::move(saveAs)};
    const auto known = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& one) { return one.path == path; });
    if (known == entries_.end())
        entries_.push_back(std::move(entry));
    else
        *known = std::move(entry);
    Q_EMIT changed();
}

void FailedWrites::written(const QString& path) {
    if (std::erase_if(entries_, [&](const Entry& entry) { return entry.path == path; }) > 0) Q_EMIT changed();
}

} // namespace daylark
