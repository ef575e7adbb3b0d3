#pragma once

#include <QCoreApplication>
#include <QString>

namespace daylark {

/// How a search for media ended, in the words that a person reads. A value; any thread.
class RelinkReport {
    Q_DECLARE_TR_FUNCTIONS(RelinkReport)
public:
    qint64 found = 0;   ///< items linked
    qint64 missing = 0; ///< items looked for
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString text() const;
    [[nodiscard]] bool allFound() const { return found > 0 && found == missing; }
};

} // namespace daylark
