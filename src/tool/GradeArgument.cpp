#include "tool/GradeArgument.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace daylark::tool {

namespace {

struct GradeNumber {
    QLatin1String name;
    double Grade::*field;
};
const GradeNumber gradeNumbers[] = {{QLatin1String("exposure"), &Grade::exposure},
                                    {QLatin1String("contrast"), &Grade::contrast},
                                    {QLatin1String("saturation"), &Grade::saturation},
                                    {QLatin1String("gamma"), &Grade::gamma},
                                    {QLatin1String("brightness"), &Grade::brightness},
                                    {QLatin1String("redChannel"), &Grade::redChannel},
                                    {QLatin1String("greenChannel"), &Grade::greenChannel},
                                    {QLatin1String("blueChannel"), &Grade::blueChannel}};

} // namespace

Result<Grade> gradeArgument(const QString& text) {
    Grade grade;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString name = part.section(QLatin1Char('='), 0, 0).trimmed();
        const auto number =
            std::find_if(std::begin(gradeNumbers), std::end(gradeNumbers),
                         [&](const GradeNumber& candidate) { return candidate.name == name; });
        if (number == std::end(gradeNumbers))
            return Error{QStringLiteral("no number of a grade: %1").arg(name)};
        bool isNumber = false;
        grade.*number->field = part.section(QLatin1Char('='), 1).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(grade.*number->field))
            return Error{QStringLiteral("not a number: %1").arg(part)};
    }
    return grade;
}

} // namespace daylark::tool
