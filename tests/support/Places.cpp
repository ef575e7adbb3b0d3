#include "support/Places.h"

namespace daylark {

QString sourceFolder() { return QStringLiteral(DAYLARK_SOURCE_DIR); }
QString programFolder() { return QStringLiteral(DAYLARK_BINARY_DIR); }
QString foreignArchiveFolder() { return QStringLiteral(DAYLARK_FOREIGN_ARCHIVES); }
QString foreignTimecodeFolder() { return QStringLiteral(DAYLARK_FOREIGN_TIMECODE); }

} // namespace daylark
