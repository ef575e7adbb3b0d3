#include "export/relink/PatientFileCheck.h"

#include "base/jobs/Patience.h"

namespace daylark {

namespace {

/// Where a share could be mounted: the path's first two names.
QString shareOf(const QString& path) {
    return path.section(QLatin1Char('/'), 0, 2);
}

} // namespace

FileCheck PatientFileCheck::operator()(const FileReference& file, const CancelFlag* cancelled) {
    if (silent_.contains(shareOf(file.path))) return {false, file.path};
    const auto check = askWithPatience<FileCheck>([file] { return checkFile(file); }, fileSystemPatience, cancelled);
    if (!check && !(cancelled && *cancelled)) silent_.insert(shareOf(file.path));
    return check.value_or(FileCheck{false, file.path});
}

} // namespace daylark
