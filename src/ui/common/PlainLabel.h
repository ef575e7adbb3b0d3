#pragma once

#include "base/PlainText.h"

#include <QLabel>

namespace daylark {

/// A label whose text is shown letter by letter, whatever it looks like, and no more of it than a person would read. The only
/// kind of label there is: one that took mark-up would open whatever files a stranger's text names. Interface thread.
class PlainLabel : public QLabel {
    Q_OBJECT
public:
    explicit PlainLabel(QWidget* parent = nullptr)
        : QLabel(parent) {
        setTextFormat(Qt::PlainText);
    }
    explicit PlainLabel(const QString& text, QWidget* parent = nullptr)
        : PlainLabel(parent) {
        setText(text);
    }

    /// In place of the base's, which the callers of this class never see.
    void setText(const QString& text) {
        QLabel::setText(plain::paragraph(text).replace(u'&', QStringLiteral("&&")));
    }
    /// As it is read.
    [[nodiscard]] QString text() const { return QLabel::text().replace(QStringLiteral("&&"), QStringLiteral("&")); }
};

} // namespace daylark
