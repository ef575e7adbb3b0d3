#pragma once

#include "archive/AttributedString.h"

#include <QString>
#include <QTextDocument>

class QMimeData;

namespace daylark {

/// A document that loads nothing: no picture, no style sheet, whatever a text names. The only kind that texts from
/// elsewhere are read with.
class ClosedDocument : public QTextDocument {
public:
    using QTextDocument::QTextDocument;

protected:
    QVariant loadResource(int, const QUrl&) override { return {}; }
};

/// What of a clipboard's content notes can hold: its letters, bold, italic and underline. Fonts, colours, tables, links
/// and pictures stay where they came from; beyond `mostUnits` it is cut, and mark-up that would take long to read is
/// taken by its plain form. Interface thread; bounded to some milliseconds.
struct PastedText {
    static constexpr qsizetype mostUnits = 100'000; ///< UTF-16 units that a paste brings

    AttributedString text;
    int pictures = 0;     ///< left out
    bool isCut = false;   ///< there was more of it
    [[nodiscard]] static PastedText from(const QMimeData& source, qsizetype most = mostUnits);
    /// In words for the person; empty when all came along.
    [[nodiscard]] QString leftOut() const;
};

} // namespace daylark
