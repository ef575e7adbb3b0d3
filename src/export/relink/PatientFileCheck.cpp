#include "export/relink/PatientFileCheck.h"

namespace daylark {

FileCheck PatientFileCheck::operator()(const FileReference& file, const CancelFlag* cancelled) {
    const auto check = questions_.ask<FileCheck>(file.path, [file] { return checkFile(file); }, cancelled);
    return check.value_or(FileCheck{false, file.path});
}

} // namespace daylark
