#pragma once

#include "archive/AttributedString.h"

#include <QTextEdit>

#include <optional>

namespace daylark {

/// A field of styled text that takes an attributed string and gives it back without loss: whatever styles it came with
/// stay on the characters that the person did not touch. Colours too dark to read on the panel are shown lighter and kept
/// as they are. Bold, italic and underline have the usual keys. Nothing that a text names is loaded. A text that is too
/// long to be laid out at once shows its beginning, can be read only, and is given back whole. Interface thread.
class RichTextField : public QTextEdit {
    Q_OBJECT
public:
    explicit RichTextField(QWidget* parent = nullptr);

    void setAttributed(const AttributedString& text); ///< announces nothing; forgets what could be undone
    [[nodiscard]] AttributedString attributed() const;

    void toggleBold();
    void toggleItalic();
    void toggleUnderline();
    void setColour(const QColor& colour); ///< of the selection and what is typed next; invalid: the default

Q_SIGNALS:
    void edited(); ///< by the person, text or style
    /// What of a paste, or of a text that is too long, is not here, in words; empty when nothing is to be said any more.
    void said(const QString& words);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    QVariant loadResource(int type, const QUrl& name) override;

private:
    void say(const QString& words);

    bool loading_ = false;
    QString said_;
    std::optional<AttributedString> whole_; ///< of a text that is too long
};

} // namespace daylark
