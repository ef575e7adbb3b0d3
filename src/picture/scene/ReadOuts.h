#pragma once

#include <QColor>
#include <QFont>
#include <QString>

namespace daylark {

/// The texts that lie over everything else on the player area. An empty text is not shown. A plain value.
struct ReadOuts {
    QString counter;      ///< upper left
    QString filename;     ///< upper right
    QString timecode;     ///< lower left
    QString overlayText;  ///< at the foot
    QColor overlayColour; ///< of all these; invalid: `text`
    QString message;      ///< in the middle, in place of a picture
    QString statistics;   ///< lines below the counter
    QString looking;      ///< lower right: what the picture is looked at through, or why it is shown raw

    // The look of the program that shows them.
    QFont words, numbers;
    QColor text{214, 214, 214}, dimText{142, 142, 142};

    bool operator==(const ReadOuts&) const = default;
};

} // namespace daylark
