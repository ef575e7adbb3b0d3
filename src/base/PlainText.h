#pragma once

#include <QString>

/// Text that came from a file, a name or a person, made ready for showing: letter by letter, never as mark-up, and no
/// more of it than a person would read, so that showing it costs the same whatever stands there. What is kept, edited or
/// written elsewhere is the text itself. Pure functions, linear in what they keep; any thread.
namespace daylark::plain {

constexpr qsizetype lineLength = 300;       ///< UTF-16 units of a line: a name, a cell, a title
constexpr qsizetype paragraphLength = 2000; ///< of several lines together
constexpr int paragraphLines = 40;

/// One line: control characters and line ends become spaces; beyond `most` it ends in "…".
[[nodiscard]] QString line(const QString& text, qsizetype most = lineLength);
/// Its lines, as many as `paragraphLines`; beyond that or `most` it ends in "…".
[[nodiscard]] QString paragraph(const QString& text, qsizetype most = paragraphLength);
/// For a tool tip, which would take it for mark-up where it looks like it.
[[nodiscard]] QString toolTip(const QString& text);
/// For a menu entry or a button: no letter is taken for its key.
[[nodiscard]] QString menuTitle(const QString& text);
/// For a window's title: no part is taken for the place of the modified mark.
[[nodiscard]] QString windowTitle(const QString& text);
/// Mark-up that shows just this.
[[nodiscard]] QString markUp(const QString& text);

} // namespace daylark::plain
