#pragma once

#include "archive/AttributedString.h"

#include <QTextEdit>

namespace daylark {

/// A field of styled text that takes an attributed string and gives it back without loss: whatever styles it
/// came with stay on the characters that the person did not touch. Colours too dark to read on the panel are
/// shown lighter and kept as they are. Bold, italic and underline have the usual keys. Interface thread.
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

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    bool loading_ = false;
};

} // namespace daylark
