#include "model/StatusCodes.h"

#include <utility>

namespace daylark::status {

QStringList codes() {
    return {QStringLiteral("901"), QStringLiteral("902"), QStringLiteral("903"), QStringLiteral("904"),
            QStringLiteral("905"), QStringLiteral("906"), QStringLiteral("907")};
}

QString flagImageName(const QString& code) {
    static const QString names[] = {
        QStringLiteral("flag_Green.png"),  QStringLiteral("flag_Yellow.png"),
        QStringLiteral("flag_Orange.png"), QStringLiteral("flag_Red.png"),
        QStringLiteral("flag_Purple.png"), QStringLiteral("flag_Blue.png"),
        QStringLiteral("flag_Grey.png"),
    };
    const qsizetype index = codes().indexOf(code);
    return index < 0 ? QString() : names[index];
}

} // namespace daylark::status
