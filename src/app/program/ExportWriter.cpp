#include "app/program/ExportWriter.h"

#include "platform/AtomicFile.h"
#include "platform/FailedWrites.h"

namespace daylark {

ExportWriter::ExportWriter(FailedWrites& failedWrites, QObject* parent)
    : QObject(parent)
    , failedWrites_(failedWrites) {}

void ExportWriter::write(const QString& what, const QString& path, std::function<QByteArray()> make) {
    work_.run([this, what, path, make = std::move(make)] {
        const Result<void> result = writeFileAtomically(path, make());
        if (result) return WorkQueue::deliver(this, [this, path] { failedWrites_.written(path); });
        WorkQueue::deliver(this, [this, what, path, make, reason = result.error().text] {
            failedWrites_.failed(what, path, reason, [this, what, path, make] { write(what, path, make); });
        });
    });
}

} // namespace daylark
